// C_SignFinal: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSignature, jobject pulSignatureLen)
{
    return callCryptoki(env, C_SignFinal, Session{hSession}, SignatureOutput{pSignature, pulSignatureLen});
}
