// Native values that become new Java objects.
#include "conversion_cases.h"

#include <cstring>

namespace {

using namespace cases;
using namespace jni;

struct ConvToJava : JniTest {
    bool isExactly(jobject object, const std::string& path)
    {
        return object != nullptr && env->IsSameObject(env->GetObjectClass(object), find(env, path.c_str()));
    }
};

TEST_F(ConvToJava, typedValues)
{
    struct Row {
        CK_ULONG native;
        jlong java;
    };
    constexpr Row rows[] = {{0, 0}, {5, 5}, {0x80000100, 2147483904}, {ALL_ONES, 4294967295}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.native);
        const LocalFrame frame(env);
        for (const TypedClass& typed : TYPED_CLASSES) {
            const jobject object = typed.toJava(env, row.native);
            ASSERT_TRUE(isExactly(object, typed.path)) << typed.path;
            EXPECT_EQ(getLong(env, object, "m_value"), row.java) << typed.path;
        }
        const jobject ref = LongRefObj(env, row.native);
        ASSERT_TRUE(isExactly(ref, "halvorn/zerlin/LongRef"));
        EXPECT_EQ(getLong(env, ref, "value"), row.java);
        const jobject boxed = ckULongPtrToJLongObject(env, &row.native);
        ASSERT_TRUE(isExactly(boxed, "java/lang/Long"));
        EXPECT_EQ(getLong(env, boxed, "value"), row.java);
    }
}

TEST_F(ConvToJava, booleansVersionsAndDates)
{
    for (int value : {0, 1, 2, 255}) {
        const jobject object = ckBBoolToJBBool(env, static_cast<CK_BBOOL>(value));
        ASSERT_TRUE(isExactly(object, "halvorn/zerlin/CK_BBOOL"));
        EXPECT_EQ(getBool(env, object, "m_value"), value == 1) << value;
    }
    const CK_VERSION nativeVersion = {2, 200};
    const jobject version = ckVersionPtrToJVersion(env, &nativeVersion);
    ASSERT_TRUE(isExactly(version, VERSION));
    EXPECT_EQ(getByte(env, version, "major"), 2);
    EXPECT_EQ(getByte(env, version, "minor"), -56);
    EXPECT_EQ(ckVersionPtrToJVersion(env, nullptr), nullptr);

    CK_DATE nativeDate;
    std::memcpy(&nativeDate, "20240715", 8);
    const jobject date = ckDatePtrToJDateObject(env, &nativeDate);
    ASSERT_TRUE(isExactly(date, "halvorn/zerlin/CK_DATE"));
    const auto digits = [&](const char* field) {
        return toVector(env, static_cast<jbyteArray>(getObject(env, date, field, "[B")));
    };
    EXPECT_EQ(digits("year"), (Bytes{'2', '0', '2', '4'}));
    EXPECT_EQ(digits("month"), (Bytes{'0', '7'})) << "from its own place, unlike the copy into a date";
    EXPECT_EQ(digits("day"), (Bytes{'1', '5'}));
    EXPECT_EQ(ckDatePtrToJDateObject(env, nullptr), nullptr);
}

TEST_F(ConvToJava, arrays)
{
    for (const CK_ULONG count : LENGTHS) {
        SCOPED_TRACE(count);
        const LocalFrame frame(env);
        std::vector<CK_ULONG> words;
        Longs wanted;
        for (const jlong value : numbers(count)) {
            words.push_back(static_cast<CK_ULONG>(value));
            wanted.push_back(value & 0xFFFFFFFF);
        }
        words.reserve(1); // so that data() is not null
        const auto* const first = reinterpret_cast<const CK_BYTE*>(words.data());
        const Bytes bytes(first, first + count);
        EXPECT_EQ(toVector(env, ckULongArrayToJLongArray(env, words.data(), count)), wanted);
        EXPECT_EQ(toVector(env, ckCharArrayToJByteArray(env, first, count)), bytes);
        EXPECT_EQ(toVector(env, ckByteArrayToJByteArray(env, first, count)), bytes);
        EXPECT_EQ(heldBy(env, ckObjHandleArrayToJObjHandleArray(env, words.data(), count)), wanted);
        EXPECT_EQ(heldBy(env, ckMechanismTypeArrayToJMechanismTypeArray(env, words.data(), count)), wanted);
        EXPECT_EQ(ckULongArrayToJLongArray(env, nullptr, count), nullptr);
        EXPECT_EQ(ckCharArrayToJByteArray(env, nullptr, count), nullptr);
        EXPECT_EQ(ckByteArrayToJByteArray(env, nullptr, count), nullptr);
        EXPECT_EQ(ckObjHandleArrayToJObjHandleArray(env, nullptr, count), nullptr);
        EXPECT_EQ(ckMechanismTypeArrayToJMechanismTypeArray(env, nullptr, count), nullptr);
    }
}

TEST_F(ConvToJava, everyElementIsAnObjectOfItsOwn)
{
    const CK_ULONG native[] = {5, 6, 5};
    for (const auto& [path, array] :
        {std::pair<std::string, jobjectArray>{HANDLE, ckObjHandleArrayToJObjHandleArray(env, native, 3)},
            {MECHANISM_TYPE, ckMechanismTypeArrayToJMechanismTypeArray(env, native, 3)}}) {
        EXPECT_TRUE(isExactly(array, "[L" + path + ";"));
        const jobject first = env->GetObjectArrayElement(array, 0);
        EXPECT_TRUE(isExactly(first, path));
        EXPECT_FALSE(env->IsSameObject(first, env->GetObjectArrayElement(array, 2)));
    }
}

} // namespace
