// The JNI lookups and what they remember, the names of classes, and the exceptions that the library throws.
#include "helper/jutil.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "helper/javaNames.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

// What is known is linked, one thread at a time; readers take no lock.
std::mutex linking;
JavaClass* knownClasses = nullptr;
JavaField* knownFields = nullptr;
JavaMethod* knownMethods = nullptr;
JavaClassGroup* knownGroups = nullptr;

template <typename Name>
void link(Name& name, Name*& known)
{
    name.nextKnown = known;
    known = &name;
}

template <typename ID>
ID findMember(JNIEnv* env, JavaMember<ID>& member, ID (JNIEnv::*lookUp)(jclass, const char*, const char*),
    JavaMember<ID>*& known)
{
    const jclass owner = FindClass(env, member.owner);
    if (owner == nullptr || env->ExceptionCheck()) return nullptr;
    const ID id = (env->*lookUp)(owner, member.name, member.signature);
    if (id == nullptr) return nullptr;
    const std::lock_guard lock(linking);
    // Another thread may have been quicker; its answer is the same.
    if (member.id.load(std::memory_order_relaxed) == nullptr) {
        link(member, known);
        member.id.store(id, std::memory_order_release);
    }
    return id;
}

// Empties the list. What it held is unknown again when forget has been called on it.
template <typename Name, typename Forget>
void unlinkAll(Name*& known, Forget forget)
{
    while (known != nullptr) {
        Name& name = *known;
        known = name.nextKnown;
        name.nextKnown = nullptr;
        forget(name);
    }
}

} // namespace

jclass findUnknown(JNIEnv* env, JavaClass& cls)
{
    if (env->ExceptionCheck()) return nullptr;
    const LocalRef<jclass> found(env, env->FindClass(cls.path));
    if (found == nullptr) return nullptr;
    const auto reference = static_cast<jclass>(env->NewWeakGlobalRef(found));
    if (reference == nullptr) return nullptr;

    const std::lock_guard lock(linking);
    if (const jclass known = cls.reference.load(std::memory_order_relaxed)) {
        env->DeleteWeakGlobalRef(reference);
        return known;
    }
    link(cls, knownClasses);
    cls.reference.store(reference, std::memory_order_release);
    return reference;
}

jclass FindClassIfPresent(JNIEnv* env, JavaClass& cls)
{
    const jclass found = FindClass(env, cls);
    if (found != nullptr) return found;
    const LocalRef<jthrowable> exception(env, env->ExceptionOccurred());
    if (exception == nullptr) return nullptr;
    env->ExceptionClear();
    if (FindClass(env, java::LINKAGE_ERROR) == nullptr) return nullptr;
    if (!IsInstanceOf(env, exception, java::LINKAGE_ERROR)) env->Throw(exception);
    return nullptr;
}

jfieldID findUnknown(JNIEnv* env, JavaField& field)
{
    return findMember(env, field, &JNIEnv::GetFieldID, knownFields);
}

jmethodID findUnknown(JNIEnv* env, JavaMethod& method)
{
    return findMember(env, method, &JNIEnv::GetMethodID, knownMethods);
}

bool findUnknown(JNIEnv* env, JavaClassGroup& group)
{
    const bool areFound =
        std::ranges::all_of(group.classes, [env](JavaClass* cls) { return FindClass(env, *cls) != nullptr; });
    if (!areFound) return false;
    const std::lock_guard lock(linking);
    if (!group.isKnown.load(std::memory_order_relaxed)) {
        link(group, knownGroups);
        group.isKnown.store(true, std::memory_order_release);
    }
    return true;
}

void forgetLookups(JNIEnv* env)
{
    const std::lock_guard lock(linking);
    unlinkAll(knownGroups, [](JavaClassGroup& group) { group.isKnown = false; });
    unlinkAll(knownFields, [](JavaField& field) { field.id = nullptr; });
    unlinkAll(knownMethods, [](JavaMethod& method) { method.id = nullptr; });
    unlinkAll(
        knownClasses, [env](JavaClass& cls) { env->DeleteWeakGlobalRef(cls.reference.exchange(nullptr)); });
}

char* GetClassName(JNIEnv* env, jobject object)
{
    if (FindClass(env, java::OBJECT.cls) == nullptr || FindClass(env, java::CLASS.cls) == nullptr)
        return nullptr;
    const jmethodID getClass = GetMethodID(env, java::OBJECT.getClass);
    if (getClass == nullptr) return nullptr;
    const LocalRef<jobject> cls(env, env->CallObjectMethod(object, getClass));
    if (env->ExceptionCheck()) return nullptr;
    const jmethodID getName = GetMethodID(env, java::CLASS.getName);
    if (getName == nullptr) return nullptr;
    const LocalRef<jobject> name(env, env->CallObjectMethod(cls, getName));
    if (env->ExceptionCheck()) return nullptr;
    return copyString(env, static_cast<jstring>(name.reference));
}

// The characters go straight into the buffer: the JVM frees what GetStringUTFChars returns without
// overwriting it.
bool readString(JNIEnv* env, jstring string, char* buffer)
{
    env->GetStringUTFRegion(string, 0, env->GetStringLength(string), buffer);
    return !env->ExceptionCheck();
}

char* copyString(JNIEnv* env, jstring string)
{
    const auto size = static_cast<std::size_t>(env->GetStringUTFLength(string));
    auto* const copy = static_cast<char*>(std::calloc(size + 1, 1));
    if (copy == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    if (readString(env, string, copy)) return copy;
    std::free(copy);
    return nullptr;
}

void throwUnsupported(JNIEnv* env, const char* format, const char* text)
{
    const jclass cls = FindClass(env, java::UNSUPPORTED_OPERATION_EXCEPTION);
    if (cls == nullptr) return;
    const std::size_t size = std::strlen(format) + std::strlen(text) + 1;
    auto* const message = static_cast<char*>(std::malloc(size));
    if (message == nullptr) {
        throwOutOfMemory(env);
        return;
    }
    std::snprintf(message, size, format, text);
    env->ThrowNew(cls, message);
    std::free(message);
}

void throwUnsupportedClass(JNIEnv* env, const char* format, jobject object)
{
    char* const name = GetClassName(env, object);
    if (name == nullptr) return;
    throwUnsupported(env, format, name);
    std::free(name);
}

void throwNullPointer(JNIEnv* env, const char* message)
{
    const jclass cls = FindClass(env, java::NULL_POINTER_EXCEPTION);
    if (cls != nullptr) env->ThrowNew(cls, message);
}

void throwOutOfMemory(JNIEnv* env)
{
    const jclass cls = FindClass(env, java::OUT_OF_MEMORY_ERROR);
    if (cls != nullptr && !env->ExceptionCheck()) env->ThrowNew(cls, "no native memory left");
}

void throwUnsatisfiedLink(JNIEnv* env, const char* message)
{
    const jclass cls = FindClass(env, java::UNSATISFIED_LINK_ERROR);
    if (cls != nullptr) env->ThrowNew(cls, message);
}

} // namespace zerlin
