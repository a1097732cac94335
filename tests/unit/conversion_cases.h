// What the tests of the conversions share: tables of how typed values and records look on the two
// sides, typed out a second time.
#pragma once

#include "harness/jni_helpers.h"
#include "harness/jvm.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"

#include <algorithm>
#include <utility>

namespace cases {

using namespace zerlin;
using jni::Bytes;
using jni::Longs;
using Words = std::vector<CK_ULONG>;

constexpr CK_ULONG ALL_ONES = 0xFFFFFFFF;
constexpr std::uint8_t UNTOUCHED = 0xEE; // fills what waits for a copy
constexpr const char* HANDLE = "halvorn/zerlin/CK_OBJECT_HANDLE";
constexpr const char* MECHANISM_TYPE = "halvorn/zerlin/constants/CK_MECHANISM_TYPE";
constexpr const char* STATE = "halvorn/zerlin/constants/CK_STATE";

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

inline jlongArray longArray(JNIEnv* env, const Longs& values)
{
    const auto length = static_cast<jsize>(values.size());
    const jlongArray made = env->NewLongArray(length);
    env->SetLongArrayRegion(made, 0, length, values.data());
    return made;
}

// Around the borders of the pieces in which arrays are converted, and 12 bytes, which malloc gives exactly.
constexpr std::size_t LENGTHS[] = {0, 1, 12, 255, 256, 257, 1000};

// That many values with all sorts of bytes, now and then 1.
inline Longs numbers(std::size_t count)
{
    Longs values;
    for (std::uint64_t i = 0; i < count; ++i)
        values.push_back(i % 7 == 1 ? 1 : static_cast<jlong>((i + 1) * 0x9E3779B97F4A7C15U));
    return values;
}

struct Record {
    const char* path;
    void (*toCK)(JNIEnv*, jobject, void*);
    void (*toJava)(JNIEnv*, const void*, jobject);
    std::string text; // of the Java record that recordBytes becomes
};

template <typename Native, auto toCK, auto toJava>
Record record(const char* path, const char* text)
{
    return {path,
        [](JNIEnv* env, jobject object, void* native) { toCK(env, object, static_cast<Native*>(native)); },
        [](JNIEnv* env, const void* native, jobject object) {
            toJava(env, static_cast<const Native*>(native), object);
        },
        text};
}

inline const Record RECORDS[] = {
    record<CK_INFO, CopyJInfoToCKInfo, CopyCKInfoToJInfo>("halvorn/zerlin/CK_INFO",
        "[CK_INFO[cryptokiVersion=48.49, manufacturerID=23456789:;<=>?@ABCDEFGHIJKLMNOPQ, flags=0x57565554, "
        "libraryDescription=XYZ0123456789:;<=>?@ABCDEFGHIJKL, libraryVersion=77.78]]"),
    record<CK_SLOT_INFO, CopyJSlotInfoToCKSlotInfo, CopyCKSlotInfoToJSlotInfo>("halvorn/zerlin/CK_SLOT_INFO",
        "[CK_SLOT_INFO[slotDescription=0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:;<=>?@ABCD, "
        "manufacturerID=EFGHIJKLMNOPQRSTUVWXYZ0123456789, flags=0x3d3c3b3a, hardwareVersion=62.63, "
        "firmwareVersion=64.65]]"),
    record<CK_TOKEN_INFO, CopyJTokenInfoToCKTokenInfo, CopyCKTokenInfoToJTokenInfo>(
        "halvorn/zerlin/CK_TOKEN_INFO",
        "[CK_TOKEN_INFO[label=0123456789:;<=>?@ABCDEFGHIJKLMNO, "
        "manufacturerID=PQRSTUVWXYZ0123456789:;<=>?@ABCD, model=EFGHIJKLMNOPQRST, "
        "serialNumber=UVWXYZ0123456789, flags=0x3d3c3b3a, maxSessionCount=1094729534, "
        "sessionCount=1162101570, maxRwSessionCount=1229473606, rwSessionCount=1296845642, "
        "maxPinLen=1364217678, minPinLen=1431589714, totalPublicMemory=1498961750, "
        "freePublicMemory=842084442, totalPrivateMemory=909456435, freePrivateMemory=976828471, "
        "hardwareVersion=59.60, firmwareVersion=61.62, utcTime=?@ABCDEFGHIJKLMN]]"),
    record<CK_SESSION_INFO, CopyJSessionInfoToCKSessionInfo, CopyCKSessionInfoToJSessionInfo>(
        "halvorn/zerlin/CK_SESSION_INFO",
        "[CK_SESSION_INFO[slotID=858927408, state=0x37363534, flags=0x3b3a3938, deviceError=1061043516]]"),
    record<CK_MECHANISM_INFO, CopyJMechInfoToCKMechInfo, CopyCKMechanismInfoToJMechanismInfo>(
        "halvorn/zerlin/CK_MECHANISM_INFO",
        "[CK_MECHANISM_INFO[minKeySize=858927408, maxKeySize=926299444, flags=0x3b3a3938]]"),
};

// The longest native record, whose neighbours and fields differ.
inline Bytes recordBytes()
{
    Bytes all(sizeof(CK_TOKEN_INFO));
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<std::uint8_t>('0' + i % 43);
    return all;
}

} // namespace cases
