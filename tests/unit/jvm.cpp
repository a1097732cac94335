// Starts the JVM and collects what it prints, so that its warnings about JNI calls fail the test that made
// them.
#include "jvm.h"

#include "double/recorder.h"
#include "jni_helpers.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace {

constexpr jint localReferencesPerTest = 512;

std::mutex printedMutex;
std::string printed;

// The JVM prints through this function. A fatal error aborts right after it: hence the copy to the terminal.
jint JNICALL collectPrinted(FILE* stream, const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) return length;
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);

    const std::lock_guard lock(printedMutex);
    printed += text;
    std::fputs(text.c_str(), stream);
    std::fflush(stream);
    return length;
}

JavaVM* startJvm()
{
    std::string classPath = "-Djava.class.path=" ZERLIN_CLASSPATH;
    const auto option = [](const char* text) { return JavaVMOption{const_cast<char*>(text), nullptr}; };
    std::array options = {
        JavaVMOption{const_cast<char*>("vfprintf"), reinterpret_cast<void*>(collectPrinted)},
        option(classPath.c_str()),
        option("-Xcheck:jni"),
        option("-Xint"), // no compiler threads: quicker to start, and quiet under the leak checker
        option("-Xmx64m"),
        option("-Xss512k"),
        option("-XX:+UseSerialGC"),
        option("-XX:-UsePerfData"),
        option("-Xshare:auto"),
    };
    JavaVMInitArgs arguments{JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(), JNI_FALSE};
    JavaVM* vm = nullptr;
    JNIEnv* env = nullptr;
    if (JNI_CreateJavaVM(&vm, reinterpret_cast<void**>(&env), &arguments) != JNI_OK) {
        throw std::runtime_error("no JVM could be started");
    }
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

AttachedThread::AttachedThread()
{
    if (jvm()->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr) != JNI_OK) {
        throw std::runtime_error("the thread could not be attached");
    }
}

AttachedThread::~AttachedThread()
{
    jvm()->DetachCurrentThread();
}

LocalFrame::LocalFrame(JNIEnv* jniEnv) : env(jniEnv)
{
    if (env->PushLocalFrame(localReferencesPerTest) != JNI_OK) throw std::runtime_error("no local frame");
}

LocalFrame::~LocalFrame()
{
    env->PopLocalFrame(nullptr);
}

void JniTest::SetUp()
{
    ASSERT_EQ(jvm()->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_8), JNI_OK);
    ASSERT_EQ(env->PushLocalFrame(localReferencesPerTest), JNI_OK);
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
