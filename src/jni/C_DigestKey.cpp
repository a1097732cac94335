// C_DigestKey: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestKey(
    JNIEnv* env, jclass, jobject hSession, jobject hKey)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE key = jObjectHandleToCKObjectHandle(env, hKey);
    if (hasFailed(env, key)) return nullptr;
    return answer(env, C_DigestKey(session, key));
}
