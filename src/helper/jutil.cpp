// The JNI lookups and the memory that makes them quick, the field accessors, and the exceptions thrown.
#include "helper/jutil.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/jutil $\" \"$Revision: 1.1.1.2 $\"";

struct Table {
    std::atomic<const Literal*> paths;
    std::size_t count;
    jclass classes[32];
};

Table tables[4];
std::size_t memberCount = 0;
std::mutex additions; // entries are only ever added, by one thread at a time

// A literal that the linker did not merge with its equals.
bool isSame(const char* known, Literal wanted)
{
    return known == wanted.text || std::strcmp(known, wanted.text) == 0;
}

bool isOf(const memory::Class& entry, Literal path)
{
    const char* const known = entry.path.load(std::memory_order_acquire);
    return known != nullptr && isSame(known, path);
}

bool isOf(const memory::Member& entry, jclass owner, Literal name, Literal signature)
{
    return entry.owner.load(std::memory_order_acquire) == owner && isSame(entry.name, name) &&
           isSame(entry.signature, signature);
}

// The entry of that key, or the free one where it belongs; that one another thread may give to another key as
// soon as the lock is not held. There are more entries than keys.
memory::Class& entryOf(Literal path)
{
    std::size_t slot = memory::slotOf(path);
    while (memory::classes[slot].path.load(std::memory_order_acquire) != nullptr &&
           !isOf(memory::classes[slot], path)) {
        slot = (slot + 1) % memory::CLASS_SLOTS;
    }
    return memory::classes[slot];
}

memory::Member& entryOf(jclass owner, Literal name, Literal signature)
{
    std::size_t slot = memory::slotOf(owner, name, signature);
    while (memory::members[slot].owner.load(std::memory_order_acquire) != nullptr &&
           !isOf(memory::members[slot], owner, name, signature)) {
        slot = (slot + 1) % memory::MEMBER_SLOTS;
    }
    return memory::members[slot];
}

const Table* tableOf(std::span<const Literal> paths)
{
    for (const Table& table : tables) {
        const Literal* const known = table.paths.load(std::memory_order_acquire);
        if (known == nullptr) return nullptr;
        if (known == paths.data() && table.count == paths.size()) return &table;
    }
    return nullptr;
}

bool isRemembered(jclass reference)
{
    return std::ranges::any_of(memory::classes, [reference](const memory::Class& entry) {
        return entry.path.load(std::memory_order_relaxed) != nullptr && entry.reference == reference;
    });
}

void rememberMember(jclass owner, Literal name, Literal signature, void* id)
{
    const std::lock_guard lock(additions);
    // A reference that is not the memory's own may be another class tomorrow. A full memory takes no more.
    if (!isRemembered(owner) || memberCount == memory::MEMBER_SLOTS / 4) return;
    memory::Member& entry = entryOf(owner, name, signature);
    if (entry.owner.load(std::memory_order_relaxed) != nullptr) return;
    entry.name = name.text;
    entry.signature = signature.text;
    entry.id = id;
    entry.owner.store(owner, std::memory_order_release);
    ++memberCount;
}

template <typename ID>
ID findMember(JNIEnv* env, jclass cls, Literal name, Literal signature,
    ID (JNIEnv::*lookUp)(jclass, const char*, const char*))
{
    const memory::Member& known = entryOf(cls, name, signature);
    if (isOf(known, cls, name, signature)) return static_cast<ID>(known.id);
    if (env->ExceptionCheck()) return nullptr;
    const ID id = (env->*lookUp)(cls, name.text, signature.text);
    if (id != nullptr) rememberMember(cls, name, signature, id);
    return id;
}

} // namespace

namespace memory {

Class classes[CLASS_SLOTS];
Member members[MEMBER_SLOTS];

jclass findClass(JNIEnv* env, Literal path)
{
    const Class& known = entryOf(path);
    if (isOf(known, path)) return known.reference;
    if (env->ExceptionCheck()) return nullptr;
    const LocalRef<jclass> found(env, env->FindClass(path.text));
    if (found == nullptr) return nullptr;
    const auto reference = static_cast<jclass>(env->NewWeakGlobalRef(found));
    if (reference == nullptr) return nullptr;

    const std::lock_guard lock(additions);
    Class& entry = entryOf(path);
    if (entry.path.load(std::memory_order_relaxed) != nullptr) {
        env->DeleteWeakGlobalRef(reference);
        return entry.reference;
    }
    entry.reference = reference;
    entry.path.store(path.text, std::memory_order_release);
    return reference;
}

jfieldID findField(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return findMember(env, cls, name, signature, &JNIEnv::GetFieldID);
}

jmethodID findMethod(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return findMember(env, cls, name, signature, &JNIEnv::GetMethodID);
}

} // namespace memory

const jclass* FindClasses(JNIEnv* env, std::span<const Literal> paths)
{
    if (const Table* const known = tableOf(paths)) return known->classes;
    for (const Literal path : paths) {
        if (FindClass(env, path) == nullptr) return nullptr;
    }
    const std::lock_guard lock(additions);
    for (Table& table : tables) {
        const Literal* const known = table.paths.load(std::memory_order_relaxed);
        if (known == paths.data() && table.count == paths.size()) return table.classes;
        if (known != nullptr) continue;
        table.count = paths.size();
        std::ranges::transform(paths, table.classes, [](Literal path) { return entryOf(path).reference; });
        table.paths.store(paths.data(), std::memory_order_release);
        return table.classes;
    }
    return nullptr;
}

void forgetLookups(JNIEnv* env)
{
    const std::lock_guard lock(additions);
    for (Table& table : tables) {
        table.paths.store(nullptr, std::memory_order_relaxed);
    }
    for (memory::Member& entry : memory::members) {
        entry.owner.store(nullptr, std::memory_order_relaxed);
    }
    for (memory::Class& entry : memory::classes) {
        if (entry.path.exchange(nullptr, std::memory_order_relaxed) != nullptr) {
            env->DeleteWeakGlobalRef(entry.reference);
        }
    }
    memberCount = 0;
}

char* GetClassName(JNIEnv* env, jobject object)
{
    const jclass objectClass = FindClass(env, "java/lang/Object");
    const jclass classClass = FindClass(env, "java/lang/Class");
    if (env->ExceptionCheck()) return nullptr;
    const jmethodID getClass = GetMethodID(env, objectClass, "getClass", "()Ljava/lang/Class;");
    if (getClass == nullptr) return nullptr;
    const LocalRef<jobject> cls(env, env->CallObjectMethod(object, getClass));
    if (env->ExceptionCheck()) return nullptr;
    const jmethodID getName = GetMethodID(env, classClass, "getName", "()Ljava/lang/String;");
    if (getName == nullptr) return nullptr;
    const LocalRef<jobject> name(env, env->CallObjectMethod(cls, getName));
    if (env->ExceptionCheck()) return nullptr;
    CK_ULONG length = 0;
    return copyStringUTF(env, static_cast<jstring>(name.reference), &length);
}

// The characters go straight into the new buffer: what GetStringUTFChars gives, the JVM frees without
// overwriting it.
char* copyStringUTF(JNIEnv* env, jstring string, CK_ULONG* length)
{
    const jsize size = env->GetStringUTFLength(string);
    auto* const copy = static_cast<char*>(std::calloc(static_cast<std::size_t>(size) + 1, 1));
    if (copy == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    env->GetStringUTFRegion(string, 0, env->GetStringLength(string), copy);
    if (env->ExceptionCheck()) {
        std::free(copy);
        return nullptr;
    }
    *length = static_cast<CK_ULONG>(size);
    return copy;
}

void throwUnsupported(JNIEnv* env, const char* format, const char* text)
{
    const jclass cls = FindClass(env, "java/lang/UnsupportedOperationException");
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
    const jclass cls = FindClass(env, "java/lang/NullPointerException");
    if (cls != nullptr) env->ThrowNew(cls, message);
}

void throwOutOfMemory(JNIEnv* env)
{
    const jclass cls = FindClass(env, "java/lang/OutOfMemoryError");
    if (cls != nullptr && !env->ExceptionCheck()) env->ThrowNew(cls, "no native memory left");
}

} // namespace zerlin
