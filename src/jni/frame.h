// What every native shares: the answers, the owners of converted arguments and the output-buffer protocol.
//
// A native checks its arguments, converts them in the order of its parameters, calls the Cryptoki library
// with the lengths and counts that the Java caller gave, writes back, and returns a new CK_RV, or null when a
// Java exception is pending. No conversion and no call follows one that has left an exception pending; Java
// never enters a native with one.
#pragma once

#include <algorithm>
#include <cstdlib>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToJava.h"
#include "helper/javaNames.h"
#include "helper/memory.h"
#include "jni/mutexCallbacks.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// Whether the Cryptoki call that was just made has left an exception pending. Only the Java locking callbacks
// can raise one in there: without them the JVM need not be asked.
inline bool hasRaised(JNIEnv* env)
{
    return hasInitArgs() && env->ExceptionCheck();
}

// The answer of a native that writes nothing back.
inline jobject answer(JNIEnv* env, CK_RV rv)
{
    return hasRaised(env) ? nullptr : ckRVToJRV(env, rv);
}

// The answer of a native that has written back: null when that, or the call, has left an exception pending.
inline jobject result(JNIEnv* env, CK_RV rv)
{
    return env->ExceptionCheck() ? nullptr : ckRVToJRV(env, rv);
}

// The answer of a native that refuses its arguments.
inline jobject argumentsBad(JNIEnv* env)
{
    return ckRVToJRV(env, CKR_ARGUMENTS_BAD);
}

// An input array that is null although the caller counts on elements. The count is the signed Java value.
inline bool isMissing(jarray array, jlong ulCount)
{
    return ulCount > 0 && array == nullptr;
}

// A Java length or count as the Cryptoki library takes it: the low 32 bits on a 32-bit platform.
inline CK_ULONG toCK(jlong value)
{
    return static_cast<CK_ULONG>(value);
}

// Owns the native copy of a Java byte array; null for a null array.
struct ByteInput {
    CallMemory& memory;
    const Content content;
    CK_BYTE_PTR data = nullptr;
    CK_ULONG length = 0;
    bool failed = false; // an exception is pending; copying a whole array raises none

    ByteInput(JNIEnv* env, CallMemory& callMemory, jbyteArray array, Content kind = Content::Secret)
        : memory(callMemory), content(kind)
    {
        if (array == nullptr) return;
        const jsize count = env->GetArrayLength(array);
        length = static_cast<CK_ULONG>(count);
        data = memory.take(length, false);
        failed = data == nullptr;
        if (failed) {
            throwOutOfMemory(env);
        } else {
            env->GetByteArrayRegion(array, 0, count, reinterpret_cast<jbyte*>(data));
        }
    }
    ByteInput(const ByteInput&) = delete;
    ByteInput& operator=(const ByteInput&) = delete;
    ~ByteInput() { memory.release(data, length, content); }
};

// Owns the native copy of a template and its values; null for a null array.
struct Template {
    CallMemory memory;
    CK_ATTRIBUTE_PTR attributes = nullptr;
    CK_ULONG count = 0; // of the Java array: the natives pass on the caller's count instead
    const bool failed;  // an exception is pending

    Template(JNIEnv* env, jobjectArray array)
        : failed(!convertTemplate(env, &memory, array, &attributes, &count))
    {
    }
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;
    ~Template()
    {
        for (CK_ULONG i = 0; i < count; ++i) {
            if (!memory.holds(attributes[i].pValue)) wipeAndFree(attributes[i].pValue);
        }
        if (!memory.holds(attributes)) std::free(attributes);
        memory.wipeHeld();
    }
};

// Owns the native copy of one bare attribute value; null for a null value.
struct BareValue {
    CK_VOID_PTR data = nullptr;
    CK_ULONG length = 0; // of the value: the natives pass on the caller's length instead

    BareValue(JNIEnv* env, jobject value) { jObjectToPrimitiveCKObjectPtrPtr(env, value, &data, &length); }
    BareValue(const BareValue&) = delete;
    BareValue& operator=(const BareValue&) = delete;
    ~BareValue() { wipeAndFree(data); }
};

// Owns the native mechanism made of a Java one.
struct Mechanism {
    CK_MECHANISM native{};
    const Structure* structure = nullptr; // of the parameter
    const bool failed;                    // an exception is pending

    Mechanism(JNIEnv* env, jobject object) : failed(!convertMechanism(env, object, native, structure)) {}
    Mechanism(const Mechanism&) = delete;
    Mechanism& operator=(const Mechanism&) = delete;
    ~Mechanism()
    {
        // By the type, not by the parameter: that of a mechanism of type 0 is never freed, wanted.
        if (native.mechanism == 0 || native.pParameter == nullptr) return;
        assertParameterLength(structure, native.ulParameterLen);
        freeMechanismParameter(structure, native);
    }
};

// Owns an output buffer of zeroed elements, as many as the caller has room for and a spare one; or none where
// the caller passed no array, which makes the call a length query.
template <typename Element>
struct OutputBuffer {
    CallMemory& memory;
    const Content content;
    const CK_ULONG elements;
    Element* const data;

    OutputBuffer(CallMemory& callMemory, bool isWanted, CK_ULONG capacity, Content kind, CK_ULONG spare = 1)
        : memory(callMemory), content(kind), elements(capacity + spare),
          data(isWanted && elements >= capacity ? take() : nullptr)
    {
    }
    OutputBuffer(const OutputBuffer&) = delete;
    OutputBuffer& operator=(const OutputBuffer&) = delete;
    ~OutputBuffer()
    {
        memory.release(reinterpret_cast<CK_BYTE_PTR>(data), elements * sizeof(Element), content);
    }

    // Elements that may be read: never more than there are, whatever the Cryptoki library reports.
    CK_ULONG readable(CK_ULONG reported) const { return std::min(reported, elements); }

private:
    Element* take()
    {
        if (elements > ~std::size_t{0} / sizeof(Element)) return nullptr;
        return reinterpret_cast<Element*>(memory.take(elements * sizeof(Element), true));
    }
};

// The output-buffer protocol. The capacity comes from the LongRef; the buffer goes to the call together with
// a pointer to the length; the length is written back whatever the result, and the elements on CKR_OK, cut to
// the Java array. CKR_HOST_MEMORY when the caller's capacity cannot be had.
template <typename Element, typename JArray, typename Call>
jobject callWithOutput(JNIEnv* env, CallMemory& memory, Content content, jobject pulLength, JArray jOutput,
    bool (*copyToJava)(JNIEnv*, const Element*, CK_ULONG, JArray), Call call)
{
    const jfieldID value = GetFieldID(env, java::LONG_REF.value);
    if (value == nullptr) return nullptr;
    const jlong offered = env->GetLongField(pulLength, value);
    CK_ULONG length = toCK(offered);
    const OutputBuffer<Element> output(memory, jOutput != nullptr, length, content);
    if (jOutput != nullptr && output.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    const CK_RV rv = call(output.data, &length);
    if (hasRaised(env)) return nullptr;

    // What the holder has already need not be written again.
    if (static_cast<jlong>(length) != offered) {
        env->SetLongField(pulLength, value, static_cast<jlong>(length));
    }
    if (rv != CKR_OK || jOutput == nullptr) return ckRVToJRV(env, rv);
    return copyToJava(env, output.data, output.readable(length), jOutput) ? ckRVToJRV(env, rv) : nullptr;
}

// The natives that take nothing but a session.
inline jobject callWithSession(JNIEnv* env, jobject hSession, CK_RV (*call)(CK_SESSION_HANDLE))
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    return answer(env, call(session));
}

} // namespace zerlin
