// Every question the library asks the JVM about classes, fields and methods goes through here, and so do
// the exceptions that it throws itself.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// A string literal. Its address stands for its text, so that it can be the key of a remembered lookup; that
// is why nothing but a compile-time constant becomes one. The hash is the compiler's work too.
struct Literal {
    const char* text;
    std::uint32_t hash = 2166136261;

    consteval Literal(const char* literal) : text(literal)
    {
        for (const char* place = literal; *place != 0; ++place) {
            hash = (hash ^ static_cast<std::uint8_t>(*place)) * 16777619;
        }
    }
};

// Owns one local reference. Only loops, and code that may run outside a Java frame, need it: elsewhere the
// JVM lets go of local references when the native returns.
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

// Gives every element of an array up to count to the work, which answers whether to go on. False when it did
// not, or with an exception pending. A local frame for some elements at a time is cheaper than letting go of
// every reference: as many elements as, with all the references made for them, leave a native below its 16.
template <jsize STEP, typename Work>
bool forEachElement(JNIEnv* env, jobjectArray array, jsize count, Work work)
{
    for (jsize start = 0; start < count; start += STEP) {
        if (env->PushLocalFrame(16) != JNI_OK) return false;
        bool goesOn = true;
        for (jsize i = start; goesOn && i < count && i < start + STEP; ++i) {
            const jobject element = env->GetObjectArrayElement(array, i);
            goesOn = (element != nullptr || !env->ExceptionCheck()) && work(i, element);
        }
        env->PopLocalFrame(nullptr);
        if (!goesOn) return false;
    }
    return true;
}

// The memory of the lookups. A lookup costs the JVM more than a hundred nanoseconds, a remembered one but one
// or two: nearly always the first entry looked at is the right one, and looking at it is inlined. Nothing
// outside jutil knows of it.
namespace memory {

constexpr std::size_t CLASS_SLOTS = 512; // powers of two, filled by a fourth at most
constexpr std::size_t MEMBER_SLOTS = 2048;

// An entry's key is published last, so that readers need no lock.
struct Class {
    std::atomic<const char*> path;
    jclass reference; // a weak global reference: the library keeps no class loader alive
};

struct Member {
    std::atomic<jclass> owner; // always the reference of a Class
    const char* name;
    const char* signature;
    void* id;
};

extern Class classes[CLASS_SLOTS];
extern Member members[MEMBER_SLOTS];

inline std::size_t slotOf(Literal path)
{
    return path.hash % CLASS_SLOTS;
}

inline std::size_t slotOf(jclass owner, Literal name, Literal signature)
{
    // References lie a word apart, so that the members of one name take neighbouring slots.
    return ((name.hash ^ (signature.hash >> 8)) + (reinterpret_cast<std::uintptr_t>(owner) >> 2)) %
           MEMBER_SLOTS;
}

jclass findClass(JNIEnv* env, Literal path);
jfieldID findField(JNIEnv* env, jclass cls, Literal name, Literal signature);
jmethodID findMethod(JNIEnv* env, jclass cls, Literal name, Literal signature);

template <typename ID>
ID member(
    JNIEnv* env, jclass cls, Literal name, Literal signature, ID (*find)(JNIEnv*, jclass, Literal, Literal))
{
    if (cls == nullptr) return nullptr;
    const Member& entry = members[slotOf(cls, name, signature)];
    const bool isKnown = entry.owner.load(std::memory_order_acquire) == cls && entry.name == name.text &&
                         entry.signature == signature.text;
    return isKnown ? static_cast<ID>(entry.id) : find(env, cls, name, signature);
}

} // namespace memory

// The class of that path, or null with an exception pending. Borrowed: never to be deleted by the caller,
// and good until the native returns. Makes no JNI call while an exception is pending.
inline jclass FindClass(JNIEnv* env, Literal path)
{
    const memory::Class& entry = memory::classes[memory::slotOf(path)];
    const bool isKnown = entry.path.load(std::memory_order_acquire) == path.text;
    return isKnown ? entry.reference : memory::findClass(env, path);
}

// The classes of a table of paths, all of them found before any is used; null with an exception pending when
// one cannot be found. The table is a constant: its address stands for its content. Borrowed in the same way.
const jclass* FindClasses(JNIEnv* env, std::span<const Literal> paths);

// The ID of a field or method, or null with an exception pending; quick for a class from FindClass.
inline jfieldID GetFieldID(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return memory::member(env, cls, name, signature, memory::findField);
}

inline jmethodID GetMethodID(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return memory::member(env, cls, name, signature, memory::findMethod);
}

// Lets go of everything that the lookups remember. Nothing else of the library may be running.
void forgetLookups(JNIEnv* env);

// The field accessors. With a null class or object a getter returns its failure value (-1, 0xFFFFFFFF,
// null) and a setter does nothing, silently; a missing field does the same and leaves NoSuchFieldError
// pending: only then does a setter answer false. A CK_ULONG is the low 32 bits of a Java long, and a Java
// long its zero extension.

// The field's ID when there is a class, an object and such a field; else null.
inline jfieldID fieldOf(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    return cls == nullptr || object == nullptr ? nullptr : GetFieldID(env, cls, name, signature);
}

// Sets the field to the value with the JNI function.
template <typename JValue>
bool setField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature, JValue value,
    void (JNIEnv::*set)(jobject, jfieldID, JValue))
{
    if (cls == nullptr || object == nullptr) return true;
    const jfieldID field = GetFieldID(env, cls, name, signature);
    if (field == nullptr) return false;
    (env->*set)(object, field, value);
    return true;
}

inline jint GetIntField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "I");
    return field == nullptr ? -1 : env->GetIntField(object, field);
}

inline bool SetIntField(JNIEnv* env, jclass cls, jobject object, Literal name, jint value)
{
    return setField(env, cls, object, name, "I", value, &JNIEnv::SetIntField);
}

inline CK_ULONG GetLongField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "J");
    return field == nullptr ? ~CK_ULONG{0} : static_cast<CK_ULONG>(env->GetLongField(object, field));
}

inline bool SetLongField(JNIEnv* env, jclass cls, jobject object, Literal name, CK_ULONG value)
{
    return setField(env, cls, object, name, "J", static_cast<jlong>(value), &JNIEnv::SetLongField);
}

inline jbyte GetByteField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "B");
    return field == nullptr ? jbyte{-1} : env->GetByteField(object, field);
}

inline bool SetByteField(JNIEnv* env, jclass cls, jobject object, Literal name, jbyte value)
{
    return setField(env, cls, object, name, "B", value, &JNIEnv::SetByteField);
}

inline jobject GetObjectField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    const jfieldID field = fieldOf(env, cls, object, name, signature);
    return field == nullptr ? nullptr : env->GetObjectField(object, field);
}

inline bool SetObjectField(
    JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature, jobject value)
{
    return setField(env, cls, object, name, signature, value, &JNIEnv::SetObjectField);
}

inline jbyteArray GetByteArrayField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    return static_cast<jbyteArray>(GetObjectField(env, cls, object, name, "[B"));
}

inline jobjectArray GetObjectArrayField(
    JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    return static_cast<jobjectArray>(GetObjectField(env, cls, object, name, signature));
}

// The name of the object's class as Class.getName gives it, from malloc: the caller frees it. Null with an
// exception pending when any step raised.
char* GetClassName(JNIEnv* env, jobject object);

// The string's modified UTF-8 bytes with a closing NUL, from malloc; the length leaves the NUL out. Null with
// an exception pending on failure.
char* copyStringUTF(JNIEnv* env, jstring string, CK_ULONG* length);

// Throws UnsupportedOperationException with the format's %s replaced by the text, or by the name of the
// object's class.
void throwUnsupported(JNIEnv* env, const char* format, const char* text);
void throwUnsupportedClass(JNIEnv* env, const char* format, jobject object);

// Throws NullPointerException.
void throwNullPointer(JNIEnv* env, const char* message);

// Throws OutOfMemoryError for native memory that could not be had.
void throwOutOfMemory(JNIEnv* env);

} // namespace zerlin
