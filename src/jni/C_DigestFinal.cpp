// C_DigestFinal: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pDigest, jobject pulDigestLen)
{
    return finalDataOut(env, C_DigestFinal, Content::Public, hSession, pDigest, pulDigestLen);
}
