// CT_CopyObject: the vendor's copy of an object between two sessions.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_CT_1CopyObject(JNIEnv* env, jclass, jobject hSession1,
    jobject hSession2, jobject hObject, jobjectArray pTemplate, jlong ulCount, jobject phNewObject)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (phNewObject == nullptr || isMissing(pTemplate, ulCount)) return argumentsBad(env);

    const CK_SESSION_HANDLE session1 = jSessionHandleToCKSessionHandle(env, hSession1);
    if (hasFailed(env, session1)) return nullptr;
    const CK_SESSION_HANDLE session2 = jSessionHandleToCKSessionHandle(env, hSession2);
    if (hasFailed(env, session2)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;

    CK_OBJECT_HANDLE newObject = 0;
    const CK_RV rv =
        CT_CopyObject(session1, session2, object, attributes.attributes, toCK(ulCount), &newObject);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, phNewObject, java::OBJECT_HANDLE.m_value, newObject))
        return nullptr;
    return ckRVToJRV(env, rv);
}
