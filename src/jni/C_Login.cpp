// C_Login: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Login(
    JNIEnv* env, jclass, jobject hSession, jobject userType, jbyteArray pPin, jlong ulPinLen)
{
    return callCryptoki(env, C_Login, Session{hSession}, UserType{userType}, Pin{pPin, ulPinLen});
}
