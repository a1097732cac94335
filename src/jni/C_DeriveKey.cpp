// C_DeriveKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DeriveKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobject hBaseKey, jobjectArray pTemplate, jlong ulAttributeCount, jobject phKey)
{
    return callCryptoki(env, C_DeriveKey, Session{hSession}, ReturningMechanism{pMechanism}, Key{hBaseKey},
        Attributes{pTemplate, ulAttributeCount}, OptionalNewKey{phKey});
}
