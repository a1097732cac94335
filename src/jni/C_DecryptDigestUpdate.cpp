// C_DecryptDigestUpdate: PKCS#11 v2.20, 11.13.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptDigestUpdate(JNIEnv* env, jclass,
    jobject hSession, jbyteArray pEncryptedPart, jlong ulEncryptedPartLen, jbyteArray pPart,
    jobject pulPartLen)
{
    return callCryptoki(env, C_DecryptDigestUpdate, Session{hSession},
        CipherText{pEncryptedPart, ulEncryptedPartLen}, ClearOutput{pPart, pulPartLen});
}
