// C_FindObjects: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_FindObjects $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1FindObjects(JNIEnv* env, jclass, jobject hSession,
    jobjectArray phObject, jlong ulMaxObjectCount, jobject pulObjectCount)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (longRefClass == nullptr) return nullptr;
    if (isMissing(phObject, ulMaxObjectCount) || pulObjectCount == nullptr) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    // The capacity is the argument; the LongRef is output only.
    CallMemory memory;
    const OutputBuffer<CK_OBJECT_HANDLE> objects(
        memory, phObject != nullptr, toCK(ulMaxObjectCount), Content::Public);
    if (phObject != nullptr && objects.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    CK_ULONG count = 0;
    const CK_RV rv = C_FindObjects(session, objects.data, toCK(ulMaxObjectCount), &count);
    if (hasRaised(env)) return nullptr;
    if (!SetLongField(env, longRefClass, pulObjectCount, "value", count)) return nullptr;
    const bool isWritten = rv != CKR_OK || CopyCKULongArrayToJObjectHandleArray(
                                               env, objects.data, objects.readable(count), phObject);
    return isWritten ? ckRVToJRV(env, rv) : nullptr;
}
