// The JNI lookups and the memory that makes them quick, the field accessors, and the exceptions thrown.
#include "helper/jutil.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <mutex>

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/jutil $\" \"$Revision: 1.1.1.2 $\"";

// A lookup costs the JVM more than a hundred nanoseconds; a remembered one costs a few. Entries are only
// ever added, by one thread at a time, and an entry's key is published last, so that readers need no lock.
// A full table remembers no more, and the lookups go on without it.
struct ClassEntry {
    std::atomic<const char*> path;
    std::atomic<jclass> reference; // a weak global reference: the library keeps no class loader alive
};

struct MemberEntry {
    std::atomic<jclass> owner; // always the reference of a ClassEntry
    const char* name;
    const char* signature;
    void* id;
};

struct TableEntry {
    std::atomic<const Literal*> paths;
    std::size_t count;
    jclass classes[32];
};

constexpr std::size_t CLASS_SLOTS = 256; // powers of two, filled by half at most
constexpr std::size_t MEMBER_SLOTS = 1024;

ClassEntry classes[CLASS_SLOTS];
MemberEntry members[MEMBER_SLOTS];
TableEntry tables[4];
std::size_t classCount = 0;
std::size_t memberCount = 0;
std::mutex additions;

std::size_t mix(const void* pointer)
{
    return (reinterpret_cast<std::uintptr_t>(pointer) >> 2) * std::size_t{2654435761U};
}

std::size_t classSlot(const char* path)
{
    return (mix(path) >> 12) & (CLASS_SLOTS - 1);
}

std::size_t memberSlot(jclass owner, const char* name, const char* signature)
{
    return ((mix(name) ^ mix(owner) ^ (mix(signature) >> 7)) >> 12) & (MEMBER_SLOTS - 1);
}

// The entry of that path, or null when it is not remembered.
const ClassEntry* findEntry(const char* path)
{
    std::size_t slot = classSlot(path);
    for (;; slot = (slot + 1) & (CLASS_SLOTS - 1)) {
        const char* const known = classes[slot].path.load(std::memory_order_acquire);
        if (known == path) return &classes[slot];
        if (known == nullptr) return nullptr;
    }
}

const MemberEntry* findEntry(jclass owner, const char* name, const char* signature)
{
    std::size_t slot = memberSlot(owner, name, signature);
    for (;; slot = (slot + 1) & (MEMBER_SLOTS - 1)) {
        const MemberEntry& entry = members[slot];
        const jclass known = entry.owner.load(std::memory_order_acquire);
        if (known == nullptr) return nullptr;
        if (known == owner && entry.name == name && entry.signature == signature) return &entry;
    }
}

const TableEntry* findEntry(std::span<const Literal> paths)
{
    for (const TableEntry& entry : tables) {
        const Literal* const known = entry.paths.load(std::memory_order_acquire);
        if (known == nullptr) return nullptr;
        if (known == paths.data() && entry.count == paths.size()) return &entry;
    }
    return nullptr;
}

bool isRemembered(jclass reference)
{
    for (const ClassEntry& entry : classes) {
        if (entry.reference.load(std::memory_order_relaxed) == reference) return true;
    }
    return false;
}

// Looks the class up and remembers it; where that cannot be, the local reference itself is returned.
jclass findAndRemember(JNIEnv* env, Literal path)
{
    if (env->ExceptionCheck()) return nullptr;
    const jclass found = env->FindClass(path.text);
    if (found == nullptr) return nullptr;

    const std::lock_guard lock(additions);
    const ClassEntry* const known = findEntry(path.text);
    if (known != nullptr) {
        env->DeleteLocalRef(found);
        return known->reference.load(std::memory_order_relaxed);
    }
    if (classCount == CLASS_SLOTS / 2) return found;
    const auto reference = static_cast<jclass>(env->NewWeakGlobalRef(found));
    if (reference == nullptr && !env->ExceptionCheck()) return found;
    env->DeleteLocalRef(found);
    if (reference == nullptr) return nullptr;
    std::size_t slot = classSlot(path.text);
    while (classes[slot].path.load(std::memory_order_relaxed) != nullptr) {
        slot = (slot + 1) & (CLASS_SLOTS - 1);
    }
    classes[slot].reference.store(reference, std::memory_order_relaxed);
    classes[slot].path.store(path.text, std::memory_order_release);
    ++classCount;
    return reference;
}

void rememberMember(jclass owner, Literal name, Literal signature, void* id)
{
    const std::lock_guard lock(additions);
    // A reference that is not the memory's own may be another class tomorrow.
    if (!isRemembered(owner) || memberCount == MEMBER_SLOTS / 2) return;
    if (findEntry(owner, name.text, signature.text) != nullptr) return;
    std::size_t slot = memberSlot(owner, name.text, signature.text);
    while (members[slot].owner.load(std::memory_order_relaxed) != nullptr) {
        slot = (slot + 1) & (MEMBER_SLOTS - 1);
    }
    MemberEntry& entry = members[slot];
    entry.name = name.text;
    entry.signature = signature.text;
    entry.id = id;
    entry.owner.store(owner, std::memory_order_release);
    ++memberCount;
}

void rememberTable(std::span<const Literal> paths, const jclass* found)
{
    const std::lock_guard lock(additions);
    if (paths.size() > std::size(tables[0].classes) || findEntry(paths) != nullptr) return;
    if (!std::all_of(found, found + paths.size(), isRemembered)) return;
    for (TableEntry& entry : tables) {
        if (entry.paths.load(std::memory_order_relaxed) != nullptr) continue;
        entry.count = paths.size();
        std::copy_n(found, paths.size(), entry.classes);
        entry.paths.store(paths.data(), std::memory_order_release);
        return;
    }
}

template <typename ID>
ID memberID(JNIEnv* env, jclass cls, Literal name, Literal signature,
    ID (JNIEnv::*lookUp)(jclass, const char*, const char*))
{
    if (cls == nullptr) return nullptr;
    if (const MemberEntry* const known = findEntry(cls, name.text, signature.text)) {
        return static_cast<ID>(known->id);
    }
    if (env->ExceptionCheck()) return nullptr;
    const ID id = (env->*lookUp)(cls, name.text, signature.text);
    if (id != nullptr) rememberMember(cls, name, signature, id);
    return id;
}

// The field's ID when there is a class, an object and such a field; else null.
jfieldID fieldOf(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    if (cls == nullptr || object == nullptr) return nullptr;
    return GetFieldID(env, cls, name, signature);
}

} // namespace

jclass FindClass(JNIEnv* env, Literal path)
{
    const ClassEntry* const known = findEntry(path.text);
    return known != nullptr ? known->reference.load(std::memory_order_relaxed) : findAndRemember(env, path);
}

bool FindClasses(JNIEnv* env, std::span<const Literal> paths, jclass* found)
{
    if (const TableEntry* const known = findEntry(paths)) {
        std::copy_n(known->classes, known->count, found);
        return true;
    }
    for (std::size_t i = 0; i < paths.size(); ++i) {
        found[i] = FindClass(env, paths[i]);
        if (found[i] == nullptr) return false;
    }
    rememberTable(paths, found);
    return true;
}

jfieldID GetFieldID(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return memberID(env, cls, name, signature, &JNIEnv::GetFieldID);
}

jmethodID GetMethodID(JNIEnv* env, jclass cls, Literal name, Literal signature)
{
    return memberID(env, cls, name, signature, &JNIEnv::GetMethodID);
}

void forgetLookups(JNIEnv* env)
{
    const std::lock_guard lock(additions);
    for (TableEntry& entry : tables) {
        entry.paths.store(nullptr, std::memory_order_relaxed);
    }
    for (MemberEntry& entry : members) {
        entry.owner.store(nullptr, std::memory_order_relaxed);
    }
    for (ClassEntry& entry : classes) {
        const jclass reference = entry.reference.exchange(nullptr, std::memory_order_relaxed);
        entry.path.store(nullptr, std::memory_order_relaxed);
        if (reference != nullptr) env->DeleteWeakGlobalRef(reference);
    }
    classCount = 0;
    memberCount = 0;
}

jint GetIntField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "I");
    return field == nullptr ? -1 : env->GetIntField(object, field);
}

bool SetIntField(JNIEnv* env, jclass cls, jobject object, Literal name, jint value)
{
    if (cls == nullptr || object == nullptr) return true;
    const jfieldID field = GetFieldID(env, cls, name, "I");
    if (field == nullptr) return false;
    env->SetIntField(object, field, value);
    return true;
}

CK_ULONG GetLongField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "J");
    return field == nullptr ? ~CK_ULONG{0} : static_cast<CK_ULONG>(env->GetLongField(object, field));
}

bool SetLongField(JNIEnv* env, jclass cls, jobject object, Literal name, CK_ULONG value)
{
    if (cls == nullptr || object == nullptr) return true;
    const jfieldID field = GetFieldID(env, cls, name, "J");
    if (field == nullptr) return false;
    env->SetLongField(object, field, static_cast<jlong>(value));
    return true;
}

jbyte GetByteField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    const jfieldID field = fieldOf(env, cls, object, name, "B");
    return field == nullptr ? jbyte{-1} : env->GetByteField(object, field);
}

bool SetByteField(JNIEnv* env, jclass cls, jobject object, Literal name, jbyte value)
{
    if (cls == nullptr || object == nullptr) return true;
    const jfieldID field = GetFieldID(env, cls, name, "B");
    if (field == nullptr) return false;
    env->SetByteField(object, field, value);
    return true;
}

jbyteArray GetByteArrayField(JNIEnv* env, jclass cls, jobject object, Literal name)
{
    return static_cast<jbyteArray>(GetObjectField(env, cls, object, name, "[B"));
}

jobjectArray GetObjectArrayField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    return static_cast<jobjectArray>(GetObjectField(env, cls, object, name, signature));
}

jobject GetObjectField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature)
{
    const jfieldID field = fieldOf(env, cls, object, name, signature);
    return field == nullptr ? nullptr : env->GetObjectField(object, field);
}

bool SetObjectField(JNIEnv* env, jclass cls, jobject object, Literal name, Literal signature, jobject value)
{
    if (cls == nullptr || object == nullptr) return true;
    const jfieldID field = GetFieldID(env, cls, name, signature);
    if (field == nullptr) return false;
    env->SetObjectField(object, field, value);
    return true;
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

char* copyStringUTF(JNIEnv* env, jstring string, CK_ULONG* length)
{
    const char* const characters = env->GetStringUTFChars(string, nullptr);
    if (characters == nullptr || env->ExceptionCheck()) return nullptr;
    const std::size_t size = std::strlen(characters);
    auto* const copy = static_cast<char*>(std::malloc(size + 1));
    if (copy != nullptr) std::memcpy(copy, characters, size + 1);
    env->ReleaseStringUTFChars(string, characters);
    if (copy == nullptr) {
        throwOutOfMemory(env);
        return nullptr;
    }
    *length = size;
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
