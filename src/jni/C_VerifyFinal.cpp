// C_VerifyFinal: PKCS#11 v2.20, 11.12.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1VerifyFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSignature, jlong ulSignatureLen)
{
    return dataIn(env, C_VerifyFinal, Content::Public, hSession, pSignature, ulSignatureLen);
}
