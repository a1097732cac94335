// Short ways to create, read and write Java objects in tests. Nothing here uses the library under test, so
// that a fault of the library cannot hide itself. A failure throws std::runtime_error with the text of the
// Java exception.
#pragma once

#include "harness/jvm.h"
#include "zerlin/cryptoki.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace jni {

using Bytes = std::vector<std::uint8_t>;
using Longs = std::vector<jlong>;

std::string toString(JNIEnv* env, jstring text);

// Clears the pending exception and returns its text, "java.lang.NoSuchFieldError: m_value", or "".
std::string takeException(JNIEnv* env);

// Throws if an exception is pending. Its text starts with `what`, which says what was being done.
void check(JNIEnv* env, std::string_view what);

jclass find(JNIEnv* env, const char* path);

template <typename... Arguments>
jobject make(JNIEnv* env, const char* path, const char* signature = "()V", Arguments... arguments)
{
    const jclass cls = find(env, path);
    const jmethodID constructor = env->GetMethodID(cls, "<init>", signature);
    check(env, path);
    const jobject object = env->NewObject(cls, constructor, arguments...);
    check(env, path);
    env->DeleteLocalRef(cls);
    return object;
}

jfieldID field(JNIEnv* env, jobject object, const char* name, const char* signature);

jlong getLong(JNIEnv* env, jobject object, const char* name);
void setLong(JNIEnv* env, jobject object, const char* name, jlong value);
jobject getObject(JNIEnv* env, jobject object, const char* name, const char* signature);
void setObject(JNIEnv* env, jobject object, const char* name, const char* signature, jobject value);

jbyteArray bytes(JNIEnv* env, std::string_view text);
jbyteArray bytes(JNIEnv* env, const Bytes& values);
jlongArray longs(JNIEnv* env, const Longs& values);
jstring string(JNIEnv* env, const char* text);
jobjectArray objects(JNIEnv* env, const char* elementPath, const std::vector<jobject>& elements);

// The value of the CK_RV object that a native returned.
CK_RV rvOf(JNIEnv* env, jobject ckRv);

} // namespace jni
