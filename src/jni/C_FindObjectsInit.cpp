// C_FindObjectsInit: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

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
