// The shapes of the cryptographic natives. Every native of a shape does the same and differs only in the
// Cryptoki function that it calls; its file is one line over the shape.
#pragma once

#include "jni/frame.h"

namespace zerlin {

// What the buffers of a call hold: the clear text of a message and a digest's input are secrets, what comes
// out of an encryption or goes into a decryption is not.
struct Contents {
    Content input;
    Content output;
};

constexpr Contents SECRET_TO_PUBLIC = {Content::Secret, Content::Public};
constexpr Contents PUBLIC_TO_SECRET = {Content::Public, Content::Secret};

// (session, mechanism, key)
inline jobject initWithKey(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE),
    jobject hSession, jobject pMechanism, jobject hKey)
{
    if (pMechanism == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (mechanism.failed) return nullptr;
    const CK_OBJECT_HANDLE key = jObjectHandleToCKObjectHandle(env, hKey);
    if (hasFailed(env, key)) return nullptr;
    return answer(env, call(session, &mechanism.native, key));
}

// (session, input, input length, output, output-length pointer)
inline jobject dataInDataOut(JNIEnv* env,
    CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR), Contents contents,
    jobject hSession, jbyteArray pInput, jlong ulInputLen, jbyteArray pOutput, jobject pulOutputLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulOutputLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput input(env, memory, pInput, contents.input);
    if (input.failed) return nullptr;
    return callWithOutput(env, memory, contents.output, pulOutputLen, pOutput, CopyCKByteArrayToJByteArray,
        [&](CK_BYTE_PTR output, CK_ULONG_PTR length) {
            return call(session, input.data, toCK(ulInputLen), output, length);
        });
}

// (session, output, output-length pointer)
inline jobject finalDataOut(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR),
    Content content, jobject hSession, jbyteArray pOutput, jobject pulOutputLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulOutputLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    return callWithOutput(env, memory, content, pulOutputLen, pOutput, CopyCKByteArrayToJByteArray,
        [&](CK_BYTE_PTR output, CK_ULONG_PTR length) { return call(session, output, length); });
}

// (session, input, input length)
inline jobject dataIn(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG), Content content,
    jobject hSession, jbyteArray pInput, jlong ulInputLen)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput input(env, memory, pInput, content);
    if (input.failed) return nullptr;
    return answer(env, call(session, input.data, toCK(ulInputLen)));
}

} // namespace zerlin
