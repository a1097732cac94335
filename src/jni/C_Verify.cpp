// C_Verify: PKCS#11 v2.20, 11.12.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Verify(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pData, jlong ulDataLen, jbyteArray pSignature, jlong ulSignatureLen)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput data(env, memory, pData);
    if (data.failed) return nullptr;
    const ByteInput signature(env, memory, pSignature, Content::Public);
    if (signature.failed) return nullptr;
    return answer(env, C_Verify(session, data.data, toCK(ulDataLen), signature.data, toCK(ulSignatureLen)));
}
