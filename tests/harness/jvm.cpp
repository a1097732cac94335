// Starts the JVM and collects what it prints, so that a warning about a JNI call fails the test that made the
// call.
#include "harness/jvm.h"

#include "fakes/recorder.h"
#include "harness/jni_helpers.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace {

std::mutex printedMutex;
std::string printed;

// The JVM prints through this function. It copies to the terminal because a fatal error aborts right after
// it.
jint JNICALL collectPrinted(FILE* stream, const char* format, va_list arguments)
{
    char text[4096];
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    const std::lock_guard lock(printedMutex);
    printed += text;
    std::fputs(text, stream);
    std::fflush(stream);
    return length;
}

JavaVM* startJvm()
{
    std::string classPath = std::string("-Djava.class.path=") + CLASS_PATH;
    const auto option = [](const char* text) { return JavaVMOption{const_cast<char*>(text), nullptr}; };
    std::array options = {
        JavaVMOption{const_cast<char*>("vfprintf"), reinterpret_cast<void*>(collectPrinted)},
        option(classPath.c_str()),
        option("-Xcheck:jni"),
        option("-Xint"), // no compiler threads: starts faster, and the leak checker reports nothing
        option("-XX:+UseSerialGC"),
    };
    JavaVMInitArgs arguments{JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(), JNI_FALSE};
    JavaVM* vm = nullptr;
    JNIEnv* env = nullptr;
    const jint created = JNI_CreateJavaVM(&vm, reinterpret_cast<void**>(&env), &arguments);
    if (created != JNI_OK) throw std::runtime_error("no JVM could be started");
    return vm;
}

} // namespace

JavaVM* jvm()
{
    static JavaVM* const vm = startJvm();
    return vm;
}

std::string takeJniWarnings()
{
    const std::lock_guard lock(printedMutex);
    const std::string text = std::exchange(printed, "");
    return text.find(" in native method") == std::string::npos ? "" : text;
}

void JniTest::SetUp()
{
    ASSERT_EQ(jvm()->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_8), JNI_OK);
    ASSERT_EQ(env->PushLocalFrame(512), JNI_OK);
    JNI_OnUnload(jvm(), nullptr);
    recorder::reset();
}

void JniTest::TearDown()
{
    if (env == nullptr) return;
    EXPECT_EQ(jni::takeException(env), "") << "pending at the end of the test";
    EXPECT_EQ(takeJniWarnings(), "");
    env->PopLocalFrame(nullptr);
}
