// C_Verify: PKCS#11 v2.20, 11.12.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Verify(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pSignature, jlong ulSignatureLen)
{
    return callCryptoki(
        env, C_Verify, Session{hSession}, ClearText{pData, ulDataLen}, Signature{pSignature, ulSignatureLen});
}
