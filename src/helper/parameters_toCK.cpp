// Mechanisms from Java to native: the parameter by its Java class, member by member, and its release after
// the call.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "helper/convToCK.h"
#include "helper/copyToCK.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/memory.h"
#include "helper/newValues.h"
#include "helper/parameters.h"
#include "helper/valueClasses.h"
#include "util/assertion.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// A Java parameter object that is being read into its structure.
struct Reading {
    JNIEnv* env;
    const char* function; // named by assertions
    jobject object;
    CK_BYTE_PTR data;
    CK_BYTE_PTR end;     // of the outermost structure
    CK_ULONG ckTemp = 0; // the length of the array copied last
};

template <typename Native>
void put(CK_BYTE_PTR place, Native value)
{
    std::memcpy(place, &value, sizeof value);
}

// The records of a converted template. They are remembered behind the structure, which holds only the
// caller's count of them.
struct OwnedAttributes {
    CK_ATTRIBUTE_PTR records;
    CK_ULONG count;
};

// Every reader returns false with an exception pending.

bool readNumber(Reading& reading, const Member& member)
{
    const CK_ULONG value = GetLongField(reading.env, reading.object, member.field);
    if (value == CK_UNAVAILABLE_INFORMATION && reading.env->ExceptionCheck()) return false;
    put(reading.data + member.offset, value);
    if (member.assertion != nullptr) {
        assertThat(value == reading.ckTemp, member.assertion, "convToCK", reading.function);
    }
    return true;
}

// As jMechanismTypeToCKMechanismType: the declared type of the field guarantees the object's class.
CK_MECHANISM_TYPE mechanismTypeOf(JNIEnv* env, jobject type)
{
    return GetLongField(env, type, java::MECHANISM_TYPE.m_value);
}

// A member whose object holds the value.
template <typename Native>
bool readHolder(Reading& reading, const Member& member, Native (*convert)(JNIEnv*, jobject))
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobject> holder(env, GetObjectField(env, reading.object, member.field));
    if (holder == nullptr && env->ExceptionCheck()) return false;
    const Native value = convert(env, holder);
    if (hasFailed(env, value)) return false;
    put(reading.data + member.offset, value);
    return true;
}

bool readByte(Reading& reading, const Member& member)
{
    const jbyte value = GetByteField(reading.env, reading.object, member.field);
    put(reading.data + member.offset, byteToCK(value));
    return value != -1 || !reading.env->ExceptionCheck();
}

bool readCappedInt(Reading& reading, const Member& member)
{
    const jint value = GetIntField(reading.env, reading.object, member.field);
    put(reading.data + member.offset, static_cast<CK_CHAR>(std::min(value, 255)));
    return value != -1 || !reading.env->ExceptionCheck();
}

bool readBytes(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.object, member.field));
    if (array == nullptr) {
        reading.ckTemp = 0;
        return !env->ExceptionCheck();
    }
    CK_BYTE_PTR copy = nullptr;
    jByteArrayToCKByteArray(env, array, &copy, &reading.ckTemp);
    put(reading.data + member.offset, copy);
    return copy != nullptr;
}

bool readBytesIfCounted(Reading& reading, const Member& member)
{
    const CK_ULONG length = numberAt(reading.data + member.detail);
    if (length == 0) return true;
    if (!readBytes(reading, member)) return false;
    assertThat(
        length == reading.ckTemp || reading.ckTemp == 0, member.assertion, "convToCK", reading.function);
    return true;
}

bool readArray(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.object, member.field));
    if (array == nullptr) return !env->ExceptionCheck();
    CopyJByteArrayToCKByteArray(env, array, reading.data + member.offset, member.detail);
    return true; // within the array nothing is raised
}

bool readText(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.object, member.field));
    if (array == nullptr) return !env->ExceptionCheck();
    const auto length = static_cast<CK_ULONG>(env->GetArrayLength(array));
    auto* const text = static_cast<CK_BYTE_PTR>(std::calloc(length + 1, 1));
    put(reading.data + member.offset, text);
    if (text == nullptr) {
        throwOutOfMemory(env);
        return false;
    }
    CopyJByteArrayToCKByteArray(env, array, text, length);
    return true;
}

bool readMembers(Reading& reading, const Structure& structure);
void* newStructure(JNIEnv* env, const Structure& structure, jobject object, const char* function);

// A structure within the parameter. A null Java object leaves the native members zero.
bool readNested(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobject> object(env, GetObjectField(env, reading.object, member.field));
    if (object == nullptr) return !env->ExceptionCheck();
    if (FindClass(env, member.structure->cls) == nullptr) return false;
    Reading nested{env, reading.function, object, reading.data + member.offset, reading.end};
    return readMembers(nested, *member.structure);
}

bool readPointed(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobject> object(env, GetObjectField(env, reading.object, member.field));
    if (object == nullptr) return !env->ExceptionCheck();
    void* const pointed = newStructure(env, *member.structure, object, reading.function);
    put(reading.data + member.offset, pointed);
    if (pointed == nullptr) {
        throwOutOfMemory(env); // unless another exception is pending
        return false;
    }
    reading.ckTemp = member.structure->size;
    if (member.assertion != nullptr) {
        assertThat(reading.ckTemp == sizeof(CK_VERSION), member.assertion, "convToCK", reading.function);
    }
    return true;
}

bool readAttributes(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobjectArray> array(env, GetObjectArrayField(env, reading.object, member.field));
    if (array == nullptr) return !env->ExceptionCheck();
    NewTemplate made;
    const bool areConverted = convertTemplate(env, nullptr, array, 0, false, made);
    put(reading.data + member.offset, made.records);
    put(reading.end, OwnedAttributes{made.records, made.count});
    return areConverted;
}

bool readHandleCount(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    auto* const cell = static_cast<CK_ULONG_PTR>(std::calloc(1, sizeof(CK_ULONG)));
    put(reading.data + member.offset, cell);
    if (cell == nullptr) {
        throwOutOfMemory(env);
        return false;
    }
    const LocalRef<jobject> count(env, GetObjectField(env, reading.object, member.field));
    if (count == nullptr) return !env->ExceptionCheck();
    *cell = GetLongField(env, count, java::LONG_REF.value);
    return !hasFailed(env, *cell);
}

bool readHandles(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    if (numberAt(pointerAt(reading.data + member.detail)) == 0) return true;
    const LocalRef<jobjectArray> array(env, GetObjectArrayField(env, reading.object, member.field));
    if (array == nullptr) return !env->ExceptionCheck();
    CK_OBJECT_HANDLE_PTR handles = nullptr;
    CK_ULONG length = 0;
    jObjectHandleArrayToCKObjectHandleArray(env, array, &handles, &length);
    put(reading.data + member.offset, handles);
    return !env->ExceptionCheck(); // a failed element leaves the buffer
}

bool readMember(Reading& reading, const Member& member)
{
    switch (member.kind) {
    case MemberKind::Number:
    case MemberKind::NumberIn:
        return readNumber(reading, member);
    case MemberKind::MechanismType:
        return readHolder(reading, member, mechanismTypeOf);
    case MemberKind::OaepSource:
        return readHolder(reading, member, jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType);
    case MemberKind::ObjectHandle:
        return readHolder(reading, member, jObjectHandleToCKObjectHandle);
    case MemberKind::BBool:
        return readHolder(reading, member, jBBoolToCKBBool);
    case MemberKind::Byte:
        return readByte(reading, member);
    case MemberKind::CappedInt:
        return readCappedInt(reading, member);
    case MemberKind::Array:
        return readArray(reading, member);
    case MemberKind::Bytes:
    case MemberKind::InitVector:
    case MemberKind::KeyIV:
        return readBytes(reading, member);
    case MemberKind::BytesIfCounted:
        return readBytesIfCounted(reading, member);
    case MemberKind::Text:
        return readText(reading, member);
    case MemberKind::Nested:
        return readNested(reading, member);
    case MemberKind::Pointed:
        return readPointed(reading, member);
    case MemberKind::Attributes:
        return readAttributes(reading, member);
    case MemberKind::HandleCount:
        return readHandleCount(reading, member);
    case MemberKind::Handles:
        return readHandles(reading, member);
    }
    return true;
}

bool readMembers(Reading& reading, const Structure& structure)
{
    return std::ranges::all_of(
        structure.members, [&](const Member& member) { return readMember(reading, member); });
}

void freeStructure(const Structure& structure, void* data);

void freeAttributes(const CK_BYTE* end)
{
    OwnedAttributes owned;
    std::memcpy(&owned, end, sizeof owned);
    for (CK_ULONG i = 0; i < owned.count && owned.records != nullptr; ++i) {
        wipeAndFree(owned.records[i].pValue);
    }
    std::free(owned.records);
}

// Frees what the members point to.
void freeMembers(const Structure& structure, const CK_BYTE* data)
{
    for (const Member& member : structure.members) {
        switch (member.kind) {
        case MemberKind::Bytes:
        case MemberKind::BytesIfCounted:
        case MemberKind::InitVector:
        case MemberKind::KeyIV:
        case MemberKind::Text:
        case MemberKind::HandleCount:
        case MemberKind::Handles:
            wipeAndFree(pointerAt(data + member.offset));
            break;
        case MemberKind::Nested:
            freeMembers(*member.structure, data + member.offset);
            break;
        case MemberKind::Pointed:
            freeStructure(*member.structure, pointerAt(data + member.offset));
            break;
        case MemberKind::Attributes:
            freeAttributes(data + structure.size);
            break;
        default:
            break;
        }
    }
}

// Wipes and frees a structure and all that it owns; null is allowed.
void freeStructure(const Structure& structure, void* data)
{
    if (data == nullptr) return;
    freeMembers(structure, static_cast<const CK_BYTE*>(data));
    wipeAndFree(data);
}

// A new native structure for the object, or null with an exception pending; null without one when the
// structure cannot be allocated. A length that contradicts its array aborts the process; the assertion names
// the function.
void* newStructure(JNIEnv* env, const Structure& structure, jobject object, const char* function)
{
    if (FindClass(env, structure.cls) == nullptr) return nullptr;
    // Room behind the structure for what its members own beyond what they hold; padding is zero.
    auto* const data = static_cast<CK_BYTE_PTR>(std::calloc(1, structure.size + sizeof(OwnedAttributes)));
    if (data == nullptr) return nullptr;
    Reading reading{env, function, object, data, data + structure.size};
    if (readMembers(reading, structure)) return data;
    freeStructure(structure, data);
    return nullptr;
}

// False with an exception pending; a parameter may have been made all the same. It comes from malloc.
bool convertParameter(JNIEnv* env, jobject object, const Structure*& structure, NewValue& made)
{
    if (!findParameterClasses(env)) return false;
    if (IsInstanceOf(env, object, java::BYTE_ARRAY)) {
        // Like every bare value, it is taken only where all the classes of values can be found.
        if (!FindClasses(env, READABLE_VALUES)) return false;
        made.data = newBytes(env, nullptr, static_cast<jbyteArray>(object), &made.length);
        made.size = made.length;
        return made.data != nullptr;
    }
    structure = structureOf(env, object);
    if (structure == nullptr) return convertBareValue(env, nullptr, object, made);
    made.data = structure->members.empty() ? jLongObjectToCKULongPtr(env, object)
                                           : newStructure(env, *structure, object, structure->convert);
    if (made.data == nullptr) return !env->ExceptionCheck();
    made.length = structure->size;
    made.size = structure->size;
    return true;
}

// An exception that is set aside while something must be done, and thrown again at the end. One that was
// raised meanwhile is dropped for it.
struct ExceptionAside {
    JNIEnv* const env;
    const jthrowable exception;

    explicit ExceptionAside(JNIEnv* environment)
        : env(environment), exception(environment->ExceptionOccurred())
    {
        if (exception != nullptr) env->ExceptionClear();
    }
    ExceptionAside(const ExceptionAside&) = delete;
    ExceptionAside& operator=(const ExceptionAside&) = delete;
    ~ExceptionAside()
    {
        if (exception == nullptr) return;
        if (env->ExceptionCheck()) env->ExceptionClear();
        env->Throw(exception);
        env->DeleteLocalRef(exception);
    }
};

} // namespace

bool convertMechanism(
    JNIEnv* env, jobject object, CK_MECHANISM& mechanism, const Structure*& structure, NewValue& parameter)
{
    const jfieldID typeField = GetFieldID(env, java::MECHANISM.mechanism);
    const jfieldID typeValue = GetFieldID(env, java::MECHANISM_TYPE.m_value);
    const jfieldID parameterField = GetFieldID(env, java::MECHANISM.pParameter);
    const jfieldID lengthField = GetFieldID(env, java::MECHANISM.parameterLen);
    if (typeField == nullptr || typeValue == nullptr) return false;
    if (parameterField == nullptr || lengthField == nullptr) return false;
    if (object == nullptr) return true;
    // The two references live as long as the call. The declared type of the field guarantees the type's
    // class.
    const jobject type = env->GetObjectField(object, typeField);
    mechanism.mechanism = type == nullptr ? CK_UNAVAILABLE_INFORMATION
                                          : static_cast<CK_ULONG>(env->GetLongField(type, typeValue));
    const jobject jParameter = env->GetObjectField(object, parameterField);
    const bool isConverted = jParameter == nullptr || convertParameter(env, jParameter, structure, parameter);
    mechanism.pParameter = parameter.data;
    mechanism.ulParameterLen = parameter.length;
    if (isConverted) mechanism.ulParameterLen = static_cast<CK_ULONG>(env->GetLongField(object, lengthField));
    return isConverted;
}

void freeMechanismParameter(const Structure* structure, CK_VOID_PTR parameter)
{
    if (structure == nullptr || structure->members.empty()) return wipeAndFree(parameter);
    freeStructure(*structure, parameter);
}

void assertParameterLength(const Structure* structure, CK_ULONG paramLen)
{
    if (structure == nullptr || paramLen == structure->size) return;
    const char* const name = structure->freedName != nullptr ? structure->freedName : structure->name;
    char expression[80];
    std::snprintf(expression, sizeof expression, "paramLen == sizeof(%s)", name);
    assertThat(false, expression, "convToCK", structure->free);
}

CK_MECHANISM jMechanismToCKMechanism(JNIEnv* env, jobject object)
{
    CK_MECHANISM mechanism{};
    const Structure* structure = nullptr;
    NewValue parameter;
    convertMechanism(env, object, mechanism, structure, parameter);
    return mechanism;
}

void jMechanismParameterToCKMechanismParameter(
    JNIEnv* env, jobject object, CK_VOID_PTR* ckpParamPtr, CK_ULONG* ckpLength)
{
    assertThat(ckpParamPtr != nullptr && ckpLength != nullptr,
        "ckpParamPtr != ((void *)0) && ckpLength != ((void *)0)", "convToCK",
        "jMechanismParameterToCKMechanismParameter");
    const Structure* structure = nullptr;
    NewValue made;
    if (object != nullptr) convertParameter(env, object, structure, made);
    *ckpParamPtr = made.data;
    *ckpLength = made.length;
}

void FreeCKMechanismParameter(JNIEnv* env, jobject jMechanism, CK_MECHANISM_PTR mechanism)
{
    const ExceptionAside pending(env);
    // A conversion that fails half-way may have left a length that belongs to nothing.
    if (pending.exception != nullptr && mechanism->pParameter == nullptr) return;
    if (FindClass(env, java::MECHANISM.cls) == nullptr) return;
    const LocalRef<jobject> object(env, GetObjectField(env, jMechanism, java::MECHANISM.pParameter));
    if (object == nullptr || !findParameterClasses(env)) return;
    const Structure* const structure = structureOf(env, object);
    if (pending.exception == nullptr) assertParameterLength(structure, mechanism->ulParameterLen);
    freeMechanismParameter(structure, mechanism->pParameter);
}

} // namespace zerlin
