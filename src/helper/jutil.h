// Every question the library asks the JVM about classes, fields and methods goes through here, and so do
// the exceptions that it throws itself.
#pragma once

#include <span>

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// A string literal. Its address stands for its text, so that it can be the key of a remembered lookup; that
// is why nothing but a compile-time constant becomes one.
struct Literal {
    const char* text;

    consteval Literal(const char* literal) : text(literal) {}
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

// The class of that path, or null with an exception pending. Borrowed: never to be deleted by the caller,
// and good until the native returns. Makes no JNI call while an exception is pending.
jclass FindClass(JNIEnv* env, Literal path);

// The classes of a table of paths, all of them found before any is used, in the same way. False with an
// exception pending when one cannot be found. The table is a constant: its address stands for its content.
bool FindClasses(JNIEnv* env, std::span<const Literal> paths, jclass* classes);

// The ID of a field or method, or null with an exception pending; quick for a class from FindClass.
jfieldID GetFieldID(JNIEnv* env, jclass cls, Literal name, Literal signature);
jmethodID GetMethodID(JNIEnv* env, jclass cls, Literal name, Literal signature);

// Lets go of everything that the lookups remember. Nothing else of the library may be running.
void forgetLookups(JNIEnv* env);

// The field accessors. With a null class or object a getter returns its failure value (-1, 0xFFFFFFFF,
// null) and a setter does nothing, silently; a missing field does the same and leaves NoSuchFieldError
// pending: only then does a setter answer false. A CK_ULONG is the low 32 bits of a Java long, and a Java
// long its zero extension.
jint GetIntField(JNIEnv* env, jclass cls, jobject object, Literal name);
bool SetIntField(JNIEnv* env, jclass cls, jobject object, Literal name, jint value);
CK_ULONG GetLongField(JNIEnv* env, jclass cls, jobject object, Literal name);
bool SetLongField(JNIEnv* env, jclass cls, jobject object, Literal name, CK_ULONG value);
jbyte GetByteField(JNIEnv* env, jclass cls, jobject object, Literal name);
bool SetByteField(JNIEnv* env, jclass cls, jobject object, Literal name, jbyte value);
jbyteArray GetByteArrayField(JNIEnv* env, jclass cls, jobject object, Literal name);
jobject GetObjectField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature);
bool SetObjectField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature, jobject value);
jobjectArray GetObjectArrayField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature);

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
