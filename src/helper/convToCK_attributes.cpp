// Attribute templates from Java to native: the value by its Java class, the length by the attribute's type.
#include <cstdlib>

#include "helper/attributeFields.h"
#include "helper/convToCK.h"
#include "helper/elements.h"
#include "helper/jutil.h"
#include "helper/valueClasses.h"
#include "zerlin/attrutil.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToCK_attributes $\" \"$Revision: 1.1.1.2 $\"";

// A new buffer that holds the value.
template <typename Native>
void* newValue(JNIEnv* env, Native value, CK_ULONG* length)
{
    auto* const buffer = static_cast<Native*>(std::malloc(sizeof(Native)));
    if (buffer == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    *buffer = value;
    *length = sizeof(Native);
    return buffer;
}

// The m_value of a handle or typed constant whose class is known.
void* heldNumber(JNIEnv* env, jclass cls, jobject value, CK_ULONG* length)
{
    const CK_ULONG number = GetLongField(env, cls, value, "m_value");
    if (number == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return nullptr;
    return newValue(env, number, length);
}

void* heldBoolean(JNIEnv* env, jclass cls, jobject value, CK_ULONG* length)
{
    const jfieldID field = GetFieldID(env, cls, "m_value", "Z");
    return field == nullptr ? nullptr
                            : newValue(env, booleanToCK(env->GetBooleanField(value, field)), length);
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

void* convertValue(JNIEnv* env, ValueKind kind, jclass cls, jobject value, CK_ULONG* length)
{
    switch (kind) {
    case ValueKind::ByteArray:
        return arrayValue(env, value, length, jByteArrayToCKByteArray);
    case ValueKind::Long:
        return unboxedValue(jLongObjectToCKULongPtr(env, value), length);
    case ValueKind::BBool:
        return heldBoolean(env, cls, value, length);
    case ValueKind::Date:
        return unboxedValue(jDateObjectToCKDatePtr(env, value), length);
    case ValueKind::Handle:
    case ValueKind::Constant:
        return heldNumber(env, cls, value, length);
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

// False with an exception pending.
bool convertObject(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    ValueClasses classes;
    constexpr std::size_t ROWS = std::size(VALUE_CLASSES);
    if (!findValueClasses(env, classes, ROWS)) return false;
    *data = nullptr;
    *length = 0;
    if (value == nullptr) return true;
    const std::size_t row = valueClassOf(env, classes, ROWS, value);
    if (row == ROWS) {
        throwUnsupportedClass(env, "No Conversion from %s to a CK type", value);
        return false;
    }
    const ValueKind kind = VALUE_CLASSES[row].kind;
    *data = convertValue(env, kind, classes[row], value, length);
    // Only an array of objects leaves a buffer when it fails.
    return kind == ValueKind::MechanismTypeArray ? !env->ExceptionCheck() : *data != nullptr;
}

// False with an exception pending; the record may have a value all the same.
bool convertAttribute(JNIEnv* env, const AttributeFields& fields, jobject object, CK_ATTRIBUTE& attribute)
{
    if (object == nullptr || !env->IsInstanceOf(object, fields.cls)) {
        attribute.type = CK_UNAVAILABLE_INFORMATION;
        return true;
    }
    const LocalRef<jobject> type(env, env->GetObjectField(object, fields.type));
    attribute.type = typeOf(env, fields, type);
    const LocalRef<jobject> value(env, env->GetObjectField(object, fields.pValue));
    if (!convertObject(env, value, &attribute.pValue, &attribute.ulValueLen)) return false;
    const auto valueLen = static_cast<CK_ULONG>(env->GetLongField(object, fields.valueLen));
    const bool keepsLength = valueLen == sizeof(CK_ULONG) && isNumericAttrType(attribute.type);
    if (!keepsLength) attribute.ulValueLen = valueLen;
    return true;
}

} // namespace

void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    convertObject(env, value, data, length);
}

CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object)
{
    CK_ATTRIBUTE attribute{};
    AttributeFields fields;
    if (findAttributeFields(env, fields)) convertAttribute(env, fields, object, attribute);
    return attribute;
}

void jAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count)
{
    if (array == nullptr) {
        *data = nullptr;
        *count = 0;
        return;
    }
    const jsize length = env->GetArrayLength(array);
    // Cleared, so that the records that a failure leaves out are safe to free.
    void* const records = std::calloc(static_cast<std::size_t>(length) * sizeof(CK_ATTRIBUTE) + 1, 1);
    if (records == nullptr) return throwOutOfMemory(env);
    *data = static_cast<CK_ATTRIBUTE_PTR>(records);
    *count = static_cast<CK_ULONG>(length);
    AttributeFields fields;
    if (length == 0 || !findAttributeFields(env, fields)) return;
    for (jsize i = 0; i < length; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, i));
        if (element == nullptr && env->ExceptionCheck()) return;
        if (!convertAttribute(env, fields, element, (*data)[i])) return;
    }
}

} // namespace zerlin
