// C_Encrypt: PKCS#11 v2.20, 11.8.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_Encrypt $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Encrypt(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pEncryptedData, jobject pulEncryptedDataLen)
{
    return dataInDataOut(
        env, C_Encrypt, SECRET_TO_PUBLIC, hSession, pData, ulDataLen, pEncryptedData, pulEncryptedDataLen);
}
