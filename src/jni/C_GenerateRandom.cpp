// C_GenerateRandom: PKCS#11 v2.20, 11.15.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_GenerateRandom $\" \"$Revision: 1.1.1.3 $\"";

// Exactly as many zeroed bytes as are asked for, without the spare one of the other output buffers: wanted.
struct RandomBuffer {
    CK_BYTE_PTR const data;

    RandomBuffer(bool isWanted, CK_ULONG length)
        : data(isWanted ? static_cast<CK_BYTE_PTR>(std::calloc(length, 1)) : nullptr)
    {
    }
    RandomBuffer(const RandomBuffer&) = delete;
    RandomBuffer& operator=(const RandomBuffer&) = delete;
    ~RandomBuffer() { wipeAndFree(data); }
};

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GenerateRandom(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pRandomData, jlong ulRandomLen)
{
    if (isMissing(pRandomData, ulRandomLen)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    const RandomBuffer random(pRandomData != nullptr, toCK(ulRandomLen));
    if (pRandomData != nullptr && random.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    const CK_RV rv = C_GenerateRandom(session, random.data, toCK(ulRandomLen));
    if (env->ExceptionCheck()) return nullptr;
    if (rv == CKR_OK) CopyCKByteArrayToJByteArray(env, random.data, toCK(ulRandomLen), pRandomData);
    return result(env, rv);
}
