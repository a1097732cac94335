// C_WrapKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1WrapKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobject hWrappingKey, jobject hKey, jbyteArray pWrappedKey, jobject pulWrappedKeyLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulWrappedKeyLen == nullptr || pMechanism == nullptr) return argumentsBad(env);

    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (mechanism.failed) return nullptr;
    // A null wrapping key is the invalid handle 0 here, unlike elsewhere: wanted.
    const CK_OBJECT_HANDLE wrappingKey =
        hWrappingKey == nullptr ? CK_INVALID_HANDLE : jObjectHandleToCKObjectHandle(env, hWrappingKey);
    if (hasFailed(env, wrappingKey)) return nullptr;
    const CK_OBJECT_HANDLE key = jObjectHandleToCKObjectHandle(env, hKey);
    if (hasFailed(env, key)) return nullptr;
    CallMemory memory;
    return callWithOutput(env, memory, Content::Public, pulWrappedKeyLen, pWrappedKey,
        CopyCKByteArrayToJByteArray, [&](CK_BYTE_PTR wrappedKey, CK_ULONG_PTR length) {
            return C_WrapKey(session, &mechanism.native, wrappingKey, key, wrappedKey, length);
        });
}
