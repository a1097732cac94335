// C_SetOperationState: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SetOperationState(JNIEnv* env, jclass,
    jobject hSession, jbyteArray pOperationState, jlong ulOperationStateLen, jobject hEncryptionKey,
    jobject hAuthenticationKey)
{
    // Stricter than the other natives with a byte array: wanted.
    if (ulOperationStateLen == 0 || pOperationState == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput state(env, memory, pOperationState);
    if (state.failed) return nullptr;
    const CK_OBJECT_HANDLE encryptionKey = jObjectHandleToCKObjectHandle(env, hEncryptionKey);
    if (hasFailed(env, encryptionKey)) return nullptr;
    const CK_OBJECT_HANDLE authenticationKey = jObjectHandleToCKObjectHandle(env, hAuthenticationKey);
    if (hasFailed(env, authenticationKey)) return nullptr;
    return answer(env, C_SetOperationState(
                           session, state.data, toCK(ulOperationStateLen), encryptionKey, authenticationKey));
}
