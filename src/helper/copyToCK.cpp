// Arrays, dates, versions, attribute values and information records from Java into the caller's memory.
#include "helper/copyToCK.h"

#include <cstring>
#include <span>

#include "helper/convToCK.h"
#include "helper/elements.h"
#include "helper/records.h"
#include "helper/valueClasses.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

template <typename JArray, typename JElement, typename Native>
void copyElements(JNIEnv* env, JArray array, Native* destination, CK_ULONG capacity,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    if (array == nullptr || destination == nullptr) return;
    readElements(env, array, elementsToCopy(env, array, capacity), destination, getRegion, convert);
}

// What the value method of a boxed object returns; 0 with an exception pending.
template <typename JValue>
JValue unboxed(
    JNIEnv* env, jobject value, JavaMethod& method, JValue (JNIEnv::*call)(jobject, jmethodID, ...))
{
    const jmethodID valueMethod = GetMethodID(env, method);
    return valueMethod == nullptr ? JValue{} : (env->*call)(value, valueMethod);
}

template <typename Native>
void store(JNIEnv* env, CK_VOID_PTR destination, Native value)
{
    if (!env->ExceptionCheck()) std::memcpy(destination, &value, sizeof value);
}

// The capacity that a value of that kind needs at least.
CK_ULONG minimumCapacity(ValueKind kind)
{
    switch (kind) {
    case ValueKind::Long:
    case ValueKind::Integer:
    case ValueKind::Handle:
    case ValueKind::Constant:
        return sizeof(CK_ULONG);
    case ValueKind::Date:
        return sizeof(CK_DATE);
    default:
        return 1;
    }
}

void copyValue(JNIEnv* env, const ValueClass& row, jobject value, CK_VOID_PTR destination, CK_ULONG capacity)
{
    auto* const bytes = static_cast<CK_BYTE_PTR>(destination);
    auto* const words = static_cast<CK_ULONG_PTR>(destination);
    switch (row.kind) {
    case ValueKind::ByteArray:
        return CopyJByteArrayToCKByteArray(env, static_cast<jbyteArray>(value), bytes, capacity);
    case ValueKind::Long:
        return store(
            env, destination, longToCK(unboxed(env, value, java::LONG.longValue, &JNIEnv::CallLongMethod)));
    case ValueKind::BBool:
        return store(env, destination, jBBoolToCKBBool(env, value));
    case ValueKind::Date:
        return CopyJDateToCKDate(env, value, static_cast<CK_DATE*>(destination));
    case ValueKind::Handle:
    case ValueKind::Constant:
        return store(env, destination, row.toCKULong(env, value));
    case ValueKind::MechanismTypeArray:
        return CopyJMechanismTypeArrayToCKMechanismTypeArray(
            env, static_cast<jobjectArray>(value), words, capacity / sizeof(CK_MECHANISM_TYPE));
    case ValueKind::Boolean:
        return store(env, destination,
            booleanToCK(unboxed(env, value, java::BOOLEAN.booleanValue, &JNIEnv::CallBooleanMethod)));
    // The capacity in bytes counts elements for the next two number arrays: deliberate.
    case ValueKind::LongArray:
        return CopyJLongArrayToCKULongArray(env, static_cast<jlongArray>(value), words, capacity);
    case ValueKind::IntArray:
        return CopyJIntArrayToCKULongArray(env, static_cast<jintArray>(value), words, capacity);
    case ValueKind::String:
        return CopyJStringToCKCharArray(env, static_cast<jstring>(value), bytes, capacity);
    case ValueKind::Integer:
        return store(
            env, destination, intToCK(unboxed(env, value, java::INTEGER.intValue, &JNIEnv::CallIntMethod)));
    case ValueKind::BooleanArray:
        return CopyJBooleanArrayToCKBBoolArray(env, static_cast<jbooleanArray>(value), bytes, capacity);
    case ValueKind::CharArray:
        return CopyJCharArrayToCKCharArray(env, static_cast<jcharArray>(value), bytes, capacity);
    case ValueKind::Byte:
        return store(
            env, destination, byteToCK(unboxed(env, value, java::BYTE.byteValue, &JNIEnv::CallByteMethod)));
    case ValueKind::Character:
        return store(env, destination,
            charToCK(unboxed(env, value, java::CHARACTER.charValue, &JNIEnv::CallCharMethod)));
    }
}

// One field of an information record. The caller asks for a pending exception.
void copyField(JNIEnv* env, jobject object, const RecordField& row, CK_BYTE_PTR record)
{
    CK_BYTE_PTR const member = record + row.offset;
    switch (row.kind) {
    case RecordFieldKind::Number: {
        const CK_ULONG value = GetLongField(env, object, row.field);
        return store(env, member, value);
    }
    case RecordFieldKind::Text: {
        const LocalRef<jbyteArray> text(env, GetByteArrayField(env, object, row.field));
        if (!env->ExceptionCheck()) CopyJByteArrayToCKByteArray(env, text, member, row.width);
        return;
    }
    case RecordFieldKind::Version: {
        const LocalRef<jobject> version(env, GetObjectField(env, object, row.field));
        if (!env->ExceptionCheck()) {
            CopyJVersionToCKVersion(env, version, reinterpret_cast<CK_VERSION*>(member));
        }
        return;
    }
    case RecordFieldKind::State: {
        const LocalRef<jobject> state(env, GetObjectField(env, object, row.field));
        if (!env->ExceptionCheck()) store(env, member, jStateToCKState(env, state));
        return;
    }
    }
}

void copyRecord(JNIEnv* env, jobject object, JavaClass& recordClass, std::span<const RecordField> rows,
    CK_VOID_PTR record)
{
    const jclass cls = FindClass(env, recordClass);
    if (cls == nullptr || object == nullptr || record == nullptr) return;
    if (!env->IsInstanceOf(object, cls)) return;
    for (const RecordField& row : rows) {
        copyField(env, object, row, static_cast<CK_BYTE_PTR>(record));
        if (env->ExceptionCheck()) return;
    }
}

} // namespace

void CopyJByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR destination, CK_ULONG capacity)
{
    if (array == nullptr || destination == nullptr) return;
    const jsize count = elementsToCopy(env, array, capacity);
    env->GetByteArrayRegion(array, 0, count, reinterpret_cast<jbyte*>(destination));
}

void CopyJLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR destination, CK_ULONG capacity)
{
    copyElements(env, array, destination, capacity, &JNIEnv::GetLongArrayRegion, longToCK);
}

void CopyJIntArrayToCKULongArray(JNIEnv* env, jintArray array, CK_ULONG_PTR destination, CK_ULONG capacity)
{
    copyElements(env, array, destination, capacity, &JNIEnv::GetIntArrayRegion, intToCK);
}

void CopyJBooleanArrayToCKBBoolArray(
    JNIEnv* env, jbooleanArray array, CK_BBOOL* destination, CK_ULONG capacity)
{
    copyElements(env, array, destination, capacity, &JNIEnv::GetBooleanArrayRegion, booleanToCK);
}

void CopyJCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR destination, CK_ULONG capacity)
{
    copyElements(env, array, destination, capacity, &JNIEnv::GetCharArrayRegion, charToCK);
}

void CopyJStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR destination, CK_ULONG capacity)
{
    if (string == nullptr || destination == nullptr) return;
    const char* const characters = env->GetStringUTFChars(string, nullptr);
    if (characters == nullptr || env->ExceptionCheck()) return;
    const std::size_t length = strnlen(characters, capacity);
    std::memcpy(destination, characters, length);
    std::memset(destination + length, 0, capacity - length);
    env->ReleaseStringUTFChars(string, characters);
}

void CopyJMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR destination, CK_ULONG capacity)
{
    if (array == nullptr || destination == nullptr) return;
    for (CK_ULONG i = 0; i < capacity; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, static_cast<jsize>(i)));
        if (env->ExceptionCheck()) return;
        const CK_MECHANISM_TYPE mechanism = jMechanismTypeToCKMechanismType(env, element);
        if (env->ExceptionCheck()) return;
        destination[i] = mechanism;
    }
}

void CopyJDateToCKDate(JNIEnv* env, jobject object, CK_DATE* destination)
{
    const jclass cls = FindClass(env, java::DATE.cls);
    if (cls == nullptr || object == nullptr || destination == nullptr) return;
    if (!env->IsInstanceOf(object, cls)) return;
    auto* const date = reinterpret_cast<CK_BYTE_PTR>(destination);
    for (const DatePiece& piece : DATE_PIECES) {
        const LocalRef<jbyteArray> digits(env, GetByteArrayField(env, object, piece.field));
        if (digits == nullptr && env->ExceptionCheck()) return;
        CopyJByteArrayToCKByteArray(env, digits, date + piece.copiedOffset, piece.width);
    }
}

void CopyJVersionToCKVersion(JNIEnv* env, jobject object, CK_VERSION* destination)
{
    const jclass cls = FindClass(env, java::VERSION.cls);
    if (cls == nullptr || object == nullptr || destination == nullptr) return;
    if (!env->IsInstanceOf(object, cls)) return;
    const jbyte major = GetByteField(env, object, java::VERSION.major);
    if (env->ExceptionCheck()) return;
    destination->major = byteToCK(major);
    const jbyte minor = GetByteField(env, object, java::VERSION.minor);
    if (env->ExceptionCheck()) return;
    destination->minor = byteToCK(minor);
}

void CopyJObjectPrimativeToCKObjectPtr(JNIEnv* env, jobject value, CK_VOID_PTR destination, CK_ULONG capacity)
{
    if (!FindClasses(env, READABLE_VALUES)) return;
    if (value == nullptr || destination == nullptr || capacity == 0) return;
    const std::size_t row = valueClassOf(env, VALUE_ROWS, value);
    if (row == VALUE_ROWS || capacity < minimumCapacity(VALUE_CLASSES[row].kind)) {
        return throwUnsupportedClass(env, "Can not copy from %s to a CK type", value);
    }
    copyValue(env, VALUE_CLASSES[row], value, destination, capacity);
}

void CopyJAttributeToCKAttribute(JNIEnv* env, jobject object, CK_ATTRIBUTE_PTR destination)
{
    const jclass cls = FindClass(env, java::ATTRIBUTE.cls);
    if (cls == nullptr || object == nullptr || destination == nullptr) return;
    const LocalRef<jobject> type(env, GetObjectField(env, object, java::ATTRIBUTE.type));
    if (env->ExceptionCheck()) return;
    destination->type = jAttributeTypeToCKAttributeType(env, type);
    if (env->ExceptionCheck()) return;
    const LocalRef<jobject> value(env, GetObjectField(env, object, java::ATTRIBUTE.pValue));
    if (env->ExceptionCheck()) return;
    CopyJObjectPrimativeToCKObjectPtr(env, value, destination->pValue, destination->ulValueLen);
    if (env->ExceptionCheck()) return;
    const CK_ULONG valueLen = GetLongField(env, object, java::ATTRIBUTE.valueLen);
    if (!env->ExceptionCheck()) destination->ulValueLen = valueLen;
}

void CopyJAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR destination, CK_ULONG count)
{
    if (array == nullptr || destination == nullptr) return;
    for (CK_ULONG i = 0; i < count; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, static_cast<jsize>(i)));
        if (env->ExceptionCheck()) return;
        CopyJAttributeToCKAttribute(env, element, &destination[i]);
        if (env->ExceptionCheck()) return;
    }
}

void CopyJInfoToCKInfo(JNIEnv* env, jobject object, CK_INFO* destination)
{
    copyRecord(env, object, java::INFO.cls, INFO_FIELDS, destination);
}

void CopyJSlotInfoToCKSlotInfo(JNIEnv* env, jobject object, CK_SLOT_INFO* destination)
{
    copyRecord(env, object, java::SLOT_INFO.cls, SLOT_INFO_FIELDS, destination);
}

void CopyJTokenInfoToCKTokenInfo(JNIEnv* env, jobject object, CK_TOKEN_INFO* destination)
{
    copyRecord(env, object, java::TOKEN_INFO.cls, TOKEN_INFO_FIELDS, destination);
}

void CopyJSessionInfoToCKSessionInfo(JNIEnv* env, jobject object, CK_SESSION_INFO* destination)
{
    copyRecord(env, object, java::SESSION_INFO.cls, SESSION_INFO_FIELDS, destination);
}

void CopyJMechInfoToCKMechInfo(JNIEnv* env, jobject object, CK_MECHANISM_INFO* destination)
{
    copyRecord(env, object, java::MECHANISM_INFO.cls, MECHANISM_INFO_FIELDS, destination);
}

} // namespace zerlin
