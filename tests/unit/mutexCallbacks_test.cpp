// Java's locking callbacks: how C_Initialize registers them, how long they stay registered, and what happens
// when the Cryptoki library calls one, on any thread.
#include "harness/failures.h"
#include "helper/jutil.h"
#include "jni/mutexCallbacks.h"

#include <thread>

namespace {

jsize createdVMs = 1;

} // namespace

// The library under test calls this one instead of the JVM's own.
jint JNICALL JNI_GetCreatedJavaVMs(JavaVM** vms, jsize, jsize* count)
{
    *vms = jvm();
    *count = createdVMs;
    return JNI_OK;
}

namespace {

using namespace jni;

const char *const CALLBACKS = "TestCallbacks", *const TEXT = "()Ljava/lang/String;";
const std::string NAMES[] = {"CreateMutex", "LockMutex", "UnlockMutex", "DestroyMutex"};

struct MutexCallbacks : JniTest {
    CK_C_INITIALIZE_ARGS given = {}; // what the last C_Initialize with arguments passed on

    // Returns the line of the Cryptoki call.
    std::string initialise(jobject args)
    {
        script().C_Initialize = [this](CK_VOID_PTR passed) {
            if (passed != nullptr) given = *static_cast<CK_C_INITIALIZE_ARGS*>(passed);
            return script().result;
        };
        EXPECT_EQ(rvOf(env, NATIVE(C_1Initialize)(env, nullptr, args)), script().result);
        return recorder::calls.back();
    }
    void finalise() { EXPECT_EQ(rvOf(env, NATIVE(C_1Finalize)(env, nullptr, nullptr)), script().result); }
    // Calls one of the four functions, in the order of NAMES. CreateMutex replaces the mutex.
    static CK_RV callFunction(const CK_C_INITIALIZE_ARGS& functions, std::size_t index, CK_VOID_PTR& mutex)
    {
        if (index == 0) return functions.CreateMutex(&mutex);
        if (index == 3) return functions.DestroyMutex(mutex);
        return (index == 1 ? functions.LockMutex : functions.UnlockMutex)(mutex);
    }
};

// Also when the library fails; while it lasts, further calls pass no arguments.
TEST_F(MutexCallbacks, theRegistrationLastsUntilAFinalizeSucceeds)
{
    const jobject first = callbacks(env, "cdlu", 1), second = callbacks(env, "d"), wrong = longRef(env, 1);
    setLong(env, first, "flags", 2);
    const Watched watched = watch(env, {}, [&] {
        EXPECT_EQ(initialise(second), "C_Initialize({null, set, null, null, 0, null})");
        finalise();
        script().result = CKR_DEVICE_ERROR;
        EXPECT_EQ(initialise(first), "C_Initialize({set, set, set, set, 2, null})");
        for (const jobject args : {second, wrong}) {
            EXPECT_EQ(initialise(args), "C_Initialize(null)");
            finalise();
            EXPECT_EQ(given.LockMutex(string(env, "m")), 1U);
        }
        script().result = CKR_OK;
        finalise();
        zerlin::forgetLookups(env);
    });
    EXPECT_TRUE(watched.globalRefs.empty());
    expectRefused(env, call(NATIVE(C_1Initialize), wrong));
}

// A thread that the JVM does not know is attached for the call, and stays so while its exception is pending.
TEST_F(MutexCallbacks, eachFunctionCallsItsCallbackOnAnyThread)
{
    constexpr CK_RV BAD = CKR_MUTEX_BAD;
    const std::string all = "CreateMutex() LockMutex(m) UnlockMutex(m) DestroyMutex(m) ";
    const jobject working = callbacks(env), throwing = callbacks(env, "cdlut");
    initialise(working);
    const CK_C_INITIALIZE_ARGS functions = given;
    // What happens, the arguments, what CreateMutex and the others return, which callbacks are called, and
    // how many JVMs there are.
    const std::tuple<const char*, jobject, CK_RV, CK_RV, std::string, jsize> rows[] = {
        {"success", working, CKR_OK, CKR_OK, all, 1},
        {"a negative answer", callbacks(env, "cdlu", -1), CKR_OK, ~CK_RV{0}, all, 1},
        {"exceptions", throwing, BAD, BAD, all, 1},
        {"only CreateMutex, of null", callbacks(env, "c", 0, nullptr), BAD, BAD, "CreateMutex() ", 1},
        {"no registration", nullptr, BAD, BAD, "", 1}, {"no JVM", working, BAD, CKR_OK, "", 0}}; // deliberate
    for (const auto& [name, args, created, rv, calls, vms] : rows) {
        for (const bool isKnown : {true, false}) {
            SCOPED_TRACE(name);
            const bool throws = args == throwing;
            finalise();
            initialise(args);
            createdVMs = vms;
            CK_VOID_PTR mutex = env->NewGlobalRef(string(env, "m"));
            for (std::size_t index = 0; index < 4; ++index) {
                std::thread([&, used = mutex, expected = index == 0 ? created : rv]() mutable {
                    void* attached = nullptr;
                    if (isKnown) jvm()->AttachCurrentThread(&attached, nullptr);
                    EXPECT_EQ(callFunction(functions, index, used), expected);
                    EXPECT_EQ(used == nullptr, index == 0 && expected != CKR_OK);
                    if (used != nullptr) mutex = used;
                    const bool isAttached = jvm()->GetEnv(&attached, JNI_VERSION_1_8) == JNI_OK;
                    EXPECT_EQ(isAttached, isKnown || throws);
                    jvm()->AttachCurrentThread(&attached, nullptr);
                    EXPECT_TRUE(!throws || functions.LockMutex(mutex) == BAD); // calls nothing meanwhile
                    const std::string exception = takeException(static_cast<JNIEnv*>(attached));
                    EXPECT_EQ(exception, throws ? "java.lang.IllegalStateException: " + NAMES[index] : "");
                    jvm()->DetachCurrentThread();
                }).join();
            }
            if (throws) env->DeleteGlobalRef(static_cast<jobject>(mutex)); // DestroyMutex has not
            EXPECT_EQ(text(env, {callStatic(env, CALLBACKS, "takeCalls", TEXT)}), "[" + calls + "]");
            createdVMs = 1;
        }
    }
}

// The registration ends on another thread, after the callback has begun.
TEST_F(MutexCallbacks, aCallbackOutlivesItsRegistration)
{
    static const JNINativeInterface_* real;
    real = env->functions;
    initialise(callbacks(env));
    JNINativeInterface_ table = *real;
    table.GetObjectField = [](JNIEnv* inner, jobject object, jfieldID field) {
        inner->functions = real;
        zerlin::releaseInitArgs(inner);
        return inner->GetObjectField(object, field);
    };
    env->functions = &table;
    EXPECT_EQ(given.LockMutex(string(env, "m")), CKR_OK);
    EXPECT_EQ(env->functions, real);
    EXPECT_EQ(text(env, {callStatic(env, CALLBACKS, "takeCalls", TEXT)}), "[LockMutex(m) ]");
}

TEST_F(MutexCallbacks, aFailedInitialisationOrLoadLeavesNothing)
{
    const auto work = [&, args = callbacks(env)] {
        const jobject returned = NATIVE(C_1Initialize)(env, nullptr, args);
        zerlin::releaseInitArgs(env);
        return returned;
    };
    failEachJniCall(env, [&] { return work; });
    EXPECT_EQ(failEachAllocation(env, [&] { return work() ? "survived" : ""; }), Lines{});
    watch(env, {.silent = "NewGlobalRef"}, [&] { EXPECT_EQ(work(), nullptr); });
    EXPECT_EQ(takeException(env), NO_MEMORY);
    for (int number = 1; number < 20; ++number) {
        JNI_OnUnload(jvm(), nullptr);
        jint version = 0;
        watch(env, {.call = number}, [&] { version = JNI_OnLoad(jvm(), nullptr); });
        EXPECT_EQ(version, takeException(env).empty() ? JNI_VERSION_1_2 : JNI_ERR) << number;
    }
}

TEST_F(MutexCallbacks, eachFailedJniCallReturnsMutexBad)
{
    for (std::size_t index = 0; index < 4; ++index) {
        SCOPED_TRACE(NAMES[index]);
        failEachJniCall(env, [&] {
            finalise();
            initialise(callbacks(env));
            return [&, mutex = env->NewGlobalRef(string(env, "m"))] {
                CK_VOID_PTR used = mutex;
                const CK_RV rv = callFunction(given, index, used);
                EXPECT_EQ(rv, env->ExceptionCheck() ? CKR_MUTEX_BAD : CKR_OK);
                if (index == 0) env->DeleteGlobalRef(static_cast<jobject>(used));
            };
        });
    }
    CK_VOID_PTR mutex = this;
    watch(env, {.silent = "NewGlobalRef"}, [&] { EXPECT_EQ(given.CreateMutex(&mutex), CKR_MUTEX_BAD); });
    EXPECT_EQ(given.CreateMutex(nullptr), CKR_MUTEX_BAD);
    EXPECT_EQ(given.LockMutex(nullptr), CKR_MUTEX_BAD);
}

} // namespace
