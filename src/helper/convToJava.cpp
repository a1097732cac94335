// Handles, typed constants, booleans, versions, dates and arrays from native to new Java objects.
#include "helper/convToJava.h"

#include "helper/elements.h"
#include "helper/javaNames.h"
#include "helper/records.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// A new object of the field's class that holds the value in that field.
jobject newHolder(JNIEnv* env, JavaField& field, CK_ULONG value)
{
    const jclass cls = FindClass(env, field.owner);
    if (cls == nullptr) return nullptr;
    const jobject holder = env->AllocObject(cls);
    if (holder == nullptr) return nullptr;
    const jfieldID valueField = GetFieldID(env, field);
    // The fields of a new object are zero already.
    if (valueField != nullptr && value != 0) env->SetLongField(holder, valueField, static_cast<jlong>(value));
    return holder;
}

jobjectArray newObjects(JNIEnv* env, JavaClass& elementClass, const CK_ULONG* source, CK_ULONG n,
    jobject (*make)(JNIEnv*, CK_ULONG))
{
    if (source == nullptr) return nullptr;
    const jclass cls = FindClass(env, elementClass);
    if (cls == nullptr) return nullptr;
    const jobjectArray array = env->NewObjectArray(arrayLength(n), cls, nullptr);
    if (array == nullptr) return nullptr;
    for (CK_ULONG i = 0; i < n; ++i) {
        const LocalRef<jobject> element(env, make(env, source[i]));
        if (!env->ExceptionCheck()) {
            env->SetObjectArrayElement(array, static_cast<jsize>(i), element);
        }
        if (env->ExceptionCheck()) {
            env->DeleteLocalRef(array);
            return nullptr;
        }
    }
    return array;
}

} // namespace

jobject ckObjectHandleToJObjectHandle(JNIEnv* env, CK_OBJECT_HANDLE value)
{
    return newHolder(env, java::OBJECT_HANDLE.m_value, value);
}

jobject ckSessionHandleToJSessionHandle(JNIEnv* env, CK_SESSION_HANDLE value)
{
    return newHolder(env, java::SESSION_HANDLE.m_value, value);
}

jobject ckAttributeTypeToJAttributeType(JNIEnv* env, CK_ATTRIBUTE_TYPE value)
{
    return newHolder(env, java::ATTRIBUTE_TYPE.m_value, value);
}

jobject ckCertificateTypeToJCertificateType(JNIEnv* env, CK_CERTIFICATE_TYPE value)
{
    return newHolder(env, java::CERTIFICATE_TYPE.m_value, value);
}

jobject ckHWFeatureTypeToJHWFeatureType(JNIEnv* env, CK_HW_FEATURE_TYPE value)
{
    return newHolder(env, java::HW_FEATURE_TYPE.m_value, value);
}

jobject ckKeyTypeToJKeyType(JNIEnv* env, CK_KEY_TYPE value)
{
    return newHolder(env, java::KEY_TYPE.m_value, value);
}

jobject ckMechanismTypeToJMechanismType(JNIEnv* env, CK_MECHANISM_TYPE value)
{
    return newHolder(env, java::MECHANISM_TYPE.m_value, value);
}

jobject ckObjectClassToJObjectClass(JNIEnv* env, CK_OBJECT_CLASS value)
{
    return newHolder(env, java::OBJECT_CLASS.m_value, value);
}

jobject ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType(JNIEnv* env, CK_RSA_PKCS_OAEP_SOURCE_TYPE value)
{
    return newHolder(env, java::RSA_PKCS_OAEP_SOURCE_TYPE.m_value, value);
}

jobject ckRVToJRV(JNIEnv* env, CK_RV value)
{
    return newHolder(env, java::RV.m_value, value);
}

jobject ckStateToJState(JNIEnv* env, CK_STATE value)
{
    return newHolder(env, java::STATE.m_value, value);
}

jobject ckUserTypeToJUserType(JNIEnv* env, CK_USER_TYPE value)
{
    return newHolder(env, java::USER_TYPE.m_value, value);
}

jobject LongRefObj(JNIEnv* env, CK_ULONG value)
{
    return newHolder(env, java::LONG_REF.value, value);
}

jobject ckBBoolToJBBool(JNIEnv* env, CK_BBOOL value)
{
    const jclass cls = FindClass(env, java::BBOOL.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const jmethodID setValue = GetMethodID(env, java::BBOOL.setValue);
    if (setValue == nullptr) return nullptr;
    env->CallVoidMethod(object, setValue, value == CK_TRUE ? JNI_TRUE : JNI_FALSE);
    return env->ExceptionCheck() ? nullptr : object;
}

jobject ckULongPtrToJLongObject(JNIEnv* env, const CK_ULONG* value)
{
    const jclass cls = FindClass(env, java::LONG.cls);
    if (cls == nullptr) return nullptr;
    const jmethodID constructor = GetMethodID(env, java::LONG.constructor);
    if (constructor == nullptr) return nullptr;
    return env->NewObject(cls, constructor, static_cast<jlong>(*value));
}

jobject ckVersionPtrToJVersion(JNIEnv* env, const CK_VERSION* version)
{
    if (version == nullptr) return nullptr;
    const jclass cls = FindClass(env, java::VERSION.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const bool isSet = SetByteField(env, object, java::VERSION.major, static_cast<jbyte>(version->major)) &&
                       SetByteField(env, object, java::VERSION.minor, static_cast<jbyte>(version->minor));
    return isSet ? object : nullptr;
}

jobject ckDatePtrToJDateObject(JNIEnv* env, const CK_DATE* date)
{
    if (date == nullptr) return nullptr;
    const jclass cls = FindClass(env, java::DATE.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const auto* const digits = reinterpret_cast<const CK_BYTE*>(date);
    for (const DatePiece& piece : DATE_PIECES) {
        const LocalRef<jbyteArray> array(
            env, ckCharArrayToJByteArray(env, digits + piece.offset, piece.width));
        if (array == nullptr) return nullptr;
        if (!SetObjectField(env, object, piece.field, array)) return nullptr;
    }
    return object;
}

jbyteArray ckCharArrayToJByteArray(JNIEnv* env, const CK_CHAR* source, CK_ULONG n)
{
    return ckByteArrayToJByteArray(env, source, n);
}

jbyteArray ckByteArrayToJByteArray(JNIEnv* env, const CK_BYTE* source, CK_ULONG n)
{
    if (source == nullptr) return nullptr;
    const jbyteArray array = env->NewByteArray(arrayLength(n));
    if (array == nullptr) return nullptr;
    env->SetByteArrayRegion(array, 0, static_cast<jsize>(n), reinterpret_cast<const jbyte*>(source));
    return array;
}

jlongArray ckULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG n)
{
    if (source == nullptr) return nullptr;
    const jlongArray array = env->NewLongArray(arrayLength(n));
    if (array == nullptr) return nullptr;
    writeElements(env, array, static_cast<jsize>(n), source);
    return env->ExceptionCheck() ? nullptr : array;
}

jobjectArray ckObjHandleArrayToJObjHandleArray(JNIEnv* env, const CK_OBJECT_HANDLE* source, CK_ULONG n)
{
    return newObjects(env, java::OBJECT_HANDLE.cls, source, n, ckObjectHandleToJObjectHandle);
}

jobjectArray ckMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG n)
{
    return newObjects(env, java::MECHANISM_TYPE.cls, source, n, ckMechanismTypeToJMechanismType);
}

} // namespace zerlin
