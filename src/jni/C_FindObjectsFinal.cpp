// C_FindObjectsFinal: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_FindObjectsFinal $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1FindObjectsFinal(
    JNIEnv* env, jclass, jobject hSession)
{
    return callWithSession(env, hSession, C_FindObjectsFinal);
}
