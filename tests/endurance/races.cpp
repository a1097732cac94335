// What threads share in the library without a lock, under ThreadSanitizer, which no JVM bears: the name
// tables, and the memory of jutil's lookups over a JVM that is played here. Many threads make every first use
// at once, round after round. races.supp has the one race that is meant to be.
#include "helper/javaNames.h"
#include "util/nametables_rows.h"

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

// The JVM has no state of its own, whose locks would order the threads: a reference holds the hash of its
// class, and the ID of a member follows from class, name and signature.
struct Reference {
    std::size_t cls;
};

std::size_t hash(const char* text)
{
    return std::hash<std::string_view>()(text);
}

std::size_t memberHash(std::size_t cls, const char* name, const char* signature)
{
    return (cls + 3 * hash(name) + 7 * hash(signature)) | 1;
}

// What is looked up. Every thread has its own order.
JavaField* const FIELDS[] = {&java::TOKEN_INFO.label, &java::TOKEN_INFO.flags, &java::SLOT_INFO.flags,
    &java::INFO.flags, &java::PBE.saltLen, &java::ECIES.kdf, &java::LONG_REF.value, &java::LONG.value,
    &java::RV.m_value, &java::KEY_TYPE.m_value, &java::STATE.m_value, &java::USER_TYPE.m_value};
JavaMethod* const METHODS[] = {&java::RV.setValue, &java::KEY_TYPE.setValue, &java::MECHANISM_TYPE.setValue};
JavaClass* const CLASSES[] = {&java::TOKEN_INFO.cls, &java::INFO.cls, &java::MECHANISM_TYPE.cls,
    &java::DATE.cls, &java::ATTRIBUTE.cls, &java::RV.cls, &java::LONG.cls, &java::VERSION.cls};
constinit JavaClassGroup group{CLASSES};

jclass newReference(std::size_t cls)
{
    return reinterpret_cast<jclass>(new Reference{cls});
}

std::size_t classOf(jobject reference)
{
    return reinterpret_cast<const Reference*>(reference)->cls;
}

void release(JNIEnv*, jobject reference)
{
    delete reinterpret_cast<Reference*>(reference);
}

template <typename ID>
ID member(JNIEnv*, jclass cls, const char* name, const char* signature)
{
    return reinterpret_cast<ID>(memberHash(classOf(cls), name, signature));
}

constexpr JNINativeInterface_ makeFunctions()
{
    JNINativeInterface_ functions = {};
    functions.ExceptionCheck = [](JNIEnv*) -> jboolean { return JNI_FALSE; };
    functions.FindClass = [](JNIEnv*, const char* path) { return newReference(hash(path)); };
    functions.NewWeakGlobalRef = [](JNIEnv*, jobject reference) -> jweak {
        return newReference(classOf(reference));
    };
    functions.DeleteLocalRef = release;
    functions.DeleteWeakGlobalRef = release;
    functions.GetFieldID = member<jfieldID>;
    functions.GetMethodID = member<jmethodID>;
    return functions;
}

const JNINativeInterface_ FUNCTIONS = makeFunctions();

// Calls for each element, beginning somewhere.
template <typename Elements, typename Use>
void forEachFrom(std::size_t first, Elements& elements, Use use)
{
    for (std::size_t i = 0; i < std::size(elements); ++i)
        use(*elements[(first + i) % std::size(elements)]);
}

void useLookups(JNIEnv* env, std::size_t first)
{
    const auto isMember = [](const auto& known, const void* id) {
        return reinterpret_cast<std::size_t>(id) ==
               memberHash(hash(known.owner.path), known.name, known.signature);
    };
    forEachFrom(
        first, FIELDS, [&](JavaField& field) { expect(isMember(field, GetFieldID(env, field)), "field"); });
    forEachFrom(first, METHODS,
        [&](JavaMethod& method) { expect(isMember(method, GetMethodID(env, method)), "method"); });
    expect(FindClasses(env, group), "group");
    forEachFrom(first, CLASSES, [&](JavaClass& cls) {
        expect(classOf(cls.reference) == hash(cls.path) && classOf(FindClass(env, cls)) == hash(cls.path),
            "class");
    });
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
            if (thread % 2 == 0) expect(FindClasses(&env, group), "group");
            useLookups(&env, thread * 5 + round);
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
