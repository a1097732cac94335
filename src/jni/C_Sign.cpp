// C_Sign: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Sign(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pSignature, jobject pulSignatureLen)
{
    return callCryptoki(env, C_Sign, Session{hSession}, ClearText{pData, ulDataLen},
        SignatureOutput{pSignature, pulSignatureLen});
}
