// C_GenerateKeyPair: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/keys.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GenerateKeyPair(JNIEnv* env, jclass,
    jobject hSession, jobject pMechanism, jobjectArray pPublicKeyTemplate, jlong ulPublicKeyAttributeCount,
    jobjectArray pPrivateKeyTemplate, jlong ulPrivateKeyAttributeCount, jobject phPublicKey,
    jobject phPrivateKey)
{
    if (FindClass(env, java::OBJECT_HANDLE.cls) == nullptr) return nullptr;
    if (pMechanism == nullptr || phPublicKey == nullptr || phPrivateKey == nullptr) return argumentsBad(env);
    if (isMissing(pPublicKeyTemplate, ulPublicKeyAttributeCount)) return argumentsBad(env);
    if (isMissing(pPrivateKeyTemplate, ulPrivateKeyAttributeCount)) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (mechanism.failed) return nullptr;
    const Template publicAttributes(env, pPublicKeyTemplate);
    if (publicAttributes.failed) return nullptr;
    const Template privateAttributes(env, pPrivateKeyTemplate);
    if (privateAttributes.failed) return nullptr;

    CK_OBJECT_HANDLE publicKey = 0;
    CK_OBJECT_HANDLE privateKey = 0;
    const CK_RV rv = C_GenerateKeyPair(session, &mechanism.native, publicAttributes.attributes,
        toCK(ulPublicKeyAttributeCount), privateAttributes.attributes, toCK(ulPrivateKeyAttributeCount),
        &publicKey, &privateKey);
    if (hasRaised(env)) return nullptr;
    if (rv != CKR_OK) return ckRVToJRV(env, rv);
    const bool isWritten = SetLongField(env, phPublicKey, java::OBJECT_HANDLE.m_value, publicKey) &&
                           writeKey(env, phPrivateKey, privateKey, pMechanism, mechanism);
    return isWritten ? ckRVToJRV(env, rv) : nullptr;
}
