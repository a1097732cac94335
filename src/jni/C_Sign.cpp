// C_Sign: PKCS#11 v2.20, 11.11.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_Sign $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Sign(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pSignature, jobject pulSignatureLen)
{
    return dataInDataOut(
        env, C_Sign, SECRET_TO_PUBLIC, hSession, pData, ulDataLen, pSignature, pulSignatureLen);
}
