// C_GetObjectSize: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_GetObjectSize $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetObjectSize(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobject pulSize)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (longRefClass == nullptr) return nullptr;
    if (pulSize == nullptr) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;

    CK_ULONG size = 0;
    const CK_RV rv = C_GetObjectSize(session, object, &size);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, longRefClass, pulSize, "value", size)) return nullptr;
    return ckRVToJRV(env, rv);
}
