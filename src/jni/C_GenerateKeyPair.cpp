// C_GenerateKeyPair: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GenerateKeyPair(JNIEnv* env, jclass,
    jobject hSession, jobject pMechanism, jobjectArray pPublicKeyTemplate, jlong ulPublicKeyAttributeCount,
    jobjectArray pPrivateKeyTemplate, jlong ulPrivateKeyAttributeCount, jobject phPublicKey,
    jobject phPrivateKey)
{
    return callCryptoki(env, C_GenerateKeyPair, Session{hSession}, ReturningMechanism{pMechanism},
        Attributes{pPublicKeyTemplate, ulPublicKeyAttributeCount},
        Attributes{pPrivateKeyTemplate, ulPrivateKeyAttributeCount}, NewObject{phPublicKey},
        NewObject{phPrivateKey});
}
