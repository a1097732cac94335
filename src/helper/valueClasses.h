// The Java classes that an attribute value may have, in the order in which a value is tested, for all the
// routines that choose their way by the class of a value.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <utility>

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

template <std::size_t... row>
constexpr auto valueClassPaths(std::index_sequence<row...>)
{
    return std::array{VALUE_CLASSES[row].path...};
}
inline constexpr auto VALUE_CLASS_PATHS =
    valueClassPaths(std::make_index_sequence<std::size(VALUE_CLASSES)>());

// Looks up the first rows' classes, all of them before any is used. Null with an exception pending when one
// cannot be found.
inline const jclass* findValueClasses(JNIEnv* env, std::size_t rows)
{
    return FindClasses(env, std::span(VALUE_CLASS_PATHS).first(rows));
}

// The rows in the order of the tests, those that nearly all values have first. No object is of two rows, so
// that the order cannot change which one it is.
inline constexpr std::size_t TESTED_ROWS[] = {
    0, 2, 1, 12, 9, 3, 4, 5, 6, 7, 8, 10, 11, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25};
static_assert(std::size(TESTED_ROWS) == std::size(VALUE_CLASSES));

consteval std::size_t rowOf(std::string_view path)
{
    std::size_t row = 0;
    while (path != VALUE_CLASSES[row].path.text)
        ++row;
    return row;
}

// The row that a value of an attribute of that type nearly always has.
inline std::size_t likelyRow(CK_ATTRIBUTE_TYPE type)
{
    switch (type) {
    case CKA_CLASS:
        return rowOf("halvorn/zerlin/constants/CK_OBJECT_CLASS");
    case CKA_KEY_TYPE:
        return rowOf("halvorn/zerlin/constants/CK_KEY_TYPE");
    case CKA_TOKEN:
    case CKA_PRIVATE:
    case CKA_SENSITIVE:
    case CKA_ENCRYPT:
    case CKA_DECRYPT:
    case CKA_WRAP:
    case CKA_UNWRAP:
    case CKA_SIGN:
    case CKA_VERIFY:
    case CKA_DERIVE:
    case CKA_EXTRACTABLE:
    case CKA_MODIFIABLE:
        return rowOf("halvorn/zerlin/CK_BBOOL");
    case CKA_VALUE_LEN:
    case CKA_MODULUS_BITS:
        return rowOf("java/lang/Long");
    default:
        return rowOf("[B");
    }
}

// The row whose class the value has, or the number of rows.
inline std::size_t valueClassOf(
    JNIEnv* env, const jclass* classes, std::size_t rows, jobject value, std::size_t likely = 0)
{
    if (env->IsInstanceOf(value, classes[likely])) return likely;
    for (const std::size_t row : TESTED_ROWS) {
        if (row < rows && row != likely && env->IsInstanceOf(value, classes[row])) return row;
    }
    return rows;
}

} // namespace zerlin
