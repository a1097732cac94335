// The shapes of the cryptographic natives. Every native of a shape does the same and differs only in the
// Cryptoki function that it calls; its file is one line over the shape.
#pragma once

#include "jni/frame.h"

namespace zerlin {

// (session, mechanism, key)
inline jobject initWithKey(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE),
    jobject hSession, jobject pMechanism, jobject hKey)
{
    if (pMechanism == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (env->ExceptionCheck()) return nullptr;
    const CK_OBJECT_HANDLE key = jObjectHandleToCKObjectHandle(env, hKey);
    if (hasFailed(env, key)) return nullptr;
    return result(env, call(session, &mechanism.native, key));
}

// (session, input, input length, output, output-length pointer)
inline jobject dataInDataOut(JNIEnv* env,
    CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR), jobject hSession,
    jbyteArray pInput, jlong ulInputLen, jbyteArray pOutput, jobject pulOutputLen)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (env->ExceptionCheck()) return nullptr;
    if (pulOutputLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    const ByteInput input(env, pInput);
    if (input.failed) return nullptr;
    return callWithOutput(env, longRefClass, pulOutputLen, pOutput, CopyCKByteArrayToJByteArray,
        [&](CK_BYTE_PTR output, CK_ULONG_PTR length) {
            return call(session, input.data, toCK(ulInputLen), output, length);
        });
}

// (session, output, output-length pointer)
inline jobject finalDataOut(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR),
    jobject hSession, jbyteArray pOutput, jobject pulOutputLen)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (env->ExceptionCheck()) return nullptr;
    if (pulOutputLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    return callWithOutput(env, longRefClass, pulOutputLen, pOutput, CopyCKByteArrayToJByteArray,
        [&](CK_BYTE_PTR output, CK_ULONG_PTR length) { return call(session, output, length); });
}

// (session, input, input length)
inline jobject dataIn(JNIEnv* env, CK_RV (*call)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG), jobject hSession,
    jbyteArray pInput, jlong ulInputLen)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    const ByteInput input(env, pInput);
    if (input.failed) return nullptr;
    return result(env, call(session, input.data, toCK(ulInputLen)));
}

} // namespace zerlin
