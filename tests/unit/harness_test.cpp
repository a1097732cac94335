// What the other tests rely on: a warning of the JVM is reported, an injected fault happens, and held or
// misused references are reported. Uses only the JDK's own classes.
#include "harness/faulty_env.h"
#include "harness/jni_helpers.h"
#include "harness/jvm.h"

namespace {

using namespace jni;

struct Harness : JniTest {};

TEST_F(Harness, aCallWithAPendingExceptionIsReported)
{
    env->FindClass("no/such/Class");
    env->FindClass("java/lang/Object");
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: no/such/Class");
    EXPECT_NE(takeJniWarnings().find("WARNING in native method"), std::string::npos);
}

// Stops at the first exception, as every native must.
void useDate(JNIEnv* env)
{
    const jclass cls = env->FindClass("java/util/Date");
    if (env->ExceptionCheck()) return;
    env->GetMethodID(cls, "<init>", "(J)V");
    if (env->ExceptionCheck()) return;
    env->GetFieldID(cls, "fastTime", "J");
}

TEST_F(Harness, injectedFaultsHappen)
{
    const struct {
        Fault fault;
        std::string failed, exception;
    } rows[] = {
        {{.call = 1}, "FindClass", "java.lang.RuntimeException: injected"},
        {{.call = 3}, "GetFieldID", "java.lang.RuntimeException: injected"},
        {{.call = 4}, "", ""},
        {{.lookup = "java/util/Date"}, "FindClass", "java.lang.NoClassDefFoundError: java/util/Date"},
        {{.lookup = "fastTime"}, "GetFieldID", "java.lang.NoSuchFieldError: fastTime"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(watch(env, row.fault, [&] { useDate(env); }).failed, row.failed);
        EXPECT_EQ(takeException(env), row.exception);
    }
}

TEST_F(Harness, heldAndMisusedReferencesAreReported)
{
    const jstring text = string(env, "text");
    const char* held = nullptr;
    jobject global = nullptr;
    const Watched watched = watch(env, {}, [&] {
        env->DeleteLocalRef(env->NewLocalRef(text));
        env->NewLocalRef(text);
        global = env->NewGlobalRef(text);
        held = env->GetStringUTFChars(text, nullptr);
        env->FindClass("no/such/Class");
        env->GetStringUTFLength(text);
        env->DeleteLocalRef(text);
    });
    EXPECT_EQ(watched.localRefs.size(), 1U);
    EXPECT_EQ(watched.globalRefs.size(), 1U);
    EXPECT_EQ(watched.buffers.size(), 1U);
    ASSERT_EQ(watched.violations.size(), 2U);
    EXPECT_EQ(watched.violations[0], "GetStringUTFLength with an exception pending");
    takeException(env);
    env->ReleaseStringUTFChars(static_cast<jstring>(global), held);
    env->DeleteGlobalRef(global);
    takeJniWarnings();
}

} // namespace
