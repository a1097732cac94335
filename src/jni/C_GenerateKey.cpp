// C_GenerateKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GenerateKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobjectArray pTemplate, jlong ulCount, jobject phKey)
{
    return callCryptoki(env, C_GenerateKey, Session{hSession}, ReturningMechanism{pMechanism},
        Attributes{pTemplate, ulCount}, NewObject{phKey});
}
