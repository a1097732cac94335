// Java's locking callbacks: how C_Initialize registers them, how long they stay registered, and what happens
// when the Cryptoki library calls one, on any thread.
#include "harness/failures.h"
#include "helper/jutil.h"
#include "jni/mutexCallbacks.h"

#include <array>
#include <dlfcn.h>
#include <thread>

namespace {

// Replaces JNI_GetCreatedJavaVMs if it is set.
std::function<decltype(JNI_GetCreatedJavaVMs)> createdVMs;

} // namespace

// The library under test calls this one instead of the JVM's own.
jint JNICALL JNI_GetCreatedJavaVMs(JavaVM** vms, jsize size, jsize* count)
{
    if (createdVMs) return createdVMs(vms, size, count);
    static const auto real =
        reinterpret_cast<decltype(&JNI_GetCreatedJavaVMs)>(dlsym(RTLD_NEXT, "JNI_GetCreatedJavaVMs"));
    return real(vms, size, count);
}

namespace {

using namespace jni;

const char* const CALLBACKS = "TestCallbacks";
const char* const ALL_SET = "C_Initialize({set, set, set, set, 0, null})";
const char* const NONE_SET = "C_Initialize(null)";

jint attachment()
{
    void* env = nullptr;
    return jvm()->GetEnv(&env, JNI_VERSION_1_8);
}

struct MutexCallbacks : JniTest {
    CK_C_INITIALIZE_ARGS given = {}; // what the last C_Initialize with arguments passed on

    jobject answering(jlong answer, const char* mutex = "m", const char* initials = "cdlu")
    {
        return callStatic(env, CALLBACKS, "answering",
            "(Ljava/lang/String;Ljava/lang/Object;J)Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS;",
            string(env, initials), mutex == nullptr ? nullptr : string(env, mutex), answer);
    }
    jobject made(const char* factory)
    {
        return callStatic(env, CALLBACKS, factory, "()Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS;");
    }
    std::string takeCalls()
    {
        const jobject calls = callStatic(env, CALLBACKS, "takeCalls", "()Ljava/lang/String;");
        return toString(env, static_cast<jstring>(calls));
    }

    // The line of the Cryptoki call, or "" if there was none.
    std::string initialise(jobject args, CK_RV rv = CKR_OK)
    {
        const std::size_t known = recorder::calls().size();
        recorder::script().C_Initialize = [this, rv](CK_VOID_PTR passed) {
            if (passed != nullptr) given = *static_cast<CK_C_INITIALIZE_ARGS*>(passed);
            return rv;
        };
        const jobject returned = NATIVE(C_1Initialize)(env, nullptr, args);
        EXPECT_EQ(returned == nullptr, env->ExceptionCheck());
        if (recorder::calls().size() == known) return "";
        if (returned != nullptr) {
            EXPECT_EQ(rvOf(env, returned), rv);
        }
        return recorder::calls().back();
    }
    void finalise(CK_RV rv = CKR_OK)
    {
        recorder::script().C_Finalize = [rv](CK_VOID_PTR) { return rv; };
        EXPECT_EQ(rvOf(env, NATIVE(C_1Finalize)(env, nullptr, nullptr)), rv);
    }
    CK_VOID_PTR newMutex()
    {
        CK_VOID_PTR mutex = nullptr;
        EXPECT_EQ(given.CreateMutex(&mutex), CKR_OK);
        EXPECT_NE(mutex, nullptr);
        return mutex;
    }
    // What the functions on a mutex return: lock, unlock, destroy.
    std::vector<CK_RV> useMutex(CK_VOID_PTR mutex)
    {
        return {given.LockMutex(mutex), given.UnlockMutex(mutex), given.DestroyMutex(mutex)};
    }
    // Calls one of the four functions, in the order of their use. A created mutex is not kept.
    CK_RV callFunction(std::size_t index, CK_VOID_PTR mutex)
    {
        const std::array onMutex = {given.LockMutex, given.UnlockMutex, given.DestroyMutex};
        if (index > 0) return onMutex[index - 1](mutex);
        CK_VOID_PTR created = mutex;
        const CK_RV rv = given.CreateMutex(&created);
        EXPECT_EQ(created == nullptr, rv != CKR_OK);
        return rv;
    }
};

const char* const NAMES[] = {"CreateMutex", "LockMutex", "UnlockMutex", "DestroyMutex"};

TEST_F(MutexCallbacks, theLibraryGetsAFunctionForEachCallback)
{
    const struct {
        const char* initials;
        jlong flags;
        const char* line;
    } rows[] = {
        {"cdlu", 0, ALL_SET},
        {"c", 0, "C_Initialize({set, null, null, null, 0, null})"},
        {"d", 0, "C_Initialize({null, set, null, null, 0, null})"},
        {"l", 2, "C_Initialize({null, null, set, null, 2, null})"},
        {"u", 0x1'0000'0002, "C_Initialize({null, null, null, set, 2, null})"},
        {"", -1, "C_Initialize({null, null, null, null, 0xffffffff, null})"},
    };
    for (const auto& row : rows) {
        const jobject args = answering(0, "m", row.initials);
        setLong(env, args, "flags", row.flags);
        EXPECT_EQ(initialise(args), row.line);
        EXPECT_STREQ(initialise(args).c_str(), *row.initials == '\0' ? row.line : NONE_SET);
        finalise();
    }
    expectRefused(env, call(NATIVE(C_1Initialize), longRef(env, 1)));
}

// Also when the library fails; while it lasts, further calls pass no arguments.
TEST_F(MutexCallbacks, theRegistrationLastsUntilAFinalizeSucceeds)
{
    const jobject first = answering(1), second = answering(2);
    const Watched watched = watch(env, {}, [&] {
        EXPECT_EQ(initialise(nullptr), NONE_SET);
        for (const CK_RV rv : {CKR_OK, CKR_DEVICE_ERROR}) {
            EXPECT_EQ(initialise(first, rv), ALL_SET);
            for (const jobject args : {second, longRef(env, 1)}) {
                EXPECT_EQ(initialise(args), NONE_SET);
                EXPECT_EQ(given.LockMutex(first), 1U);
                finalise(CKR_DEVICE_ERROR);
            }
            finalise();
            EXPECT_EQ(given.LockMutex(first), CKR_MUTEX_BAD);
        }
        finalise();
    });
    EXPECT_TRUE(watched.globalRefs.empty());
}

TEST_F(MutexCallbacks, eachFunctionCallsItsCallbackAndReturnsTheLowHalf)
{
    const std::pair<jlong, CK_RV> rows[] = {
        {0, CKR_OK}, {0x1A1, CKR_MUTEX_NOT_LOCKED}, {0x1'0000'0005, 5}, {-1, 0xffffffff}};
    for (const auto& [answer, rv] : rows) {
        initialise(answering(answer));
        const Watched watched = watch(env, {}, [&] { EXPECT_EQ(useMutex(newMutex()), std::vector(3, rv)); });
        EXPECT_EQ(takeCalls(), "CreateMutex() LockMutex(m) UnlockMutex(m) DestroyMutex(m) ");
        EXPECT_TRUE(watched.globalRefs.empty()) << "destroyed whatever the callback answers";
        EXPECT_TRUE(watched.localRefs.empty());
        EXPECT_EQ(watched.violations, Lines{});
        finalise();
    }
}

TEST_F(MutexCallbacks, aMissingMutexOrCallbackReturnsMutexBad)
{
    initialise(answering(0));
    EXPECT_EQ(given.CreateMutex(nullptr), CKR_MUTEX_BAD);
    EXPECT_EQ(useMutex(nullptr), std::vector<CK_RV>(3, CKR_MUTEX_BAD));
    EXPECT_EQ(takeCalls(), "");
    const CK_C_INITIALIZE_ARGS all = given;
    finalise();
    initialise(answering(0, nullptr, "c"));
    EXPECT_EQ(callFunction(0, &given), CKR_MUTEX_BAD) << "the Java object is null";
    EXPECT_EQ(takeCalls(), "CreateMutex() ");
    EXPECT_EQ(all.LockMutex(string(env, "m")), CKR_MUTEX_BAD);
}

// The registration ends on another thread, after the callback has begun or before it.
TEST_F(MutexCallbacks, aCallbackOutlivesItsRegistration)
{
    static const JNINativeInterface_* real;
    real = env->functions;
    initialise(answering(0));
    const CK_VOID_PTR mutex = newMutex();
    JNINativeInterface_ table = *real;
    table.GetObjectField = [](JNIEnv* inner, jobject object, jfieldID field) {
        inner->functions = real;
        zerlin::releaseInitArgs(inner);
        return inner->GetObjectField(object, field);
    };
    env->functions = &table;
    EXPECT_EQ(given.LockMutex(mutex), CKR_OK);
    EXPECT_EQ(env->functions, real);
    EXPECT_EQ(given.UnlockMutex(mutex), CKR_MUTEX_BAD);
    EXPECT_EQ(takeCalls(), "CreateMutex() LockMutex(m) ");
    env->DeleteGlobalRef(static_cast<jobject>(mutex));
}

TEST_F(MutexCallbacks, aFailedInitialisationLeavesNothing)
{
    const jobject args = answering(0);
    const auto work = [&] {
        const jobject returned = NATIVE(C_1Initialize)(env, nullptr, args);
        zerlin::releaseInitArgs(env);
        return returned;
    };
    EXPECT_GT(failEachJniCall(env, [&] { return work; }), 0);
    const Lines outcomes = failEachAllocation(env, [&] { return work() == nullptr ? "" : "survived"; });
    EXPECT_EQ(outcomes, Lines(2, NO_MEMORY));
    watch(env, {.silent = "NewGlobalRef"}, [&] { EXPECT_EQ(work(), nullptr); });
    EXPECT_EQ(takeException(env), NO_MEMORY);
    bool wasMet = true;
    for (int number = 1; wasMet; ++number) {
        JNI_OnUnload(jvm(), nullptr);
        jint version = 0;
        const auto load = [&] { version = JNI_OnLoad(jvm(), nullptr); };
        wasMet = !watch(env, {.call = number}, load).failed.empty();
        EXPECT_EQ(version, takeException(env).empty() ? JNI_VERSION_1_2 : JNI_ERR);
    }
}

TEST_F(MutexCallbacks, eachFailedJniCallReturnsMutexBad)
{
    initialise(answering(0));
    const CK_VOID_PTR mutex = newMutex();
    for (std::size_t index = 0; index < 4; ++index) {
        std::string failed;
        // The last call that can fail is that of the callback, or the reference to its result.
        const std::string last = index == 0 ? "NewGlobalRef" : "CallLongMethodV";
        for (int number = 1; failed != last && number < 50; ++number) {
            zerlin::forgetLookups(env);
            CK_RV rv = CKR_OK;
            const Watched watched = watch(env, {.call = number}, [&] { rv = callFunction(index, mutex); });
            EXPECT_EQ(rv, CKR_MUTEX_BAD);
            EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
            EXPECT_EQ(watched.violations, Lines{});
            EXPECT_TRUE(watched.localRefs.empty());
            failed = watched.failed;
        }
        EXPECT_EQ(failed, last);
    }
    watch(env, {.silent = "NewGlobalRef"}, [&] { EXPECT_EQ(callFunction(0, mutex), CKR_MUTEX_BAD); });
    EXPECT_EQ(given.DestroyMutex(mutex), CKR_OK);
}

TEST_F(MutexCallbacks, anUnknownThreadIsAttachedForTheCall)
{
    initialise(answering(5));
    std::thread([&] {
        const CK_VOID_PTR mutex = newMutex();
        for (const std::size_t index : {1U, 2U, 3U}) {
            EXPECT_EQ(callFunction(index, mutex), 5U);
            EXPECT_EQ(attachment(), JNI_EDETACHED);
        }
        const AttachedThread thread;
        EXPECT_EQ(given.DestroyMutex(newMutex()), 5U);
        EXPECT_EQ(attachment(), JNI_OK) << "a known one stays attached";
    }).join();
    finalise();
    initialise(answering(5, nullptr));
    std::thread([&] {
        EXPECT_EQ(callFunction(0, &given), CKR_MUTEX_BAD);
        EXPECT_EQ(attachment(), JNI_EDETACHED);
    }).join();
}

TEST_F(MutexCallbacks, aThreadStaysAttachedWhileItsCallbacksExceptionIsPending)
{
    initialise(made("throwing"));
    const jobject mutex = env->NewGlobalRef(string(env, "m"));
    for (std::size_t index = 0; index < 4; ++index) {
        std::thread([&] {
            EXPECT_EQ(callFunction(index, mutex), CKR_MUTEX_BAD);
            EXPECT_EQ(attachment(), JNI_OK);
            const AttachedThread thread; // its destructor detaches
            EXPECT_EQ(given.LockMutex(mutex), CKR_MUTEX_BAD) << "not called while it is pending";
            EXPECT_EQ(
                takeException(thread.env), std::string("java.lang.IllegalStateException: ") + NAMES[index]);
        }).join();
    }
    EXPECT_EQ(takeCalls(), "CreateMutex() LockMutex(m) UnlockMutex(m) DestroyMutex(m) ");
    EXPECT_EQ(env->GetObjectRefType(mutex), JNIGlobalRefType) << "it outlives a failing DestroyMutex";
    env->DeleteGlobalRef(mutex);
}

// The registration is gone when the call ends, the exception is not.
TEST_F(MutexCallbacks, aCallbackThatFinalisesAndThenThrowsEndsTheNative)
{
    char name[] = "finalise";
    char signature[] = "()V";
    const auto work = [](JNIEnv* inner, jclass) { NATIVE(C_1Finalize)(inner, nullptr, nullptr); };
    const JNINativeMethod method = {name, signature, reinterpret_cast<void*>(+work)};
    ASSERT_EQ(env->RegisterNatives(find(env, CALLBACKS), &method, 1), JNI_OK);

    initialise(made("finalising"));
    recorder::script().C_DigestFinal = [&](auto, CK_BYTE_PTR pDigest, CK_ULONG_PTR pulDigestLen) {
        std::memset(pDigest, 0xaa, 4);
        *pulDigestLen = 3;
        EXPECT_EQ(given.LockMutex(string(env, "m")), CKR_MUTEX_BAD);
        return CKR_OK;
    };
    const jobject length = longRef(env, 4);
    const jbyteArray digest = bytes(env, {1, 2, 3, 4});
    EXPECT_EQ(call(NATIVE(C_1DigestFinal), session(env), digest, length)(env), nullptr);
    EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: LockMutex");
    EXPECT_FALSE(zerlin::hasInitArgs());
    EXPECT_EQ(getLong(env, length, "value"), 4);
    EXPECT_EQ(toVector(env, digest), (Bytes{1, 2, 3, 4}));
}

TEST_F(MutexCallbacks, withoutAJvmOnlyCreateMutexFails)
{
    initialise(answering(5));
    for (const jint result : {JNI_ERR, JNI_OK}) {
        createdVMs = [result](JavaVM** vms, jsize, jsize* count) {
            *vms = jvm();
            *count = result == JNI_OK ? 0 : 1;
            return result;
        };
        EXPECT_EQ(callFunction(0, &given), CKR_MUTEX_BAD);
        EXPECT_EQ(useMutex(&given), std::vector<CK_RV>(3, CKR_OK));
    }
    createdVMs = nullptr;
    EXPECT_EQ(takeCalls(), "");
}

} // namespace
