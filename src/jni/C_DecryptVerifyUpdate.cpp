// C_DecryptVerifyUpdate: PKCS#11 v2.20, 11.13.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_DecryptVerifyUpdate $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptVerifyUpdate(JNIEnv* env, jclass,
    jobject hSession, jbyteArray pEncryptedPart, jlong ulEncryptedPartLen, jbyteArray pPart,
    jobject pulPartLen)
{
    return dataInDataOut(env, C_DecryptVerifyUpdate, PUBLIC_TO_SECRET, hSession, pEncryptedPart,
        ulEncryptedPartLen, pPart, pulPartLen);
}
