// C_GetObjectSize: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetObjectSize(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobject pulSize)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulSize == nullptr) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;

    CK_ULONG size = 0;
    const CK_RV rv = C_GetObjectSize(session, object, &size);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, pulSize, java::LONG_REF.value, size)) return nullptr;
    return ckRVToJRV(env, rv);
}
