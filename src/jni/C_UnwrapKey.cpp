// C_UnwrapKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1UnwrapKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobject hUnwrappingKey, jbyteArray pWrappedKey, jlong ulWrappedKeyLen,
    jobjectArray pTemplate, jlong ulAttributeCount, jobject phKey)
{
    return callCryptoki(env, C_UnwrapKey, Session{hSession}, ReturningMechanism{pMechanism},
        Key{hUnwrappingKey}, WrappedKey{pWrappedKey, ulWrappedKeyLen},
        Attributes{pTemplate, ulAttributeCount}, NewObject{phKey});
}
