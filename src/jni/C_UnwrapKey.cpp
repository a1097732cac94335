// C_UnwrapKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/keys.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1UnwrapKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobject hUnwrappingKey, jbyteArray pWrappedKey, jlong ulWrappedKeyLen,
    jobjectArray pTemplate, jlong ulAttributeCount, jobject phKey)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (pMechanism == nullptr || phKey == nullptr || pWrappedKey == nullptr) return argumentsBad(env);
    if (isMissing(pTemplate, ulAttributeCount)) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (mechanism.failed) return nullptr;
    const CK_OBJECT_HANDLE unwrappingKey = jObjectHandleToCKObjectHandle(env, hUnwrappingKey);
    if (hasFailed(env, unwrappingKey)) return nullptr;
    CallMemory memory;
    const ByteInput wrappedKey(env, memory, pWrappedKey, Content::Public);
    if (wrappedKey.failed) return nullptr;
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;

    CK_OBJECT_HANDLE key = 0;
    const CK_RV rv = C_UnwrapKey(session, &mechanism.native, unwrappingKey, wrappedKey.data,
        toCK(ulWrappedKeyLen), attributes.attributes, toCK(ulAttributeCount), &key);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !writeKey(env, phKey, key, pMechanism, mechanism)) return nullptr;
    return ckRVToJRV(env, rv);
}
