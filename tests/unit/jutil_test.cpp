// Lookups and their memory, the field accessors and the exceptions that the library throws.
#include "conversion_cases.h"
#include "harness/faulty_env.h"
#include "helper/jutil.h"

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
    const jclass refClass = env->GetObjectClass(ref);
    EXPECT_EQ(zerlin::GetLongField(env, refClass, ref, "value"), 0x80000001);
    EXPECT_TRUE(zerlin::SetLongField(env, refClass, ref, "value", ALL_ONES));
    EXPECT_EQ(getLong(env, ref, "value"), 4294967295);

    for (const auto& [cls, object] : {std::pair{refClass, jobject{}}, {jclass{}, ref}, {refClass, ref}}) {
        const std::string error = cls == nullptr || object == nullptr ? "" : "java.lang.NoSuchFieldError";
        EXPECT_EQ(zerlin::GetIntField(env, cls, object, "none"), -1);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(zerlin::GetLongField(env, cls, object, "none"), ALL_ONES);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(GetByteArrayField(env, cls, object, "none"), nullptr);
        EXPECT_EQ(takeException(env).substr(0, 26), error);
        EXPECT_EQ(zerlin::SetByteField(env, cls, object, "none", 1), error.empty());
        EXPECT_EQ(takeException(env).substr(0, 26), error);
    }
}

TEST_F(Jutil, lookupsAreRemembered)
{
    const jobject ref = make(env, "halvorn/zerlin/LongRef");
    const jobject state = holder(env, STATE, 0);
    const auto work = [&] {
        zerlin::SetLongField(env, FindClass(env, "halvorn/zerlin/LongRef"), ref, "value", 5);
        setLongValue(env, FindClass(env, "halvorn/zerlin/constants/CK_STATE"), state, 6);
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
    const auto look = [&] { EXPECT_EQ(FindClass(env, "halvorn/zerlin/LongRef") == nullptr, fails); };
    for (int i = 0; i < 2; ++i) {
        watch(env, {.lookup = "halvorn/zerlin/LongRef"}, look);
        EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: halvorn/zerlin/LongRef");
    }
    fails = false;
    look();
    EXPECT_EQ(calls(look), 0);
}

// A reference that is not from FindClass may name another class later on, with the same field elsewhere.
TEST_F(Jutil, foreignClassReferencesAreNotRemembered)
{
    jclass used[2] = {};
    for (int i = 0; i < 2; ++i) {
        const LocalFrame frame(env);
        const char* const path = i == 0 ? "halvorn/zerlin/CK_INFO" : "halvorn/zerlin/CK_TOKEN_INFO";
        const jclass cls = used[i] = find(env, path);
        const jobject object = make(env, path);
        for (const CK_ULONG value : {5U, 6U})
            EXPECT_EQ(calls([&] { zerlin::SetLongField(env, cls, object, "flags", value); }), 1);
        EXPECT_EQ(getLong(env, object, "flags"), 6);
    }
    EXPECT_EQ(used[0], used[1]) << "the JVM used to give the freed reference out again";
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
