// C_SetPIN: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SetPIN(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pOldPin, jlong ulOldLen, jbyteArray pNewPin, jlong ulNewLen)
{
    return callCryptoki(env, C_SetPIN, Session{hSession}, Pin{pOldPin, ulOldLen}, Pin{pNewPin, ulNewLen});
}
