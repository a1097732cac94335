// C_CloseAllSessions: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_CloseAllSessions $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CloseAllSessions(JNIEnv* env, jclass, jlong slotID)
{
    return answer(env, C_CloseAllSessions(toCK(slotID)));
}
