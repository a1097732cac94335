// C_GetSessionInfo: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetSessionInfo(
    JNIEnv* env, jclass, jobject hSession, jobject pInfo)
{
    if (pInfo == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;

    CK_SESSION_INFO info{};
    const CK_RV rv = C_GetSessionInfo(session, &info);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !CopyCKSessionInfoToJSessionInfo(env, &info, pInfo)) return nullptr;
    return ckRVToJRV(env, rv);
}
