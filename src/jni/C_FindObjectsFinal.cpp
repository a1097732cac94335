// C_FindObjectsFinal: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1FindObjectsFinal(
    JNIEnv* env, jclass, jobject hSession)
{
    return callCryptoki(env, C_FindObjectsFinal, Session{hSession});
}
