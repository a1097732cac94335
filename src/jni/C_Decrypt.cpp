// C_Decrypt: PKCS#11 v2.20, 11.9.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_Decrypt $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Decrypt(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pEncryptedData, jlong ulEncryptedDataLen, jbyteArray pData, jobject pulDataLen)
{
    return dataInDataOut(
        env, C_Decrypt, PUBLIC_TO_SECRET, hSession, pEncryptedData, ulEncryptedDataLen, pData, pulDataLen);
}
