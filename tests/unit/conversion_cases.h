// What the tests of the conversions share: tables of how typed values, arrays, strings, dates and records
// look on the two sides, typed out a second time.
#pragma once

#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "jni_helpers.h"
#include "jvm.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace cases {

using namespace zerlin;
using jni::Bytes;
using jni::Longs;

constexpr CK_ULONG ALL_ONES = 0xFFFFFFFF;
constexpr std::uint8_t UNTOUCHED = 0xEE; // fills what waits for a copy
constexpr const char* HANDLE = "halvorn/zerlin/CK_OBJECT_HANDLE";
constexpr const char* MECHANISM_TYPE = "halvorn/zerlin/constants/CK_MECHANISM_TYPE";
constexpr const char* STATE = "halvorn/zerlin/constants/CK_STATE";
constexpr const char* VERSION = "halvorn/zerlin/CK_VERSION";
constexpr const char* OUT_OF_BOUNDS = "java.lang.ArrayIndexOutOfBoundsException";

struct TypedClass {
    const char* path;
    CK_ULONG (*toCK)(JNIEnv*, jobject);
    jobject (*toJava)(JNIEnv*, CK_ULONG);
    CK_ULONG failure;
};

inline constexpr TypedClass TYPED_CLASSES[] = {
    {HANDLE, jObjectHandleToCKObjectHandle, ckObjectHandleToJObjectHandle, 0},
    {"halvorn/zerlin/CK_SESSION_HANDLE", jSessionHandleToCKSessionHandle, ckSessionHandleToJSessionHandle, 0},
    {"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", jAttributeTypeToCKAttributeType,
        ckAttributeTypeToJAttributeType, 0},
    {"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", jCertificateTypeToCKCertificateType,
        ckCertificateTypeToJCertificateType, ALL_ONES},
    {"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", jHWFeatureTypeToCKHWFeatureType,
        ckHWFeatureTypeToJHWFeatureType, ALL_ONES},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", jKeyTypeToCKKeyType, ckKeyTypeToJKeyType, ALL_ONES},
    {MECHANISM_TYPE, jMechanismTypeToCKMechanismType, ckMechanismTypeToJMechanismType, ALL_ONES},
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", jObjectClassToCKObjectClass, ckObjectClassToJObjectClass,
        ALL_ONES},
    {"halvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE", jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType,
        ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType, ALL_ONES},
    {"halvorn/zerlin/constants/CK_RV", jRVToCKRV, ckRVToJRV, ALL_ONES},
    {STATE, jStateToCKState, ckStateToJState, ALL_ONES},
    {"halvorn/zerlin/constants/CK_USER_TYPE", jUserTypeToCKUserType, ckUserTypeToJUserType, ALL_ONES},
};

// Java arrays of the values' low bits.
template <auto create, auto fill>
jobject array(JNIEnv* env, const Longs& values)
{
    return [&]<typename JArray, typename Element>(void (JNIEnv::*)(JArray, jsize, jsize, const Element*)) {
        std::vector<Element> elements;
        for (const jlong value : values) {
            elements.push_back(static_cast<Element>(value));
        }
        const JArray made = (env->*create)(static_cast<jsize>(elements.size()));
        (env->*fill)(made, 0, static_cast<jsize>(elements.size()), elements.data());
        return made;
    }(fill);
}

constexpr auto byteArray = array<&JNIEnv::NewByteArray, &JNIEnv::SetByteArrayRegion>;
constexpr auto booleanArray = array<&JNIEnv::NewBooleanArray, &JNIEnv::SetBooleanArrayRegion>;
constexpr auto charArray = array<&JNIEnv::NewCharArray, &JNIEnv::SetCharArrayRegion>;
constexpr auto intArray = array<&JNIEnv::NewIntArray, &JNIEnv::SetIntArrayRegion>;
constexpr auto longArray = array<&JNIEnv::NewLongArray, &JNIEnv::SetLongArrayRegion>;

inline jobject holder(JNIEnv* env, const char* path, jlong value)
{
    return jni::make(env, path, "(J)V", value);
}

inline jobjectArray holders(JNIEnv* env, const char* path, const Longs& values)
{
    const auto length = static_cast<jsize>(values.size());
    const jobjectArray made = env->NewObjectArray(length, jni::find(env, path), nullptr);
    for (jsize i = 0; i < length; ++i) {
        const LocalFrame frame(env);
        env->SetObjectArrayElement(made, i, holder(env, path, values[static_cast<std::size_t>(i)]));
    }
    return made;
}

// What the holders in an array hold; -1 for a null element.
inline Longs heldBy(JNIEnv* env, jobjectArray array)
{
    Longs values;
    for (jsize i = 0; i < env->GetArrayLength(array); ++i) {
        const LocalFrame frame(env);
        const jobject element = env->GetObjectArrayElement(array, i);
        values.push_back(element == nullptr ? -1 : jni::getLong(env, element, "m_value"));
    }
    return values;
}

// The conversions of arrays, with their types put aside.
template <auto function>
constexpr auto convert = []<typename JArray, typename Native>(
                             void (*)(JNIEnv*, JArray, Native**, CK_ULONG*)) {
    return +[](JNIEnv* env, jobject array, void** data, CK_ULONG* length) {
        auto* native = static_cast<Native*>(*data);
        function(env, static_cast<JArray>(array), &native, length);
        *data = native;
    };
}(function);

template <auto function>
constexpr auto copy = []<typename JArray, typename Native>(void (*)(JNIEnv*, JArray, Native*, CK_ULONG)) {
    return +[](JNIEnv* env, jobject array, void* destination, CK_ULONG capacity) {
        function(env, static_cast<JArray>(array), static_cast<Native*>(destination), capacity);
    };
}(function);

struct ArrayClass {
    const char* name;
    jobject (*make)(JNIEnv*, const Longs&);
    std::size_t width; // of a native element
    bool truth;
    CK_ULONG unit; // what the length of a converted array says for one element
    void (*convert)(JNIEnv*, jobject, void**, CK_ULONG*);
    void (*copy)(JNIEnv*, jobject, void*, CK_ULONG);

    Bytes native(const Longs& values) const
    {
        Bytes bytes;
        for (const jlong value : values) {
            const jlong low = truth ? (value & 0xFF) == 1 : value;
            for (std::size_t i = 0; i < width; ++i) {
                bytes.push_back(static_cast<std::uint8_t>(low >> (8 * i)));
            }
        }
        return bytes;
    }
};

inline constexpr ArrayClass ARRAY_CLASSES[] = {
    {"byte[]", byteArray, 1, false, 1, convert<jByteArrayToCKByteArray>, copy<CopyJByteArrayToCKByteArray>},
    {"boolean[]", booleanArray, 1, true, 1, convert<jBooleanArrayToCKBBoolArray>,
        copy<CopyJBooleanArrayToCKBBoolArray>},
    {"char[]", charArray, 1, false, 1, convert<jCharArrayToCKCharArray>, copy<CopyJCharArrayToCKCharArray>},
    {"long[]", longArray, 4, false, 1, convert<jLongArrayToCKULongArray>, copy<CopyJLongArrayToCKULongArray>},
    {"int[]", intArray, 4, false, 1, nullptr, copy<CopyJIntArrayToCKULongArray>},
    {"CK_OBJECT_HANDLE[]",
        [](JNIEnv* env, const Longs& values) -> jobject { return holders(env, HANDLE, values); }, 4, false, 4,
        convert<jObjectHandleArrayToCKObjectHandleArray>, nullptr},
    {"CK_MECHANISM_TYPE[]",
        [](JNIEnv* env, const Longs& values) -> jobject { return holders(env, MECHANISM_TYPE, values); }, 4,
        false, 4, convert<jMechanismTypeArrayToCKMechanismTypeArray>,
        copy<CopyJMechanismTypeArrayToCKMechanismTypeArray>},
};

// Around the borders of the pieces in which arrays are converted, and 12 bytes, which malloc gives exactly.
constexpr std::size_t LENGTHS[] = {0, 1, 3, 12, 255, 256, 257, 1000};

// That many values with all sorts of bytes, now and then 1.
inline Longs numbers(std::size_t count)
{
    Longs values;
    for (std::uint64_t i = 0; i < count; ++i) {
        values.push_back(i % 7 == 1 ? 1 : static_cast<jlong>((i + 1) * 0x9E3779B97F4A7C15U));
    }
    return values;
}

struct String {
    std::u16string java;
    std::string native;

    jstring make(JNIEnv* env) const
    {
        return env->NewString(reinterpret_cast<const jchar*>(java.data()), static_cast<jsize>(java.size()));
    }
};

inline const String STRINGS[] = {
    {u"", ""},
    {u"abcdefghij", "abcdefghij"},
    {u"Gr\u00FC\u00DFe \u20AC", "Gr\u00FC\u00DFe \u20AC"},
    {{'a', 0, 'b'}, {'a', '\xC0', '\x80', 'b'}},
    {u"\U0001F600", "\xED\xA0\xBD\xED\xB8\x80"},
    {std::u16string(1000, u'x'), std::string(1000, 'x')},
};

// A Java date and the eight bytes that it becomes; a dot stands for a byte that is not written, a null for a
// null array.
struct Date {
    const char* year;
    const char* month;
    const char* day;
    const char* native;

    jobject make(JNIEnv* env) const
    {
        const jobject object = jni::alloc(env, "halvorn/zerlin/CK_DATE");
        for (const auto& [field, digits] : {std::pair{"year", year}, {"month", month}, {"day", day}}) {
            if (digits != nullptr) jni::setObject(env, object, field, "[B", jni::bytes(env, digits));
        }
        return object;
    }
};

inline constexpr Date DATES[] = {
    {"2024", "07", "15", "0724..15"}, // the month over the year: wanted
    {"2024", "7", "1", "7024..1."},
    {"20245", "0712", "1534", "0724..15"},
    {"20", "", "15", "20....15"},
    {nullptr, "07", nullptr, "07......"},
    {"2024", nullptr, "15", "2024..15"},
};

struct Field {
    const char* name;
    char kind; // number, text, version or state
    std::size_t offset;
    std::size_t width;

    const char* signature() const
    {
        if (kind == 't') return "[B";
        return kind == 'v' ? "Lhalvorn/zerlin/CK_VERSION;" : "Lhalvorn/zerlin/constants/CK_STATE;";
    }
};

struct Record {
    const char* path;
    std::size_t size;
    std::vector<Field> fields;
    void (*toCK)(JNIEnv*, jobject, void*);
    void (*toJava)(JNIEnv*, const void*, jobject);

    // The native record, no two bytes of which are the same, as far as its first fields.
    Bytes bytes(std::size_t firstFields) const
    {
        Bytes all(size, UNTOUCHED);
        for (std::size_t field = 0; field < firstFields; ++field) {
            const std::size_t end = fields[field].offset + fields[field].width;
            for (std::size_t i = fields[field].offset; i < end; ++i) {
                all[i] = static_cast<std::uint8_t>(i * 37 + 11);
            }
        }
        return all;
    }
};

template <typename Native, void (*toCK)(JNIEnv*, jobject, Native*),
    void (*toJava)(JNIEnv*, const Native*, jobject)>
Record record(const char* path, std::size_t size, std::vector<Field> fields)
{
    return {path, size, std::move(fields),
        [](JNIEnv* env, jobject object, void* native) { toCK(env, object, static_cast<Native*>(native)); },
        [](JNIEnv* env, const void* native, jobject object) {
            toJava(env, static_cast<const Native*>(native), object);
        }};
}

inline const Record RECORDS[] = {
    record<CK_INFO, CopyJInfoToCKInfo, CopyCKInfoToJInfo>("halvorn/zerlin/CK_INFO", 76,
        {{"cryptokiVersion", 'v', 0, 2}, {"manufacturerID", 't', 2, 32}, {"flags", 'n', 36, 4},
            {"libraryDescription", 't', 40, 32}, {"libraryVersion", 'v', 72, 2}}),
    record<CK_SLOT_INFO, CopyJSlotInfoToCKSlotInfo, CopyCKSlotInfoToJSlotInfo>("halvorn/zerlin/CK_SLOT_INFO",
        104,
        {{"slotDescription", 't', 0, 64}, {"manufacturerID", 't', 64, 32}, {"flags", 'n', 96, 4},
            {"hardwareVersion", 'v', 100, 2}, {"firmwareVersion", 'v', 102, 2}}),
    record<CK_TOKEN_INFO, CopyJTokenInfoToCKTokenInfo, CopyCKTokenInfoToJTokenInfo>(
        "halvorn/zerlin/CK_TOKEN_INFO", 160,
        {{"label", 't', 0, 32}, {"manufacturerID", 't', 32, 32}, {"model", 't', 64, 16},
            {"serialNumber", 't', 80, 16}, {"flags", 'n', 96, 4}, {"maxSessionCount", 'n', 100, 4},
            {"sessionCount", 'n', 104, 4}, {"maxRwSessionCount", 'n', 108, 4},
            {"rwSessionCount", 'n', 112, 4}, {"maxPinLen", 'n', 116, 4}, {"minPinLen", 'n', 120, 4},
            {"totalPublicMemory", 'n', 124, 4}, {"freePublicMemory", 'n', 128, 4},
            {"totalPrivateMemory", 'n', 132, 4}, {"freePrivateMemory", 'n', 136, 4},
            {"hardwareVersion", 'v', 140, 2}, {"firmwareVersion", 'v', 142, 2}, {"utcTime", 't', 144, 16}}),
    record<CK_SESSION_INFO, CopyJSessionInfoToCKSessionInfo, CopyCKSessionInfoToJSessionInfo>(
        "halvorn/zerlin/CK_SESSION_INFO", 16,
        {{"slotID", 'n', 0, 4}, {"state", 's', 4, 4}, {"flags", 'n', 8, 4}, {"deviceError", 'n', 12, 4}}),
    record<CK_MECHANISM_INFO, CopyJMechInfoToCKMechInfo, CopyCKMechanismInfoToJMechanismInfo>(
        "halvorn/zerlin/CK_MECHANISM_INFO", 12,
        {{"minKeySize", 'n', 0, 4}, {"maxKeySize", 'n', 4, 4}, {"flags", 'n', 8, 4}}),
};

} // namespace cases
