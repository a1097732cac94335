// Lookups and their memory, the field accessors and the exceptions that the library throws.
#include "conversion_cases.h"
#include "harness/faulty_env.h"
#include "helper/javaNames.h"

#include <atomic>
#include <latch>
#include <thread>

namespace {

using namespace cases;
using namespace jni;

struct Jutil : JniTest {
    // How many calls that can fail the work makes.
    int calls(const std::function<void()>& work)
    {
        const Watched watched = watch(env, {}, work);
        EXPECT_TRUE(watched.violations.empty());
        EXPECT_TRUE(watched.globalRefs.empty()) << "which would keep a class loader alive";
        return watched.calls;
    }
};

TEST_F(Jutil, fieldsAreReadAndWrittenAndMissingOnesRaise)
{
    const jobject ref = holder(env, "halvorn/zerlin/LongRef", 0x580000001);
    EXPECT_EQ(zerlin::GetLongField(env, ref, java::LONG_REF.value), 0x80000001);
    EXPECT_TRUE(zerlin::SetLongField(env, ref, java::LONG_REF.value, ALL_ONES));
    EXPECT_EQ(getLong(env, ref, "value"), 4294967295);

    // A null object is left alone silently; a missing field or class leaves its exception.
    static constinit JavaClass noClass{"no/such/Class"};
    static constinit JavaField intOfNoClass{noClass, "none", "I"};
    static constinit JavaField intField{java::LONG_REF.cls, "none", "I"};
    static constinit JavaField longField{java::LONG_REF.cls, "none", "J"};
    static constinit JavaField bytesField{java::LONG_REF.cls, "none", "[B"};
    static constinit JavaField byteField{java::LONG_REF.cls, "none", "B"};
    for (const jobject object : {jobject{}, ref}) {
        const std::string error = object == nullptr ? "" : "java.lang.NoSuchFieldError";
        EXPECT_EQ(zerlin::GetIntField(env, object, intField), -1);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(zerlin::GetLongField(env, object, longField), ALL_ONES);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(GetByteArrayField(env, object, bytesField), nullptr);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(zerlin::SetByteField(env, object, byteField, 1), error.empty());
        EXPECT_EQ(takeException(env).substr(0, 26), error);
    }
    EXPECT_EQ(zerlin::GetIntField(env, ref, intOfNoClass), -1);
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: no/such/Class");
}

TEST_F(Jutil, lookupsAreRemembered)
{
    const jobject ref = make(env, "halvorn/zerlin/LongRef");
    const jobject state = holder(env, STATE, 0);
    const auto work = [&] {
        zerlin::SetLongField(env, ref, java::LONG_REF.value, 5);
        setLongValue(env, state, java::STATE.setValue, 6);
        EXPECT_FALSE(env->ExceptionCheck());
    };
    for (int round = 0; round < 2; ++round) {
        // In both rounds: two classes, two weak references, a field, a method and its call.
        EXPECT_EQ(calls(work), 7);
        EXPECT_EQ(calls(work), 1) << "the call alone";
        EXPECT_EQ(getLong(env, ref, "value"), 5);
        EXPECT_EQ(getLong(env, state, "m_value"), 6);
        forgetLookups(env);
    }
}

TEST_F(Jutil, onlySuccessesAreRemembered)
{
    bool fails = true;
    const auto look = [&] { EXPECT_EQ(FindClass(env, java::LONG_REF.cls) == nullptr, fails); };
    for (int i = 0; i < 2; ++i) {
        watch(env, {.lookup = "halvorn/zerlin/LongRef"}, look);
        EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: halvorn/zerlin/LongRef");
    }
    fails = false;
    look();
    EXPECT_EQ(calls(look), 0);
}

// One thread's first use of a class or field while others use it or meet it for the first time too.
TEST_F(Jutil, threadsMayMakeTheSameFirstLookup)
{
    constexpr int threads = 8;
    std::atomic<int> wrong = 0;
    for (int round = 0; round < 25; ++round) {
        forgetLookups(env);
        std::latch start(threads);
        const auto work = [&](std::size_t first) {
            const AttachedThread thread;
            const LocalFrame frame(thread.env);
            start.arrive_and_wait();
            for (std::size_t i = 0; i < std::size(TYPED_CLASSES); ++i) {
                const TypedClass& typed = TYPED_CLASSES[(first + i) % std::size(TYPED_CLASSES)];
                const CK_ULONG value = first * 1000 + i;
                wrong += typed.toCK(thread.env, typed.toJava(thread.env, value)) != value;
            }
        };
        std::vector<std::jthread> running;
        for (std::size_t i = 0; i < threads; ++i)
            running.emplace_back(work, i);
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(Jutil, exceptionTextsKeepTheirArgumentsWhole)
{
    const std::string prefix = "java.lang.UnsupportedOperationException: ";
    const std::string text = "%s%n" + std::string(1000, 'x');
    throwUnsupported(env, "Constant %s not recognised", text.c_str());
    EXPECT_EQ(takeException(env), prefix + "Constant " + text + " not recognised");
    throwUnsupportedClass(env, "No Conversion from %s to a CK type", bytes(env, {1}));
    EXPECT_EQ(takeException(env), prefix + "No Conversion from [B to a CK type");
}

} // namespace
