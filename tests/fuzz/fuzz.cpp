// Varies the rows of the table of natives at random: nulls, other classes, lengths, counts, JNI calls and
// allocations that fail, over a Cryptoki library that reads all that it is promised and returns random
// results. Each call has a seed of its own, made of --seed and its number, and starts alike:
// --seed S --first N --calls 1 repeats one call. The first fault ends the program.
#include "fakes/liar.h"
#include "harness/failures.h"
#include "harness/native_table.h"

#include <chrono>
#include <csignal>

namespace {

using namespace jni;
using liar::around, liar::below, liar::oneOf;

JNIEnv* env = nullptr;
const Native* called = nullptr;
int libraryCalls = 0; // of the native that runs
CK_RV answered = CKR_OK;
std::string lastCall; // printed if it fails

void expect(bool holds, const std::string& otherwise)
{
    if (holds) return;
    std::fprintf(stderr, "%s\n", otherwise.c_str());
    std::abort();
}

CK_RV answer(std::span<const recorder::Argument> all)
{
    const bool mayPend = ++libraryCalls > 1 || called->name == "C_SetAttributeValue";
    expect(mayPend || !env->ExceptionCheck(), "called while an exception is pending");
    return answered = liar::answer(all);
}

// ---- The arguments

jbyteArray someBytes()
{
    const CK_ULONG size = below(below(6) == 0 ? 3000 : 20);
    return below(10) == 0 ? nullptr : bytes(env, std::string(size, static_cast<char>(below(256))));
}

std::size_t lengthOf(jobject array)
{
    return array == nullptr ? 0 : static_cast<std::size_t>(env->GetArrayLength(static_cast<jarray>(array)));
}

// Any object, and its native length.
std::pair<jobject, std::size_t> someValue()
{
    if (below(8) == 0) return {nullptr, 0};
    const std::vector<Value> all = values(env);
    const Value& value = all[below(all.size())];
    return {value.object, value.length};
}

jobject someTemplate()
{
    std::vector<jobject> elements(below(below(6) == 0 ? 300 : 5));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto [value, length] = someValue();
        const auto type = oneOf<jlong>({0, 3, 17, 257, 288, 289, 0x40000600, 65535});
        elements[i] = i >= 5 ? elements[i % 5] : attribute(env, type, value, around(length));
        if (below(10) == 0) elements[i] = nullptr;
    }
    return objects(env, below(9) == 0 ? "java/lang/Object" : "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

// Structures have their lengths: others abort the process. A parameter of type 0 is deliberately never freed.
jobject someMechanism()
{
    const jbyteArray value = someBytes();
    const auto type = oneOf<jlong>({0x401, 0x800009f3, static_cast<jlong>(1 + below(1000))});
    if (below(3) == 0) return mechanism(env, type, value, value == nullptr ? 0 : around(lengthOf(value)));
    const ParamRow& row = PARAMS[below(std::size(PARAMS))];
    return mechanism(env, type, jni::read(env, filled(row.java, below(20), 'x')), row.size);
}

// Varies the Java arguments of one kind, which begin there.
void vary(const Kind& kind, jvalue* arguments)
{
    jobject& object = arguments[0].l;
    const auto is = [&](auto... forms) { return ((kind.form == forms) || ...); };
    if (is(Kind::Number, Kind::Boolean)) return;
    std::size_t size = 0;
    if (is(Kind::Bytes, Kind::Label, Kind::Random) || (is(Kind::Output) && kind.path.empty()))
        object = someBytes();
    if (is(Kind::Template)) object = someTemplate();
    if (is(Kind::Mechanism)) object = someMechanism();
    if (is(Kind::Value, Kind::Served) || (is(Kind::Held, Kind::Record, Kind::InitArgs) && below(9) == 0))
        std::tie(object, size) = someValue();
    if (below(10) == 0) object = nullptr;
    if (is(Kind::Value, Kind::Served)) arguments[1].j = around(size);
    if (is(Kind::Bytes, Kind::Template, Kind::Found, Kind::Random)) arguments[1].j = around(lengthOf(object));
    if (is(Kind::Output)) setLong(env, arguments[1].l, "value", around(lengthOf(object)));
    if (kind.hasLongRef() && below(10) == 0) arguments[kind.javaCount() - 1].l = nullptr;
}

void run()
{
    const LocalFrame frame(env);
    recorder::reset();
    recorder::script().isQuiet = true;
    Call made = called->prepare(env);
    for (std::size_t place = 0; place < called->kinds.size(); ++place)
        vary(called->kinds[place], &made.arguments[called->start(place)]);
    recorder::script().answer = answer;
    libraryCalls = 0;

    // Besides the hostile arguments, a JNI call or an allocation may fail.
    const HeapWatch heap;
    failAllocation(below(8) == 0 ? static_cast<int>(1 + below(20)) : 0);
    jobject returned = nullptr;
    const Watched watched = watch(env, {.call = below(8) == 0 ? static_cast<int>(1 + below(80)) : 0}, [&] {
        returned = made(env);
        JNI_OnUnload(jvm(), nullptr); // ends a registration
    });
    const std::string exception = takeException(env);
    expect(exception.empty() || exception.starts_with("java.lang.UnsupportedOperationException: ") ||
               exception.starts_with("java.lang.NoClassDefFoundError: java/lang/Char") ||
               (exception == "java.lang.RuntimeException: injected" && !watched.failed.empty()) ||
               (exception == NO_MEMORY && allocationFailed()),
        "not to be raised: " + exception);
    failAllocation(0);
    expect(heap.blocks.empty() && watched.globalRefs.empty() && watched.buffers.empty(), "memory left");
    expect(watched.maxLocalRefs <= 16 && watched.violations.empty(), "wrong use of local references");
    expect(takeJniWarnings().empty(), "the JVM's own checks complain");
    expect(!watched.failed.empty() || (returned == nullptr) != exception.empty(), "null, or more than that");
    if (returned == nullptr || !exception.empty() || called->isUtility()) return;
    const CK_RV rv = rvOf(env, returned);
    const bool isOwn = libraryCalls == 0 && (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY);
    expect(isOwn || (libraryCalls == 1 && rv == answered), "returns " + std::to_string(rv));
}

} // namespace

int main(int argc, char** argv)
{
    std::map<std::string, unsigned long> options = {
        {"--seed", 1}, {"--first", 0}, {"--calls", 4000000000}, {"--seconds", 1000000}};
    for (int i = 1; i + 1 < argc; i += 2)
        options.at(argv[i]) = std::stoul(argv[i + 1]);
    const unsigned long seed = options["--seed"], first = options["--first"];
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options["--seconds"]);

    jvm()->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_8);
    env->PushLocalFrame(512);
    std::signal(SIGABRT, [](int) {
        std::fputs(lastCall.c_str(), stderr);
        std::_Exit(1);
    });
    unsigned long number = first;
    for (; number - first < options["--calls"] && std::chrono::steady_clock::now() < end; ++number) {
        const auto mixed = static_cast<std::uint32_t>((seed * 0x9e3779b1UL) ^ (number * 0x85ebca6bUL));
        called = &natives()[(mixed >> 7) % natives().size()];
        lastCall = "--seed " + std::to_string(seed) + " --first " + std::to_string(number) +
                   " --calls 1: " + called->name + "\n";
        liar::numbers.seed(mixed);
        run();
    }
    std::printf("%lu calls\n", number - first);
    jvm()->DestroyJavaVM(); // its threads must not outlive the program's data
}
