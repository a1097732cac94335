// The JVM that lives inside a test program, and the fixture of every test that uses it.
#pragma once

#include <gtest/gtest.h>
#include <jni.h>
#include <string>

// Where the JVM finds its classes: each program says so itself.
extern const char* const CLASS_PATH;

// The one JVM of the process, started with -Xcheck:jni by the first call; that call's thread is attached.
JavaVM* jvm();

// What -Xcheck:jni complained about since the last call, each complaint with its stack; "" when nothing.
std::string takeJniWarnings();

// Attaches the current thread, which must be a new one, for as long as it lives.
struct AttachedThread {
    AttachedThread() { jvm()->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr); }
    ~AttachedThread() { jvm()->DetachCurrentThread(); }

    JNIEnv* env = nullptr;
};

// Local references made in its scope end with it: for the rows of a long table.
struct LocalFrame {
    explicit LocalFrame(JNIEnv* jniEnv) : env(jniEnv) { env->PushLocalFrame(512); }
    ~LocalFrame() { env->PopLocalFrame(nullptr); }

    JNIEnv* env;
};

// Starts with an empty recorder and no remembered lookup. Fails the test that leaves an exception pending or
// that the JVM's own checks complain about.
struct JniTest : ::testing::Test {
    JNIEnv* env = nullptr;

    void SetUp() override;
    void TearDown() override;
};
