// C_VerifyUpdate: PKCS#11 v2.20, 11.12.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1VerifyUpdate(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPart, jlong ulPartLen)
{
    return callCryptoki(env, C_VerifyUpdate, Session{hSession}, ClearText{pPart, ulPartLen});
}
