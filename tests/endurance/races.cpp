// What threads share in the library without a lock, under ThreadSanitizer, which no JVM bears: the name
// tables, and what jutil remembers of lookups, over a JVM that is played here. Many threads make every first
// use at once, round after round.
#include "helper/javaNames.h"
#include "util/nametables_rows.h"

#include <barrier>
#include <cassert>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

using namespace zerlin;

constexpr std::size_t THREADS = 8;

JavaClass* const CLASSES[] = {&java::TOKEN_INFO.cls, &java::LONG_REF.cls, &java::RV.cls, &java::KEY_TYPE.cls};
JavaField* const FIELDS[] = {&java::TOKEN_INFO.label, &java::TOKEN_INFO.flags, &java::LONG_REF.value};
constinit JavaClassGroup group{CLASSES};

// A reference points to memory, so that ThreadSanitizer sees who reads it without the acquire of its address.
const char* pathOf(jobject reference)
{
    return *reinterpret_cast<const char**>(reference);
}

jclass newReference(const char* path)
{
    const char** const reference = new const char*(path);
    return reinterpret_cast<jclass>(reference);
}

void release(JNIEnv*, jobject reference)
{
    delete reinterpret_cast<const char**>(reference);
}

// The ID of a field follows from its class and its name.
jfieldID member(JNIEnv*, jclass cls, const char* name, const char*)
{
    return reinterpret_cast<jfieldID>(
        reinterpret_cast<std::size_t>(pathOf(cls)) ^ reinterpret_cast<std::size_t>(name));
}

const JNINativeInterface_ FUNCTIONS = {
    .FindClass = [](JNIEnv*, const char* path) { return newReference(path); },
    .DeleteLocalRef = release,
    .GetFieldID = member,
    .NewWeakGlobalRef = [](JNIEnv*, jobject reference) -> jweak { return newReference(pathOf(reference)); },
    .DeleteWeakGlobalRef = release,
    .ExceptionCheck = [](JNIEnv*) -> jboolean { return JNI_FALSE; },
};

// Half of the threads find the classes first, the others the members.
void useLookups(std::size_t thread)
{
    JNIEnv env{&FUNCTIONS};
    if (thread % 2 == 0) assert(FindClasses(&env, group));
    for (JavaField* const field : FIELDS) {
        const jfieldID id = GetFieldID(&env, *field);
        const jclass owner = field->owner.reference.load(std::memory_order_relaxed);
        assert(id == member(&env, owner, field->name, nullptr));
    }
    assert(FindClasses(&env, group));
    for (JavaClass* const cls : CLASSES)
        assert(pathOf(cls->reference.load(std::memory_order_relaxed)) == cls->path);
}

} // namespace

int main(int, char** arguments)
{
    const std::size_t rounds = std::strtoul(arguments[1], nullptr, 10);
    JNIEnv env{&FUNCTIONS};
    // When all have finished a round, one thread forgets for all of them.
    std::barrier barrier(THREADS, [&]() noexcept { forgetLookups(&env); });
    std::vector<std::jthread> threads;
    for (std::size_t thread = 0; thread < THREADS; ++thread) {
        threads.emplace_back([&, thread] {
            for (std::size_t round = 0; round < rounds; ++round) {
                useLookups(thread);
                // All threads write the name of the same unknown value into one buffer.
                assert(strKeyType(0x80001000 + round) != nullptr);
                assert(valMechanism(strMechanism(CKM_AES_CBC)) == CKM_AES_CBC);
                barrier.arrive_and_wait();
            }
        });
    }
}
