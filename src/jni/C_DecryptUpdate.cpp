// C_DecryptUpdate: PKCS#11 v2.20, 11.9.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DecryptUpdate(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pEncryptedPart, jlong ulEncryptedPartLen, jbyteArray pPart, jobject pulPartLen)
{
    return dataInDataOut(env, C_DecryptUpdate, PUBLIC_TO_SECRET, hSession, pEncryptedPart, ulEncryptedPartLen,
        pPart, pulPartLen);
}
