// Handles, typed constants, boxed values, dates, arrays and strings from Java to native.
#include "helper/convToCK.h"

#include <cstdlib>

#include "helper/copyToCK.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
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

template <typename Native>
Native* allocate(JNIEnv* env, std::size_t size)
{
    auto* const memory = static_cast<Native*>(std::malloc(size));
    if (memory == nullptr) throwOutOfMemory(env);
    return memory;
}

// What the value method of a boxed object returns, in a new buffer.
template <typename Native, typename JValue>
Native* unbox(JNIEnv* env, jobject object, JavaMethod& method,
    JValue (JNIEnv::*call)(jobject, jmethodID, ...), Native (*convert)(JValue))
{
    if (FindClass(env, method.owner) == nullptr || object == nullptr) return nullptr;
    const jmethodID valueMethod = GetMethodID(env, method);
    if (valueMethod == nullptr) return nullptr;
    const JValue value = (env->*call)(object, valueMethod);
    if (env->ExceptionCheck()) return nullptr;
    auto* const buffer = allocate<Native>(env, sizeof(Native));
    if (buffer != nullptr) *buffer = convert(value);
    return buffer;
}

// Every element of a primitive array in a new buffer.
template <typename JArray, typename JElement, typename Native>
void convertArray(JNIEnv* env, JArray array, Native** data, CK_ULONG* length,
    void (JNIEnv::*getRegion)(JArray, jsize, jsize, JElement*), Native (*convert)(JElement))
{
    if (array == nullptr) {
        *data = nullptr;
        *length = 0;
        return;
    }
    const jsize count = env->GetArrayLength(array);
    *length = static_cast<CK_ULONG>(count);
    auto* const buffer = allocate<Native>(env, static_cast<std::size_t>(count) * sizeof(Native) + 1);
    if (buffer == nullptr) return;

    readElements(env, array, count, buffer, getRegion, convert);
    if (env->ExceptionCheck()) {
        std::free(buffer);
        return;
    }
    *data = buffer;
}

void convertObjects(
    JNIEnv* env, jobjectArray array, CK_ULONG** data, CK_ULONG* length, CK_ULONG (*convert)(JNIEnv*, jobject))
{
    if (array == nullptr) {
        *data = nullptr;
        *length = 0;
        return;
    }
    const jsize count = env->GetArrayLength(array);
    const auto size = static_cast<CK_ULONG>(count) * sizeof(CK_ULONG);
    *length = static_cast<CK_ULONG>(count);
    *data = static_cast<CK_ULONG*>(std::calloc(size + 1, 1));
    if (*data == nullptr) {
        throwOutOfMemory(env);
        return;
    }
    for (jsize i = 0; i < count; ++i) {
        const LocalRef<jobject> element(env, env->GetObjectArrayElement(array, i));
        if (element == nullptr && env->ExceptionCheck()) return;
        (*data)[i] = convert(env, element);
        if (env->ExceptionCheck()) return;
    }
    *length = size;
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

CK_ULONG_PTR jLongObjectToCKULongPtr(JNIEnv* env, jobject object)
{
    return unbox(env, object, java::LONG.longValue, &JNIEnv::CallLongMethod, longToCK);
}

CK_ULONG_PTR jIntegerObjectToCKULongPtr(JNIEnv* env, jobject object)
{
    return unbox(env, object, java::INTEGER.intValue, &JNIEnv::CallIntMethod, intToCK);
}

CK_BBOOL* jBooleanObjectToCKBBoolPtr(JNIEnv* env, jobject object)
{
    return unbox(env, object, java::BOOLEAN.booleanValue, &JNIEnv::CallBooleanMethod, booleanToCK);
}

CK_BYTE_PTR jByteObjectToCKBytePtr(JNIEnv* env, jobject object)
{
    return unbox(env, object, java::BYTE.byteValue, &JNIEnv::CallByteMethod, byteToCK);
}

CK_CHAR_PTR jCharObjectToCKCharPtr(JNIEnv* env, jobject object)
{
    return unbox(env, object, java::CHAR.charValue, &JNIEnv::CallCharMethod, charToCK);
}

CK_DATE* jDateObjectToCKDatePtr(JNIEnv* env, jobject object)
{
    const jclass cls = FindClass(env, java::DATE.cls);
    if (cls == nullptr || !env->IsInstanceOf(object, cls)) return nullptr;
    // Cleared, so that the two bytes that are never written carry nothing out of this process.
    auto* const date = static_cast<CK_DATE*>(std::calloc(1, sizeof(CK_DATE)));
    if (date == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    CopyJDateToCKDate(env, object, date);
    if (env->ExceptionCheck()) {
        std::free(date);
        return nullptr;
    }
    return date;
}

void jByteArrayToCKByteArray(JNIEnv* env, jbyteArray array, CK_BYTE_PTR* data, CK_ULONG* length)
{
    *data = nullptr;
    *length = 0;
    if (array == nullptr) return;
    const jsize count = env->GetArrayLength(array);
    auto* const buffer = allocate<CK_BYTE>(env, static_cast<std::size_t>(count) + 1);
    if (buffer == nullptr) return;
    env->GetByteArrayRegion(array, 0, count, reinterpret_cast<jbyte*>(buffer));
    if (env->ExceptionCheck()) {
        std::free(buffer);
        return;
    }
    *data = buffer;
    *length = static_cast<CK_ULONG>(count);
}

void jBooleanArrayToCKBBoolArray(JNIEnv* env, jbooleanArray array, CK_BBOOL** data, CK_ULONG* length)
{
    convertArray(env, array, data, length, &JNIEnv::GetBooleanArrayRegion, booleanToCK);
}

void jCharArrayToCKCharArray(JNIEnv* env, jcharArray array, CK_CHAR_PTR* data, CK_ULONG* length)
{
    convertArray(env, array, data, length, &JNIEnv::GetCharArrayRegion, charToCK);
}

void jLongArrayToCKULongArray(JNIEnv* env, jlongArray array, CK_ULONG_PTR* data, CK_ULONG* length)
{
    convertArray(env, array, data, length, &JNIEnv::GetLongArrayRegion, longToCK);
}

void jObjectHandleArrayToCKObjectHandleArray(
    JNIEnv* env, jobjectArray array, CK_OBJECT_HANDLE_PTR* data, CK_ULONG* length)
{
    convertObjects(env, array, data, length, jObjectHandleToCKObjectHandle);
}

void jMechanismTypeArrayToCKMechanismTypeArray(
    JNIEnv* env, jobjectArray array, CK_MECHANISM_TYPE_PTR* data, CK_ULONG* length)
{
    convertObjects(env, array, data, length, jMechanismTypeToCKMechanismType);
}

void jStringToCKCharArray(JNIEnv* env, jstring string, CK_CHAR_PTR* data, CK_ULONG* length)
{
    if (string == nullptr) {
        *data = nullptr;
        *length = 0;
        return;
    }
    char* const characters = copyStringUTF(env, string, length);
    if (characters != nullptr) *data = reinterpret_cast<CK_CHAR_PTR>(characters);
}

} // namespace zerlin
