// C_DigestFinal: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_DigestFinal $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pDigest, jobject pulDigestLen)
{
    return finalDataOut(env, C_DigestFinal, Content::Public, hSession, pDigest, pulDigestLen);
}
