// One image of the library serves one class loader at a time, and keeps none alive.
#include "harness/failures.h"
#include "helper/javaNames.h"
#include "jni/mutexCallbacks.h"

namespace {

using namespace jni;
using namespace zerlin;

struct OnLoad : JniTest {};

TEST_F(OnLoad, aSecondLoadIsRefusedUntilTheUnloadAndChangesNothing)
{
    EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_VERSION_1_2);
    initialiseWithCallbacks(env);
    const jobject callbacks = gInitArgsObject;
    const jclass known = java::INITIALIZE_ARGS.cls.reference;
    EXPECT_TRUE(callbacks != nullptr && known != nullptr);
    const auto refused = [] { EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_ERR); };
    for (int number = 1; !watch(env, {.call = number}, refused).failed.empty(); ++number)
        EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
    EXPECT_EQ(takeException(env),
        "java.lang.UnsatisfiedLinkError: this libzerlin.so is already loaded, under another name of the same "
        "file, and serves one class loader at a time: load zerlin.jar in one class loader that all its users "
        "share");
    EXPECT_TRUE(gInitArgsObject == callbacks && java::INITIALIZE_ARGS.cls.reference == known);
    JNI_OnUnload(jvm(), nullptr);
    watch(env, {.call = 1}, refused); // a load that fails may be repeated
    EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
    EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_VERSION_1_2);
}

TEST_F(OnLoad, onlySuccessfulLookupsAreRememberedUntilTheyAreForgotten)
{
    watch(env, {.call = 1}, [&] { FindClass(env, java::LONG_REF.cls); });
    EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
    for (const int calls : {6, 0, 6}) { // two classes, two weak references, a field and a method
        const auto lookUp = [&] {
            EXPECT_TRUE(GetFieldID(env, java::LONG_REF.value) && GetMethodID(env, java::STATE.setValue));
        };
        EXPECT_EQ(watch(env, {}, lookUp).calls, calls);
        if (calls == 0) forgetLookups(env);
    }
}

} // namespace
