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

inline std::string toString(JNIEnv* env, jstring text)
{
    const char* const characters = env->GetStringUTFChars(text, nullptr);
    const std::string copied = characters;
    env->ReleaseStringUTFChars(text, characters);
    return copied;
}

// Clears the pending exception and returns its text, "java.lang.NoSuchFieldError: m_value", or "".
inline std::string takeException(JNIEnv* env)
{
    const jthrowable pending = env->ExceptionOccurred();
    if (pending == nullptr) return "";
    env->ExceptionClear();
    const LocalFrame frame(env);
    const jclass cls = env->FindClass("java/lang/Throwable");
    const jmethodID method = env->GetMethodID(cls, "toString", "()Ljava/lang/String;");
    const jobject text = env->CallObjectMethod(pending, method);
    if (env->ExceptionCheck()) throw std::runtime_error("an exception without a text");
    env->DeleteLocalRef(pending);
    return toString(env, static_cast<jstring>(text));
}

// Throws if an exception is pending. Its text starts with `what`, which says what was being done.
inline void check(JNIEnv* env, std::string_view what)
{
    if (env->ExceptionCheck()) throw std::runtime_error(std::string(what) + ": " + takeException(env));
}

inline jclass find(JNIEnv* env, const char* path)
{
    const jclass cls = env->FindClass(path);
    check(env, path);
    return cls;
}

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

inline jfieldID field(JNIEnv* env, jobject object, const char* name, const char* signature)
{
    const jclass cls = env->GetObjectClass(object);
    const jfieldID id = env->GetFieldID(cls, name, signature);
    check(env, name);
    env->DeleteLocalRef(cls);
    return id;
}

inline jlong getLong(JNIEnv* env, jobject object, const char* name)
{
    return env->GetLongField(object, field(env, object, name, "J"));
}
inline void setLong(JNIEnv* env, jobject object, const char* name, jlong value)
{
    env->SetLongField(object, field(env, object, name, "J"), value);
}
inline jobject getObject(JNIEnv* env, jobject object, const char* name, const char* signature)
{
    return env->GetObjectField(object, field(env, object, name, signature));
}
inline void setObject(JNIEnv* env, jobject object, const char* name, const char* signature, jobject value)
{
    env->SetObjectField(object, field(env, object, name, signature), value);
}

inline jbyteArray bytes(JNIEnv* env, std::string_view text)
{
    const auto length = static_cast<jsize>(text.size());
    const jbyteArray array = env->NewByteArray(length);
    env->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(text.data()));
    return array;
}
inline jbyteArray bytes(JNIEnv* env, const Bytes& values)
{
    return bytes(env, std::string(values.begin(), values.end()));
}
inline jlongArray longs(JNIEnv* env, const Longs& values)
{
    const auto length = static_cast<jsize>(values.size());
    const jlongArray array = env->NewLongArray(length);
    env->SetLongArrayRegion(array, 0, length, values.data());
    return array;
}
inline jstring string(JNIEnv* env, const char* text)
{
    return env->NewStringUTF(text);
}
inline jobjectArray objects(JNIEnv* env, const char* elementPath, const std::vector<jobject>& elements)
{
    const jclass cls = find(env, elementPath);
    const jobjectArray array = env->NewObjectArray(static_cast<jsize>(elements.size()), cls, nullptr);
    env->DeleteLocalRef(cls);
    for (std::size_t i = 0; i < elements.size(); ++i)
        env->SetObjectArrayElement(array, static_cast<jsize>(i), elements[i]);
    check(env, elementPath);
    return array;
}

// The value of the CK_RV object that a native returned.
inline CK_RV rvOf(JNIEnv* env, jobject ckRv)
{
    check(env, "CK_RV");
    const jlong value = getLong(env, ckRv, "m_value");
    EXPECT_EQ(value, static_cast<jlong>(static_cast<CK_RV>(value)));
    return static_cast<CK_RV>(value);
}

} // namespace jni
