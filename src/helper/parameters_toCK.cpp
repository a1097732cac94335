// Mechanisms from Java to native: the parameter by its Java class, member by member; fences where a length is
// above what is there; and the release of what comes from malloc.
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
    CallMemory* memory;   // null: malloc
    const char* function; // named by assertions
    jobject object;
    CK_BYTE_PTR data;
    std::size_t outerSize; // of the outermost structure
    CK_ULONG ckTemp = 0;   // the length of the array copied last
};

template <typename Native>
void put(CK_BYTE_PTR place, Native value)
{
    std::memcpy(place, &value, sizeof value);
}

// Puts a pointer into a structure and its shadows.
void putMade(CK_BYTE_PTR place, std::size_t outerSize, const Made& made)
{
    put(place, made.data);
    put(place + outerSize, made.data);
    put(place + 2 * outerSize, made.size);
}

void putMade(Reading& reading, const Member& member, void* data, std::size_t size)
{
    putMade(reading.data + member.offset, reading.outerSize, {static_cast<CK_BYTE_PTR>(data), size});
}

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
    CK_BYTE_PTR const copy = newBytes(env, reading.memory, array, &reading.ckTemp);
    putMade(reading, member, copy, reading.ckTemp);
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
    CK_BYTE_PTR const text = newZeroedBuffer(env, reading.memory, bufferSize(length, 1, 1));
    putMade(reading, member, text, length);
    if (text == nullptr) return false;
    CopyJByteArrayToCKByteArray(env, array, text, length);
    return true;
}

bool readMembers(Reading& reading, const Structure& structure);
void* newStructure(
    JNIEnv* env, CallMemory* memory, const Structure& structure, jobject object, const char* function);

// A structure within the parameter. A null Java object leaves the native members zero.
bool readNested(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobject> object(env, GetObjectField(env, reading.object, member.field));
    if (object == nullptr) return !env->ExceptionCheck();
    if (FindClass(env, member.structure->cls) == nullptr) return false;
    Reading nested = reading;
    nested.object = object;
    nested.data += member.offset;
    return readMembers(nested, *member.structure);
}

bool readPointed(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobject> object(env, GetObjectField(env, reading.object, member.field));
    if (object == nullptr) return !env->ExceptionCheck();
    void* const pointed = newStructure(env, reading.memory, *member.structure, object, reading.function);
    putMade(reading, member, pointed, member.structure->size);
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
    const bool areConverted = convertTemplate(env, reading.memory, array, 0, false, made);
    putMade(reading, member, made.records, bufferSize(made.count, sizeof(CK_ATTRIBUTE)));
    return areConverted;
}

bool readHandleCount(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    auto* const cell = newValue(env, reading.memory, CK_ULONG{0});
    putMade(reading, member, cell, sizeof *cell);
    if (cell == nullptr) return false;
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
    CK_ULONG length = 0;
    CK_ULONG* const handles = newNumbers(env, reading.memory, array, &length, jObjectHandleToCKObjectHandle);
    putMade(reading, member, handles, length);
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

// ---- Release of what comes from malloc
void freeStructure(const Structure& structure, void* data);

void freeAttributes(const Made& made)
{
    if (made.data == nullptr) return;
    const auto* const records = reinterpret_cast<const CK_ATTRIBUTE*>(made.data);
    for (std::size_t i = 0; i < made.size / sizeof(CK_ATTRIBUTE); ++i)
        wipeAndFree(records[i].pValue);
    wipeAndFree(made.data);
}

// Frees what the members point to.
void freeMembers(const Structure& structure, const CK_BYTE* data, std::size_t outerSize)
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
            freeMembers(*member.structure, data + member.offset, outerSize);
            break;
        case MemberKind::Pointed:
            freeStructure(*member.structure, pointerAt(data + member.offset));
            break;
        case MemberKind::Attributes:
            freeAttributes(madeAt(data + member.offset, outerSize));
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
    freeMembers(structure, static_cast<const CK_BYTE*>(data), structure.size);
    wipeAndFree(data);
}

void freeMechanismParameter(const Structure* structure, CK_VOID_PTR parameter)
{
    if (structure == nullptr || structure->members.empty()) return wipeAndFree(parameter);
    freeStructure(*structure, parameter);
}

// A new native structure with its shadows for the object, or null with an exception pending; null without one
// when the structure cannot be allocated. A length that contradicts its array aborts the process; the
// assertion names the function.
void* newStructure(
    JNIEnv* env, CallMemory* memory, const Structure& structure, jobject object, const char* function)
{
    if (FindClass(env, structure.cls) == nullptr) return nullptr;
    const std::size_t size = 3 * structure.size;
    void* const data = memory == nullptr ? std::calloc(1, size) : memory->takeZeroed(size, Content::Secret);
    if (data == nullptr) return nullptr;
    Reading reading{env, memory, function, object, static_cast<CK_BYTE_PTR>(data), structure.size};
    if (readMembers(reading, structure)) return data;
    if (memory == nullptr) freeStructure(structure, data);
    return nullptr;
}

// False with an exception pending; a parameter may have been made all the same.
bool convertParameter(
    JNIEnv* env, CallMemory* memory, jobject object, const Structure*& structure, NewValue& made)
{
    if (!findParameterClasses(env)) return false;
    if (IsInstanceOf(env, object, java::BYTE_ARRAY)) {
        // Like every bare value, it is taken only where all the classes of values can be found.
        if (!FindClasses(env, READABLE_VALUES)) return false;
        made.data = newBytes(env, memory, static_cast<jbyteArray>(object), &made.length);
        made.size = made.length;
        return made.data != nullptr;
    }
    structure = structureOf(env, object);
    if (structure == nullptr) {
        if (!FindClasses(env, READABLE_VALUES)) return false;
        const std::size_t row = valueClassOf(env, VALUE_ROWS, object);
        if (row != VALUE_ROWS) return convertValueOfRow(env, memory, row, object, made);
        structure = modernStructureOf(env, object);
        if (structure == nullptr) return false;
    }
    made.data =
        structure->members.empty()
            ? newUnboxedValue(env, memory, object, java::LONG.longValue, &JNIEnv::CallLongMethod, longToCK)
            : newStructure(env, memory, *structure, object, structure->convert);
    if (made.data == nullptr) return !env->ExceptionCheck();
    made.length = structure->size;
    made.size = structure->size;
    return true;
}

// ---- Fences
// How many bytes the Cryptoki library takes a member's buffer to have. The data is that of the member's
// structure, the root that of the whole parameter.
std::size_t declaredSize(const Member& member, const CK_BYTE* data, const CK_BYTE* root)
{
    switch (member.kind) {
    case MemberKind::Bytes:
    case MemberKind::BytesIfCounted:
        return numberAt(data + member.detail);
    case MemberKind::InitVector:
        return PBE_IV_LENGTH;
    case MemberKind::KeyIV:
        return bytesOfBits(numberAt(root + member.detail));
    case MemberKind::Attributes:
        return bufferSize(numberAt(data + member.detail), sizeof(CK_ATTRIBUTE));
    case MemberKind::Handles:
        return bufferSize(numberAt(pointerAt(data + member.detail)), sizeof(CK_OBJECT_HANDLE));
    default:
        return 0;
    }
}

// Fences the buffers of which a structure declares more than there is.
bool fenceMembers(JNIEnv* env, CallMemory& memory, const Structure& structure, CK_BYTE_PTR data,
    std::size_t outerSize, const CK_BYTE* root)
{
    return std::ranges::all_of(structure.members, [&](const Member& member) {
        CK_BYTE_PTR const place = data + member.offset;
        if (member.kind == MemberKind::Nested)
            return fenceMembers(env, memory, *member.structure, place, outerSize, root);
        if (member.kind == MemberKind::Pointed) {
            CK_BYTE_PTR const pointed = pointerAt(place);
            return pointed == nullptr ||
                   fenceMembers(env, memory, *member.structure, pointed, member.structure->size, root);
        }
        const std::size_t declared = declaredSize(member, data, root);
        if (declared == 0 || pointerAt(place) == nullptr) return true;
        NewValue made{pointerAt(place), 0, madeAt(place, outerSize).size};
        if (!fence(env, memory, static_cast<CK_ULONG>(declared), made)) return false;
        putMade(place, outerSize, {static_cast<CK_BYTE_PTR>(made.data), made.size});
        return true;
    });
}

// The same for the whole parameter, and the parameter itself.
bool fenceParameter(JNIEnv* env, CallMemory& memory, const Structure* structure, const NewValue& parameter,
    CK_MECHANISM& mechanism)
{
    if (parameter.data == nullptr) return true;
    auto* const data = static_cast<CK_BYTE_PTR>(parameter.data);
    if (structure != nullptr && !fenceMembers(env, memory, *structure, data, structure->size, data))
        return false;
    NewValue fenced = parameter;
    if (!fence(env, memory, mechanism.ulParameterLen, fenced)) return false;
    mechanism.pParameter = fenced.data;
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

bool convertMechanism(JNIEnv* env, CallMemory* memory, jobject object, CK_MECHANISM& mechanism,
    const Structure*& structure, NewValue& parameter)
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
    // By the type: the parameter of type 0 is never freed, so it does not come from the call's memory.
    // Deliberate.
    CallMemory* const home = mechanism.mechanism == 0 ? nullptr : memory;
    const bool isConverted =
        jParameter == nullptr || convertParameter(env, home, jParameter, structure, parameter);
    mechanism.pParameter = parameter.data;
    mechanism.ulParameterLen = parameter.length;
    if (!isConverted) return false;
    mechanism.ulParameterLen = static_cast<CK_ULONG>(env->GetLongField(object, lengthField));
    return memory == nullptr || fenceParameter(env, *memory, structure, parameter, mechanism);
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
    convertMechanism(env, nullptr, object, mechanism, structure, parameter);
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
    if (object != nullptr) convertParameter(env, nullptr, object, structure, made);
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
    const Structure* structure = structureOf(env, object);
    if (structure == nullptr) structure = knownModernStructureOf(env, object);
    if (pending.exception == nullptr) assertParameterLength(structure, mechanism->ulParameterLen);
    freeMechanismParameter(structure, mechanism->pParameter);
}

} // namespace zerlin
