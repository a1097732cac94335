// C_VerifyUpdate: PKCS#11 v2.20, 11.12.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_VerifyUpdate $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1VerifyUpdate(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPart, jlong ulPartLen)
{
    return dataIn(env, C_VerifyUpdate, Content::Secret, hSession, pPart, ulPartLen);
}
