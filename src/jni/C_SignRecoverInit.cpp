// C_SignRecoverInit: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignRecoverInit(
    JNIEnv* env, jclass, jobject hSession, jobject pMechanism, jobject hKey)
{
    return callCryptoki(env, C_SignRecoverInit, Session{hSession}, Mechanism{pMechanism}, Key{hKey});
}
