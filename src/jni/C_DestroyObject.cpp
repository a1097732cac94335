// C_DestroyObject: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DestroyObject(
    JNIEnv* env, jclass, jobject hSession, jobject hObject)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    return answer(env, C_DestroyObject(session, object));
}
