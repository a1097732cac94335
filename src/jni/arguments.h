// The kinds of arguments of the natives, each with the stages that it needs (call.h), in groups: values that
// are handed on as they are, handles and constants, bytes, templates and values, mechanisms, results. An
// oddity that a native must keep is a kind of its own.
#pragma once

#include <algorithm>
#include <tuple>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/memory.h"
#include "jni/mutexCallbacks.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

// ---- Values that are handed on as they are
struct Number {
    jlong value;

    std::tuple<CK_ULONG> handOn() const { return {longToCK(value)}; }
};
using Slot = Number;
using Flags = Number;

struct Boolean {
    jboolean value;

    std::tuple<CK_BBOOL> handOn() const { return {booleanToCK(value)}; }
};

// A Java reference is the pointer, whatever it points to: deliberate.
struct Pointer {
    jobject value;

    std::tuple<CK_VOID_PTR> handOn() const { return {value}; }
};

struct NotifyPointer {
    jobject value;

    std::tuple<CK_NOTIFY> handOn() const { return {reinterpret_cast<CK_NOTIFY>(value)}; }
};

// ---- Handles and constants
// An object that holds a CK_ULONG. A null one is all ones, one of another class what the conversion returns
// for it.
template <CK_ULONG (*toCK)(JNIEnv*, jobject)>
struct Held {
    jobject object;
    CK_ULONG value = 0;

    bool convert(JNIEnv* env)
    {
        value = toCK(env, object);
        return !hasFailed(env, value);
    }
    std::tuple<CK_ULONG> handOn() const { return {value}; }
};
using Session = Held<jSessionHandleToCKSessionHandle>;
using Object = Held<jObjectHandleToCKObjectHandle>;
using Key = Object;
using UserType = Held<jUserTypeToCKUserType>;
using MechanismType = Held<jMechanismTypeToCKMechanismType>;
using ObjectClass = Held<jObjectClassToCKObjectClass>;
using AttributeType = Held<jAttributeTypeToCKAttributeType>;

// The wrapping key of C_WrapKey: a null one is CK_INVALID_HANDLE, unlike elsewhere. Deliberate.
struct WrappingKey {
    jobject object;
    CK_OBJECT_HANDLE value = CK_INVALID_HANDLE;

    bool convert(JNIEnv* env)
    {
        if (object != nullptr) value = jObjectHandleToCKObjectHandle(env, object);
        return !hasFailed(env, value);
    }
    std::tuple<CK_OBJECT_HANDLE> handOn() const { return {value}; }
};

// The object of C_SetAttributeValue: it is converted after everything else, and the call is made even when
// that has raised an exception. Deliberate.
struct UncheckedLastObject {
    static constexpr bool IS_UNCHECKED = true;
    jobject object;
    CK_OBJECT_HANDLE value = CK_INVALID_HANDLE;

    void convertLast(JNIEnv* env) { value = jObjectHandleToCKObjectHandle(env, object); }
    std::tuple<CK_OBJECT_HANDLE> handOn() const { return {value}; }
};

// ---- Bytes
// An input array that is null although the caller counts on elements. The count is the signed Java value.
inline bool isMissingArray(jarray array, jlong ulCount)
{
    return ulCount > 0 && array == nullptr;
}

constexpr std::size_t LABEL_SIZE = sizeof(CK_TOKEN_INFO::label);

// Which arrays a native refuses.
enum class Refused { None, NullWithLength, Null, NullOrNoLength };

// A byte[], handed on with the caller's length or without one; a null array is a null pointer.
template <Content CONTENT, Refused REFUSED = Refused::None, bool HAS_LENGTH = true>
struct Bytes {
    jbyteArray array;
    jlong ulLen = 0;
    CK_BYTE_PTR data = nullptr;

    bool isMissing() const
    {
        if (REFUSED == Refused::NullWithLength) return isMissingArray(array, ulLen);
        if (REFUSED == Refused::NullOrNoLength && ulLen == 0) return true;
        return REFUSED != Refused::None && array == nullptr;
    }
    bool convert(JNIEnv* env, CallMemory& memory)
    {
        if (array == nullptr) return true;
        const jsize length = env->GetArrayLength(array);
        const auto size = static_cast<std::size_t>(length);
        // What has no length is a label, of which the library reads 32 bytes.
        data = HAS_LENGTH ? memory.takeDeclared(size, longToCK(ulLen), CONTENT)
                          : memory.takeZeroed(std::max(size, LABEL_SIZE), CONTENT);
        if (data == nullptr) {
            throwOutOfMemory(env);
            return false;
        }
        env->GetByteArrayRegion(
            array, 0, length, reinterpret_cast<jbyte*>(data)); // raises only beyond the array
        return true;
    }
    auto handOn() const
    {
        if constexpr (HAS_LENGTH)
            return std::tuple{data, longToCK(ulLen)};
        else
            return std::tuple{data};
    }
};
using ClearText = Bytes<Content::Secret>;
using CipherText = Bytes<Content::Public>;
using Signature = Bytes<Content::Public>;
using Pin = Bytes<Content::Secret, Refused::NullWithLength>;
using Seed = Bytes<Content::Secret, Refused::NullWithLength>;
using Label = Bytes<Content::Secret, Refused::None, false>;
// Three that are refused otherwise than the rest: deliberate. The vendor functions do not check a PIN.
using UncheckedPin = Bytes<Content::Secret>;
using WrappedKey = Bytes<Content::Public, Refused::Null>;
using OperationState = Bytes<Content::Secret, Refused::NullOrNoLength>;

// A label as text with a closing NUL; a null one is empty.
struct LabelText {
    jbyteArray array;
    CK_BYTE_PTR text = nullptr;

    bool allocate(JNIEnv* env, CallMemory& memory)
    {
        const auto length = array == nullptr ? 0 : static_cast<CK_ULONG>(env->GetArrayLength(array));
        text = memory.takeZeroed(bufferSize(length, 1, 1), Content::Secret);
        CopyJByteArrayToCKByteArray(env, array, text, length);
        return text != nullptr;
    }
    std::tuple<const char*> handOn() const { return {reinterpret_cast<const char*>(text)}; }
};

// ---- Templates and values
// A template with the caller's count; a null array is a null pointer. One that is served has its values
// filled, and is written back whatever the result, so that a sensitive or missing attribute does not hide
// what was served.
template <bool IS_SERVED>
struct Template {
    jobjectArray array;
    jlong ulCount;
    NewTemplate made{};
    bool hasWildcards = false;

    bool isMissing() const { return isMissingArray(array, ulCount); }
    bool convert(JNIEnv* env, CallMemory& memory)
    {
        if (!convertTemplate(env, &memory, array, longToCK(ulCount), IS_SERVED, made)) return false;
        hasWildcards =
            IS_SERVED && std::any_of(made.records, made.records + made.count,
                             [](const CK_ATTRIBUTE& attribute) { return attribute.type == CKA_WILDCARD; });
        return true;
    }
    std::tuple<CK_ATTRIBUTE_PTR, CK_ULONG> handOn() const { return {made.records, longToCK(ulCount)}; }
    bool writeBack(JNIEnv* env, CK_RV) const
    {
        return !IS_SERVED || writeTemplateBack(env, made, longToCK(ulCount), array, hasWildcards);
    }
};
using Attributes = Template<false>;
using ServedAttributes = Template<true>;

// One bare value with the caller's length; a null value is a null pointer.
struct Value {
    jobject value;
    jlong ulValueLen;
    NewValue made{};

    bool convert(JNIEnv* env, CallMemory& memory)
    {
        return convertBareValue(env, &memory, value, made) && fence(env, memory, longToCK(ulValueLen), made);
    }
    std::tuple<CK_VOID_PTR, CK_ULONG> handOn() const { return {made.data, longToCK(ulValueLen)}; }
};

// One bare value that is filled, and its length in a LongRef, both on CKR_OK alone.
struct ServedValue {
    jobject value;
    jlong ulValueLen;
    jobject pulValueLen;
    NewValue made{};
    CK_ULONG length = 0;

    static bool findClass(JNIEnv* env) { return FindClass(env, java::LONG_REF.cls) != nullptr; }
    bool isMissing() const { return pulValueLen == nullptr; }
    bool convert(JNIEnv* env, CallMemory& memory)
    {
        return convertBareValue(env, &memory, value, made) && fence(env, memory, longToCK(ulValueLen), made);
    }
    std::tuple<CK_VOID_PTR, CK_ULONG, CK_ULONG_PTR> handOn()
    {
        return {made.data, longToCK(ulValueLen), &length};
    }
    bool writeBack(JNIEnv* env, CK_RV rv) const
    {
        if (rv != CKR_OK) return true;
        return SetLongField(env, pulValueLen, java::LONG_REF.value, length) &&
               writeValueBack(env, made, length, value);
    }
};

// ---- Mechanisms
// A mechanism with its parameter, through which it may return results.
template <bool RETURNS>
struct MechanismWithParameter {
    jobject object;
    CK_MECHANISM native{};
    const Structure* structure = nullptr; // of the parameter
    NewValue parameter{};

    bool isMissing() const { return object == nullptr; }
    bool convert(JNIEnv* env, CallMemory& memory)
    {
        return convertMechanism(env, &memory, object, native, structure, parameter);
    }
    std::tuple<CK_MECHANISM_PTR> handOn() { return {&native}; }
    bool writeBackLast(JNIEnv* env, CK_RV rv) const
    {
        if (!RETURNS || rv != CKR_OK || structure == nullptr) return true;
        CK_MECHANISM made = native;
        made.pParameter = parameter.data;
        return writeMechanismBack(env, made, *structure, object);
    }
    void release(bool isRaised) const
    {
        // By the type, not by the parameter: the length for a mechanism of type 0 is not checked. Deliberate.
        if (isRaised || native.mechanism == 0 || parameter.data == nullptr) return;
        assertParameterLength(structure, native.ulParameterLen);
    }
};
using Mechanism = MechanismWithParameter<false>;
using ReturningMechanism = MechanismWithParameter<true>;

// ---- Results
// A number into a field of the caller's object, on CKR_OK.
template <auto& NAMES, auto FIELD, bool IS_REQUIRED = true>
struct NewNumber {
    jobject object;
    CK_ULONG value = 0;

    static bool findClass(JNIEnv* env) { return FindClass(env, NAMES.cls) != nullptr; }
    bool isMissing() const { return IS_REQUIRED && object == nullptr; }
    std::tuple<CK_ULONG_PTR> handOn() { return {&value}; }
    bool writeBack(JNIEnv* env, CK_RV rv) const
    {
        return rv != CKR_OK || SetLongField(env, object, NAMES.*FIELD, value);
    }
};
using NewObject = NewNumber<java::OBJECT_HANDLE, &java::Handle::m_value>;
using NewSession = NewNumber<java::SESSION_HANDLE, &java::Handle::m_value>;
using NewLong = NewNumber<java::LONG_REF, &java::LongRef::value>;
// The key of C_DeriveKey: a null one is not refused, and its handle is dropped. Deliberate.
using OptionalNewKey = NewNumber<java::OBJECT_HANDLE, &java::Handle::m_value, false>;

// An information record into the caller's object, on CKR_OK.
template <typename Record, bool (*copyToJava)(JNIEnv*, const Record*, jobject)>
struct Information {
    jobject pInfo;
    Record record{};

    bool isMissing() const { return pInfo == nullptr; }
    std::tuple<Record*> handOn() { return {&record}; }
    bool writeBack(JNIEnv* env, CK_RV rv) const { return rv != CKR_OK || copyToJava(env, &record, pInfo); }
};
using SlotInfo = Information<CK_SLOT_INFO, CopyCKSlotInfoToJSlotInfo>;
using TokenInfo = Information<CK_TOKEN_INFO, CopyCKTokenInfoToJTokenInfo>;
using SessionInfo = Information<CK_SESSION_INFO, CopyCKSessionInfoToJSessionInfo>;
using MechanismInfo = Information<CK_MECHANISM_INFO, CopyCKMechanismInfoToJMechanismInfo>;

// The record of C_GetInfo, with the version of this binding in place of the library's own. Deliberate.
struct LibraryInfo {
    static constexpr CK_VERSION BINDING_VERSION = {3, 10};
    static_assert(
        BINDING_VERSION.major == ZERLIN_VERSION_MAJOR && BINDING_VERSION.minor == ZERLIN_VERSION_MINOR,
        "programs read 3.10 from C_GetInfo: releases count in the third number");
    jobject pInfo;
    CK_INFO record{};

    bool isMissing() const { return pInfo == nullptr; }
    std::tuple<CK_INFO_PTR> handOn() { return {&record}; }
    bool writeBack(JNIEnv* env, CK_RV rv)
    {
        record.libraryVersion = BINDING_VERSION;
        return rv != CKR_OK || CopyCKInfoToJInfo(env, &record, pInfo);
    }
};

// Room for a result: as many elements as the caller has room for and some spare ones, zeroed.
template <typename Element, CK_ULONG SPARE = 1, bool IS_ZEROED = true>
struct Room {
    Element* data = nullptr;
    CK_ULONG elements = 0;

    bool allocate(CallMemory& memory, CK_ULONG capacity, Content content)
    {
        const std::size_t size = bufferSize(capacity, sizeof(Element), SPARE * sizeof(Element));
        elements = capacity + SPARE;
        data = reinterpret_cast<Element*>(
            IS_ZEROED ? memory.takeZeroed(size, content) : memory.take(size, content));
        return data != nullptr;
    }
    // Elements that may be read: not more than there are, whatever the Cryptoki library reports.
    CK_ULONG readable(CK_ULONG reported) const { return std::min(reported, elements); }
};

// An array that receives a result, and the LongRef of its length: in, the capacity that the library is told,
// whatever the array's own length; out, the length that it reports, written back whatever the result. The
// elements are written back on CKR_OK, cut to the array. A null array asks for the length.
template <typename Element, typename JArray, Content CONTENT,
    bool (*copyToJava)(JNIEnv*, const Element*, CK_ULONG, JArray), typename Elements = Room<Element>>
struct Output {
    JArray array;
    jobject longRef;
    jlong capacity = 0;
    CK_ULONG length = 0;
    Elements room{};

    static bool findClass(JNIEnv* env) { return FindClass(env, java::LONG_REF.cls) != nullptr; }
    bool isMissing() const { return longRef == nullptr; }
    bool convert(JNIEnv* env)
    {
        const jfieldID value = GetFieldID(env, java::LONG_REF.value);
        if (value == nullptr) return false;
        capacity = env->GetLongField(longRef, value);
        length = longToCK(capacity);
        return true;
    }
    bool allocate(JNIEnv*, CallMemory& memory)
    {
        return array == nullptr || room.allocate(memory, length, CONTENT);
    }
    std::tuple<Element*, CK_ULONG_PTR> handOn() { return {room.data, &length}; }
    bool writeBack(JNIEnv* env, CK_RV rv) const
    {
        // What the LongRef holds already is not written again.
        const bool isHeld = static_cast<jlong>(length) == capacity;
        if (!isHeld && !SetLongField(env, longRef, java::LONG_REF.value, length)) return false;
        if (rv != CKR_OK || array == nullptr) return true;
        return copyToJava(env, room.data, room.readable(length), array);
    }
};
template <Content CONTENT>
using ByteOutput = Output<CK_BYTE, jbyteArray, CONTENT, CopyCKByteArrayToJByteArray>;
using ClearOutput = ByteOutput<Content::Secret>;
using CipherOutput = ByteOutput<Content::Public>;
using Digest = ByteOutput<Content::Public>;
using SignatureOutput = ByteOutput<Content::Public>;
using SlotList = Output<CK_ULONG, jlongArray, Content::Public, CopyCKULongArrayToJLongArray>;
using MechanismList = Output<CK_ULONG, jobjectArray, Content::Public, CopyCKULongArrayToJMechanismTypeArray>;
// The state of C_GetOperationState: exactly as many bytes as the caller offers, and not zeroed, unlike every
// other output. Deliberate.
using StateOutput =
    Output<CK_BYTE, jbyteArray, Content::Secret, CopyCKByteArrayToJByteArray, Room<CK_BYTE, 0, false>>;

// The bytes of C_GenerateRandom: exactly as many as are asked for, without the spare one of the other
// outputs. Deliberate.
struct RandomBytes {
    jbyteArray array;
    jlong ulRandomLen;
    Room<CK_BYTE, 0> room{};

    bool isMissing() const { return isMissingArray(array, ulRandomLen); }
    bool allocate(JNIEnv*, CallMemory& memory)
    {
        return array == nullptr || room.allocate(memory, longToCK(ulRandomLen), Content::Secret);
    }
    std::tuple<CK_BYTE_PTR, CK_ULONG> handOn() const { return {room.data, longToCK(ulRandomLen)}; }
    bool writeBack(JNIEnv* env, CK_RV rv) const
    {
        return rv != CKR_OK || CopyCKByteArrayToJByteArray(env, room.data, longToCK(ulRandomLen), array);
    }
};

// The handles of C_FindObjects. The capacity is an argument of its own; the LongRef is output only.
struct FoundObjects {
    jobjectArray array;
    jlong ulMaxObjectCount;
    jobject pulObjectCount;
    CK_ULONG count = 0;
    Room<CK_OBJECT_HANDLE> room{};

    static bool findClass(JNIEnv* env) { return FindClass(env, java::LONG_REF.cls) != nullptr; }
    bool isMissing() const { return isMissingArray(array, ulMaxObjectCount) || pulObjectCount == nullptr; }
    bool allocate(JNIEnv*, CallMemory& memory)
    {
        return array == nullptr || room.allocate(memory, longToCK(ulMaxObjectCount), Content::Public);
    }
    std::tuple<CK_OBJECT_HANDLE_PTR, CK_ULONG, CK_ULONG_PTR> handOn()
    {
        return {room.data, longToCK(ulMaxObjectCount), &count};
    }
    bool writeBack(JNIEnv* env, CK_RV rv) const
    {
        if (!SetLongField(env, pulObjectCount, java::LONG_REF.value, count)) return false;
        return rv != CKR_OK ||
               CopyCKULongArrayToJObjectHandleArray(env, room.data, room.readable(count), array);
    }
};

// ---- C_Initialize and C_Finalize
// The arguments of C_Initialize, whose callbacks are registered. While some are registered, further calls
// pass no arguments: deliberate.
struct InitArgs {
    static constexpr bool IS_UNCHECKED = true; // a callback may take the callbacks away
    jobject pInitArgs;
    bool isOfOtherClass = false;
    CK_C_INITIALIZE_ARGS* adapter = nullptr;

    bool findClass(JNIEnv* env)
    {
        if (hasInitArgs()) pInitArgs = nullptr;
        if (pInitArgs == nullptr) return true;
        const jclass cls = FindClass(env, java::INITIALIZE_ARGS.cls);
        isOfOtherClass = cls != nullptr && !env->IsInstanceOf(pInitArgs, cls);
        return cls != nullptr;
    }
    bool isMissing() const { return isOfOtherClass; }
    bool convert(JNIEnv* env)
    {
        if (pInitArgs != nullptr) adapter = makeInitArgsAdapter(env, pInitArgs);
        return pInitArgs == nullptr || adapter != nullptr;
    }
    std::tuple<CK_VOID_PTR> handOn() const { return {adapter}; }
    void release(bool) const { std::free(adapter); }
};

// The registration of the callbacks, which a successful C_Finalize ends, whatever exception they have left.
struct Registration {
    static constexpr bool IS_UNCHECKED = true;

    static std::tuple<> handOn() { return {}; }
    static void afterCall(JNIEnv* env, CK_RV rv)
    {
        if (rv == CKR_OK) releaseInitArgs(env);
    }
};

} // namespace zerlin
