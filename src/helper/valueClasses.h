// The Java classes that an attribute value may have, in the order in which a value is tested, for all the
// routines that choose their way by the class of a value.
#pragma once

#include <array>
#include <iterator>
#include <span>
#include <utility>

#include <jni.h>

#include "helper/convToCK.h"
#include "helper/javaNames.h"
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
    JavaClass& cls;
    ValueKind kind;
    JavaField* m_value = nullptr;                      // of handles and typed constants
    JavaMethod* setValue = nullptr;                    // of typed constants
    CK_ULONG (*toCKULong)(JNIEnv*, jobject) = nullptr; // of handles and typed constants
};

constexpr ValueClass handle(java::Handle& names, CK_ULONG (*toCKULong)(JNIEnv*, jobject))
{
    return {names.cls, ValueKind::Handle, &names.m_value, nullptr, toCKULong};
}

constexpr ValueClass constant(java::TypedConstant& names, CK_ULONG (*toCKULong)(JNIEnv*, jobject))
{
    return {names.cls, ValueKind::Constant, &names.m_value, &names.setValue, toCKULong};
}

inline constexpr ValueClass VALUE_CLASSES[] = {
    {java::BYTE_ARRAY, ValueKind::ByteArray},
    {java::LONG.cls, ValueKind::Long},
    {java::BBOOL.cls, ValueKind::BBool},
    {java::DATE.cls, ValueKind::Date},
    handle(java::OBJECT_HANDLE, jObjectHandleToCKObjectHandle),
    handle(java::SESSION_HANDLE, jSessionHandleToCKSessionHandle),
    constant(java::ATTRIBUTE_TYPE, jAttributeTypeToCKAttributeType),
    constant(java::CERTIFICATE_TYPE, jCertificateTypeToCKCertificateType),
    constant(java::HW_FEATURE_TYPE, jHWFeatureTypeToCKHWFeatureType),
    constant(java::KEY_TYPE, jKeyTypeToCKKeyType),
    {java::MECHANISM_TYPE_ARRAY, ValueKind::MechanismTypeArray},
    constant(java::MECHANISM_TYPE, jMechanismTypeToCKMechanismType),
    constant(java::OBJECT_CLASS, jObjectClassToCKObjectClass),
    constant(java::RSA_PKCS_OAEP_SOURCE_TYPE, jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType),
    constant(java::RV, jRVToCKRV),
    constant(java::STATE, jStateToCKState),
    constant(java::USER_TYPE, jUserTypeToCKUserType),
    {java::BOOLEAN.cls, ValueKind::Boolean},
    {java::LONG_ARRAY, ValueKind::LongArray},
    {java::STRING, ValueKind::String},
    {java::INTEGER.cls, ValueKind::Integer},
    {java::INT_ARRAY, ValueKind::IntArray},
    {java::BOOLEAN_ARRAY, ValueKind::BooleanArray},
    {java::CHAR_ARRAY, ValueKind::CharArray},
    {java::BYTE.cls, ValueKind::Byte},
    {java::CHARACTER.cls, ValueKind::Character},
};

inline constexpr std::size_t VALUE_ROWS = std::size(VALUE_CLASSES);
// The first rows can be written back to.
inline constexpr std::size_t WRITABLE_VALUE_ROWS = 18;

// The classes of all rows, which are found together before any is used.
template <std::size_t... row>
constexpr auto valueClasses(std::index_sequence<row...>)
{
    return std::array{&VALUE_CLASSES[row].cls...};
}
inline constexpr auto ALL_VALUE_CLASSES = valueClasses(std::make_index_sequence<VALUE_ROWS>());
inline constinit JavaClassGroup READABLE_VALUES{ALL_VALUE_CLASSES};
inline constinit JavaClassGroup WRITABLE_VALUES{std::span(ALL_VALUE_CLASSES).first(WRITABLE_VALUE_ROWS)};

// The rows in the order of the tests, the classes of nearly all values first. No object is of two rows, so
// the order cannot change which one it is.
inline constexpr std::size_t TESTED_ROWS[] = {
    0, 2, 1, 12, 9, 3, 4, 5, 6, 7, 8, 10, 11, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25};
static_assert(std::size(TESTED_ROWS) == VALUE_ROWS);

inline constexpr std::size_t BYTE_ARRAY_ROW = 0;
inline constexpr std::size_t LONG_ROW = 1;
inline constexpr std::size_t BBOOL_ROW = 2;
inline constexpr std::size_t KEY_TYPE_ROW = 9;
inline constexpr std::size_t OBJECT_CLASS_ROW = 12;
static_assert(VALUE_CLASSES[BYTE_ARRAY_ROW].kind == ValueKind::ByteArray);
static_assert(VALUE_CLASSES[LONG_ROW].kind == ValueKind::Long);
static_assert(VALUE_CLASSES[BBOOL_ROW].kind == ValueKind::BBool);
static_assert(&VALUE_CLASSES[KEY_TYPE_ROW].cls == &java::KEY_TYPE.cls);
static_assert(&VALUE_CLASSES[OBJECT_CLASS_ROW].cls == &java::OBJECT_CLASS.cls);

// The row that a value of an attribute of that type nearly always has.
inline std::size_t likelyRow(CK_ATTRIBUTE_TYPE type)
{
    switch (type) {
    case CKA_CLASS:
        return OBJECT_CLASS_ROW;
    case CKA_KEY_TYPE:
        return KEY_TYPE_ROW;
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
        return BBOOL_ROW;
    case CKA_VALUE_LEN:
    case CKA_MODULUS_BITS:
        return LONG_ROW;
    default:
        return BYTE_ARRAY_ROW;
    }
}

// The row whose class the value has, or the number of rows. The classes of the rows have been found.
inline std::size_t valueClassOf(JNIEnv* env, std::size_t rows, jobject value, std::size_t likely = 0)
{
    if (IsInstanceOf(env, value, VALUE_CLASSES[likely].cls)) return likely;
    for (const std::size_t row : TESTED_ROWS) {
        if (row < rows && row != likely && IsInstanceOf(env, value, VALUE_CLASSES[row].cls)) return row;
    }
    return rows;
}

} // namespace zerlin
