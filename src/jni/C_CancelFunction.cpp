// C_CancelFunction: PKCS#11 v2.20, 11.16.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CancelFunction(
    JNIEnv* env, jclass, jobject hSession)
{
    return callCryptoki(env, C_CancelFunction, Session{hSession});
}
