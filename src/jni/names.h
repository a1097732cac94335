// The two shapes of the natives that name constants.
#pragma once

#include <cstring>

#include "helper/copyToCK.h"
#include "jni/frame.h"

namespace zerlin {

// The name of a typed constant into the caller's byte array, without a NUL; a null array asks for the length.
inline jobject nameOfValue(JNIEnv* env, CK_ULONG (*convert)(JNIEnv*, jobject),
    const char* (*nameOf)(CK_ULONG), jobject value, jbyteArray pName, jobject pulNameLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulNameLen == nullptr) return argumentsBad(env);
    const CK_ULONG number = value == nullptr ? 0 : convert(env, value);
    if (env->ExceptionCheck()) return nullptr;
    // A copy, since the name of an unknown value stands in a buffer that other threads write to.
    char name[256] = {};
    std::strncpy(name, value == nullptr ? "null" : nameOf(number), sizeof name - 1);
    const CK_ULONG length = std::strlen(name);

    CK_RV rv = CKR_OK;
    if (pName != nullptr) {
        // The whole signed field: a negative capacity is too small for any name.
        const jfieldID field = GetFieldID(env, java::LONG_REF.value);
        if (field == nullptr) return nullptr;
        const jlong capacity = env->GetLongField(pulNameLen, field);
        if (capacity < static_cast<jlong>(length)) {
            rv = CKR_DATA_LEN_RANGE; // not CKR_BUFFER_TOO_SMALL: wanted
        } else {
            CopyCKByteArrayToJByteArray(env, reinterpret_cast<const CK_BYTE*>(name), length, pName);
            if (env->ExceptionCheck()) return nullptr;
        }
    }
    SetLongField(env, pulNameLen, java::LONG_REF.value, length);
    return result(env, rv);
}

// A new typed constant of the value that has the name; 0xFFFFFFFF for an unknown one. A null name is answered
// with a CK_RV, whatever the declared result: wanted.
inline jobject valueOfName(
    JNIEnv* env, CK_ULONG (*valueOf)(const char*), jobject (*make)(JNIEnv*, CK_ULONG), jbyteArray name)
{
    if (name == nullptr) return argumentsBad(env);
    CK_BYTE text[512] = {};
    CopyJByteArrayToCKByteArray(env, name, text, sizeof text - 1);
    if (env->ExceptionCheck()) return nullptr;
    return make(env, valueOf(reinterpret_cast<const char*>(text)));
}

} // namespace zerlin
