// What threads share in the library without a lock, under ThreadSanitizer, which no JVM bears: the name
// tables, and the memory of jutil's lookups over a JVM that is played here. Many threads make every first use
// at once, round after round. races.supp has the one race that is meant to be.
#include "helper/jutil.h"
#include "util/nametables.h"

#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace zerlin;

constexpr std::size_t THREADS = 8;
std::atomic<int> wrong = 0;

void expect(bool condition, const char* what)
{
    if (!condition && wrong++ < 20) std::fprintf(stderr, "races: not as expected: %s\n", what);
}

// The JVM has no state of its own, whose locks would order the threads: a reference names its class, and the
// ID of a member follows from class, name and signature.
struct Reference {
    std::size_t cls;
};

std::size_t hash(const char* text)
{
    return std::hash<std::string_view>()(text);
}

std::size_t memberHash(const char* path, const char* name, const char* signature)
{
    return (hash(path) + 3 * hash(name) + 7 * hash(signature)) | 1;
}

// What is asked for. Every thread has its own order. More members than can be remembered.
constexpr Literal SMALL[] = {"p/A", "p/B", "p/C", "p/D"};
constexpr Literal LARGE[] = {
    "q/A", "q/B", "q/C", "q/D", "q/E", "q/F", "q/G", "q/H", "q/I", "q/J", "q/K", "q/L"};
constexpr Literal SINGLE[] = {"r/A", "r/B", "r/C", "r/D", "r/E", "r/F", "r/G", "r/H"};
constexpr Literal NAMES[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l", "m", "n", "o"};

jclass newReference(std::size_t cls)
{
    return reinterpret_cast<jclass>(new Reference{cls});
}

const Reference& read(jobject reference)
{
    return *reinterpret_cast<const Reference*>(reference);
}

void release(JNIEnv*, jobject reference)
{
    delete reinterpret_cast<Reference*>(reference);
}

template <typename ID>
ID member(JNIEnv*, jclass cls, const char* name, const char* signature)
{
    return reinterpret_cast<ID>((read(cls).cls + 3 * hash(name) + 7 * hash(signature)) | 1);
}

// An object is the number that its fields are derived from.
jlong fieldValue(JNIEnv*, jobject object, jfieldID id)
{
    return static_cast<jlong>(read(object).cls ^ reinterpret_cast<std::size_t>(id));
}

void setFieldValue(JNIEnv*, jobject object, jfieldID id, jlong value)
{
    expect(static_cast<std::size_t>(value) == (read(object).cls ^ reinterpret_cast<std::size_t>(id)),
        "field set");
}

constexpr JNINativeInterface_ makeFunctions()
{
    JNINativeInterface_ functions = {};
    functions.ExceptionCheck = [](JNIEnv*) -> jboolean { return JNI_FALSE; };
    functions.FindClass = [](JNIEnv*, const char* path) { return newReference(hash(path)); };
    functions.NewWeakGlobalRef = [](JNIEnv*, jobject reference) -> jweak {
        return newReference(read(reference).cls);
    };
    functions.DeleteLocalRef = release;
    functions.DeleteWeakGlobalRef = release;
    functions.GetFieldID = member<jfieldID>;
    functions.GetMethodID = member<jmethodID>;
    functions.GetLongField = fieldValue;
    functions.SetLongField = setFieldValue;
    return functions;
}

const JNINativeInterface_ FUNCTIONS = makeFunctions();

void useMembers(JNIEnv* env, Literal path, std::size_t first)
{
    const jclass cls = FindClass(env, path);
    expect(read(cls).cls == hash(path.text), "class");
    Reference object{first};
    const auto reference = reinterpret_cast<jobject>(&object);
    for (std::size_t i = 0; i < std::size(NAMES); ++i) {
        const Literal name = NAMES[(first + i) % std::size(NAMES)];
        const auto methodID = reinterpret_cast<std::size_t>(GetMethodID(env, cls, name, "()J"));
        expect(methodID == memberHash(path.text, name.text, "()J"), "method");
        const std::size_t value = first ^ memberHash(path.text, name.text, "J");
        expect(GetLongField(env, cls, reference, name) == value, "field");
        expect(SetLongField(env, cls, reference, name, value), "field to be set");
    }
}

void useTable(JNIEnv* env, std::span<const Literal> paths, std::size_t first)
{
    const jclass* const classes = FindClasses(env, paths);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::size_t place = (first + i) % paths.size();
        expect(read(classes[place]).cls == hash(paths[place].text), "class of a table");
        useMembers(env, paths[place], first);
    }
}

void useNames(std::size_t round)
{
    for (int i = 0; i < MECHANISM_ROWS; i += 17) {
        const NameTableRow& row = MechanismTable[i];
        expect(valMechanism(strMechanism(row.value)) == row.value, "mechanism");
    }
    expect(std::strcmp(strAttribute(CKA_LABEL), "LABEL") == 0, "attribute");
    expect(valError("no such error") == CK_UNAVAILABLE_INFORMATION, "no name");
    // All threads miss the same value, which is told exactly.
    char text[64];
    std::snprintf(text, sizeof text, "Vendor defined (0x%zx)", 0x80001000 + round);
    expect(std::strcmp(strKeyType(0x80001000 + round), text) == 0, "name of an unknown value");
}

} // namespace

int main(int count, char** arguments)
{
    const std::size_t rounds = count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 20;
    JNIEnv main{&FUNCTIONS};
    // Where all have finished a round, one thread forgets for all of them.
    std::barrier barrier(THREADS, [&]() noexcept { forgetLookups(&main); });
    const auto work = [&](std::size_t thread) {
        JNIEnv env{&FUNCTIONS};
        for (std::size_t round = 0; round < rounds; ++round) {
            const std::size_t first = thread * 5 + round;
            if (thread % 2 == 0) useTable(&env, LARGE, first);
            for (std::size_t i = 0; i < std::size(SINGLE); ++i)
                useMembers(&env, SINGLE[(first + i) % std::size(SINGLE)], first);
            useTable(&env, SMALL, first);
            useTable(&env, LARGE, first);
            useNames(round);
            barrier.arrive_and_wait();
        }
    };
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < THREADS; ++thread)
            threads.emplace_back(work, thread);
    }
    std::printf("%zu rounds of %zu threads, %d wrong results\n", rounds, THREADS, wrong.load());
    return wrong == 0 ? 0 : 1;
}
