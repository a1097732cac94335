// The Java classes that an attribute value may have, in the order in which a value is tested, for all the
// routines that choose their way by the class of a value.
#pragma once

#include <array>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/jutil.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

enum class ValueKind {
    ByteArray,
    Long,
    BBool,
    Date,
    Handle,   // m_value is a field to write
    Constant, // m_value is written through setValue
    MechanismTypeArray,
    Boolean,
    LongArray,
    String,
    Integer,
    IntArray,
    BooleanArray,
    CharArray,
    Byte,
    Character,
};

struct ValueClass {
    Literal path;
    ValueKind kind;
    CK_ULONG (*toCKULong)(JNIEnv*, jobject); // of handles and typed constants
};

inline constexpr ValueClass VALUE_CLASSES[] = {
    {"[B", ValueKind::ByteArray, nullptr},
    {"java/lang/Long", ValueKind::Long, nullptr},
    {"halvorn/zerlin/CK_BBOOL", ValueKind::BBool, nullptr},
    {"halvorn/zerlin/CK_DATE", ValueKind::Date, nullptr},
    {"halvorn/zerlin/CK_OBJECT_HANDLE", ValueKind::Handle, jObjectHandleToCKObjectHandle},
    {"halvorn/zerlin/CK_SESSION_HANDLE", ValueKind::Handle, jSessionHandleToCKSessionHandle},
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", ValueKind::Constant, jAttributeTypeToCKAttributeType},
    {"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", ValueKind::Constant,
        jCertificateTypeToCKCertificateType},
    {"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", ValueKind::Constant, jHWFeatureTypeToCKHWFeatureType},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", ValueKind::Constant, jKeyTypeToCKKeyType},
    {"[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", ValueKind::MechanismTypeArray, nullptr},
    {"halvorn/zerlin/constants/CK_MECHANISM_TYPE", ValueKind::Constant, jMechanismTypeToCKMechanismType},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", ValueKind::Constant, jObjectClassToCKObjectClass},
    {"halvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE", ValueKind::Constant,
        jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType},
    {"halvorn/zerlin/constants/CK_RV", ValueKind::Constant, jRVToCKRV},
    {"halvorn/zerlin/constants/CK_STATE", ValueKind::Constant, jStateToCKState},
    {"halvorn/zerlin/constants/CK_USER_TYPE", ValueKind::Constant, jUserTypeToCKUserType},
    {"java/lang/Boolean", ValueKind::Boolean, nullptr},
    {"[J", ValueKind::LongArray, nullptr},
    {"java/lang/String", ValueKind::String, nullptr},
    {"java/lang/Integer", ValueKind::Integer, nullptr},
    {"[I", ValueKind::IntArray, nullptr},
    {"[Z", ValueKind::BooleanArray, nullptr},
    {"[C", ValueKind::CharArray, nullptr},
    {"java/lang/Byte", ValueKind::Byte, nullptr},
    {"java/lang/Character", ValueKind::Character, nullptr},
};

// How many of them can be written back to: the first rows.
inline constexpr std::size_t WRITABLE_VALUE_CLASSES = 18;

using ValueClasses = std::array<jclass, std::size(VALUE_CLASSES)>;

// Looks up the first rows' classes, all of them before any is used. False with an exception pending when one
// cannot be found.
inline bool findValueClasses(JNIEnv* env, ValueClasses& classes, std::size_t rows)
{
    bool found = true;
    for (std::size_t i = 0; i < rows && found; ++i) {
        classes[i] = FindClass(env, VALUE_CLASSES[i].path);
        found = classes[i] != nullptr;
    }
    return found;
}

// The first row whose class the value has, or the number of rows.
inline std::size_t valueClassOf(JNIEnv* env, const ValueClasses& classes, std::size_t rows, jobject value)
{
    std::size_t row = 0;
    while (row < rows && !env->IsInstanceOf(value, classes[row])) {
        ++row;
    }
    return row;
}

} // namespace zerlin
