// C_CancelFunction: PKCS#11 v2.20, 11.16.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_CancelFunction $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CancelFunction(
    JNIEnv* env, jclass, jobject hSession)
{
    return callWithSession(env, hSession, C_CancelFunction);
}
