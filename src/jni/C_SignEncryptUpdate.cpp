// C_SignEncryptUpdate: PKCS#11 v2.20, 11.13.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignEncryptUpdate(JNIEnv* env, jclass,
    jobject hSession, jbyteArray pPart, jlong ulPartLen, jbyteArray pEncryptedPart,
    jobject pulEncryptedPartLen)
{
    return callCryptoki(env, C_SignEncryptUpdate, Session{hSession}, ClearText{pPart, ulPartLen},
        CipherOutput{pEncryptedPart, pulEncryptedPartLen});
}
