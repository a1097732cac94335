// Java values that become freshly made native ones.
#include "conversion_cases.h"

#include <cstdlib>
#include <malloc.h>

namespace {

using namespace cases;
using namespace jni;

struct ConvToCK : JniTest {
    template <typename Native, typename JArray>
    void expect(void (*convert)(JNIEnv*, JArray, Native**, CK_ULONG*), jobject array,
        const std::vector<Native>& wanted, CK_ULONG unit = 1)
    {
        Native* data = nullptr;
        CK_ULONG length = 99;
        convert(env, static_cast<JArray>(array), &data, &length);
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(length, wanted.size() * unit);
        EXPECT_EQ(std::vector<Native>(data, data + wanted.size()), wanted);
        EXPECT_GT(malloc_usable_size(data), wanted.size() * sizeof(Native)) << "the spare byte";
        std::free(data);
        convert(env, nullptr, &data, &length);
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(length, 0U);
    }
};

TEST_F(ConvToCK, typedValuesBecomeNumbers)
{
    const char* otherPath = "halvorn/zerlin/LongRef";
    for (const TypedClass& typed : TYPED_CLASSES) {
        SCOPED_TRACE(typed.path);
        for (const jlong java : {0LL, 0x100000005LL, 0x80000100LL, -1LL, -0x100000000LL})
            EXPECT_EQ(typed.toCK(env, holder(env, typed.path, java)), static_cast<CK_ULONG>(java));
        EXPECT_EQ(typed.toCK(env, nullptr), ALL_ONES);
        EXPECT_EQ(typed.toCK(env, holder(env, otherPath, 5)), typed.failure);
        otherPath = typed.path;
    }
    EXPECT_EQ(jBBoolToCKBBool(env, make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE)), CK_FALSE);
}

TEST_F(ConvToCK, arraysBecomeNativeCopies)
{
    for (const std::size_t count : LENGTHS) {
        SCOPED_TRACE(count);
        const LocalFrame frame(env);
        const Longs values = numbers(count);
        const Words words(values.begin(), values.end());
        const Bytes bytes(values.begin(), values.end());
        expect(jByteArrayToCKByteArray, jni::bytes(env, bytes), bytes);
        expect(jLongArrayToCKULongArray, longArray(env, values), words);
        expect(jObjectHandleArrayToCKObjectHandleArray, holders(env, HANDLE, values), words, 4);
        expect(jMechanismTypeArrayToCKMechanismTypeArray, holders(env, MECHANISM_TYPE, values), words, 4);
    }
    // An element that is null or of another class.
    const auto strangers = [&](const char* path) {
        return objects(env, "java/lang/Object", {holder(env, path, 7), nullptr, string(env, "8")});
    };
    expect(jObjectHandleArrayToCKObjectHandleArray, strangers(HANDLE), Words{7, ALL_ONES, 0}, 4);
    expect(jMechanismTypeArrayToCKMechanismTypeArray, strangers(MECHANISM_TYPE), Words{7, ALL_ONES, ALL_ONES},
        4);
}

} // namespace
