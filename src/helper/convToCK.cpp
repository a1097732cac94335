// Handles, typed constants, boxed values, dates, arrays and strings from Java to native.
#include "helper/convToCK.h"

#include <cstdlib>

#include "helper/copyToCK.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/newValues.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

constexpr CK_ULONG NO_VALUE = ~CK_ULONG{0};

// The m_value of an object of that field's class. IsInstanceOf lets a null object pass, and the field
// accessor returns NO_VALUE for it, whatever the failure value.
CK_ULONG valueOf(JNIEnv* env, jobject object, JavaField& m_value, CK_ULONG failureValue)
{
    const jclass cls = FindClass(env, m_value.owner);
    if (cls == nullptr || !env->IsInstanceOf(object, cls)) return failureValue;
    return GetLongField(env, object, m_value);
}

// What a null array or string becomes.
template <typename Native>
void setNone(Native** data, CK_ULONG* length)
{
    *data = nullptr;
    *length = 0;
}

} // namespace

CK_OBJECT_HANDLE jObjectHandleToCKObjectHandle(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::OBJECT_HANDLE.m_value, 0);
}

CK_SESSION_HANDLE jSessionHandleToCKSessionHandle(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::SESSION_HANDLE.m_value, 0);
}

CK_ATTRIBUTE_TYPE jAttributeTypeToCKAttributeType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::ATTRIBUTE_TYPE.m_value, 0);
}

CK_CERTIFICATE_TYPE jCertificateTypeToCKCertificateType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::CERTIFICATE_TYPE.m_value, NO_VALUE);
}

CK_HW_FEATURE_TYPE jHWFeatureTypeToCKHWFeatureType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::HW_FEATURE_TYPE.m_value, NO_VALUE);
}

CK_KEY_TYPE jKeyTypeToCKKeyType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::KEY_TYPE.m_value, NO_VALUE);
}

CK_MECHANISM_TYPE jMechanismTypeToCKMechanismType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::MECHANISM_TYPE.m_value, NO_VALUE);
}

CK_OBJECT_CLASS jObjectClassToCKObjectClass(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::OBJECT_CLASS.m_value, NO_VALUE);
}

CK_RSA_PKCS_OAEP_SOURCE_TYPE jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::RSA_PKCS_OAEP_SOURCE_TYPE.m_value, NO_VALUE);
}

CK_RV jRVToCKRV(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::RV.m_value, NO_VALUE);
}

CK_STATE jStateToCKState(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::STATE.m_value, NO_VALUE);
}

CK_USER_TYPE jUserTypeToCKUserType(JNIEnv* env, jobject object)
{
    return valueOf(env, object, java::USER_TYPE.m_value, NO_VALUE);
}

CK_BBOOL jBBoolToCKBBool(JNIEnv* env, jobject object)
{
    const jclass cls = FindClass(env, java::BBOOL.cls);
    if (cls == nullptr || object == nullptr || !env->IsInstanceOf(object, cls)) return CK_FALSE;
    const jfieldID field = GetFieldID(env, java::BBOOL.m_value);
    return field == nullptr ? CK_FALSE : booleanToCK(env->GetBooleanField(object, field));
}

CK_BYTE_PTR newBytes(JNIEnv* env, CallMemory* memory, jbyteArray array, CK_ULONG* length)
{
    const jsize count = env->GetArrayLength(array);
    CK_BYTE_PTR const buffer = newBuffer(env, memory, bufferSize(static_cast<std::size_t>(count), 1, 1));
    if (buffer == nullptr) return nullptr;
    env->GetByteArrayRegion(
        array, 0, count, reinterpret_cast<jbyte*>(buffer)); // within the array nothing is raised
    *length = static_cast<CK_ULONG>(count);
    return buffer;
}

CK_ULONG* newNumbers(JNIEnv* env, CallMemory* memory, jobjectArray array, CK_ULONG* length,
    CK_ULONG (*convert)(JNIEnv*, jobject))
{
    const jsize count = env->GetArrayLength(array);
    *length = static_cast<CK_ULONG>(count);
    const std::size_t size = bufferSize(*length, sizeof(CK_ULONG), 1);
    auto* const numbers = reinterpret_cast<CK_ULONG*>(newZeroedBuffer(env, memory, size));
    if (numbers == nullptr) return nullptr;
    for (jsize i = 0; i < count; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, i));
        if (element == nullptr && env->ExceptionCheck()) return numbers;
        const CK_ULONG number = convert(env, element);
        if (hasFailed(env, number)) return numbers;
        numbers[i] = number;
    }
    *length *= sizeof(CK_ULONG);
    return numbers;
}

char* newString(JNIEnv* env, CallMemory* memory, jstring string, CK_ULONG* length)
{
    const auto size = static_cast<CK_ULONG>(env->GetStringUTFLength(string));
    auto* const text = reinterpret_cast<char*>(newZeroedBuffer(env, memory, bufferSize(size, 1, 1)));
    if (text == nullptr) return nullptr;
    if (!readString(env, string, text)) {
        dropBuffer(memory, text);
        return nullptr;
    }
    *length = size;
    return text;
}

CK_DATE* newDate(JNIEnv* env, CallMemory* memory, jobject object)
{
    const jclass cls = FindClass(env, java::DATE.cls);
    if (cls == nullptr || !env->IsInstanceOf(object, cls)) return nullptr;
    // Zeroed, so that the two bytes that are never written carry nothing out of this process.
    auto* const date = reinterpret_cast<CK_DATE*>(newZeroedBuffer(env, memory, sizeof(CK_DATE)));
    if (date == nullptr) return nullptr;
    CopyJDateToCKDate(env, object, date);
    if (!env->ExceptionCheck()) return date;
    dropBuffer(memory, date);
    return nullptr;
}

CK_ULONG_PTR jLongObjectToCKULongPtr(JNIEnv* env, jobject object)
{
    return newUnboxedValue(env, nullptr, object, java::LONG.longValue, &JNIEnv::CallLongMethod, longToCK);
}

CK_ULONG_PTR jIntegerObjectToCKULongPtr(JNIEnv* env, jobject object)
{
    return newUnboxedValue(env, nullptr, object, java::INTEGER.intValue, &JNIEnv::CallIntMethod, intToCK);
}

CK_BBOOL* jBooleanObjectToCKBBoolPtr(JNIEnv* env, jobject object)
{
    return newUnboxedValue(
        env, nullptr, object, java::BOOLEAN.booleanValue, &JNIEnv::CallBooleanMethod, booleanToCK);
}

CK_BYTE_PTR jByteObjectToCKBytePtr(JNIEnv* env, jobject object)
{
    return newUnboxedValue(env, nullptr, object, java::BYTE.byteValue, &JNIEnv::CallByteMethod, byteToCK);
}

CK_CHAR_PTR jCharObjectToCKCharPtr(JNIEnv* env, jobject object)
{
    return newUnboxedValue(env, nullptr, object, java::CHAR.charValue, &JNIEnv::CallCharMethod, charToCK);
}

CK_DATE* jDateObjectToCKDatePtr(JNIEnv* env, jobject object)
{
    return newDate(env, nullptr, object);
}

void jByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR* data, CK_ULONG* length)
{
    setNone(data, length);
    if (array != nullptr) *data = newBytes(env, nullptr, array, length);
}

void jBooleanArrayToCKBBoolArray(JNIEnv* env, jbooleanArray array, CK_BBOOL** data, CK_ULONG* length)
{
    if (array == nullptr) return setNone(data, length);
    auto* const made = newArray(env, nullptr, array, length, &JNIEnv::GetBooleanArrayRegion, booleanToCK);
    if (made != nullptr) *data = made;
}

void jCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR* data, CK_ULONG* length)
{
    if (array == nullptr) return setNone(data, length);
    auto* const made = newArray(env, nullptr, array, length, &JNIEnv::GetCharArrayRegion, charToCK);
    if (made != nullptr) *data = made;
}

void jLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR* data, CK_ULONG* length)
{
    if (array == nullptr) return setNone(data, length);
    auto* const made = newArray(env, nullptr, array, length, &JNIEnv::GetLongArrayRegion, longToCK);
    if (made != nullptr) *data = made;
}

void jObjectHandleArrayToCKObjectHandleArray(
    JNIEnv* env, jobjectArray array, CK_OBJECT_HANDLE_PTR* data, CK_ULONG* length)
{
    if (array == nullptr) return setNone(data, length);
    *data = newNumbers(env, nullptr, array, length, jObjectHandleToCKObjectHandle);
}

void jMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR* data, CK_ULONG* length)
{
    if (array == nullptr) return setNone(data, length);
    *data = newNumbers(env, nullptr, array, length, jMechanismTypeToCKMechanismType);
}

void jStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR* data, CK_ULONG* length)
{
    if (string == nullptr) return setNone(data, length);
    auto* const made = reinterpret_cast<CK_CHAR_PTR>(newString(env, nullptr, string, length));
    if (made != nullptr) *data = made;
}

} // namespace zerlin
