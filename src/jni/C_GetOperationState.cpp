// C_GetOperationState: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

namespace {

// Exactly as many bytes as the caller offers and not cleared, unlike every other output buffer: wanted.
struct StateBuffer {
    CallMemory memory;
    const CK_ULONG size;
    CK_BYTE_PTR const data;

    StateBuffer(bool isWanted, CK_ULONG capacity)
        : size(capacity), data(isWanted ? memory.take(capacity, false) : nullptr)
    {
    }
    StateBuffer(const StateBuffer&) = delete;
    StateBuffer& operator=(const StateBuffer&) = delete;
    ~StateBuffer() { memory.release(data, size, Content::Secret); }
};

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetOperationState(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pOperationState, jobject pulOperationStateLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulOperationStateLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CK_ULONG length = GetLongField(env, pulOperationStateLen, java::LONG_REF.value);
    if (hasFailed(env, length)) return nullptr;

    const StateBuffer state(pOperationState != nullptr, length);
    if (pOperationState != nullptr && state.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);
    const CK_RV rv = C_GetOperationState(session, state.data, &length);
    if (hasRaised(env)) return nullptr;
    SetLongField(env, pulOperationStateLen, java::LONG_REF.value, length);
    if (rv == CKR_OK) {
        CopyCKByteArrayToJByteArray(env, state.data, std::min(length, state.size), pOperationState);
    }
    return ckRVToJRV(env, rv);
}
