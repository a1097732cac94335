// C_EncryptFinal: PKCS#11 v2.20, 11.8.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1EncryptFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pLastEncryptedPart, jobject pulLastEncryptedPartLen)
{
    return callCryptoki(
        env, C_EncryptFinal, Session{hSession}, CipherOutput{pLastEncryptedPart, pulLastEncryptedPartLen});
}
