// Starts the JVM and collects what it prints, so that a warning about a JNI call fails the test that made the
// call.
#include "harness/jvm.h"

#include "fakes/recorder.h"
#include "harness/jni_helpers.h"

#include <utility>

namespace {

std::string printed;

// The JVM prints through this function. It copies to the terminal because a fatal error aborts right after
// it.
jint JNICALL collectPrinted(FILE* stream, const char* format, va_list arguments)
{
    char text[4096];
    std::vsnprintf(text, sizeof text, format, arguments);
    printed += text;
    std::fputs(text, stream);
    return std::fflush(stream);
}

JavaVM* startJvm()
{
    // -Xint: no compiler threads, so it starts faster, and the leak checker reports nothing.
    std::string texts[] = {
        "vfprintf", "-Djava.class.path=" ZERLIN_CLASSPATH, "-Xcheck:jni", "-Xint", "-XX:+UseSerialGC"};
    JavaVMOption options[std::size(texts)] = {};
    for (std::size_t i = 0; i < std::size(texts); ++i)
        options[i].optionString = texts[i].data();
    options[0].extraInfo = reinterpret_cast<void*>(collectPrinted);
    JavaVMInitArgs arguments{JNI_VERSION_1_8, std::size(texts), options, JNI_FALSE};
    JavaVM* vm = nullptr;
    JNIEnv* env = nullptr;
    EXPECT_EQ(JNI_CreateJavaVM(&vm, reinterpret_cast<void**>(&env), &arguments), JNI_OK);
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
    EXPECT_EQ(jni::takeException(env), "") << "pending at the end of the test";
    EXPECT_EQ(takeJniWarnings(), "");
    env->PopLocalFrame(nullptr);
}
