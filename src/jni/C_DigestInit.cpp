// C_DigestInit: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestInit(
    JNIEnv* env, jclass, jobject hSession, jobject pMechanism)
{
    return callCryptoki(env, C_DigestInit, Session{hSession}, Mechanism{pMechanism});
}
