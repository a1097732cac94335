// The two shapes of the natives that name constants.
#pragma once

#include <cstring>

#include "jni/call.h"
#include "zerlin/nametables.h"

namespace zerlin {

// The name of a typed constant, "null" for a null one, into the caller's byte array, without a NUL; a null
// array asks for the length.
inline jobject nameOfValue(JNIEnv* env, CK_ULONG (*toCK)(JNIEnv*, jobject), const char* (*nameOf)(CK_ULONG),
    jobject value, jbyteArray pName, jobject pulNameLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulNameLen == nullptr) return ckRVToJRV(env, CKR_ARGUMENTS_BAD);
    const CK_ULONG number = value == nullptr ? 0 : toCK(env, value);
    if (hasFailed(env, number)) return nullptr;
    // A copy, since the name of an unknown value lies in a buffer that other threads write to.
    char name[256] = {};
    std::strncpy(name, value == nullptr ? "null" : nameOf(number), sizeof name - 1);
    const CK_ULONG length = std::strlen(name);

    CK_RV rv = CKR_OK;
    if (pName != nullptr) {
        // The whole signed field: a negative capacity is too small for any name.
        const jfieldID field = GetFieldID(env, java::LONG_REF.value);
        if (field == nullptr) return nullptr;
        if (env->GetLongField(pulNameLen, field) < static_cast<jlong>(length)) {
            rv = CKR_DATA_LEN_RANGE; // not CKR_BUFFER_TOO_SMALL: deliberate
        } else {
            CopyCKByteArrayToJByteArray(env, reinterpret_cast<const CK_BYTE*>(name), length, pName);
        }
    }
    return SetLongField(env, pulNameLen, java::LONG_REF.value, length) ? ckRVToJRV(env, rv) : nullptr;
}

// A new typed constant of the value that has the name; all ones for an unknown one. A null name is answered
// with a CK_RV, whatever the declared result: deliberate.
inline jobject valueOfName(
    JNIEnv* env, CK_ULONG (*valueOf)(const char*), jobject (*toJava)(JNIEnv*, CK_ULONG), jbyteArray name)
{
    if (name == nullptr) return ckRVToJRV(env, CKR_ARGUMENTS_BAD);
    CK_BYTE text[512] = {};
    CopyJByteArrayToCKByteArray(env, name, text, sizeof text - 1); // within the array nothing is raised
    return toJava(env, valueOf(reinterpret_cast<const char*>(text)));
}

} // namespace zerlin
