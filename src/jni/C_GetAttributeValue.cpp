// C_GetAttributeValue: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobjectArray pTemplate, jlong ulCount)
{
    if (isMissing(pTemplate, ulCount)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;
    const bool hasWildcards = std::any_of(attributes.attributes, attributes.attributes + attributes.count,
        [](const CK_ATTRIBUTE& attribute) { return attribute.type == CKA_WILDCARD; });

    const CK_RV rv = C_GetAttributeValue(session, object, attributes.attributes, toCK(ulCount));
    if (hasRaised(env)) return nullptr;
    // Whatever the result, so that a sensitive or missing attribute does not hide what was served.
    const bool isWritten = CopyCKAttributeArrayToJAttributeArray(
        env, attributes.attributes, toCK(ulCount), pTemplate, hasWildcards);
    return isWritten ? ckRVToJRV(env, rv) : nullptr;
}
