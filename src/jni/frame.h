// What every native shares: the answers, the owners of converted arguments and the output-buffer protocol.
//
// A native checks its arguments, converts them in the order of its parameters, calls the Cryptoki library
// with the lengths and counts that the Java caller gave, writes back, and returns a new CK_RV, or null when a
// Java exception is pending. No conversion and no call follows one that has left an exception pending.
#pragma once

#include <algorithm>
#include <cstdlib>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToJava.h"
#include "helper/jutil.h"
#include "helper/memory.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// The answer of a native that is done: null when an exception is pending.
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

// Whether the conversion of a handle or constant failed. The first conversion of a native asks for the
// exception itself; the later ones need to ask only where the value is one that a failure gives.
inline bool hasFailed(JNIEnv* env, CK_ULONG value)
{
    return (value == 0 || value == CK_UNAVAILABLE_INFORMATION) && env->ExceptionCheck();
}

// Owns the native copy of a Java byte array; null for a null array.
struct ByteInput {
    CK_BYTE_PTR data = nullptr;
    CK_ULONG length = 0;
    bool failed = false; // an exception is pending

    ByteInput(JNIEnv* env, jbyteArray array)
    {
        jByteArrayToCKByteArray(env, array, &data, &length);
        failed = data == nullptr && array != nullptr;
    }
    ByteInput(const ByteInput&) = delete;
    ByteInput& operator=(const ByteInput&) = delete;
    ~ByteInput() { wipeAndFree(data); }
};

// Owns the native copy of a template and its values; null for a null array.
struct Template {
    CK_ATTRIBUTE_PTR attributes = nullptr;
    CK_ULONG count = 0; // of the Java array: the natives pass on the caller's count instead

    Template(JNIEnv* env, jobjectArray array)
    {
        jAttributeArrayToCKAttributeArray(env, array, &attributes, &count);
    }
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;
    ~Template()
    {
        if (attributes == nullptr) return;
        for (CK_ULONG i = 0; i < count; ++i) {
            wipeAndFree(attributes[i].pValue);
        }
        std::free(attributes);
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
    JNIEnv* const env;
    const jobject jMechanism;
    CK_MECHANISM native;

    Mechanism(JNIEnv* environment, jobject object)
        : env(environment), jMechanism(object), native(jMechanismToCKMechanism(environment, object))
    {
    }
    Mechanism(const Mechanism&) = delete;
    Mechanism& operator=(const Mechanism&) = delete;
    ~Mechanism()
    {
        // By the type, not by the parameter: that of a mechanism of type 0 is never freed, wanted.
        if (native.mechanism != 0 && native.pParameter != nullptr) {
            FreeCKMechanismParameter(env, jMechanism, &native);
        }
    }
};

// Owns an output buffer of capacity + 1 zeroed elements, or none where the caller passed no array, which
// makes the call a length query.
template <typename Element>
struct OutputBuffer {
    const CK_ULONG capacity;
    Element* const data;

    OutputBuffer(bool wanted, CK_ULONG elements)
        : capacity(elements), data(wanted ? static_cast<Element*>(allocate(elements)) : nullptr)
    {
    }
    OutputBuffer(const OutputBuffer&) = delete;
    OutputBuffer& operator=(const OutputBuffer&) = delete;
    ~OutputBuffer() { wipeAndFree(data); }

    // Elements that may be read: never more than there are, whatever the Cryptoki library reports.
    CK_ULONG readable(CK_ULONG reported) const { return std::min(reported, capacity + 1); }

private:
    static void* allocate(CK_ULONG elements)
    {
        return elements == ~CK_ULONG{0} ? nullptr : std::calloc(std::size_t{elements} + 1, sizeof(Element));
    }
};

// The output-buffer protocol. The capacity comes from the LongRef; the buffer goes to the call together with
// a pointer to the length; the length is written back whatever the result, and the elements on CKR_OK, cut to
// the Java array. CKR_HOST_MEMORY when the caller's capacity cannot be had.
template <typename Element, typename JArray, typename Call>
jobject callWithOutput(JNIEnv* env, jclass longRefClass, jobject pulLength, JArray jOutput,
    void (*copyToJava)(JNIEnv*, const Element*, CK_ULONG, JArray), Call call)
{
    CK_ULONG length = GetLongField(env, longRefClass, pulLength, "value");
    if (hasFailed(env, length)) return nullptr;
    const OutputBuffer<Element> output(jOutput != nullptr, length);
    if (jOutput != nullptr && output.data == nullptr) return ckRVToJRV(env, CKR_HOST_MEMORY);

    const CK_RV rv = call(output.data, &length);
    if (env->ExceptionCheck()) return nullptr;

    SetLongField(env, longRefClass, pulLength, "value", length);
    if (rv != CKR_OK || jOutput == nullptr) return ckRVToJRV(env, rv);
    copyToJava(env, output.data, output.readable(length), jOutput);
    return result(env, rv);
}

// The natives that take nothing but a session.
inline jobject callWithSession(JNIEnv* env, jobject hSession, CK_RV (*call)(CK_SESSION_HANDLE))
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (env->ExceptionCheck()) return nullptr;
    return result(env, call(session));
}

} // namespace zerlin
