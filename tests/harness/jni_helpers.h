// Short ways to create, read and write Java objects in tests. Nothing here uses the library under test, so
// that a fault of the library cannot hide itself. A failure throws std::runtime_error with the text of the
// Java exception.
#pragma once

#include "zerlin/cryptoki.h"

#include <cstdint>
#include <initializer_list>
#include <jni.h>
#include <string>
#include <string_view>
#include <vector>

namespace jni {

// Clears the pending exception and returns its text, "java.lang.NoSuchFieldError: m_value", or "".
std::string takeException(JNIEnv* env);
// Throws if an exception is pending. Its text starts with `what`, which says what was being done.
void check(JNIEnv* env, std::string_view what);

jclass find(JNIEnv* env, const char* path);
jobject alloc(JNIEnv* env, const char* path);

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

template <auto access, char type, typename... Value>
auto accessField(JNIEnv* env, jobject object, const char* name, Value... value)
{
    const char signature[] = {type, '\0'};
    const jfieldID id = field(env, object, name, signature);
    return (env->functions->*access)(env, object, id, value...);
}
constexpr auto getLong = accessField<&JNINativeInterface_::GetLongField, 'J'>;
constexpr auto getInt = accessField<&JNINativeInterface_::GetIntField, 'I'>;
constexpr auto getByte = accessField<&JNINativeInterface_::GetByteField, 'B'>;
constexpr auto getBool = accessField<&JNINativeInterface_::GetBooleanField, 'Z'>;
constexpr auto setLong = accessField<&JNINativeInterface_::SetLongField, 'J', jlong>;
constexpr auto setInt = accessField<&JNINativeInterface_::SetIntField, 'I', jint>;
constexpr auto setByte = accessField<&JNINativeInterface_::SetByteField, 'B', jbyte>;
inline jobject getObject(JNIEnv* env, jobject object, const char* name, const char* signature)
{
    return env->GetObjectField(object, field(env, object, name, signature));
}

inline void setObject(JNIEnv* env, jobject object, const char* name, const char* signature, jobject value)
{
    env->SetObjectField(object, field(env, object, name, signature), value);
}

using Bytes = std::vector<std::uint8_t>;
using Longs = std::vector<jlong>;

jbyteArray bytes(JNIEnv* env, std::string_view text);
jbyteArray bytes(JNIEnv* env, std::initializer_list<int> values);
jbyteArray bytes(JNIEnv* env, const Bytes& values);
jlongArray longs(JNIEnv* env, std::initializer_list<jlong> values);
jstring string(JNIEnv* env, const char* text);
jobjectArray objects(JNIEnv* env, const char* elementPath, const std::vector<jobject>& elements);

Bytes toVector(JNIEnv* env, jbyteArray array);
Longs toVector(JNIEnv* env, jlongArray array);
std::string toString(JNIEnv* env, jstring text);

// The value of the CK_RV object that a native returned.
CK_RV rvOf(JNIEnv* env, jobject ckRv);

} // namespace jni
