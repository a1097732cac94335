// C_SignUpdate: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignUpdate(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPart, jlong ulPartLen)
{
    return callCryptoki(env, C_SignUpdate, Session{hSession}, ClearText{pPart, ulPartLen});
}
