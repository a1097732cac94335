// Java objects for tests, with plain JNI calls.
#include "jni_helpers.h"

#include <stdexcept>

namespace jni {

namespace {

std::string text(JNIEnv* env, jthrowable throwable)
{
    const jclass cls = env->GetObjectClass(throwable);
    const jmethodID method = env->GetMethodID(cls, "toString", "()Ljava/lang/String;");
    const auto described = static_cast<jstring>(env->CallObjectMethod(throwable, method));
    env->DeleteLocalRef(cls);
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        return "an exception whose toString fails";
    }
    const std::string result = toString(env, described);
    env->DeleteLocalRef(described);
    return result;
}

void refuseNull(jobject object, std::string_view wanted)
{
    if (object == nullptr) throw std::runtime_error(std::string(wanted) + " wanted, but of null");
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

} // namespace

std::string takeException(JNIEnv* env)
{
    const jthrowable pending = env->ExceptionOccurred();
    if (pending == nullptr) return "";
    env->ExceptionClear();
    const std::string result = text(env, pending);
    env->DeleteLocalRef(pending);
    return result;
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

jlong getLong(JNIEnv* env, jobject object, const char* name)
{
    return env->GetLongField(object, field(env, object, name, "J"));
}

jint getInt(JNIEnv* env, jobject object, const char* name)
{
    return env->GetIntField(object, field(env, object, name, "I"));
}

jbyte getByte(JNIEnv* env, jobject object, const char* name)
{
    return env->GetByteField(object, field(env, object, name, "B"));
}

bool getBool(JNIEnv* env, jobject object, const char* name)
{
    return env->GetBooleanField(object, field(env, object, name, "Z")) != JNI_FALSE;
}

jobject getObject(JNIEnv* env, jobject object, const char* name, const char* signature)
{
    return env->GetObjectField(object, field(env, object, name, signature));
}

void setLong(JNIEnv* env, jobject object, const char* name, jlong value)
{
    env->SetLongField(object, field(env, object, name, "J"), value);
}

void setInt(JNIEnv* env, jobject object, const char* name, jint value)
{
    env->SetIntField(object, field(env, object, name, "I"), value);
}

void setByte(JNIEnv* env, jobject object, const char* name, jbyte value)
{
    env->SetByteField(object, field(env, object, name, "B"), value);
}

void setBool(JNIEnv* env, jobject object, const char* name, bool value)
{
    env->SetBooleanField(object, field(env, object, name, "Z"), value ? JNI_TRUE : JNI_FALSE);
}

void setObject(JNIEnv* env, jobject object, const char* name, const char* signature, jobject value)
{
    env->SetObjectField(object, field(env, object, name, signature), value);
}

jbyteArray bytes(JNIEnv* env, std::string_view text)
{
    const auto length = static_cast<jsize>(text.size());
    const jbyteArray array = env->NewByteArray(length);
    check(env, "byte[]");
    env->SetByteArrayRegion(array, 0, length, reinterpret_cast<const jbyte*>(text.data()));
    return array;
}

jbyteArray bytes(JNIEnv* env, const Bytes& values)
{
    return bytes(env, std::string_view(reinterpret_cast<const char*>(values.data()), values.size()));
}

jbyteArray bytes(JNIEnv* env, std::initializer_list<int> values)
{
    Bytes copied;
    for (const int value : values)
        copied.push_back(static_cast<std::uint8_t>(value));
    return bytes(env, copied);
}

jlongArray longs(JNIEnv* env, std::initializer_list<jlong> values)
{
    const auto length = static_cast<jsize>(values.size());
    const jlongArray array = env->NewLongArray(length);
    check(env, "long[]");
    env->SetLongArrayRegion(array, 0, length, values.begin());
    return array;
}

jstring string(JNIEnv* env, const char* text)
{
    const jstring made = env->NewStringUTF(text);
    check(env, text);
    return made;
}

jobjectArray objects(JNIEnv* env, const char* elementPath, std::initializer_list<jobject> elements)
{
    const jclass cls = find(env, elementPath);
    const jobjectArray array = env->NewObjectArray(static_cast<jsize>(elements.size()), cls, nullptr);
    check(env, elementPath);
    env->DeleteLocalRef(cls);
    jsize index = 0;
    for (const jobject element : elements) {
        env->SetObjectArrayElement(array, index++, element);
        check(env, elementPath);
    }
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
    refuseNull(array, "longs");
    Longs values(static_cast<std::size_t>(env->GetArrayLength(array)));
    env->GetLongArrayRegion(array, 0, env->GetArrayLength(array), values.data());
    return values;
}

std::string toString(JNIEnv* env, jstring text)
{
    refuseNull(text, "characters");
    const char* const characters = env->GetStringUTFChars(text, nullptr);
    check(env, "String");
    const std::string copied = characters;
    env->ReleaseStringUTFChars(text, characters);
    return copied;
}

CK_RV rvOf(JNIEnv* env, jobject ckRv)
{
    check(env, "CK_RV");
    refuseNull(ckRv, "CK_RV");
    const jclass cls = find(env, "halvorn/zerlin/constants/CK_RV");
    const bool isRv = env->IsInstanceOf(ckRv, cls) != JNI_FALSE;
    env->DeleteLocalRef(cls);
    if (!isRv) throw std::runtime_error("CK_RV wanted, but of an object of another class");
    const jlong value = getLong(env, ckRv, "m_value");
    const CK_RV rv = static_cast<CK_RV>(value);
    if (value != static_cast<jlong>(rv)) throw std::runtime_error("CK_RV of " + std::to_string(value));
    return rv;
}

} // namespace jni
