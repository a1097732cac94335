// C_FindObjectsInit: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_FindObjectsInit $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1FindObjectsInit(
    JNIEnv* env, jclass, jobject hSession, jobjectArray pTemplate, jlong ulCount)
{
    if (isMissing(pTemplate, ulCount)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;
    return answer(env, C_FindObjectsInit(session, attributes.attributes, toCK(ulCount)));
}
