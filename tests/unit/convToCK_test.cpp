// Java values that become freshly made native ones.
#include "conversion_cases.h"

#include <cstdlib>
#include <malloc.h>
#include <memory>

namespace {

using namespace cases;
using namespace jni;

struct ConvToCK : JniTest {};

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
using Owner = std::unique_ptr<void, Free>;

TEST_F(ConvToCK, typedValues)
{
    struct Row {
        jlong java;
        CK_ULONG native;
    };
    constexpr Row rows[] = {{0, 0}, {5, 5}, {0x100000005, 5}, {0x80000100, 0x80000100}, {-1, ALL_ONES},
        {-0x100000000, 0}, {0x7FFFFFFFFFFFFFFE, 0xFFFFFFFE}};
    const char* otherPath = "halvorn/zerlin/LongRef";
    for (const TypedClass& typed : TYPED_CLASSES) {
        SCOPED_TRACE(typed.path);
        const LocalFrame frame(env);
        for (const Row& row : rows) {
            EXPECT_EQ(typed.toCK(env, holder(env, typed.path, row.java)), row.native);
        }
        EXPECT_EQ(typed.toCK(env, nullptr), ALL_ONES);
        EXPECT_EQ(typed.toCK(env, holder(env, otherPath, 5)), typed.failure);
        EXPECT_EQ(typed.toCK(env, string(env, "5")), typed.failure);
        EXPECT_EQ(takeException(env), "");
        otherPath = typed.path;
    }
}

template <auto convert>
Bytes converted(JNIEnv* env, jobject object)
{
    auto* const native = convert(env, object);
    const Owner owner(native);
    if (native == nullptr) return {};
    const auto* const first = reinterpret_cast<const std::uint8_t*>(native);
    return Bytes(first, first + sizeof *native);
}

TEST_F(ConvToCK, booleansAndBoxedValues)
{
    const auto box = [&](const char* path, const char* signature, auto value) {
        return make(env, path, signature, value);
    };
    const auto yes = box("halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_TRUE);
    EXPECT_EQ(jBBoolToCKBBool(env, yes), CK_TRUE);
    EXPECT_EQ(jBBoolToCKBBool(env, box("halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_FALSE)), CK_FALSE);
    EXPECT_EQ(jBBoolToCKBBool(env, nullptr), CK_FALSE);
    EXPECT_EQ(jBBoolToCKBBool(env, box("java/lang/Boolean", "(Z)V", JNI_TRUE)), CK_FALSE);

    const auto toLong = converted<jLongObjectToCKULongPtr>;
    EXPECT_EQ(toLong(env, box("java/lang/Long", "(J)V", jlong{0x100000005})), (Bytes{5, 0, 0, 0}));
    EXPECT_EQ(toLong(env, box("java/lang/Long", "(J)V", jlong{-2})), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    const auto toInteger = converted<jIntegerObjectToCKULongPtr>;
    EXPECT_EQ(toInteger(env, box("java/lang/Integer", "(I)V", jint{-2})), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    const auto toBoolean = converted<jBooleanObjectToCKBBoolPtr>;
    EXPECT_EQ(toBoolean(env, box("java/lang/Boolean", "(Z)V", JNI_TRUE)), Bytes{1});
    EXPECT_EQ(toBoolean(env, box("java/lang/Boolean", "(Z)V", JNI_FALSE)), Bytes{0});
    EXPECT_EQ(converted<jByteObjectToCKBytePtr>(env, box("java/lang/Byte", "(B)V", jbyte{-128})), Bytes{128});
    // The class that is asked for does not exist: wanted.
    EXPECT_EQ(jCharObjectToCKCharPtr(env, box("java/lang/Character", "(C)V", jchar{'A'})), nullptr);
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: java/lang/Char");
}

TEST_F(ConvToCK, dates)
{
    const auto toDate = converted<jDateObjectToCKDatePtr>;
    for (const Date& date : DATES) {
        Bytes native = toDate(env, date.make(env));
        ASSERT_EQ(native.size(), 8U);
        for (std::size_t i = 0; i < 8; ++i) {
            if (date.native[i] == '.') native[i] = '.';
        }
        EXPECT_EQ(std::string(native.begin(), native.end()), date.native);
    }
    EXPECT_EQ(toDate(env, nullptr).size(), 8U) << "a null date is a date with nothing in it";
    EXPECT_EQ(toDate(env, make(env, VERSION)), Bytes{});
}

TEST_F(ConvToCK, arrays)
{
    int anything = 0;
    for (const ArrayClass& row : ARRAY_CLASSES) {
        if (row.convert == nullptr) continue;
        for (const std::size_t count : LENGTHS) {
            SCOPED_TRACE(row.name + std::string(" of ") + std::to_string(count));
            const LocalFrame frame(env);
            void* data = nullptr;
            CK_ULONG length = 99;
            row.convert(env, row.make(env, numbers(count)), &data, &length);
            const Owner owner(data);
            ASSERT_NE(data, nullptr);
            EXPECT_EQ(length, count * row.unit);
            const auto* const first = static_cast<const std::uint8_t*>(data);
            EXPECT_EQ(Bytes(first, first + count * row.width), row.native(numbers(count)));
            EXPECT_GT(malloc_usable_size(data), count * row.width) << "the spare byte";
        }
        void* data = &anything;
        CK_ULONG length = 99;
        row.convert(env, nullptr, &data, &length);
        EXPECT_EQ(data, nullptr) << row.name;
        EXPECT_EQ(length, 0U) << row.name;
    }
}

// What an element is worth that is null or of another class.
TEST_F(ConvToCK, objectArraysOfStrangers)
{
    for (const auto& [row, typed] :
        {std::pair{ARRAY_CLASSES[5], TYPED_CLASSES[0]}, std::pair{ARRAY_CLASSES[6], TYPED_CLASSES[6]}}) {
        SCOPED_TRACE(row.name);
        const jobjectArray array = objects(env, "java/lang/Object",
            {holder(env, typed.path, 7), nullptr, string(env, "8"), holder(env, typed.path, 9)});
        void* data = nullptr;
        CK_ULONG length = 0;
        row.convert(env, array, &data, &length);
        const Owner owner(data);
        ASSERT_EQ(length, 16U);
        const auto* const values = static_cast<const CK_ULONG*>(data);
        const std::vector<CK_ULONG> wanted = {7, ALL_ONES, typed.failure, 9};
        EXPECT_EQ(std::vector<CK_ULONG>(values, values + 4), wanted);
    }
}

TEST_F(ConvToCK, strings)
{
    for (const String& row : STRINGS) {
        CK_CHAR_PTR data = nullptr;
        CK_ULONG length = 99;
        jStringToCKCharArray(env, row.make(env), &data, &length);
        const Owner owner(data);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(length, row.native.size());
        EXPECT_STREQ(reinterpret_cast<const char*>(data), row.native.c_str());
    }
    CK_CHAR anything = 0;
    CK_CHAR_PTR data = &anything;
    CK_ULONG length = 99;
    jStringToCKCharArray(env, nullptr, &data, &length);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(length, 0U);
}

} // namespace
