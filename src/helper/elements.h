// How the elements of Java arrays become native ones and back: in pieces that fit on the stack, so that
// neither a second buffer of the array's size nor a pinned array is needed.
#pragma once

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

#include <jni.h>

#include "helper/memory.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

inline CK_BBOOL booleanToCK(jboolean value)
{
    return value == JNI_TRUE ? CK_TRUE : CK_FALSE;
}

inline CK_CHAR charToCK(jchar value)
{
    return static_cast<CK_CHAR>(value);
}

inline CK_BYTE byteToCK(jbyte value)
{
    return static_cast<CK_BYTE>(value);
}

inline CK_ULONG intToCK(jint value)
{
    return static_cast<CK_ULONG>(value);
}

inline CK_ULONG longToCK(jlong value)
{
    return static_cast<CK_ULONG>(value);
}

// Converts the array's first count elements, which may be a secret. False with an exception pending.
template <typename JArray, typename JElement, typename Native>
bool readElements(JNIEnv* env, JArray array, jsize count, Native* destination,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    JElement piece[256];
    constexpr jsize PIECE = std::size(piece);
    bool isRead = true;
    for (jsize start = 0; isRead && start < count; start += PIECE) {
        const jsize size = std::min(count - start, PIECE);
        (env->*getRegion)(array, start, size, piece);
        isRead = !env->ExceptionCheck();
        if (isRead) std::transform(piece, piece + size, destination + start, convert);
    }
    wipe(piece, sizeof piece);
    return isRead;
}

// Writes the array's first count elements, zero-extended. Stops at a pending exception.
inline void writeElements(JNIEnv* env, jlongArray array, jsize count, const CK_ULONG* source)
{
    jlong piece[256];
    constexpr jsize PIECE = std::size(piece);
    for (jsize start = 0; start < count; start += PIECE) {
        const jsize size = std::min(count - start, PIECE);
        std::copy_n(source + start, size, piece);
        env->SetLongArrayRegion(array, start, size, piece);
        if (env->ExceptionCheck()) return;
    }
}

// The CK_ULONG that begins there, aligned or not.
inline CK_ULONG numberAt(const CK_BYTE* place)
{
    CK_ULONG value = 0;
    std::memcpy(&value, place, sizeof value);
    return value;
}

// The pointer that lies there, aligned or not.
inline CK_BYTE_PTR pointerAt(const CK_BYTE* place)
{
    CK_BYTE_PTR pointer = nullptr;
    std::memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

// How many bytes hold that many bits.
inline CK_ULONG bytesOfBits(CK_ULONG bits)
{
    return bits / 8 + (bits % 8 != 0 ? 1 : 0);
}

// The length of a new array of that many elements. More than an array can have is a negative length, for
// which the JVM throws a NegativeArraySizeException.
inline jsize arrayLength(CK_ULONG count)
{
    return count <= std::numeric_limits<jsize>::max() ? static_cast<jsize>(count) : -1;
}

// The smaller of what is offered and what the array holds.
inline jsize elementsToCopy(JNIEnv* env, jarray array, CK_ULONG count)
{
    return static_cast<jsize>(std::min(static_cast<CK_ULONG>(env->GetArrayLength(array)), count));
}

} // namespace zerlin
