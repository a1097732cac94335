// What the lookups of Java names remember, and that it keeps no class loader alive.
#include "harness/failures.h"
#include "helper/javaNames.h"

namespace {

using namespace jni;
using namespace zerlin;

struct Jutil : JniTest {};

TEST_F(Jutil, onlySuccessesAreRememberedUntilTheyAreForgotten)
{
    static int weakRefs;
    static const JNINativeInterface_* real;
    real = env->functions;
    weakRefs = 0;
    JNINativeInterface_ table = *real;
    table.NewWeakGlobalRef = [](JNIEnv* e, jobject object) {
        return ++weakRefs, real->NewWeakGlobalRef(e, object);
    };
    table.DeleteWeakGlobalRef = [](JNIEnv* e, jweak gone) { --weakRefs, real->DeleteWeakGlobalRef(e, gone); };
    env->functions = &table;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 2; ++i) {
            watch(env, {.lookup = "halvorn/zerlin/LongRef"}, [&] { FindClass(env, java::LONG_REF.cls); });
            EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: halvorn/zerlin/LongRef");
        }
        for (const int calls : {6, 0}) { // two classes, two weak references, a field and a method
            const Watched watched = watch(env, {}, [&] {
                EXPECT_NE(zerlin::GetFieldID(env, java::LONG_REF.value), nullptr);
                EXPECT_NE(zerlin::GetMethodID(env, java::STATE.setValue), nullptr);
            });
            EXPECT_EQ(watched.calls, calls);
            EXPECT_TRUE(watched.globalRefs.empty());
            EXPECT_EQ(weakRefs, 2);
        }
        forgetLookups(env);
        EXPECT_EQ(weakRefs, 0);
    }
    env->functions = real;
}

} // namespace
