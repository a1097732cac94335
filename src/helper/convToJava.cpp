// Handles, typed constants, booleans, versions, dates and arrays from native to new Java objects.
#include "helper/convToJava.h"

#include "helper/elements.h"
#include "helper/jutil.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToJava $\" \"$Revision: 1.1.1.2 $\"";

jobject newHolder(JNIEnv* env, Literal path, CK_ULONG value, Literal field = "m_value")
{
    const jclass cls = FindClass(env, path);
    if (cls == nullptr) return nullptr;
    const jobject holder = env->AllocObject(cls);
    if (holder == nullptr) return nullptr;
    const jfieldID valueField = GetFieldID(env, cls, field, "J");
    // The fields of a new object are zero already.
    if (valueField != nullptr && value != 0) env->SetLongField(holder, valueField, static_cast<jlong>(value));
    return holder;
}

jobjectArray newObjects(
    JNIEnv* env, Literal path, const CK_ULONG* source, CK_ULONG n, jobject (*make)(JNIEnv*, CK_ULONG))
{
    if (source == nullptr) return nullptr;
    const jclass cls = FindClass(env, path);
    if (cls == nullptr) return nullptr;
    const jobjectArray array = env->NewObjectArray(static_cast<jsize>(n), cls, nullptr);
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
    return newHolder(env, "halvorn/zerlin/CK_OBJECT_HANDLE", value);
}

jobject ckSessionHandleToJSessionHandle(JNIEnv* env, CK_SESSION_HANDLE value)
{
    return newHolder(env, "halvorn/zerlin/CK_SESSION_HANDLE", value);
}

jobject ckAttributeTypeToJAttributeType(JNIEnv* env, CK_ATTRIBUTE_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", value);
}

jobject ckCertificateTypeToJCertificateType(JNIEnv* env, CK_CERTIFICATE_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", value);
}

jobject ckHWFeatureTypeToJHWFeatureType(JNIEnv* env, CK_HW_FEATURE_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", value);
}

jobject ckKeyTypeToJKeyType(JNIEnv* env, CK_KEY_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_KEY_TYPE", value);
}

jobject ckMechanismTypeToJMechanismType(JNIEnv* env, CK_MECHANISM_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", value);
}

jobject ckObjectClassToJObjectClass(JNIEnv* env, CK_OBJECT_CLASS value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_OBJECT_CLASS", value);
}

jobject ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType(JNIEnv* env, CK_RSA_PKCS_OAEP_SOURCE_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE", value);
}

jobject ckRVToJRV(JNIEnv* env, CK_RV value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_RV", value);
}

jobject ckStateToJState(JNIEnv* env, CK_STATE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_STATE", value);
}

jobject ckUserTypeToJUserType(JNIEnv* env, CK_USER_TYPE value)
{
    return newHolder(env, "halvorn/zerlin/constants/CK_USER_TYPE", value);
}

jobject LongRefObj(JNIEnv* env, CK_ULONG value)
{
    return newHolder(env, "halvorn/zerlin/LongRef", value, "value");
}

jobject ckBBoolToJBBool(JNIEnv* env, CK_BBOOL value)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_BBOOL");
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const jmethodID setValue = GetMethodID(env, cls, "setValue", "(Z)V");
    if (setValue == nullptr) return nullptr;
    env->CallVoidMethod(object, setValue, value == CK_TRUE ? JNI_TRUE : JNI_FALSE);
    return env->ExceptionCheck() ? nullptr : object;
}

jobject ckULongPtrToJLongObject(JNIEnv* env, const CK_ULONG* value)
{
    const jclass cls = FindClass(env, "java/lang/Long");
    if (cls == nullptr) return nullptr;
    const jmethodID constructor = GetMethodID(env, cls, "<init>", "(J)V");
    if (constructor == nullptr) return nullptr;
    return env->NewObject(cls, constructor, static_cast<jlong>(*value));
}

jobject ckVersionPtrToJVersion(JNIEnv* env, const CK_VERSION* version)
{
    if (version == nullptr) return nullptr;
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_VERSION");
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const bool isSet = SetByteField(env, cls, object, "major", static_cast<jbyte>(version->major)) &&
                       SetByteField(env, cls, object, "minor", static_cast<jbyte>(version->minor));
    return isSet ? object : nullptr;
}

jobject ckDatePtrToJDateObject(JNIEnv* env, const CK_DATE* date)
{
    if (date == nullptr) return nullptr;
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_DATE");
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    struct Piece {
        Literal name;
        const CK_CHAR* digits;
        CK_ULONG width;
    };
    const Piece pieces[] = {
        {"year", date->year, sizeof date->year},
        {"month", date->month, sizeof date->month},
        {"day", date->day, sizeof date->day},
    };
    for (const Piece& piece : pieces) {
        const LocalRef<jbyteArray> digits(env, ckCharArrayToJByteArray(env, piece.digits, piece.width));
        if (env->ExceptionCheck()) return nullptr;
        SetObjectField(env, cls, object, piece.name, "[B", digits);
        if (env->ExceptionCheck()) return nullptr;
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
    const jbyteArray array = env->NewByteArray(static_cast<jsize>(n));
    if (array == nullptr) return nullptr;
    env->SetByteArrayRegion(array, 0, static_cast<jsize>(n), reinterpret_cast<const jbyte*>(source));
    return array;
}

jlongArray ckULongArrayToJLongArray(JNIEnv* env, const CK_ULONG* source, CK_ULONG n)
{
    if (source == nullptr) return nullptr;
    const jlongArray array = env->NewLongArray(static_cast<jsize>(n));
    if (array == nullptr) return nullptr;
    writeElements(env, array, static_cast<jsize>(n), source);
    return env->ExceptionCheck() ? nullptr : array;
}

jobjectArray ckObjHandleArrayToJObjHandleArray(JNIEnv* env, const CK_OBJECT_HANDLE* source, CK_ULONG n)
{
    return newObjects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", source, n, ckObjectHandleToJObjectHandle);
}

jobjectArray ckMechanismTypeArrayToJMechanismTypeArray(
    JNIEnv* env, const CK_MECHANISM_TYPE* source, CK_ULONG n)
{
    return newObjects(
        env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", source, n, ckMechanismTypeToJMechanismType);
}

} // namespace zerlin
