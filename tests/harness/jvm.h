// The JVM that lives inside a test program, and the fixture of every test that uses it.
#pragma once

#include <gtest/gtest.h>
#include <jni.h>
#include <string>

// The one JVM of the process. The first call starts it with -Xcheck:jni and attaches the calling thread.
JavaVM* jvm();

// The warnings of -Xcheck:jni since the last call, each with its stack, or "".
std::string takeJniWarnings();

// Deletes the local references that were created in its scope: for the rows of a long table.
struct LocalFrame {
    explicit LocalFrame(JNIEnv* jniEnv) : env(jniEnv) { env->PushLocalFrame(512); }
    ~LocalFrame() { env->PopLocalFrame(nullptr); }

    JNIEnv* env;
};

// Starts with an empty recorder and no remembered lookup. Fails a test that leaves an exception pending or
// that the JVM's own checks warn about.
struct JniTest : ::testing::Test {
    JNIEnv* env = nullptr;

    void SetUp() override;
    void TearDown() override;
};
