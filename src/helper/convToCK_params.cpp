// Walks the members of the mechanism parameter structures: from the Java object into native memory, and to
// free what was made on the way.
#include "helper/convToCK_params.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "helper/convToCK.h"
#include "helper/copyToCK.h"
#include "helper/elements.h"
#include "helper/memory.h"
#include "util/assertion.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToCK_params $\" \"$Revision: 1.1.1.2 $\"";

constexpr Literal MECHANISM_TYPE = "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;";
constexpr Literal OAEP_SOURCE_TYPE = "Lhalvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE;";
constexpr Literal OBJECT_HANDLE = "Lhalvorn/zerlin/CK_OBJECT_HANDLE;";
constexpr Literal OBJECT_HANDLES = "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;";
constexpr Literal ATTRIBUTES = "[Lhalvorn/zerlin/CK_ATTRIBUTE;";
constexpr Literal BBOOL = "Lhalvorn/zerlin/CK_BBOOL;";
constexpr Literal LONG_REF = "Lhalvorn/zerlin/LongRef;";

// A Java parameter object that is being read into its structure.
struct Reading {
    JNIEnv* env;
    const char* function;
    jclass cls;
    jobject object;
    CK_BYTE_PTR data;
    CK_ULONG ckTemp = 0; // the length of the array copied last
};

template <typename Native>
void put(CK_BYTE_PTR place, Native value)
{
    std::memcpy(place, &value, sizeof value);
}

CK_BYTE_PTR pointerAt(const CK_BYTE* place)
{
    CK_BYTE_PTR pointer;
    std::memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

// The records of a converted template, kept before it since the structure holds but the caller's count.
struct OwnedAttributes {
    CK_ATTRIBUTE_PTR records;
    CK_ULONG count;
};

// False with an exception pending.
bool readNumber(Reading& reading, const Member& member)
{
    const CK_ULONG value = GetLongField(reading.env, reading.cls, reading.object, member.field);
    if (value == CK_UNAVAILABLE_INFORMATION && reading.env->ExceptionCheck()) return false;
    put(reading.data + member.offset, value);
    if (member.assertion != nullptr) {
        assertThat(value == reading.ckTemp, member.assertion, "convToCK", reading.function);
    }
    return true;
}

// As jMechanismTypeToCKMechanismType: the field's own class vouches for the object's.
CK_MECHANISM_TYPE mechanismTypeOf(JNIEnv* env, jobject type)
{
    return GetLongField(env, FindClass(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE"), type, "m_value");
}

// A member whose object holds the value. False with an exception pending.
template <typename Native>
bool readHolder(
    Reading& reading, const Member& member, Literal signature, Native (*convert)(JNIEnv*, jobject))
{
    JNIEnv* const env = reading.env;
    const jfieldID field = GetFieldID(env, reading.cls, member.field, signature);
    if (field == nullptr) return false;
    const LocalRef<jobject> holder(env, env->GetObjectField(reading.object, field));
    const Native value = convert(env, holder);
    const bool mayHaveFailed = value == 0 || value == static_cast<Native>(CK_UNAVAILABLE_INFORMATION);
    if (mayHaveFailed && env->ExceptionCheck()) return false;
    put(reading.data + member.offset, value);
    return true;
}

void readCappedInt(Reading& reading, const Member& member)
{
    const jint value = GetIntField(reading.env, reading.cls, reading.object, member.field);
    put(reading.data + member.offset, static_cast<CK_CHAR>(std::min(value, 255)));
}

void readBytes(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.cls, reading.object, member.field));
    if (env->ExceptionCheck()) return;
    CK_BYTE_PTR copy = nullptr;
    jByteArrayToCKByteArray(env, array, &copy, &reading.ckTemp);
    put(reading.data + member.offset, copy);
}

void readBytesIfCounted(Reading& reading, const Member& member)
{
    const CK_ULONG length = numberAt(reading.data + member.detail);
    if (length == 0) return;
    readBytes(reading, member);
    if (reading.env->ExceptionCheck()) return;
    assertThat(
        length == reading.ckTemp || reading.ckTemp == 0, member.assertion, "convToCK", reading.function);
}

void readArray(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.cls, reading.object, member.field));
    if (env->ExceptionCheck()) return;
    CopyJByteArrayToCKByteArray(env, array, reading.data + member.offset, member.detail);
}

void readText(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, reading.cls, reading.object, member.field));
    if (array == nullptr) return;
    const auto length = static_cast<CK_ULONG>(env->GetArrayLength(array));
    auto* const text = static_cast<CK_BYTE_PTR>(std::calloc(length + 1, 1));
    if (text == nullptr) return throwOutOfMemory(env);
    put(reading.data + member.offset, text);
    CopyJByteArrayToCKByteArray(env, array, text, length);
}

bool readMembers(Reading& reading, const Structure& structure);

// A structure within the parameter object. There is none where the Java object is null: the native members
// stay zero.
void readNested(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const Structure& structure = *member.structure;
    const LocalRef<jobject> object(
        env, GetObjectField(env, reading.cls, reading.object, member.field, structure.signature));
    if (object == nullptr) return;
    if (member.kind == MemberKind::Pointed) {
        void* const pointed = newStructure(env, structure, object, reading.function);
        put(reading.data + member.offset, pointed);
        if (pointed == nullptr && !env->ExceptionCheck()) throwOutOfMemory(env);
        if (pointed == nullptr || member.assertion == nullptr) return;
        reading.ckTemp = structure.size;
        return assertThat(
            reading.ckTemp == sizeof(CK_VERSION), member.assertion, "convToCK", reading.function);
    }
    Reading nested{
        env, reading.function, FindClass(env, structure.path), object, reading.data + member.offset};
    if (nested.cls != nullptr) readMembers(nested, structure);
}

void readAttributes(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    const LocalRef<jobjectArray> array(
        env, GetObjectArrayField(env, reading.cls, reading.object, member.field, ATTRIBUTES));
    if (env->ExceptionCheck()) return;
    CK_ATTRIBUTE_PTR records = nullptr;
    CK_ULONG count = 0;
    jAttributeArrayToCKAttributeArray(env, array, &records, &count);
    put(reading.data + member.offset, records);
    put(reading.data + sizeof(CK_PKCS12_PBE_IMPORT_PARAMS), OwnedAttributes{records, count});
}

CK_ULONG longRefToCKULong(JNIEnv* env, jobject longRef)
{
    return GetLongField(env, FindClass(env, "halvorn/zerlin/LongRef"), longRef, "value");
}

void readHandleCount(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    auto* const cell = static_cast<CK_ULONG_PTR>(std::calloc(1, sizeof(CK_ULONG)));
    if (cell == nullptr) return throwOutOfMemory(env);
    put(reading.data + member.offset, cell);
    const LocalRef<jobject> count(
        env, GetObjectField(env, reading.cls, reading.object, member.field, LONG_REF));
    if (count != nullptr) *cell = longRefToCKULong(env, count);
}

void readHandles(Reading& reading, const Member& member)
{
    JNIEnv* const env = reading.env;
    if (numberAt(pointerAt(reading.data + member.detail)) == 0) return;
    const LocalRef<jobjectArray> array(
        env, GetObjectArrayField(env, reading.cls, reading.object, member.field, OBJECT_HANDLES));
    if (env->ExceptionCheck()) return;
    CK_OBJECT_HANDLE_PTR handles = nullptr;
    CK_ULONG length = 0;
    jObjectHandleArrayToCKObjectHandleArray(env, array, &handles, &length);
    put(reading.data + member.offset, handles);
}

// False with an exception pending.
bool readMember(Reading& reading, const Member& member)
{
    switch (member.kind) {
    case MemberKind::Number:
    case MemberKind::Unread:
        return readNumber(reading, member);
    case MemberKind::MechanismType:
        return readHolder(reading, member, MECHANISM_TYPE, mechanismTypeOf);
    case MemberKind::OaepSource:
        return readHolder(reading, member, OAEP_SOURCE_TYPE, jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType);
    case MemberKind::ObjectHandle:
        return readHolder(reading, member, OBJECT_HANDLE, jObjectHandleToCKObjectHandle);
    case MemberKind::BBool:
        return readHolder(reading, member, BBOOL, jBBoolToCKBBool);
    case MemberKind::Byte:
        put(reading.data + member.offset,
            byteToCK(GetByteField(reading.env, reading.cls, reading.object, member.field)));
        break;
    case MemberKind::CappedInt:
        readCappedInt(reading, member);
        break;
    case MemberKind::Array:
        readArray(reading, member);
        break;
    case MemberKind::Bytes:
    case MemberKind::InitVector:
    case MemberKind::KeyIV:
        readBytes(reading, member);
        break;
    case MemberKind::BytesIfCounted:
        readBytesIfCounted(reading, member);
        break;
    case MemberKind::Text:
        readText(reading, member);
        break;
    case MemberKind::Nested:
    case MemberKind::Pointed:
        readNested(reading, member);
        break;
    case MemberKind::Attributes:
        readAttributes(reading, member);
        break;
    case MemberKind::HandleCount:
        readHandleCount(reading, member);
        break;
    case MemberKind::Handles:
        readHandles(reading, member);
        break;
    }
    return !reading.env->ExceptionCheck();
}

bool readMembers(Reading& reading, const Structure& structure)
{
    return std::ranges::all_of(
        structure.members, [&](const Member& member) { return readMember(reading, member); });
}

void freeAttributes(const CK_BYTE* data)
{
    OwnedAttributes owned;
    std::memcpy(&owned, data + sizeof(CK_PKCS12_PBE_IMPORT_PARAMS), sizeof owned);
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
            freeAttributes(data);
            break;
        default:
            break;
        }
    }
}

} // namespace

void* newStructure(JNIEnv* env, const Structure& structure, jobject object, const char* function)
{
    const jclass cls = FindClass(env, structure.path);
    if (cls == nullptr) return nullptr;
    // Room behind the structure for what its members own beyond what they tell; padding is zero.
    auto* const data = static_cast<CK_BYTE_PTR>(std::calloc(1, structure.size + sizeof(OwnedAttributes)));
    if (data == nullptr) return nullptr;
    Reading reading{env, function, cls, object, data};
    if (readMembers(reading, structure)) return data;
    freeStructure(structure, data);
    return nullptr;
}

void freeStructure(const Structure& structure, void* data)
{
    if (data == nullptr) return;
    freeMembers(structure, static_cast<const CK_BYTE*>(data));
    wipeAndFree(data);
}

} // namespace zerlin
