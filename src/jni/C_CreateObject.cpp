// C_CreateObject: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CreateObject(
    JNIEnv* env, jclass, jobject hSession, jobjectArray pTemplate, jlong ulCount, jobject phObject)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (phObject == nullptr || isMissing(pTemplate, ulCount)) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;

    CK_OBJECT_HANDLE object = 0;
    const CK_RV rv = C_CreateObject(session, attributes.attributes, toCK(ulCount), &object);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, phObject, java::OBJECT_HANDLE.m_value, object)) return nullptr;
    return ckRVToJRV(env, rv);
}
