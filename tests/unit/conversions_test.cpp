// Handles, typed constants, booleans, versions, dates, arrays and information records, from Java to native
// and back. What natives call of it is tested with them, and values of attributes in attributes_test.cpp.
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "param_text.h"
#include "values.h"

namespace {

using namespace jni;
using namespace zerlin;
using Conversions = JniTest;

constexpr CK_ULONG ALL_ONES = ~CK_ULONG{0};

// Deliberate: an object of another class becomes 0 instead of a handle or an attribute type, all ones instead
// of any other constant.
TEST_F(Conversions, nullsAndOtherObjectsHoldNoHandleOrConstant)
{
    using Converter = CK_ULONG (*)(JNIEnv*, jobject);
    const Converter rows[] = {jObjectHandleToCKObjectHandle, jSessionHandleToCKSessionHandle,
        jAttributeTypeToCKAttributeType, jCertificateTypeToCKCertificateType, jHWFeatureTypeToCKHWFeatureType,
        jKeyTypeToCKKeyType, jMechanismTypeToCKMechanismType, jObjectClassToCKObjectClass,
        jRsaPkcsOaepSourceTypeToCKRsaPkcsOaepSourceType, jRVToCKRV, jStateToCKState, jUserTypeToCKUserType};
    for (const auto& toCK : rows) {
        EXPECT_EQ(toCK(env, nullptr), ALL_ONES);
        EXPECT_EQ(toCK(env, bbool(env, true)), &toCK - rows < 3 ? 0 : ALL_ONES) << &toCK - rows;
    }
}

TEST_F(Conversions, singleValues)
{
    const jobject day = make(env, "halvorn/zerlin/CK_DATE"), version = make(env, "halvorn/zerlin/CK_VERSION");
    setObject(env, day, "day", "[B", bytes(env, "."));
    const CK_ULONG large = 0x80000100;
    const CK_VERSION twoPoint200 = {2, 200};
    CK_DATE date;
    std::memcpy(&date, "20240715", 8);
    CopyCKDateToJDate(env, &date, 0, day);
    CopyCKDateToJDate(env, nullptr, 8, day);
    CopyCKVersionToJVersion(env, &twoPoint200, version);
    // Deliberate: the copy reads the month from the year's first characters, a new date from its own place.
    EXPECT_EQ(
        text(env, {ckBBoolToJBBool(env, 1), ckBBoolToJBBool(env, 2), LongRefObj(env, large),
                      ckULongPtrToJLongObject(env, &large), ckSessionHandleToJSessionHandle(env, large),
                      ckUserTypeToJUserType(env, large), ckDatePtrToJDateObject(env, &date), day, version}),
        "[CK_TRUE, CK_FALSE, 2147483904, 2147483904, session 2147483904, 0x80000100, 2024-07-15, 2024-20-1, "
        "2.200]");
    EXPECT_EQ(jBBoolToCKBBool(env, day) + jBBoolToCKBBool(env, nullptr), CK_FALSE);
    EXPECT_EQ(jDateObjectToCKDatePtr(env, version), nullptr);
}

// In the length of a native array an element counts as unit.
template <typename Native, typename JArray>
void convertArray(JNIEnv* env, const char* shown, CK_ULONG unit,
    void (*toCK)(JNIEnv*, JArray, Native**, CK_ULONG*), JArray (*toJava)(JNIEnv*, const Native*, CK_ULONG))
{
    Native* data = nullptr;
    CK_ULONG length = 99;
    std::vector<Native> natives(1);
    for (const std::size_t count : {0, 2, 256, 513}) { // around the pieces of a conversion
        SCOPED_TRACE(shown + std::to_string(count));
        const LocalFrame frame(env);
        while (natives.size() < count)
            natives.push_back(static_cast<Native>(0xDEADBEEF * natives.size()));
        const JArray array = toJava(env, natives.data(), count);
        EXPECT_TRUE(count != 2 || text(env, {array}) == shown) << text(env, {array});
        const HeapWatch heap;
        toCK(env, array, &data, &length);
        EXPECT_EQ(length, count * unit);
        EXPECT_TRUE(std::equal(data, data + count, natives.begin()));
        EXPECT_EQ(heap.blocks.at(data), count * sizeof(Native) + 1) << "spare byte";
        std::free(data);
    }
    toCK(env, nullptr, &data, &length);
    EXPECT_TRUE(data == nullptr && length == 0 && toJava(env, nullptr, 3) == nullptr);
    const JArray array = toJava(env, natives.data(), 20);
    failEach(env, shown, [&] {
        data = nullptr;
        toCK(env, array, &data, &length);
        std::free(data); // it may be there all the same
        return !env->ExceptionCheck();
    });
    failEach(env, shown, [&] { return toJava(env, natives.data(), 20) != nullptr; });
}

TEST_F(Conversions, arrays)
{
    convertArray(env, "[[0, -17]]", 1, jByteArrayToCKByteArray, ckByteArrayToJByteArray);
    convertArray(env, "[[0, 3735928559]]", 1, jLongArrayToCKULongArray, ckULongArrayToJLongArray);
    convertArray(env, "[[object 0, object 3735928559]]", WORD, jObjectHandleArrayToCKObjectHandleArray,
        ckObjHandleArrayToJObjHandleArray);
    convertArray(env, "[[CKM_RSA_PKCS_KEY_PAIR_GEN (0x0), 0xdeadbeef]]", WORD,
        jMechanismTypeArrayToCKMechanismTypeArray, ckMechanismTypeArrayToJMechanismTypeArray);
}

TEST_F(Conversions, nullsAndOtherObjectsInArrays)
{
    const jobjectArray types =
        objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {nullptr, mechanismType(env, 7)});
    const jobjectArray handles = objects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", {nullptr, object(env, 1)});
    const jobjectArray others = objects(env, "java/lang/Object", {string(env, "8"), nullptr});
    CK_ULONG numbers[] = {1, 0xfedcba98, 3};
    for (const jobjectArray target : {types, handles, others}) {
        EXPECT_TRUE(CopyCKULongArrayToJMechanismTypeArray(env, numbers, 3, target));
        EXPECT_TRUE(CopyCKULongArrayToJObjectHandleArray(env, numbers, 3, target));
    }
    EXPECT_EQ(text(env, {types, handles}), "[[null, 0xfedcba98], [null, object 4275878552]]");
    // Deliberate: the length of the array is not checked.
    CopyJMechanismTypeArrayToCKMechanismTypeArray(env, others, numbers, 3);
    EXPECT_TRUE(takeException(env).starts_with("java.lang.ArrayIndexOutOfBounds"));
    EXPECT_TRUE(numbers[0] == ALL_ONES && numbers[1] == ALL_ONES && numbers[2] == 3);
}

// A record whose fields all differ: a text of that many bytes, a version where 2 stands, or a number (0).
template <typename Native>
void convertRecord(JNIEnv* env, std::string java, const std::vector<int>& widths,
    void (*toCK)(JNIEnv*, jobject, Native*), bool (*toJava)(JNIEnv*, const Native*, jobject))
{
    SCOPED_TRACE(java);
    const jobject again = make(env, ("halvorn/zerlin/" + java).c_str()), other = object(env, 1);
    std::string native;
    for (int number = 1; const int width : widths) {
        const std::string digit = std::to_string(number % 10);
        std::string shown = width == 0 ? std::to_string(number) : "05";
        for (int i = 1; i < width; ++i)
            shown += "0" + digit;
        java += width == 0 ? " " + shown : width == 2 ? " CK_VERSION 5 " + digit : " [" + shown + "]";
        native += (width == 0 ? " " : " .") + shown;
        ++number;
    }
    const jobject made = read(env, java);
    Native converted{};
    toCK(env, made, nullptr);
    for (const jobject object : {made, jobject{}, other})
        toCK(env, object, &converted);
    EXPECT_EQ(nativeText(&converted, native), native);
    for (const jobject object : {again, jobject{}, other})
        EXPECT_TRUE(toJava(env, &converted, object) && toJava(env, nullptr, object));
    EXPECT_EQ(show(env, again), java);
    failEach(env, "to native", [&] { return toCK(env, made, &converted), !env->ExceptionCheck(); });
    failEach(env, "to Java", [&] { return toJava(env, &converted, again); });
}

TEST_F(Conversions, informationRecords)
{
    convertRecord(env, "CK_INFO", {2, 32, 0, 32, 2}, CopyJInfoToCKInfo, CopyCKInfoToJInfo);
    convertRecord(
        env, "CK_SLOT_INFO", {64, 32, 0, 2, 2}, CopyJSlotInfoToCKSlotInfo, CopyCKSlotInfoToJSlotInfo);
    convertRecord(env, "CK_TOKEN_INFO", {32, 32, 16, 16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 16},
        CopyJTokenInfoToCKTokenInfo, CopyCKTokenInfoToJTokenInfo);
    convertRecord(env, "CK_SESSION_INFO", {0, 0, 0, 0}, CopyJSessionInfoToCKSessionInfo,
        CopyCKSessionInfoToJSessionInfo);
    convertRecord(
        env, "CK_MECHANISM_INFO", {0, 0, 0}, CopyJMechInfoToCKMechInfo, CopyCKMechanismInfoToJMechanismInfo);
}

} // namespace
