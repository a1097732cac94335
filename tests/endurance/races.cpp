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

// What is looked up. Every thread has its own order.
java::TypedConstant* const CONSTANTS[] = {&java::ATTRIBUTE_TYPE, &java::CERTIFICATE_TYPE,
    &java::HW_FEATURE_TYPE, &java::KEY_TYPE, &java::MECHANISM_TYPE, &java::OBJECT_CLASS, &java::RV,
    &java::STATE, &java::USER_TYPE};
JavaField* const FIELDS[] = {&java::TOKEN_INFO.label, &java::TOKEN_INFO.flags, &java::SLOT_INFO.flags,
    &java::INFO.flags, &java::PBE.saltLen, &java::ECIES.kdf, &java::LONG_REF.value, &java::LONG.value};
JavaClass* const CLASSES[] = {&java::TOKEN_INFO.cls, &java::INFO.cls, &java::MECHANISM_TYPE.cls,
    &java::DATE.cls, &java::ATTRIBUTE.cls, &java::RV.cls, &java::LONG.cls, &java::VERSION.cls};
constinit JavaClassGroup group{CLASSES};

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

void useClass(JNIEnv* env, JavaClass& cls)
{
    expect(read(FindClass(env, cls)).cls == hash(cls.path), "class");
}

void useConstant(JNIEnv* env, java::TypedConstant& constant, std::size_t number)
{
    useClass(env, constant.cls);
    const auto methodID = reinterpret_cast<std::size_t>(GetMethodID(env, constant.setValue));
    expect(methodID == memberHash(constant.cls.path, "setValue", "(J)V"), "method");
    Reference object{number};
    const auto reference = reinterpret_cast<jobject>(&object);
    const std::size_t value = number ^ memberHash(constant.cls.path, "m_value", "J");
    expect(GetLongField(env, reference, constant.m_value) == value, "field");
    expect(SetLongField(env, reference, constant.m_value, value), "field to be set");
}

void useField(JNIEnv* env, JavaField& field)
{
    const auto id = reinterpret_cast<std::size_t>(GetFieldID(env, field));
    expect(id == memberHash(field.owner.path, field.name, field.signature), "field ID");
}

void useGroup(JNIEnv* env)
{
    expect(FindClasses(env, group), "group");
    for (const JavaClass* cls : CLASSES)
        expect(read(cls->reference).cls == hash(cls->path), "class of a group");
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
            if (thread % 2 == 0) useGroup(&env);
            for (std::size_t i = 0; i < std::size(CONSTANTS); ++i)
                useConstant(&env, *CONSTANTS[(first + i) % std::size(CONSTANTS)], first);
            for (std::size_t i = 0; i < std::size(FIELDS); ++i)
                useField(&env, *FIELDS[(first + i) % std::size(FIELDS)]);
            useGroup(&env);
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
