// Attribute templates from Java to native: the value by its Java class, the length by the attribute's type.
#include <algorithm>
#include <cstring>

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

template <typename Native>
NewValue sized(Native* value)
{
    if (value == nullptr) return {};
    return {value, sizeof(Native), sizeof(Native)};
}

// The m_value of a handle or typed constant whose class is known.
NewValue heldNumber(JNIEnv* env, CallMemory* memory, JavaField& m_value, jobject value)
{
    const CK_ULONG number = GetLongField(env, value, m_value);
    if (number == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return {};
    return sized(newValue(env, memory, number));
}

NewValue heldBoolean(JNIEnv* env, CallMemory* memory, jobject value)
{
    const jfieldID field = GetFieldID(env, java::BBOOL.m_value);
    if (field == nullptr) return {};
    return sized(newValue(env, memory, booleanToCK(env->GetBooleanField(value, field))));
}

template <typename Native, typename JValue>
NewValue unboxed(JNIEnv* env, CallMemory* memory, jobject value, JavaMethod& method,
    JValue (JNIEnv::*call)(jobject, jmethodID, ...), Native (*convert)(JValue))
{
    return sized(newUnboxedValue(env, memory, value, method, call, convert));
}

template <typename JArray, typename JElement, typename Native>
NewValue elements(JNIEnv* env, CallMemory* memory, jobject value,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    NewValue made{};
    made.data = newArray(env, memory, static_cast<JArray>(value), &made.length, getRegion, convert);
    made.size = made.length * sizeof(Native);
    return made;
}

// The long[] that the memory of an int[] would make (on i386 it would begin one int later): each element two
// ints, the first in its low half. Deliberate; but it is a long[] that is read, since an int[] has no memory
// for the second half of the elements. Null with an exception pending.
jlongArray longsOfInts(JNIEnv* env, jintArray array)
{
    const jsize count = env->GetArrayLength(array);
    const jlongArray longs = env->NewLongArray(count);
    if (longs == nullptr) return nullptr;
    for (jsize i = 0; 2 * i < count; ++i) {
        jint pair[2] = {};
        env->GetIntArrayRegion(array, 2 * i, std::min<jsize>(2, count - 2 * i), pair);
        jlong element = 0;
        std::memcpy(&element, pair, sizeof element);
        if (!env->ExceptionCheck()) env->SetLongArrayRegion(longs, i, 1, &element);
        if (env->ExceptionCheck()) {
            env->DeleteLocalRef(longs);
            return nullptr;
        }
    }
    return longs;
}

NewValue convertValue(JNIEnv* env, CallMemory* memory, const ValueClass& row, jobject value)
{
    NewValue made{};
    switch (row.kind) {
    case ValueKind::ByteArray:
        made.data = newBytes(env, memory, static_cast<jbyteArray>(value), &made.length);
        made.size = made.length;
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
        made.size = made.length;
        return made;
    case ValueKind::Boolean:
        return unboxed(
            env, memory, value, java::BOOLEAN.booleanValue, &JNIEnv::CallBooleanMethod, booleanToCK);
    case ValueKind::LongArray:
        return elements(env, memory, value, &JNIEnv::GetLongArrayRegion, longToCK);
    case ValueKind::String:
        made.data = newString(env, memory, static_cast<jstring>(value), &made.length);
        made.size = made.length;
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
bool convertObject(JNIEnv* env, CallMemory* memory, std::size_t likely, jobject value, NewValue& made)
{
    made = {};
    if (value == nullptr) return true;
    const std::size_t row = valueClassOf(env, VALUE_ROWS, value, likely);
    if (row != VALUE_ROWS) return convertValueOfRow(env, memory, row, value, made);
    throwUnsupportedClass(env, "No Conversion from %s to a CK type", value);
    return false;
}

// The object is a CK_ATTRIBUTE or null. False with an exception pending; the record may have a value all the
// same.
bool convertAttribute(JNIEnv* env, CallMemory* memory, const AttributeFields& fields, jobject object,
    CK_ATTRIBUTE& attribute, NewValue& made)
{
    if (object == nullptr) {
        attribute.type = CK_UNAVAILABLE_INFORMATION;
        return true;
    }
    attribute.type = typeOf(env, fields, env->GetObjectField(object, fields.type));
    const jobject value = env->GetObjectField(object, fields.pValue);
    const bool isConverted = convertObject(env, memory, likelyRow(attribute.type), value, made);
    attribute.pValue = made.data;
    attribute.ulValueLen = made.length;
    if (!isConverted) return false;
    const auto valueLen = static_cast<CK_ULONG>(env->GetLongField(object, fields.valueLen));
    const bool keepsLength = valueLen == sizeof(CK_ULONG) && isNumericAttrType(attribute.type);
    if (!keepsLength) attribute.ulValueLen = valueLen;
    if (memory == nullptr) return true;
    if (!fence(env, *memory, attribute.ulValueLen, made)) return false;
    attribute.pValue = made.data;
    return true;
}

} // namespace

bool fence(JNIEnv* env, CallMemory& memory, CK_ULONG declared, NewValue& made)
{
    if (made.data == nullptr || declared <= made.size) return true;
    CK_BYTE_PTR const fenced = memory.takeFenced(made.size, declared);
    if (fenced == nullptr) {
        throwOutOfMemory(env);
        return false;
    }
    made.data = std::memcpy(fenced, made.data, made.size);
    made.size = CallMemory::fencedSize(made.size, declared);
    return true;
}

bool convertValueOfRow(JNIEnv* env, CallMemory* memory, std::size_t row, jobject value, NewValue& made)
{
    const ValueClass& valueClass = VALUE_CLASSES[row];
    made = convertValue(env, memory, valueClass, value);
    // Only an array of objects leaves a buffer when it fails.
    return valueClass.kind == ValueKind::MechanismTypeArray ? !env->ExceptionCheck() : made.data != nullptr;
}

bool convertBareValue(JNIEnv* env, CallMemory* memory, jobject value, NewValue& made)
{
    return FindClasses(env, READABLE_VALUES) && convertObject(env, memory, 0, value, made);
}

void jObjectToPrimitiveCKObjectPtrPtr(JNIEnv* env, jobject value, CK_VOID_PTR* data, CK_ULONG* length)
{
    NewValue made;
    if (!FindClasses(env, READABLE_VALUES)) return;
    convertObject(env, nullptr, 0, value, made);
    *data = made.data;
    *length = made.length;
}

CK_ATTRIBUTE jAttributeToCKAttribute(JNIEnv* env, jobject object)
{
    CK_ATTRIBUTE attribute{};
    AttributeFields fields;
    if (!findAttributeFields(env, fields)) return attribute;
    if (!FindClasses(env, READABLE_VALUES)) return attribute;
    NewValue made;
    convertAttribute(env, nullptr, fields, attributeOrNull(env, fields, false, object), attribute, made);
    return attribute;
}

bool convertTemplate(JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ULONG ulCount, bool keepsValues,
    NewTemplate& made)
{
    made = {};
    if (array == nullptr) return true;
    const jsize length = env->GetArrayLength(array);
    made.count = static_cast<CK_ULONG>(length);
    // Zeroed, so that the records that a failure leaves out are safe to free.
    const std::size_t size = bufferSize(made.count, sizeof(CK_ATTRIBUTE), 1);
    const bool isFenced = memory != nullptr && ulCount > made.count;
    CK_BYTE_PTR const records = isFenced ? memory->takeFenced(size, bufferSize(ulCount, sizeof(CK_ATTRIBUTE)))
                                         : newZeroedBuffer(env, memory, size);
    made.records = reinterpret_cast<CK_ATTRIBUTE_PTR>(records);
    if (keepsValues) {
        const std::size_t valuesSize = bufferSize(made.count, sizeof(NewValue));
        made.values = reinterpret_cast<NewValue*>(newZeroedBuffer(env, memory, valuesSize));
    }
    if (made.records == nullptr || (keepsValues && made.values == nullptr)) {
        made.count = 0;
        throwOutOfMemory(env);
        return false;
    }
    if (length == 0) return true;
    AttributeFields fields;
    if (!findAttributeFields(env, fields)) return false;
    if (!FindClasses(env, READABLE_VALUES)) return false;
    const jclass arrayClass = FindClass(env, java::ATTRIBUTE_ARRAY);
    if (arrayClass == nullptr) return false;
    const bool isTyped = env->IsInstanceOf(array, arrayClass);
    return forEachElement<3>(env, array, length, [&](jsize i, jobject element) {
        const jobject object = attributeOrNull(env, fields, isTyped, element);
        NewValue value;
        const bool isConverted = convertAttribute(env, memory, fields, object, made.records[i], value);
        if (made.values != nullptr) made.values[i] = value;
        return isConverted;
    });
}

void jAttributeArrayToCKAttributeArray(
    JNIEnv* env, jobjectArray array, CK_ATTRIBUTE_PTR* data, CK_ULONG* count)
{
    NewTemplate made;
    convertTemplate(env, nullptr, array, 0, false, made);
    *data = made.records;
    *count = made.count;
}

} // namespace zerlin
