// Attribute templates from Java to native: the value by its Java class, the length by the attribute's type.
#include <cstdlib>
#include <cstring>

#include "helper/attributeFields.h"
#include "helper/convToCK.h"
#include "helper/elements.h"
#include "helper/valueClasses.h"
#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// Where the buffers of a template come from: the memory of a call, or malloc where there is none.
CK_BYTE_PTR newBuffer(JNIEnv* env, CallMemory* memory, std::size_t size)
{
    void* const buffer = memory != nullptr ? memory->take(size, false) : std::malloc(size);
    if (buffer == nullptr) throwOutOfMemory(env);
    return static_cast<CK_BYTE_PTR>(buffer);
}

// A new buffer that holds the value.
template <typename Native>
void* newValue(JNIEnv* env, CallMemory* memory, Native value, CK_ULONG* length)
{
    CK_BYTE_PTR const buffer = newBuffer(env, memory, sizeof(Native));
    if (buffer == nullptr) return nullptr;
    std::memcpy(buffer, &value, sizeof value);
    *length = sizeof value;
    return buffer;
}

// The m_value of a handle or typed constant whose class is known.
void* heldNumber(JNIEnv* env, CallMemory* memory, JavaField& m_value, jobject value, CK_ULONG* length)
{
    const CK_ULONG number = GetLongField(env, value, m_value);
    if (number == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return nullptr;
    return newValue(env, memory, number, length);
}

void* heldBoolean(JNIEnv* env, CallMemory* memory, jobject value, CK_ULONG* length)
{
    const jfieldID field = GetFieldID(env, java::BBOOL.m_value);
    if (field == nullptr) return nullptr;
    return newValue(env, memory, booleanToCK(env->GetBooleanField(value, field)), length);
}

// The bytes of a byte[], and a spare one.
void* bytesOf(JNIEnv* env, CallMemory* memory, jbyteArray array, CK_ULONG* length)
{
    const jsize count = env->GetArrayLength(array);
    CK_BYTE_PTR const buffer = newBuffer(env, memory, static_cast<std::size_t>(count) + 1);
    if (buffer == nullptr) return nullptr;
    env->GetByteArrayRegion(array, 0, count, reinterpret_cast<jbyte*>(buffer));
    *length = static_cast<CK_ULONG>(count);
    return buffer;
}

// The buffer that a converter of boxed values made.
template <typename Native>
void* unboxedValue(Native* buffer, CK_ULONG* length)
{
    if (buffer != nullptr) *length = sizeof(Native);
    return buffer;
}

// The buffer that an array converter makes; it writes the length itself.
template <typename JArray, typename Native>
void* arrayValue(
    JNIEnv* env, jobject value, CK_ULONG* length, void (*convert)(JNIEnv*, JArray, Native**, CK_ULONG*))
{
    Native* data = nullptr;
    convert(env, static_cast<JArray>(value), &data, length);
    return data;
}

// An int[] is taken for the long[] that the same memory would make: each element the low half of two ints.
// Wanted; but it is a long[] that is read, since an int[] has no memory for the second half of the elements.
void jIntArrayToCKULongArray(JNIEnv* env, jintArray array, CK_ULONG_PTR* data, CK_ULONG* length)
{
    const jsize count = env->GetArrayLength(array);
    const LocalRef<jlongArray> longs(env, env->NewLongArray(count));
    if (longs == nullptr) return;
    for (jsize i = 0; 2 * i < count; ++i) {
        jint low = 0;
        env->GetIntArrayRegion(array, 2 * i, 1, &low);
        if (env->ExceptionCheck()) return;
        const jlong element = low;
        env->SetLongArrayRegion(longs, i, 1, &element);
        if (env->ExceptionCheck()) return;
    }
    jLongArrayToCKULongArray(env, longs, data, length);
}

void* convertValue(JNIEnv* env, CallMemory* memory, const ValueClass& row, jobject value, CK_ULONG* length)
{
    switch (row.kind) {
    case ValueKind::ByteArray:
        return bytesOf(env, memory, static_cast<jbyteArray>(value), length);
    case ValueKind::Long:
        return unboxedValue(jLongObjectToCKULongPtr(env, value), length);
    case ValueKind::BBool:
        return heldBoolean(env, memory, value, length);
    case ValueKind::Date:
        return unboxedValue(jDateObjectToCKDatePtr(env, value), length);
    case ValueKind::Handle:
    case ValueKind::Constant:
        return heldNumber(env, memory, *row.m_value, value, length);
    case ValueKind::MechanismTypeArray:
        return arrayValue(env, value, length, jMechanismTypeArrayToCKMechanismTypeArray);
    case ValueKind::Boolean:
        return unboxedValue(jBooleanObjectToCKBBoolPtr(env, value), length);
    case ValueKind::LongArray:
        return arrayValue(env, value, length, jLongArrayToCKULongArray);
    case ValueKind::String:
        return arrayValue(env, value, length, jStringToCKCharArray);
    case ValueKind::Integer:
        return unboxedValue(jIntegerObjectToCKULongPtr(env, value), length);
    case ValueKind::IntArray:
        return arrayValue(env, value, length, jIntArrayToCKULongArray);
    case ValueKind::BooleanArray:
        return arrayValue(env, value, length, jBooleanArrayToCKBBoolArray);
    case ValueKind::CharArray:
        return arrayValue(env, value, length, jCharArrayToCKCharArray);
    case ValueKind::Byte:
        return unboxedValue(jByteObjectToCKBytePtr(env, value), length);
    case ValueKind::Character:
        return unboxedValue(jCharObjectToCKCharPtr(env, value), length);
    }
    return nullptr;
}

// False with an exception pending. The likely row is tested first.
bool convertObject(
    JNIEnv* env, CallMemory* memory, std::size_t likely, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    *data = nullptr;
    *length = 0;
    if (value == nullptr) return true;
    const std::size_t row = valueClassOf(env, VALUE_ROWS, value, likely);
    if (row == VALUE_ROWS) {
        throwUnsupportedClass(env, "No Conversion from %s to a CK type", value);
        return false;
    }
    const ValueClass& valueClass = VALUE_CLASSES[row];
    *data = convertValue(env, memory, valueClass, value, length);
    // Only an array of objects leaves a buffer when it fails.
    return valueClass.kind == ValueKind::MechanismTypeArray ? !env->ExceptionCheck() : *data != nullptr;
}

// The object is a CK_ATTRIBUTE or null. False with an exception pending; the record may have a value all the
// same.
bool convertAttribute(
    JNIEnv* env, CallMemory* memory, const AttributeFields& fields, jobject object, CK_ATTRIBUTE& attribute)
{
    if (object == nullptr) {
        attribute.type = CK_UNAVAILABLE_INFORMATION;
        return true;
    }
    attribute.type = typeOf(env, fields, env->GetObjectField(object, fields.type));
    const jobject value = env->GetObjectField(object, fields.pValue);
    const std::size_t likely = likelyRow(attribute.type);
    if (!convertObject(env, memory, likely, value, &attribute.pValue, &attribute.ulValueLen)) {
        return false;
    }
    const auto valueLen = static_cast<CK_ULONG>(env->GetLongField(object, fields.valueLen));
    const bool keepsLength = valueLen == sizeof(CK_ULONG) && isNumericAttrType(attribute.type);
    if (!keepsLength) attribute.ulValueLen = valueLen;
    return true;
}

} // namespace

void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    if (FindClasses(env, READABLE_VALUES)) convertObject(env, nullptr, 0, value, data, length);
}

CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object)
{
    CK_ATTRIBUTE attribute{};
    AttributeFields fields;
    if (!findAttributeFields(env, fields)) return attribute;
    if (!FindClasses(env, READABLE_VALUES)) return attribute;
    convertAttribute(env, nullptr, fields, attributeOrNull(env, fields, false, object), attribute);
    return attribute;
}

bool convertTemplate(
    JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count)
{
    *data = nullptr;
    *count = 0;
    if (array == nullptr) return true;
    const jsize length = env->GetArrayLength(array);
    // Cleared, so that the records that a failure leaves out are safe to free.
    const std::size_t size = static_cast<std::size_t>(length) * sizeof(CK_ATTRIBUTE) + 1;
    void* const records = memory != nullptr ? memory->take(size, true) : std::calloc(size, 1);
    if (records == nullptr) {
        throwOutOfMemory(env);
        return false;
    }
    *data = static_cast<CK_ATTRIBUTE_PTR>(records);
    *count = static_cast<CK_ULONG>(length);
    if (length == 0) return true;
    AttributeFields fields;
    if (!findAttributeFields(env, fields)) return false;
    if (!FindClasses(env, READABLE_VALUES)) return false;
    const jclass arrayClass = FindClass(env, java::ATTRIBUTE_ARRAY);
    if (arrayClass == nullptr) return false;
    const bool isTyped = env->IsInstanceOf(array, arrayClass);
    return forEachElement<3>(env, array, length, [&](jsize i, jobject element) {
        const jobject object = attributeOrNull(env, fields, isTyped, element);
        return convertAttribute(env, memory, fields, object, (*data)[i]);
    });
}

void jAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count)
{
    convertTemplate(env, nullptr, array, data, count);
}

} // namespace zerlin
