// Attributes from native to new Java objects: the attribute's type decides the class of the value.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "helper/convToJava.h"
#include "helper/elements.h"
#include "helper/javaNames.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

enum class NewValue { Class, CertificateType, KeyType, HWFeatureType, BBool, Date, Long, MechanismTypes };

struct TypeRange {
    CK_ATTRIBUTE_TYPE first;
    CK_ATTRIBUTE_TYPE last;
    NewValue value;
};

// Every other type becomes a byte[].
constexpr TypeRange TYPES[] = {
    {CKA_CLASS, CKA_CLASS, NewValue::Class},
    {CKA_TOKEN, CKA_PRIVATE, NewValue::BBool},
    {CKA_CERTIFICATE_TYPE, CKA_CERTIFICATE_TYPE, NewValue::CertificateType},
    {CKA_TRUSTED, CKA_TRUSTED, NewValue::BBool},
    {CKA_KEY_TYPE, CKA_KEY_TYPE, NewValue::KeyType},
    {CKA_SENSITIVE, CKA_DERIVE, NewValue::BBool},
    {CKA_START_DATE, CKA_END_DATE, NewValue::Date},
    {CKA_MODULUS_BITS, CKA_MODULUS_BITS, NewValue::Long},
    {CKA_PRIME_BITS, CKA_SUBPRIME_BITS, NewValue::Long},
    {CKA_VALUE_BITS, CKA_VALUE_LEN, NewValue::Long},
    {CKA_EXTRACTABLE, CKA_ALWAYS_SENSITIVE, NewValue::BBool},
    {CKA_MODIFIABLE, CKA_MODIFIABLE, NewValue::BBool},
    {CKA_SECONDARY_AUTH, CKA_SECONDARY_AUTH, NewValue::BBool},
    {CKA_AUTH_PIN_FLAGS, CKA_AUTH_PIN_FLAGS, NewValue::Long},
    {CKA_HW_FEATURE_TYPE, CKA_HW_FEATURE_TYPE, NewValue::HWFeatureType},
    {CKA_RESET_ON_INIT, CKA_HAS_RESET, NewValue::BBool},
    {CKA_USAGE_COUNT, CKA_USAGE_COUNT, NewValue::Long},
    {CKA_MECHANISM_LIST, CKA_MECHANISM_LIST, NewValue::MechanismTypes},
    {CKA_SIGN_LOCAL_CERT, CKA_IMPORT, NewValue::BBool},
    {CKA_RECORD_COUNT, CKA_RECORD_NUMBER, NewValue::Long},
    {CKA_PURGE, CKA_EVENT_LOG_FULL, NewValue::BBool},
    {CKA_SECURITY_MODE, CKA_FREE_MEM, NewValue::Long},
    {CKA_TAMPER_CMD, CKA_TAMPER_CMD, NewValue::BBool},
    {CKA_HALT_CMD, CKA_HALT_CMD, NewValue::BBool},
    {CKA_APPLICATION_COUNT, CKA_APPLICATION_COUNT, NewValue::Long},
    {CKA_RTC_AAC_ENABLED, CKA_RTC_AAC_ENABLED, NewValue::BBool},
    {CKA_RTC_AAC_GUARD_SECONDS, CKA_AAC_GUARD_DURATION, NewValue::Long},
    {CKA_SLOT_ID, CKA_SLOT_ID, NewValue::Long},
    {CKA_MAX_SESSIONS, CKA_MIN_PIN_LEN, NewValue::Long},
    {CKA_MAX_PIN_FAIL, CKA_FLAGS, NewValue::Long},
    {CKA_VERIFY_OS, CKA_VERIFY_OS, NewValue::BBool},
    {CKA_ROM_SPACE, CKA_FM_STATUS, NewValue::Long},
    {CKA_FM_STARTUP_STATUS, CKA_FM_ID, NewValue::Long},
    {CKA_USAGE_LIMIT, CKA_USAGE_LIMIT, NewValue::Long},
    {CKA_HIFACE_MASTER, CKA_HIFACE_MASTER, NewValue::BBool},
};

jobject newValue(JNIEnv* env, NewValue value, const CK_BYTE* bytes, CK_ULONG length)
{
    CK_ULONG number = 0;
    std::memcpy(&number, bytes, std::min(length, CK_ULONG{sizeof number}));
    switch (value) {
    case NewValue::Class:
        return ckObjectClassToJObjectClass(env, number);
    case NewValue::CertificateType:
        return ckCertificateTypeToJCertificateType(env, number);
    case NewValue::KeyType:
        return ckKeyTypeToJKeyType(env, number);
    case NewValue::HWFeatureType:
        return ckHWFeatureTypeToJHWFeatureType(env, number);
    case NewValue::BBool:
        return ckBBoolToJBBool(env, *bytes);
    case NewValue::Date: {
        CK_DATE date{};
        std::memcpy(&date, bytes, std::min(length, CK_ULONG{sizeof date}));
        return ckDatePtrToJDateObject(env, &date);
    }
    case NewValue::Long:
        return ckULongPtrToJLongObject(env, &number);
    case NewValue::MechanismTypes:
        return ckMechanismTypeArrayToJMechanismTypeArray(
            env, reinterpret_cast<const CK_MECHANISM_TYPE*>(bytes), length / sizeof(CK_MECHANISM_TYPE));
    }
    return nullptr;
}

} // namespace

jobject ckAttributeValueToJObject(JNIEnv* env, const CK_ATTRIBUTE* attribute)
{
    if (attribute == nullptr || attribute->pValue == nullptr || attribute->ulValueLen == 0) return nullptr;
    const auto* const bytes = static_cast<const CK_BYTE*>(attribute->pValue);
    const TypeRange* const row =
        std::find_if(std::begin(TYPES), std::end(TYPES), [&](const TypeRange& range) {
            return attribute->type >= range.first && attribute->type <= range.last;
        });
    if (row == std::end(TYPES)) return ckByteArrayToJByteArray(env, bytes, attribute->ulValueLen);
    return newValue(env, row->value, bytes, attribute->ulValueLen);
}

jobject ckAttributePtrToJAttribute(JNIEnv* env, const CK_ATTRIBUTE* attribute)
{
    if (attribute == nullptr) return nullptr;
    const jclass cls = FindClass(env, java::ATTRIBUTE.cls);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const LocalRef<jobject> type(env, ckAttributeTypeToJAttributeType(env, attribute->type));
    if (env->ExceptionCheck()) return nullptr;
    SetObjectField(env, object, java::ATTRIBUTE.type, type);
    if (env->ExceptionCheck()) return nullptr;
    const LocalRef<jobject> value(env, ckAttributeValueToJObject(env, attribute));
    if (env->ExceptionCheck()) return nullptr;
    SetObjectField(env, object, java::ATTRIBUTE.pValue, value);
    if (env->ExceptionCheck()) return nullptr;
    SetLongField(env, object, java::ATTRIBUTE.valueLen, attribute->ulValueLen);
    return env->ExceptionCheck() ? nullptr : object;
}

jobjectArray ckAttributeArrayToJAttributeArray(JNIEnv* env, const CK_ATTRIBUTE* source, CK_ULONG count)
{
    if (source == nullptr) return nullptr;
    const jclass cls = FindClass(env, java::ATTRIBUTE.cls);
    if (cls == nullptr) return nullptr;
    const LocalRef<jobjectArray> array(env, env->NewObjectArray(arrayLength(count), cls, nullptr));
    if (array == nullptr) return nullptr;
    for (CK_ULONG i = 0; i < count; ++i) {
        const LocalRef<jobject> element(env, ckAttributePtrToJAttribute(env, &source[i]));
        if (env->ExceptionCheck()) return nullptr;
        env->SetObjectArrayElement(array, static_cast<jsize>(i), element);
        if (env->ExceptionCheck()) return nullptr;
    }
    return static_cast<jobjectArray>(env->NewLocalRef(array));
}

} // namespace zerlin
