// Every question the library asks the JVM about classes, fields and methods goes through here, and so do
// the exceptions that it throws itself.
#pragma once

#include <atomic>
#include <span>

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// Java's names are objects (javaNames.h), each of which remembers its own answer: a lookup costs the JVM more
// than a hundred nanoseconds, a known one is one load. Only successes are remembered. forgetLookups finds the
// known ones through their links.

// A class by its path, such as "halvorn/zerlin/LongRef" or "[B".
struct JavaClass {
    const char* const path;
    std::atomic<jclass> reference =
        nullptr; // a weak global reference: the library keeps no class loader alive
    JavaClass* nextKnown = nullptr;

    constexpr JavaClass(const char* classPath) noexcept : path(classPath) {}
};

// A field or method of a class.
template <typename ID>
struct JavaMember {
    JavaClass& owner;
    const char* const name;
    const char* const signature;
    std::atomic<ID> id = nullptr;
    JavaMember* nextKnown = nullptr;

    constexpr JavaMember(JavaClass& cls, const char* memberName, const char* memberSignature) noexcept
        : owner(cls), name(memberName), signature(memberSignature)
    {
    }
};

using JavaField = JavaMember<jfieldID>;
using JavaMethod = JavaMember<jmethodID>;

// Classes that must all be found before any of them is used.
struct JavaClassGroup {
    const std::span<JavaClass* const> classes;
    std::atomic<bool> isKnown = false;
    JavaClassGroup* nextKnown = nullptr;

    constexpr JavaClassGroup(std::span<JavaClass* const> all) noexcept : classes(all) {}
};

// The first lookups. They make no JNI call while an exception is pending.
jclass findUnknown(JNIEnv* env, JavaClass& cls);
jfieldID findUnknown(JNIEnv* env, JavaField& field);
jmethodID findUnknown(JNIEnv* env, JavaMethod& method);
bool findUnknown(JNIEnv* env, JavaClassGroup& group);

// The class, or null with an exception pending. Borrowed: the caller must not delete it, and must not use it
// after the native has returned.
inline jclass FindClass(JNIEnv* env, JavaClass& cls)
{
    const jclass known = cls.reference.load(std::memory_order_acquire);
    return known != nullptr ? known : findUnknown(env, cls);
}

// The same for a class that the jar may not have: a LinkageError is cleared, and null is returned without an
// exception.
jclass FindClassIfPresent(JNIEnv* env, JavaClass& cls);

// Whether the class has been found before.
inline bool isKnown(const JavaClass& cls)
{
    return cls.reference.load(std::memory_order_acquire) != nullptr;
}

// The ID of a field or method, or null with an exception pending. Looks up the class first where need be.
inline jfieldID GetFieldID(JNIEnv* env, JavaField& field)
{
    const jfieldID known = field.id.load(std::memory_order_acquire);
    return known != nullptr ? known : findUnknown(env, field);
}

inline jmethodID GetMethodID(JNIEnv* env, JavaMethod& method)
{
    const jmethodID known = method.id.load(std::memory_order_acquire);
    return known != nullptr ? known : findUnknown(env, method);
}

// Finds all classes of the group, in their order. False with an exception pending at the first that is
// missing.
inline bool FindClasses(JNIEnv* env, JavaClassGroup& group)
{
    return group.isKnown.load(std::memory_order_acquire) || findUnknown(env, group);
}

// Whether the object is of the class, which has been found before. A null object is of every class.
inline bool IsInstanceOf(JNIEnv* env, jobject object, const JavaClass& cls)
{
    return env->IsInstanceOf(object, cls.reference.load(std::memory_order_relaxed));
}

// Forgets all that the lookups remember. Nothing else of the library may be running.
void forgetLookups(JNIEnv* env);

// The field accessors. With a null object a getter returns its failure value (-1, all ones, null) and a
// setter does nothing, silently; a missing class or field does the same and leaves its exception pending:
// only then does a setter return false. A CK_ULONG is the low bits of a Java long, and a Java long its zero
// extension.

// The field's ID when there is an object and such a field; else null.
inline jfieldID fieldOf(JNIEnv* env, jobject object, JavaField& field)
{
    return object == nullptr ? nullptr : GetFieldID(env, field);
}

// Sets the field to the value with the JNI function.
template <typename JValue>
bool setField(JNIEnv* env, jobject object, JavaField& field, JValue value,
    void (JNIEnv::*set)(jobject, jfieldID, JValue))
{
    if (object == nullptr) return true;
    const jfieldID id = GetFieldID(env, field);
    if (id == nullptr) return false;
    (env->*set)(object, id, value);
    return true;
}

inline jint GetIntField(JNIEnv* env, jobject object, JavaField& field)
{
    const jfieldID id = fieldOf(env, object, field);
    return id == nullptr ? -1 : env->GetIntField(object, id);
}

inline bool SetIntField(JNIEnv* env, jobject object, JavaField& field, jint value)
{
    return setField(env, object, field, value, &JNIEnv::SetIntField);
}

inline CK_ULONG GetLongField(JNIEnv* env, jobject object, JavaField& field)
{
    const jfieldID id = fieldOf(env, object, field);
    return id == nullptr ? ~CK_ULONG{0} : static_cast<CK_ULONG>(env->GetLongField(object, id));
}

inline bool SetLongField(JNIEnv* env, jobject object, JavaField& field, CK_ULONG value)
{
    return setField(env, object, field, static_cast<jlong>(value), &JNIEnv::SetLongField);
}

inline jbyte GetByteField(JNIEnv* env, jobject object, JavaField& field)
{
    const jfieldID id = fieldOf(env, object, field);
    return id == nullptr ? jbyte{-1} : env->GetByteField(object, id);
}

inline bool SetByteField(JNIEnv* env, jobject object, JavaField& field, jbyte value)
{
    return setField(env, object, field, value, &JNIEnv::SetByteField);
}

inline jobject GetObjectField(JNIEnv* env, jobject object, JavaField& field)
{
    const jfieldID id = fieldOf(env, object, field);
    return id == nullptr ? nullptr : env->GetObjectField(object, id);
}

inline bool SetObjectField(JNIEnv* env, jobject object, JavaField& field, jobject value)
{
    return setField(env, object, field, value, &JNIEnv::SetObjectField);
}

inline jbyteArray GetByteArrayField(JNIEnv* env, jobject object, JavaField& field)
{
    return static_cast<jbyteArray>(GetObjectField(env, object, field));
}

inline jobjectArray GetObjectArrayField(JNIEnv* env, jobject object, JavaField& field)
{
    return static_cast<jobjectArray>(GetObjectField(env, object, field));
}

// Owns one local reference. Only loops, and code that may run outside a Java frame, need it: elsewhere the
// JVM deletes local references when the native returns.
template <typename Reference>
struct LocalRef {
    JNIEnv* const env;
    const Reference reference;

    LocalRef(JNIEnv* environment, Reference local) : env(environment), reference(local) {}
    LocalRef(const LocalRef&) = delete;
    LocalRef& operator=(const LocalRef&) = delete;
    ~LocalRef()
    {
        if (reference != nullptr) env->DeleteLocalRef(reference);
    }
    operator Reference() const { return reference; }
};

// Hands every element of an array up to count to the work, which returns whether to continue. False when it
// did not, or with an exception pending. One local frame for ELEMENTS_PER_FRAME elements is cheaper than
// deleting every reference: with all the references made for so many elements a native stays below its 16.
template <jsize ELEMENTS_PER_FRAME, typename Work>
bool forEachElement(JNIEnv* env, jobjectArray array, jsize count, Work work)
{
    for (jsize start = 0; start < count; start += ELEMENTS_PER_FRAME) {
        if (env->PushLocalFrame(16) != JNI_OK) return false;
        bool continues = true;
        for (jsize i = start; continues && i < count && i < start + ELEMENTS_PER_FRAME; ++i) {
            const jobject element = env->GetObjectArrayElement(array, i);
            continues = (element != nullptr || !env->ExceptionCheck()) && work(i, element);
        }
        env->PopLocalFrame(nullptr);
        if (!continues) return false;
    }
    return true;
}

// The name of the object's class as Class.getName returns it, from malloc: the caller frees it. Null with an
// exception pending when any step raised.
char* GetClassName(JNIEnv* env, jobject object);

// The string's modified UTF-8 bytes into a zeroed buffer, which holds GetStringUTFLength bytes and a NUL.
// False with an exception pending.
bool readString(JNIEnv* env, jstring string, char* buffer);

// The same in a new buffer from malloc: the caller frees it. Null with an exception pending.
char* copyString(JNIEnv* env, jstring string);

// Throws UnsupportedOperationException with the format's %s replaced by the text, or by the name of the
// object's class.
void throwUnsupported(JNIEnv* env, const char* format, const char* text);
void throwUnsupportedClass(JNIEnv* env, const char* format, jobject object);

// Throws NullPointerException.
void throwNullPointer(JNIEnv* env, const char* message);

// Throws OutOfMemoryError for native memory that cannot be allocated.
void throwOutOfMemory(JNIEnv* env);

// Throws UnsatisfiedLinkError.
void throwUnsatisfiedLink(JNIEnv* env, const char* message);

} // namespace zerlin
