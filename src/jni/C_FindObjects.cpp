// C_FindObjects: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1FindObjects(JNIEnv* env, jclass, jobject hSession,
    jobjectArray phObject, jlong ulMaxObjectCount, jobject pulObjectCount)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
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
    if (!SetLongField(env, pulObjectCount, java::LONG_REF.value, count)) return nullptr;
    const bool isWritten = rv != CKR_OK || CopyCKULongArrayToJObjectHandleArray(
                                               env, objects.data, objects.readable(count), phObject);
    return isWritten ? ckRVToJRV(env, rv) : nullptr;
}
