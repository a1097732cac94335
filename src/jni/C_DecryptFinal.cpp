// C_DecryptFinal: PKCS#11 v2.20, 11.9.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_DecryptFinal $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pLastPart, jobject pulLastPartLen)
{
    return finalDataOut(env, C_DecryptFinal, Content::Secret, hSession, pLastPart, pulLastPartLen);
}
