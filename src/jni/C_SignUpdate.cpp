// C_SignUpdate: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_SignUpdate $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignUpdate(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPart, jlong ulPartLen)
{
    return dataIn(env, C_SignUpdate, Content::Secret, hSession, pPart, ulPartLen);
}
