// C_SignFinal: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSignature, jobject pulSignatureLen)
{
    return finalDataOut(env, C_SignFinal, Content::Public, hSession, pSignature, pulSignatureLen);
}
