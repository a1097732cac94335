// C_DecryptInit: PKCS#11 v2.20, 11.9.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptInit(
    JNIEnv* env, jclass, jobject hSession, jobject pMechanism, jobject hKey)
{
    return callCryptoki(env, C_DecryptInit, Session{hSession}, Mechanism{pMechanism}, Key{hKey});
}
