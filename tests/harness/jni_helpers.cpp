// Java objects for tests, with plain JNI calls.
#include "harness/jni_helpers.h"

#include "harness/jvm.h"

#include <stdexcept>

namespace jni {

namespace {

void refuseNull(jobject object, std::string_view wanted)
{
    if (object == nullptr) throw std::runtime_error(std::string(wanted) + " wanted, but of null");
}

} // namespace

std::string takeException(JNIEnv* env)
{
    const jthrowable pending = env->ExceptionOccurred();
    if (pending == nullptr) return "";
    env->ExceptionClear();
    const LocalFrame frame(env);
    const jclass cls = find(env, "java/lang/Throwable");
    const jmethodID method = env->GetMethodID(cls, "toString", "()Ljava/lang/String;");
    const jobject text = env->CallObjectMethod(pending, method);
    check(env, "toString");
    env->DeleteLocalRef(pending);
    return toString(env, static_cast<jstring>(text));
}

void check(JNIEnv* env, std::string_view what)
{
    if (!env->ExceptionCheck()) return;
    throw std::runtime_error(std::string(what) + ": " + takeException(env));
}

jclass find(JNIEnv* env, const char* path)
{
    const jclass cls = env->FindClass(path);
    check(env, path);
    return cls;
}

jobject alloc(JNIEnv* env, const char* path)
{
    const jclass cls = find(env, path);
    const jobject object = env->AllocObject(cls);
    check(env, path);
    env->DeleteLocalRef(cls);
    return object;
}

jfieldID field(JNIEnv* env, jobject object, const char* name, const char* signature)
{
    refuseNull(object, name);
    const jclass cls = env->GetObjectClass(object);
    const jfieldID id = env->GetFieldID(cls, name, signature);
    check(env, name);
    env->DeleteLocalRef(cls);
    return id;
}

jbyteArray bytes(JNIEnv* env, std::string_view text)
{
    const auto length = static_cast<jsize>(text.size());
    const jbyteArray array = env->NewByteArray(length);
    env->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(text.data()));
    return array;
}

jbyteArray bytes(JNIEnv* env, const Bytes& values)
{
    return bytes(env, std::string_view(reinterpret_cast<const char*>(values.data()), values.size()));
}

jbyteArray bytes(JNIEnv* env, std::initializer_list<int> values)
{
    return bytes(env, Bytes(values.begin(), values.end()));
}

jlongArray longs(JNIEnv* env, std::initializer_list<jlong> values)
{
    const auto length = static_cast<jsize>(values.size());
    const jlongArray array = env->NewLongArray(length);
    env->SetLongArrayRegion(array, 0, length, values.begin());
    return array;
}

jstring string(JNIEnv* env, const char* text)
{
    return env->NewStringUTF(text);
}

jobjectArray objects(JNIEnv* env, const char* elementPath, const std::vector<jobject>& elements)
{
    const jclass cls = find(env, elementPath);
    const jobjectArray array = env->NewObjectArray(static_cast<jsize>(elements.size()), cls, nullptr);
    env->DeleteLocalRef(cls);
    jsize index = 0;
    for (const jobject element : elements)
        env->SetObjectArrayElement(array, index++, element);
    check(env, elementPath);
    return array;
}

Bytes toVector(JNIEnv* env, jbyteArray array)
{
    refuseNull(array, "bytes");
    Bytes values(static_cast<std::size_t>(env->GetArrayLength(array)));
    env->GetByteArrayRegion(array, 0, env->GetArrayLength(array), reinterpret_cast<jbyte*>(values.data()));
    return values;
}

Longs toVector(JNIEnv* env, jlongArray array)
{
    Longs values(static_cast<std::size_t>(env->GetArrayLength(array)));
    env->GetLongArrayRegion(array, 0, env->GetArrayLength(array), values.data());
    return values;
}

std::string toString(JNIEnv* env, jstring text)
{
    refuseNull(text, "characters");
    const char* const characters = env->GetStringUTFChars(text, nullptr);
    const std::string copied = characters;
    env->ReleaseStringUTFChars(text, characters);
    return copied;
}

CK_RV rvOf(JNIEnv* env, jobject ckRv)
{
    check(env, "CK_RV");
    const jlong value = getLong(env, ckRv, "m_value");
    const CK_RV rv = static_cast<CK_RV>(value);
    if (value != static_cast<jlong>(rv)) throw std::runtime_error("CK_RV of " + std::to_string(value));
    return rv;
}

} // namespace jni
