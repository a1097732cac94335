// Attribute templates from Java to native: the value by its Java class, the length by the attribute's type.
#include "helper/attributeFields.h"
#include "helper/convToCK.h"
#include "helper/elements.h"
#include "helper/newValues.h"
#include "helper/valueClasses.h"
#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// A new native value and its length; null with an exception pending.
struct Converted {
    void* data;
    CK_ULONG length;
};

template <typename Native>
Converted sized(Native* value)
{
    return {value, value != nullptr ? sizeof(Native) : 0};
}

// The m_value of a handle or typed constant whose class is known.
Converted heldNumber(JNIEnv* env, CallMemory* memory, JavaField& m_value, jobject value)
{
    const CK_ULONG number = GetLongField(env, value, m_value);
    if (number == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return {};
    return sized(newValue(env, memory, number));
}

Converted heldBoolean(JNIEnv* env, CallMemory* memory, jobject value)
{
    const jfieldID field = GetFieldID(env, java::BBOOL.m_value);
    if (field == nullptr) return {};
    return sized(newValue(env, memory, booleanToCK(env->GetBooleanField(value, field))));
}

template <typename Native, typename JValue>
Converted unboxed(JNIEnv* env, CallMemory* memory, jobject value, JavaMethod& method,
    JValue (JNIEnv::*call)(jobject, jmethodID, ...), Native (*convert)(JValue))
{
    return sized(newUnboxedValue(env, memory, value, method, call, convert));
}

template <typename JArray, typename JElement, typename Native>
Converted elements(JNIEnv* env, CallMemory* memory, jobject value,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    Converted made{};
    made.data = newArray(env, memory, static_cast<JArray>(value), &made.length, getRegion, convert);
    return made;
}

// The long[] that the memory of an int[] would make: each element the low half of two ints. Deliberate; but
// it is a long[] that is read, since an int[] has no memory for the second half of the elements. Null with an
// exception pending.
jlongArray longsOfInts(JNIEnv* env, jintArray array)
{
    const jsize count = env->GetArrayLength(array);
    const jlongArray longs = env->NewLongArray(count);
    if (longs == nullptr) return nullptr;
    for (jsize i = 0; 2 * i < count; ++i) {
        jint low = 0;
        env->GetIntArrayRegion(array, 2 * i, 1, &low);
        const jlong element = low;
        if (!env->ExceptionCheck()) env->SetLongArrayRegion(longs, i, 1, &element);
        if (env->ExceptionCheck()) {
            env->DeleteLocalRef(longs);
            return nullptr;
        }
    }
    return longs;
}

Converted convertValue(JNIEnv* env, CallMemory* memory, const ValueClass& row, jobject value)
{
    Converted made{};
    switch (row.kind) {
    case ValueKind::ByteArray:
        made.data = newBytes(env, memory, static_cast<jbyteArray>(value), &made.length);
        return made;
    case ValueKind::Long:
        return unboxed(env, memory, value, java::LONG.longValue, &JNIEnv::CallLongMethod, longToCK);
    case ValueKind::BBool:
        return heldBoolean(env, memory, value);
    case ValueKind::Date:
        return sized(newDate(env, memory, value));
    case ValueKind::Handle:
    case ValueKind::Constant:
        return heldNumber(env, memory, *row.m_value, value);
    case ValueKind::MechanismTypeArray:
        made.data = newNumbers(
            env, memory, static_cast<jobjectArray>(value), &made.length, jMechanismTypeToCKMechanismType);
        return made;
    case ValueKind::Boolean:
        return unboxed(
            env, memory, value, java::BOOLEAN.booleanValue, &JNIEnv::CallBooleanMethod, booleanToCK);
    case ValueKind::LongArray:
        return elements(env, memory, value, &JNIEnv::GetLongArrayRegion, longToCK);
    case ValueKind::String:
        made.data = newString(env, memory, static_cast<jstring>(value), &made.length);
        return made;
    case ValueKind::Integer:
        return unboxed(env, memory, value, java::INTEGER.intValue, &JNIEnv::CallIntMethod, intToCK);
    case ValueKind::IntArray: {
        const LocalRef<jlongArray> longs(env, longsOfInts(env, static_cast<jintArray>(value)));
        if (longs == nullptr) return {};
        return elements(env, memory, longs, &JNIEnv::GetLongArrayRegion, longToCK);
    }
    case ValueKind::BooleanArray:
        return elements(env, memory, value, &JNIEnv::GetBooleanArrayRegion, booleanToCK);
    case ValueKind::CharArray:
        return elements(env, memory, value, &JNIEnv::GetCharArrayRegion, charToCK);
    case ValueKind::Byte:
        return unboxed(env, memory, value, java::BYTE.byteValue, &JNIEnv::CallByteMethod, byteToCK);
    case ValueKind::Character:
        return unboxed(env, memory, value, java::CHAR.charValue, &JNIEnv::CallCharMethod, charToCK);
    }
    return {};
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
    const Converted made = convertValue(env, memory, valueClass, value);
    *data = made.data;
    *length = made.length;
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

bool convertBareValue(JNIEnv* env, CallMemory* memory, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    return FindClasses(env, READABLE_VALUES) && convertObject(env, memory, 0, value, data, length);
}

void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    convertBareValue(env, nullptr, value, data, length);
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
    // Zeroed, so that the records that a failure leaves out are safe to free.
    const std::size_t size = static_cast<std::size_t>(length) * sizeof(CK_ATTRIBUTE) + 1;
    *data = reinterpret_cast<CK_ATTRIBUTE_PTR>(newZeroedBuffer(env, memory, size));
    if (*data == nullptr) return false;
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
