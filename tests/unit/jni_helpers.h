// Terse ways to make, read and write Java objects in tests. Nothing here uses the library under test, so that
// a fault in the library cannot hide itself. What goes wrong throws std::runtime_error with the Java
// exception's text.
#pragma once

#include "zerlin/cryptoki.h"

#include <cstdint>
#include <initializer_list>
#include <jni.h>
#include <string>
#include <string_view>
#include <vector>

namespace jni {

// The pending exception as "java.lang.NoSuchFieldError: m_value", cleared; "" when none is pending.
std::string takeException(JNIEnv* env);
// Throws when an exception is pending; `what` says in the text what was being done.
void check(JNIEnv* env, std::string_view what);

jclass find(JNIEnv* env, const char* path);
jobject alloc(JNIEnv* env, const char* path);

template <typename... Arguments>
jobject make(JNIEnv* env, const char* path, const char* signature, Arguments... arguments)
{
    const jclass cls = find(env, path);
    const jmethodID constructor = env->GetMethodID(cls, "<init>", signature);
    check(env, path);
    const jobject object = env->NewObject(cls, constructor, arguments...);
    check(env, path);
    env->DeleteLocalRef(cls);
    return object;
}
inline jobject make(JNIEnv* env, const char* path)
{
    return make(env, path, "()V");
}

jlong getLong(JNIEnv* env, jobject object, const char* field);
jint getInt(JNIEnv* env, jobject object, const char* field);
jbyte getByte(JNIEnv* env, jobject object, const char* field);
bool getBool(JNIEnv* env, jobject object, const char* field);
jobject getObject(JNIEnv* env, jobject object, const char* field, const char* signature);
void setLong(JNIEnv* env, jobject object, const char* field, jlong value);
void setInt(JNIEnv* env, jobject object, const char* field, jint value);
void setByte(JNIEnv* env, jobject object, const char* field, jbyte value);
void setBool(JNIEnv* env, jobject object, const char* field, bool value);
void setObject(JNIEnv* env, jobject object, const char* field, const char* signature, jobject value);

using Bytes = std::vector<std::uint8_t>;
using Longs = std::vector<jlong>;

jbyteArray bytes(JNIEnv* env, std::string_view text);
jbyteArray bytes(JNIEnv* env, std::initializer_list<int> values);
jbyteArray bytes(JNIEnv* env, const Bytes& values);
jlongArray longs(JNIEnv* env, std::initializer_list<jlong> values);
jstring string(JNIEnv* env, const char* text);
jobjectArray objects(JNIEnv* env, const char* elementPath, std::initializer_list<jobject> elements);

Bytes toVector(JNIEnv* env, jbyteArray array);
Longs toVector(JNIEnv* env, jlongArray array);
std::string toString(JNIEnv* env, jstring text);

// The value of the CK_RV object that a native returned.
CK_RV rvOf(JNIEnv* env, jobject ckRv);

} // namespace jni
