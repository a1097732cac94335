// Handles, typed constants, boxed values, arrays, dates and information records, in all directions: into new
// and existing native memory (convToCK, copyToCK), into new and existing Java objects (convToJava,
// copyToJava).
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "values.h"

#include <regex>

namespace {

using namespace jni;
using namespace zerlin;

struct Conversions : JniTest {};

constexpr CK_ULONG ALL_ONES = 0xFFFFFFFF;

struct TypedClass {
    const char* name;
    CK_ULONG (*toCK)(JNIEnv*, jobject);
    jobject (*toJava)(JNIEnv*, CK_ULONG);
    CK_ULONG failure = ALL_ONES;

    std::string path() const { return std::string("halvorn/zerlin/") + name; }
    jobject make(JNIEnv* env, jlong value) const { return jni::make(env, path().c_str(), "(J)V", value); }
};

const TypedClass OBJECT_HANDLE = {
    "CK_OBJECT_HANDLE", jObjectHandleToCKObjectHandle, ckObjectHandleToJObjectHandle, 0};
const TypedClass MECHANISM_TYPE = {
    "constants/CK_MECHANISM_TYPE", jMechanismTypeToCKMechanismType, ckMechanismTypeToJMechanismType};
const TypedClass TYPED_CLASSES[] = {OBJECT_HANDLE, MECHANISM_TYPE,
    {"CK_SESSION_HANDLE", jSessionHandleToCKSessionHandle, ckSessionHandleToJSessionHandle, 0},
    {"constants/CK_ATTRIBUTE_TYPE", jAttributeTypeToCKAttributeType, ckAttributeTypeToJAttributeType, 0},
    {"constants/CK_CERTIFICATE_TYPE", jCertificateTypeToCKCertificateType,
        ckCertificateTypeToJCertificateType},
    {"constants/CK_HW_FEATURE_TYPE", jHWFeatureTypeToCKHWFeatureType, ckHWFeatureTypeToJHWFeatureType},
    {"constants/CK_KEY_TYPE", jKeyTypeToCKKeyType, ckKeyTypeToJKeyType},
    {"constants/CK_OBJECT_CLASS", jObjectClassToCKObjectClass, ckObjectClassToJObjectClass},
    {"constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE", jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType,
        ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType},
    {"constants/CK_RV", jRVToCKRV, ckRVToJRV}, {"constants/CK_STATE", jStateToCKState, ckStateToJState},
    {"constants/CK_USER_TYPE", jUserTypeToCKUserType, ckUserTypeToJUserType}};

TEST_F(Conversions, typedValuesAndHandles)
{
    jobject stranger = longRef(env, 5);
    for (const TypedClass& typed : TYPED_CLASSES) {
        SCOPED_TRACE(typed.name);
        for (const jlong java : {0LL, 0x100000005LL, 0x80000100LL, -1LL, -0x100000000LL}) {
            const auto native = static_cast<CK_ULONG>(java);
            EXPECT_EQ(typed.toCK(env, typed.make(env, java)), native);
            const jobject made = typed.toJava(env, native);
            EXPECT_TRUE(env->IsInstanceOf(made, find(env, typed.path().c_str())));
            EXPECT_EQ(getLong(env, made, "m_value"), jlong{native});
        }
        EXPECT_EQ(typed.toCK(env, nullptr), ALL_ONES);
        EXPECT_EQ(typed.toCK(env, stranger), typed.failure);
        const jobject object = stranger = typed.make(env, 5);
        failEach(env, "to native", [&] { typed.toCK(env, object); });
        failEach(env, "to Java", [&] { typed.toJava(env, 5); });
    }
}

TEST_F(Conversions, boxedValuesBooleansVersionsAndDates)
{
    const auto taken = [](auto* made) {
        const auto value = *made;
        std::free(made);
        return value;
    };
    const jobject yes = make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE);
    const jobject day = make(env, "halvorn/zerlin/CK_DATE", "(III)V", 2024, 7, 15);
    EXPECT_EQ(taken(jLongObjectToCKULongPtr(env, boxedLong(env, 0x180000abc))), 0x80000abc);
    const jobject minusTwo = make(env, "java/lang/Integer", "(I)V", -2);
    EXPECT_EQ(taken(jIntegerObjectToCKULongPtr(env, minusTwo)), ALL_ONES - 1);
    EXPECT_EQ(taken(jByteObjectToCKBytePtr(env, make(env, "java/lang/Byte", "(B)V", -2))), 254);
    EXPECT_EQ(taken(jBooleanObjectToCKBBoolPtr(env, yes)), CK_TRUE);
    CK_DATE native = taken(jDateObjectToCKDatePtr(env, day));
    EXPECT_EQ(std::memcmp(&native, "0724\0\0\61\65", 8), 0) << "the month is misplaced: deliberate";
    EXPECT_EQ(jDateObjectToCKDatePtr(env, yes), nullptr);
    EXPECT_EQ(jCharObjectToCKCharPtr(env, nullptr), nullptr);
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: java/lang/Char");
    EXPECT_EQ(jBBoolToCKBBool(env, bbool(env, true)), CK_TRUE);
    EXPECT_EQ(jBBoolToCKBBool(env, yes) + jBBoolToCKBBool(env, nullptr), CK_FALSE);

    const CK_ULONG large = 0x80000100;
    const CK_VERSION version = {2, 200};
    std::memcpy(&native, "20240715", 8);
    const jobject target = make(env, "halvorn/zerlin/CK_DATE");
    const jobject versionTarget = make(env, "halvorn/zerlin/CK_VERSION");
    setObject(env, target, "day", "[B", bytes(env, "."));
    CopyCKDateToJDate(env, &native, 0, target);
    CopyCKDateToJDate(env, nullptr, 8, target);
    CopyCKVersionToJVersion(env, &version, versionTarget);
    // Deliberate: the copy reads the month from the year's first characters, a new date from its own place.
    EXPECT_EQ(
        text(env, {ckBBoolToJBBool(env, 1), ckBBoolToJBBool(env, 2), ckULongPtrToJLongObject(env, &large),
                      LongRefObj(env, large), ckVersionPtrToJVersion(env, &version),
                      ckVersionPtrToJVersion(env, nullptr), ckDatePtrToJDateObject(env, &native),
                      ckDatePtrToJDateObject(env, nullptr), target, versionTarget}),
        "[CK_TRUE, CK_FALSE, 2147483904, 2147483904, 2.200, null, 2024-07-15, null, 2024-20-1, 2.200]");
}

template <const TypedClass& typed>
jobjectArray makeObjects(JNIEnv* env, const Longs& values)
{
    const jclass cls = find(env, typed.path().c_str());
    const jobjectArray made = env->NewObjectArray(static_cast<jsize>(values.size()), cls, nullptr);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const LocalFrame frame(env);
        env->SetObjectArrayElement(made, static_cast<jsize>(i), typed.make(env, values[i]));
    }
    return made;
}
jbyteArray makeBytes(JNIEnv* env, const Longs& values)
{
    return bytes(env, Bytes(values.begin(), values.end()));
}
jlongArray makeLongs(JNIEnv* env, const Longs& values)
{
    return filled(
        env, env->NewLongArray(static_cast<jsize>(values.size())), &JNIEnv::SetLongArrayRegion, values);
}

// A kind of array with its conversions.
template <typename Native, typename JArray>
struct ArrayKind {
    const char* name;
    CK_ULONG unit; // what the length of a new native array counts for an element
    JArray (*make)(JNIEnv*, const Longs&);
    void (*toCK)(JNIEnv*, JArray, Native**, CK_ULONG*);
    JArray (*toJava)(JNIEnv*, const Native*, CK_ULONG);
    bool (*copyToJava)(JNIEnv*, const Native*, CK_ULONG, JArray);
    void (*copyToCK)(JNIEnv*, JArray, Native*, CK_ULONG) = nullptr;
};

const ArrayKind<CK_BYTE, jbyteArray> BYTE_ARRAYS = {"byte", 1, makeBytes, jByteArrayToCKByteArray,
    ckByteArrayToJByteArray, CopyCKByteArrayToJByteArray, CopyJByteArrayToCKByteArray};
const ArrayKind<CK_ULONG, jlongArray> LONG_ARRAYS = {"long", 1, makeLongs, jLongArrayToCKULongArray,
    ckULongArrayToJLongArray, CopyCKULongArrayToJLongArray, CopyJLongArrayToCKULongArray};
const ArrayKind<CK_ULONG, jobjectArray> HANDLE_ARRAYS = {"handle", 4, makeObjects<OBJECT_HANDLE>,
    jObjectHandleArrayToCKObjectHandleArray, ckObjHandleArrayToJObjHandleArray,
    CopyCKULongArrayToJObjectHandleArray};
const ArrayKind<CK_ULONG, jobjectArray> TYPE_ARRAYS = {"type", 4, makeObjects<MECHANISM_TYPE>,
    jMechanismTypeArrayToCKMechanismTypeArray, ckMechanismTypeArrayToJMechanismTypeArray,
    CopyCKMechanismTypeArrayToJMechanismTypeArray, CopyJMechanismTypeArrayToCKMechanismTypeArray};

// Converts an array of that many elements in all directions.
template <typename Native, typename JArray>
void convertArray(JNIEnv* env, const ArrayKind<Native, JArray>& kind, std::size_t count)
{
    SCOPED_TRACE(kind.name + std::string(", ") + std::to_string(count));
    const LocalFrame frame(env);
    Longs values;
    for (std::uint64_t i = 1; i <= count; ++i)
        values.push_back(static_cast<jlong>(i * 0x9E3779B97F4A7C15U)); // all sorts of bytes
    std::vector<Native> natives(values.begin(), values.end());
    const JArray array = kind.make(env, values);
    const HeapWatch heap;
    Native* data = nullptr;
    CK_ULONG length = 99;
    kind.toCK(env, nullptr, &data, &length);
    EXPECT_TRUE(data == nullptr && length == 0);
    kind.toCK(env, array, &data, &length);
    EXPECT_EQ(length, count * kind.unit);
    EXPECT_EQ(std::vector<Native>(data, data + count), natives);
    EXPECT_EQ(heap.blocks.at(data), count * sizeof(Native) + 1) << "with the spare byte";
    const Longs extended(natives.begin(), natives.end());
    EXPECT_EQ(text(env, {kind.toJava(env, data, count)}), text(env, {kind.make(env, extended)}));
    EXPECT_EQ(kind.toJava(env, nullptr, 3), nullptr);
    for (const std::size_t size : {count / 2, count, count + 3}) {
        Longs expected(size, -5);
        const JArray target = kind.make(env, expected);
        std::copy_n(extended.begin(), std::min(count, size), expected.begin());
        EXPECT_TRUE(kind.copyToJava(env, data, count, target) && kind.copyToJava(env, data, 1, nullptr));
        EXPECT_TRUE(kind.copyToJava(env, nullptr, count, target));
        EXPECT_EQ(text(env, {target}), text(env, {kind.make(env, expected)}));
        if (kind.copyToCK == nullptr) continue;
        std::vector<Native> destination(count + 3, UNTOUCHED), copied = destination;
        std::copy_n(natives.begin(), std::min(count, size), copied.begin());
        kind.copyToCK(env, array, destination.data(), size);
        // Deliberate: the length of an array of mechanism types is not checked.
        EXPECT_EQ(takeException(env).starts_with("java.lang.ArrayIndex"), size > count && kind.unit == 4);
        kind.copyToCK(env, nullptr, destination.data(), 1);
        kind.copyToCK(env, array, nullptr, 1);
        EXPECT_EQ(destination, copied) << size;
    }
    std::free(data);
}

template <typename Native, typename JArray>
void convertArrays(JNIEnv* env, const ArrayKind<Native, JArray>& kind)
{
    for (const std::size_t count : {0, 1, 12, 255, 256, 257, 513}) // around the pieces of a conversion
        convertArray(env, kind, count);
    const JArray array = kind.make(env, Longs(20));
    const std::vector<Native> natives(20);
    failEach(env, kind.name, [&] {
        Native* data = nullptr;
        CK_ULONG length = 0;
        kind.toCK(env, array, &data, &length);
        EXPECT_TRUE(data != nullptr || env->ExceptionCheck());
        std::free(data);
    });
    failEach(env, kind.name, [&] { return kind.toJava(env, natives.data(), 20) != nullptr; });
    failEach(env, kind.name, [&] { return kind.copyToJava(env, natives.data(), 20, array); });
}

TEST_F(Conversions, arrays)
{
    convertArrays(env, BYTE_ARRAYS);
    convertArrays(env, LONG_ARRAYS);
    convertArrays(env, HANDLE_ARRAYS);
    convertArrays(env, TYPE_ARRAYS);
}

TEST_F(Conversions, nullsAndOtherObjectsInArrays)
{
    const auto convert = [&](const auto& kind, auto copyToJava, const TypedClass& typed) {
        const std::vector<jobject> strangers = {typed.make(env, 7), nullptr, string(env, "8")};
        const jobjectArray mixed = objects(env, "java/lang/Object", strangers);
        CK_ULONG* data = nullptr;
        CK_ULONG length = 0;
        kind.toCK(env, mixed, &data, &length);
        EXPECT_EQ(std::vector(data, data + 3), (std::vector{CK_ULONG{7}, ALL_ONES, typed.failure}));
        const jobjectArray target = objects(env, typed.path().c_str(), {nullptr, typed.make(env, 1)});
        EXPECT_TRUE(copyToJava(env, data, 3, target) && copyToJava(env, data, 3, mixed));
        EXPECT_EQ(getLong(env, env->GetObjectArrayElement(target, 1), "m_value"), jlong{ALL_ONES});
        std::free(data);
    };
    convert(HANDLE_ARRAYS, CopyCKULongArrayToJObjectHandleArray, OBJECT_HANDLE);
    convert(TYPE_ARRAYS, CopyCKULongArrayToJMechanismTypeArray, MECHANISM_TYPE);
}

// Fills the record from bytes that differ from their neighbours. The Java record's text leaves out the names.
template <typename Native>
void convertRecord(JNIEnv* env, const char* path, void (*toCK)(JNIEnv*, jobject, Native*),
    bool (*toJava)(JNIEnv*, const Native*, jobject), const std::string& expected)
{
    SCOPED_TRACE(path);
    Native native, copied{};
    for (std::size_t i = 0; i < sizeof native; ++i)
        reinterpret_cast<CK_BYTE*>(&native)[i] = static_cast<CK_BYTE>('0' + i % 43);
    const jobject made = make(env, path), again = make(env, path), stranger = object(env, 1);
    const auto shown = [&](jobject record) {
        return std::regex_replace(text(env, {record}), std::regex("\\w+="), "");
    };
    EXPECT_TRUE(toJava(env, nullptr, made) && toJava(env, &native, stranger) && toJava(env, &native, made));
    EXPECT_EQ(shown(made), expected);
    toCK(env, nullptr, &copied);
    toCK(env, stranger, &copied);
    toCK(env, made, nullptr);
    EXPECT_EQ(std::memcmp(&copied, Bytes(sizeof copied).data(), sizeof copied), 0);
    toCK(env, made, &copied);
    failEach(env, "to native", [&] { toCK(env, made, &copied); });
    EXPECT_TRUE(toJava(env, &copied, again));
    EXPECT_EQ(shown(again), expected);
    failEach(env, "to Java", [&] { return toJava(env, &native, again); });
}

TEST_F(Conversions, informationRecords)
{
    convertRecord(env, "halvorn/zerlin/CK_INFO", CopyJInfoToCKInfo, CopyCKInfoToJInfo,
        "[CK_INFO[48.49, 23456789:;<=>?@ABCDEFGHIJKLMNOPQ, 0x57565554, XYZ0123456789:;<=>?@ABCDEFGHIJKL, "
        "77.78]]");
    convertRecord(env, "halvorn/zerlin/CK_SLOT_INFO", CopyJSlotInfoToCKSlotInfo, CopyCKSlotInfoToJSlotInfo,
        "[CK_SLOT_INFO[0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:;<=>?@ABCD, "
        "EFGHIJKLMNOPQRSTUVWXYZ0123456789, 0x3d3c3b3a, 62.63, 64.65]]");
    convertRecord(env, "halvorn/zerlin/CK_TOKEN_INFO", CopyJTokenInfoToCKTokenInfo,
        CopyCKTokenInfoToJTokenInfo,
        "[CK_TOKEN_INFO[0123456789:;<=>?@ABCDEFGHIJKLMNO, PQRSTUVWXYZ0123456789:;<=>?@ABCD, "
        "EFGHIJKLMNOPQRST, "
        "UVWXYZ0123456789, 0x3d3c3b3a, 1094729534, 1162101570, 1229473606, 1296845642, 1364217678, "
        "1431589714, "
        "1498961750, 842084442, 909456435, 976828471, 59.60, 61.62, ?@ABCDEFGHIJKLMN]]");
    convertRecord(env, "halvorn/zerlin/CK_SESSION_INFO", CopyJSessionInfoToCKSessionInfo,
        CopyCKSessionInfoToJSessionInfo, "[CK_SESSION_INFO[858927408, 0x37363534, 0x3b3a3938, 1061043516]]");
    convertRecord(env, "halvorn/zerlin/CK_MECHANISM_INFO", CopyJMechInfoToCKMechInfo,
        CopyCKMechanismInfoToJMechanismInfo, "[CK_MECHANISM_INFO[858927408, 926299444, 0x3b3a3938]]");
}

} // namespace
