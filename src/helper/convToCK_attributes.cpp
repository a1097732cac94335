// Attribute templates from Java to native: the value by its Java class, the length by the attribute's type.
#include <cstdlib>

#include "helper/convToCK.h"
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
    if (env->ExceptionCheck()) return nullptr;
    auto* const buffer = static_cast<Native*>(std::malloc(sizeof(Native)));
    if (buffer == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    *buffer = value;
    *length = sizeof(Native);
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

void* convertValue(JNIEnv* env, const ValueClass& row, jobject value, CK_ULONG* length)
{
    switch (row.kind) {
    case ValueKind::ByteArray:
        return arrayValue(env, value, length, jByteArrayToCKByteArray);
    case ValueKind::Long:
        return unboxedValue(jLongObjectToCKULongPtr(env, value), length);
    case ValueKind::BBool:
        return newValue(env, jBBoolToCKBBool(env, value), length);
    case ValueKind::Date:
        return unboxedValue(jDateObjectToCKDatePtr(env, value), length);
    case ValueKind::Handle:
    case ValueKind::Constant:
        return newValue(env, row.toCKULong(env, value), length);
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

} // namespace

void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    ValueClasses classes;
    constexpr std::size_t ROWS = std::size(VALUE_CLASSES);
    if (!findValueClasses(env, classes, ROWS)) return;
    *data = nullptr;
    *length = 0;
    if (value == nullptr) return;
    const std::size_t row = valueClassOf(env, classes, ROWS, value);
    if (env->ExceptionCheck()) return;
    if (row == ROWS) return throwUnsupportedClass(env, "No Conversion from %s to a CK type", value);
    *data = convertValue(env, VALUE_CLASSES[row], value, length);
}

CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object)
{
    CK_ATTRIBUTE attribute{};
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_ATTRIBUTE");
    if (cls == nullptr) return attribute;
    if (object == nullptr) {
        attribute.type = CK_UNAVAILABLE_INFORMATION;
        return attribute;
    }

    const LocalRef<jobject> type(
        env, GetObjectField(env, cls, object, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;"));
    if (env->ExceptionCheck()) return attribute;
    attribute.type = jAttributeTypeToCKAttributeType(env, type);
    if (env->ExceptionCheck()) return attribute;

    const LocalRef<jobject> value(env, GetObjectField(env, cls, object, "pValue", "Ljava/lang/Object;"));
    if (env->ExceptionCheck()) return attribute;
    jObjectToPrimitiveCKObjectPtrPtr(env, value, &attribute.pValue, &attribute.ulValueLen);
    if (env->ExceptionCheck()) return attribute;

    const CK_ULONG valueLen = GetLongField(env, cls, object, "valueLen");
    if (env->ExceptionCheck()) return attribute;
    const bool keepsLength = valueLen == sizeof(CK_ULONG) && isNumericAttrType(attribute.type);
    if (!keepsLength) attribute.ulValueLen = valueLen;
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
    if (env->ExceptionCheck()) return;
    // Cleared, so that the records that a failure leaves out are safe to free.
    void* const records = std::calloc(static_cast<std::size_t>(length) * sizeof(CK_ATTRIBUTE) + 1, 1);
    if (records == nullptr) return throwOutOfMemory(env);
    *data = static_cast<CK_ATTRIBUTE_PTR>(records);
    *count = static_cast<CK_ULONG>(length);
    for (jsize i = 0; i < length; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, i));
        if (env->ExceptionCheck()) return;
        (*data)[i] = jAttributeToCKAttribute(env, element);
        if (env->ExceptionCheck()) return;
    }
}

} // namespace zerlin
