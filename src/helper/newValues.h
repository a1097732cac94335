// New native values made of Java ones. They lie in the memory of a call or, where there is none (null), in
// memory from malloc that belongs to the caller.
#pragma once

#include <cstdlib>
#include <cstring>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/memory.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// A buffer, or null with an exception pending.
inline CK_BYTE_PTR newBuffer(JNIEnv* env, CallMemory* memory, std::size_t size)
{
    void* buffer = nullptr;
    if (memory != nullptr)
        buffer = memory->take(size, Content::Secret);
    else if (size <= MAX_BUFFER_SIZE)
        buffer = std::malloc(size);
    if (buffer == nullptr) throwOutOfMemory(env);
    return static_cast<CK_BYTE_PTR>(buffer);
}

inline CK_BYTE_PTR newZeroedBuffer(JNIEnv* env, CallMemory* memory, std::size_t size)
{
    void* buffer = nullptr;
    if (memory != nullptr)
        buffer = memory->takeZeroed(size, Content::Secret);
    else if (size <= MAX_BUFFER_SIZE)
        buffer = std::calloc(size, 1);
    if (buffer == nullptr) throwOutOfMemory(env);
    return static_cast<CK_BYTE_PTR>(buffer);
}

// Ends the use of a buffer after a failure.
inline void dropBuffer(const CallMemory* memory, void* buffer)
{
    if (memory == nullptr) std::free(buffer);
}

// A buffer that holds the value, or null with an exception pending.
template <typename Native>
Native* newValue(JNIEnv* env, CallMemory* memory, Native value)
{
    CK_BYTE_PTR const buffer = newBuffer(env, memory, sizeof(Native));
    return buffer == nullptr ? nullptr : static_cast<Native*>(std::memcpy(buffer, &value, sizeof value));
}

// What the value method of a boxed object returns; null for a null object, and with an exception pending.
template <typename Native, typename JValue>
Native* newUnboxedValue(JNIEnv* env, CallMemory* memory, jobject object, JavaMethod& method,
    JValue (JNIEnv::*call)(jobject, jmethodID, ...), Native (*convert)(JValue))
{
    if (FindClass(env, method.owner) == nullptr || object == nullptr) return nullptr;
    const jmethodID valueMethod = GetMethodID(env, method);
    if (valueMethod == nullptr) return nullptr;
    const JValue value = (env->*call)(object, valueMethod);
    return env->ExceptionCheck() ? nullptr : newValue(env, memory, convert(value));
}

// Every element of a primitive array, and a spare byte; null with an exception pending. The length counts
// elements.
template <typename JArray, typename JElement, typename Native>
Native* newArray(JNIEnv* env, CallMemory* memory, JArray array, CK_ULONG* length,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    const jsize count = env->GetArrayLength(array);
    *length = static_cast<CK_ULONG>(count);
    auto* const buffer = reinterpret_cast<Native*>(
        newBuffer(env, memory, bufferSize(static_cast<std::size_t>(count), sizeof(Native), 1)));
    if (buffer == nullptr) return nullptr;
    if (readElements(env, array, count, buffer, getRegion, convert)) return buffer;
    dropBuffer(memory, buffer);
    return nullptr;
}

// Likewise for bytes, which need no conversion.
CK_BYTE_PTR newBytes(JNIEnv* env, CallMemory* memory, jbyteArray array, CK_ULONG* length);

// Every element of an array of handles or typed constants, and a spare byte. The length counts bytes. After a
// failure in the middle, with an exception pending, the buffer is there all the same, zero from that element
// on, and the length counts elements.
CK_ULONG* newNumbers(JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ULONG* length,
    CK_ULONG (*convert)(JNIEnv*, jobject));

// The string's modified UTF-8 bytes with a closing NUL, which the length leaves out; null with an exception
// pending.
char* newString(JNIEnv* env, CallMemory* memory, jstring string, CK_ULONG* length);

// A date; null when the object is not a CK_DATE, and with an exception pending.
CK_DATE* newDate(JNIEnv* env, CallMemory* memory, jobject object);

} // namespace zerlin
