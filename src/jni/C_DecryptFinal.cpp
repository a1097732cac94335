// C_DecryptFinal: PKCS#11 v2.20, 11.9.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pLastPart, jobject pulLastPartLen)
{
    return callCryptoki(env, C_DecryptFinal, Session{hSession}, ClearOutput{pLastPart, pulLastPartLen});
}
