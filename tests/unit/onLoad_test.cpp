// One image of the library serves one class loader at a time: which JNI_OnLoad is refused, and what stays.
#include "harness/failures.h"
#include "helper/javaNames.h"
#include "jni/mutexCallbacks.h"

#include <atomic>
#include <thread>

namespace {

using namespace jni;

const char* const REFUSAL = "java.lang.UnsatisfiedLinkError: this libzerlin.so is already loaded, under "
                            "another name of the same file, and serves one class loader at a time: load "
                            "zerlin.jar in one class loader that all its users share";

using OnLoad = JniTest;

TEST_F(OnLoad, aSecondLoadIsRefusedUntilTheUnloadAndChangesNothing)
{
    EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_VERSION_1_2);
    initialiseWithCallbacks(env);
    const jobject callbacks = zerlin::gInitArgsObject;
    const jclass known = zerlin::java::INITIALIZE_ARGS.cls.reference;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_ERR);
        EXPECT_EQ(takeException(env), REFUSAL);
        EXPECT_TRUE(zerlin::gInitArgsObject == callbacks && callbacks != nullptr);
        EXPECT_TRUE(zerlin::java::INITIALIZE_ARGS.cls.reference == known && known != nullptr);
    }
    const auto refused = [] { EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_ERR); };
    for (int number = 1; !watch(env, {.call = number}, refused).failed.empty(); ++number)
        EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
    EXPECT_EQ(takeException(env), REFUSAL);
    JNI_OnUnload(jvm(), nullptr);
    EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_VERSION_1_2);
}

TEST_F(OnLoad, ofThreadsThatLoadAtOnceOneSucceeds)
{
    for (int round = 0; round < 20; ++round) {
        std::atomic<int> loaded = 0;
        std::atomic<int> refused = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] {
                const AttachedThread attached;
                const bool isLoaded = JNI_OnLoad(jvm(), nullptr) == JNI_VERSION_1_2;
                const std::string raised = takeException(attached.env);
                if (isLoaded && raised.empty()) ++loaded;
                if (!isLoaded && raised == REFUSAL) ++refused;
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(loaded, 1);
        EXPECT_EQ(refused, 3);
        JNI_OnUnload(jvm(), nullptr);
    }
}

} // namespace
