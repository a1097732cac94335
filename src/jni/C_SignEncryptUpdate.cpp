// C_SignEncryptUpdate: PKCS#11 v2.20, 11.13.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_SignEncryptUpdate $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SignEncryptUpdate(JNIEnv* env, jclass,
    jobject hSession, jbyteArray pPart, jlong ulPartLen, jbyteArray pEncryptedPart,
    jobject pulEncryptedPartLen)
{
    return dataInDataOut(env, C_SignEncryptUpdate, SECRET_TO_PUBLIC, hSession, pPart, ulPartLen,
        pEncryptedPart, pulEncryptedPartLen);
}
