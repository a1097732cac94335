// Native values that become new Java objects.
#include "conversion_cases.h"
#include "harness/natives.h"

namespace {

using namespace cases;
using namespace jni;

struct ConvToJava : JniTest {};

TEST_F(ConvToJava, numbersBecomeTypedValues)
{
    for (const CK_ULONG native : {CK_ULONG{0}, CK_ULONG{0x80000100}, ALL_ONES}) {
        const auto check = [&](jobject object, const char* path, const char* field) {
            EXPECT_TRUE(env->IsInstanceOf(object, find(env, path))) << path;
            EXPECT_EQ(getLong(env, object, field), jlong{native}) << path;
        };
        for (const TypedClass& typed : TYPED_CLASSES)
            check(typed.toJava(env, native), typed.path, "m_value");
        check(LongRefObj(env, native), "halvorn/zerlin/LongRef", "value");
        check(ckULongPtrToJLongObject(env, &native), "java/lang/Long", "value");
    }
}

TEST_F(ConvToJava, booleansVersionsAndDatesBecomeObjects)
{
    EXPECT_TRUE(getBool(env, ckBBoolToJBBool(env, 1), "m_value"));
    EXPECT_FALSE(getBool(env, ckBBoolToJBBool(env, 2), "m_value"));
    const CK_VERSION version = {2, 200};
    CK_DATE date;
    std::memcpy(&date, "20240715", 8);
    EXPECT_EQ(text(env, {ckVersionPtrToJVersion(env, &version), ckVersionPtrToJVersion(env, nullptr),
                            ckDatePtrToJDateObject(env, &date), ckDatePtrToJDateObject(env, nullptr)}),
        "[2.200, null, 2024-07-15, null]"); // the month from its own place, unlike the copy into a date
}

TEST_F(ConvToJava, nativeArraysBecomeJavaArrays)
{
    for (const CK_ULONG count : LENGTHS) {
        const LocalFrame frame(env);
        Words words;
        Longs wanted;
        for (const jlong value : numbers(count)) {
            words.push_back(static_cast<CK_ULONG>(value));
            wanted.push_back(value & 0xFFFFFFFF);
        }
        words.reserve(1); // so that data() is not null
        const auto* const first = reinterpret_cast<const CK_BYTE*>(words.data());
        const Bytes bytes(first, first + count);
        EXPECT_EQ(toVector(env, ckULongArrayToJLongArray(env, words.data(), count)), wanted);
        EXPECT_EQ(toVector(env, ckByteArrayToJByteArray(env, first, count)), bytes);
        EXPECT_EQ(heldBy(env, ckObjHandleArrayToJObjHandleArray(env, words.data(), count)), wanted);
        EXPECT_EQ(heldBy(env, ckMechanismTypeArrayToJMechanismTypeArray(env, words.data(), count)), wanted);
    }
    EXPECT_EQ(ckULongArrayToJLongArray(env, nullptr, 3), nullptr);
    EXPECT_EQ(ckByteArrayToJByteArray(env, nullptr, 3), nullptr);
    EXPECT_EQ(ckObjHandleArrayToJObjHandleArray(env, nullptr, 3), nullptr);
    EXPECT_EQ(ckMechanismTypeArrayToJMechanismTypeArray(env, nullptr, 3), nullptr);
}

} // namespace
