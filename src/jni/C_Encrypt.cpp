// C_Encrypt: PKCS#11 v2.20, 11.8.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Encrypt(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pEncryptedData, jobject pulEncryptedDataLen)
{
    return callCryptoki(env, C_Encrypt, Session{hSession}, ClearText{pData, ulDataLen},
        CipherOutput{pEncryptedData, pulEncryptedDataLen});
}
