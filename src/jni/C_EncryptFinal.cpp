// C_EncryptFinal: PKCS#11 v2.20, 11.8.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_EncryptFinal $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1EncryptFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pLastEncryptedPart, jobject pulLastEncryptedPartLen)
{
    return finalDataOut(
        env, C_EncryptFinal, Content::Public, hSession, pLastEncryptedPart, pulLastEncryptedPartLen);
}
