// Native results that are copied into Java objects of the caller's.
#include "conversion_cases.h"
#include "harness/natives.h"

namespace {

using namespace cases;
using namespace jni;

struct CopyToJava : JniTest {};

TEST_F(CopyToJava, recordsSurviveTheWayToJavaAndBack)
{
    for (const Record& record : RECORDS) {
        SCOPED_TRACE(record.path);
        const jobject object = make(env, record.path);
        record.toJava(env, nullptr, object);
        record.toJava(env, recordBytes().data(), holder(env, HANDLE, 1));
        record.toJava(env, recordBytes().data(), object);
        EXPECT_EQ(text(env, {object}), record.text);
        Bytes copied(sizeof(CK_TOKEN_INFO));
        record.toCK(env, nullptr, copied.data());
        record.toCK(env, holder(env, HANDLE, 1), copied.data());
        EXPECT_EQ(copied, Bytes(sizeof(CK_TOKEN_INFO)));
        record.toCK(env, object, copied.data());
        const jobject again = make(env, record.path);
        record.toJava(env, copied.data(), again);
        EXPECT_EQ(text(env, {again}), record.text);
    }
}

TEST_F(CopyToJava, datesAreWrittenIntoTheirArrays)
{
    CK_DATE native;
    std::memcpy(&native, "20240715", 8);
    const jobject date = make(
        env, "halvorn/zerlin/CK_DATE", "([B[B[B)V", bytes(env, "......"), bytes(env, ".."), bytes(env, "."));
    CopyCKDateToJDate(env, nullptr, 8, date);
    CopyCKDateToJDate(env, &native, 0, date);
    EXPECT_EQ(
        text(env, {date}), "[2024..-20-1]"); // deliberate: the month is read from the year's first characters
}

constexpr std::pair<const char*, bool (*)(JNIEnv*, const CK_ULONG*, CK_ULONG, jobjectArray)> OBJECT_ARRAYS[] =
    {
        {HANDLE, CopyCKULongArrayToJObjectHandleArray},
        {MECHANISM_TYPE, CopyCKULongArrayToJMechanismTypeArray},
        {MECHANISM_TYPE, CopyCKMechanismTypeArrayToJMechanismTypeArray},
};

TEST_F(CopyToJava, copiesEndWithTheShorterArray)
{
    constexpr std::pair<std::size_t, std::size_t> rows[] = {
        {0, 3}, {3, 0}, {10, 4}, {2, 4}, {255, 300}, {256, 300}, {257, 300}, {300, 256}};
    for (const auto& [count, length] : rows) {
        SCOPED_TRACE(std::to_string(count) + " into " + std::to_string(length));
        const Longs values = numbers(count);
        const Words source(values.begin(), values.end());
        const Bytes sourceBytes(values.begin(), values.end());
        Longs wanted(length, -5);
        Bytes wantedBytes(length, UNTOUCHED);
        std::copy_n(source.begin(), std::min(count, length), wanted.begin());
        std::copy_n(sourceBytes.begin(), std::min(count, length), wantedBytes.begin());
        const jlongArray longTarget = longArray(env, Longs(length, -5));
        CopyCKULongArrayToJLongArray(env, nullptr, count, longTarget);
        CopyCKULongArrayToJLongArray(env, source.data(), count, longTarget);
        EXPECT_EQ(toVector(env, longTarget), wanted);
        const jbyteArray byteTarget = bytes(env, Bytes(length, UNTOUCHED));
        CopyCKByteArrayToJByteArray(env, nullptr, count, byteTarget);
        CopyCKByteArrayToJByteArray(env, sourceBytes.data(), count, byteTarget);
        EXPECT_EQ(toVector(env, byteTarget), wantedBytes);
        for (const auto& [path, copy] : OBJECT_ARRAYS) {
            const LocalFrame frame(env);
            const jobjectArray target = holders(env, path, Longs(length, -5));
            copy(env, source.data(), count, target);
            EXPECT_EQ(heldBy(env, target), wanted) << path;
        }
    }
    const CK_ULONG source[] = {5, ALL_ONES, 7};
    const jobjectArray target = objects(env, HANDLE, {object(env, 1), nullptr, object(env, 3)});
    CopyCKULongArrayToJObjectHandleArray(env, source, 3, nullptr);
    CopyCKULongArrayToJObjectHandleArray(env, source, 3, target);
    EXPECT_EQ(heldBy(env, target), (Longs{5, -1, 7}));
}

} // namespace
