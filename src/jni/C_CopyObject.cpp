// C_CopyObject: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CopyObject(JNIEnv* env, jclass, jobject hSession,
    jobject hObject, jobjectArray pTemplate, jlong ulCount, jobject phNewObject)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (phNewObject == nullptr || isMissing(pTemplate, ulCount)) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;

    CK_OBJECT_HANDLE newObject = 0;
    const CK_RV rv = C_CopyObject(session, object, attributes.attributes, toCK(ulCount), &newObject);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, phNewObject, java::OBJECT_HANDLE.m_value, newObject))
        return nullptr;
    return ckRVToJRV(env, rv);
}
