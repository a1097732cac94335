// C_GenerateRandom: PKCS#11 v2.20, 11.15.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GenerateRandom(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pRandomData, jlong ulRandomLen)
{
    if (isMissing(pRandomData, ulRandomLen)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    // Exactly as many zeroed bytes as are asked for, without the spare one of the other outputs: wanted.
    CallMemory memory;
    const OutputBuffer<CK_BYTE> random(memory, pRandomData != nullptr, toCK(ulRandomLen), Content::Secret, 0);
    if (pRandomData != nullptr && random.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    const CK_RV rv = C_GenerateRandom(session, random.data, toCK(ulRandomLen));
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK) CopyCKByteArrayToJByteArray(env, random.data, toCK(ulRandomLen), pRandomData);
    return ckRVToJRV(env, rv);
}
