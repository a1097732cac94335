// C_SignFinal: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_SignFinal $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignFinal(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSignature, jobject pulSignatureLen)
{
    return finalDataOut(env, C_SignFinal, Content::Public, hSession, pSignature, pulSignatureLen);
}
