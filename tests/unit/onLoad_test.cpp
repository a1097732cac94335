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
    EXPECT_EQ(JNI_OnLoad(jvm(), nullptr), JNI_VERSION_1_2);
}

TEST_F(OnLoad, onlySuccessfulLookupsAreRememberedUntilTheyAreForgotten)
{
    static int forgotten;
    static const JNINativeInterface_* real;
    real = env->functions;
    forgotten = 0;
    JNINativeInterface_ table = *real;
    table.DeleteWeakGlobalRef = [](JNIEnv* e, jweak gone) {
        ++forgotten, real->DeleteWeakGlobalRef(e, gone);
    };
    env->functions = &table;
    watch(env, {.call = 1}, [&] { FindClass(env, java::LONG_REF.cls); });
    EXPECT_EQ(takeException(env), "java.lang.RuntimeException: injected");
    for (const int calls : {6, 0, 6}) { // two classes, two weak references, a field and a method
        const Watched watched = watch(env, {}, [&] {
            EXPECT_NE(zerlin::GetFieldID(env, java::LONG_REF.value), nullptr);
            EXPECT_NE(zerlin::GetMethodID(env, java::STATE.setValue), nullptr);
        });
        EXPECT_EQ(watched.calls, calls);
        EXPECT_TRUE(watched.globalRefs.empty());
        if (calls == 0) forgetLookups(env);
    }
    EXPECT_EQ(forgotten, 2);
    env->functions = real;
}

} // namespace
