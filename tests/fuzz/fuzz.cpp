// Varies the rows of the table of natives at random: nulls, other classes, lengths, counts, JNI calls and
// allocations that fail, over a Cryptoki library that reads all that it is promised and returns random
// results. Each call has a seed of its own, made of --seed and its number, and starts alike:
// --seed S --first N --calls 1 repeats one call. The first fault ends the program.
#include "harness/failures.h"
#include "unit/native_table.h"

#include <chrono>
#include <random>

namespace {

using namespace jni;
using recorder::Argument;

std::mt19937 numbers;
JNIEnv* env = nullptr;
const Native* native = nullptr;
int libraryCalls = 0; // of the native that runs
CK_RV answered = CKR_OK;
std::string lastCall; // printed if it fails

CK_ULONG below(CK_ULONG limit)
{
    return static_cast<CK_ULONG>(numbers()) % limit;
}

bool chance(CK_ULONG oneIn)
{
    return below(oneIn) == 0;
}

template <typename T>
T oneOf(std::initializer_list<T> all)
{
    return all.begin()[below(all.size())];
}

// No 2 GiB less a few bytes: that much memory may be there.
jlong around(std::size_t size)
{
    const auto real = static_cast<jlong>(size);
    return oneOf<jlong>({real, real, real, real, real - 1, real + 1, 0, -1, 1LL << 31, 0xffff'ffff, 1LL << 32,
        (1LL << 32) + real, std::numeric_limits<jlong>::min(), static_cast<jlong>(below(5000))});
}

void expect(bool holds, const std::string& otherwise)
{
    if (holds) return;
    std::fprintf(stderr, "%s\n", otherwise.c_str());
    std::abort();
}

// ---- The Cryptoki library

// Behind every input there are zeroes, up to the declared length or 64 KiB.
constexpr CK_ULONG FENCE = 64 << 10;

void read(const void* data, CK_ULONG declared)
{
    static std::string copy;
    if (data != nullptr) copy.assign(static_cast<const char*>(data), std::min(declared, FENCE));
}

void write(void* data, CK_ULONG size)
{
    if (data != nullptr) std::memset(data, static_cast<int>(below(256)), size);
}

void use(CK_ATTRIBUTE* attributes, CK_ULONG count)
{
    if (attributes == nullptr) return;
    for (CK_ATTRIBUTE& attribute : std::span(attributes, std::min(count, FENCE / sizeof *attributes))) {
        read(attribute.pValue, attribute.ulValueLen);
        if (!native->name.ends_with("_GetAttributeValue") || chance(8)) continue;
        if (attribute.type == CKA_WILDCARD) attribute.type = CKA_LABEL;
        write(attribute.pValue, std::min(attribute.ulValueLen, FENCE));
        attribute.ulValueLen = static_cast<CK_ULONG>(around(attribute.ulValueLen));
    }
}

CK_RV answer(std::span<const Argument> all)
{
    const bool mayPend = ++libraryCalls > 1 || native->name == "C_SetAttributeValue";
    expect(mayPend || !env->ExceptionCheck(), "called while an exception is pending");
    for (const auto& [form, data, number, elementSize, reported] : all) {
        const auto* const mechanism = static_cast<CK_MECHANISM*>(data);
        if (form == Argument::Bytes) read(data, number);
        if (form == Argument::Label) read(data, 32);
        if (form == Argument::Template) use(static_cast<CK_ATTRIBUTE*>(data), number);
        if (form == Argument::Mechanism) read(mechanism->pParameter, mechanism->ulParameterLen);
        if (form == Argument::Output) write(data, elementSize);
        if (form == Argument::Outputs) write(data, number * elementSize);
        if (reported != nullptr) *reported = static_cast<CK_ULONG>(around(number));
    }
    return answered = oneOf<CK_RV>({CKR_OK, CKR_OK, CKR_OK, CKR_BUFFER_TOO_SMALL, ~CK_RV{0}});
}

// ---- The arguments

jbyteArray someBytes()
{
    const CK_ULONG size = oneOf<CK_ULONG>({0, 4, 8, below(40), below(chance(6) ? 3000 : 20)});
    return chance(10) ? nullptr : bytes(env, std::string(size, static_cast<char>(below(256))));
}

std::size_t lengthOf(jobject array)
{
    return array == nullptr ? 0 : static_cast<std::size_t>(env->GetArrayLength(static_cast<jarray>(array)));
}

// Any object, and its native length.
std::pair<jobject, std::size_t> someValue()
{
    if (chance(8)) return {nullptr, 0};
    const std::vector<Value> all = values(env);
    const Value& value = all[below(all.size())];
    return {value.object, value.length};
}

jobject someTemplate()
{
    std::vector<jobject> elements(below(chance(6) ? 300 : 5));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto [value, length] = someValue();
        const jlong type = oneOf<jlong>({0, 3, 17, 257, 288, 289, 0x40000600, 65535});
        elements[i] = i >= 5 ? elements[i % 5] : attribute(env, type, value, around(length));
        if (chance(10)) elements[i] = nullptr;
    }
    return objects(env, chance(9) ? "java/lang/Object" : "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

// Structures have their lengths: others abort the process. A parameter of type 0 is deliberately never freed.
jobject someMechanism()
{
    const jbyteArray value = someBytes();
    const auto type = oneOf<jlong>({0x401, 0x800009f3, static_cast<jlong>(1 + below(1000))});
    if (chance(3)) return mechanism(env, type, value, value == nullptr ? 0 : around(lengthOf(value)));
    const ParamRow& row = PARAMS[below(std::size(PARAMS))];
    std::string text = filled(row.java, below(20), "5a");
    for (std::size_t i = 0; (i = text.find("[] 0", i)) != text.npos && chance(2); ++i)
        text.replace(i, 2, "null");
    return mechanism(env, type, jni::read(env, text), row.size);
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
    if (is(Kind::Value, Kind::Served) || (is(Kind::Held, Kind::Record, Kind::InitArgs) && chance(9)))
        std::tie(object, size) = someValue();
    if (chance(10)) object = nullptr;
    if (is(Kind::Value, Kind::Served)) arguments[1].j = around(size);
    if (is(Kind::Bytes, Kind::Template, Kind::Found, Kind::Random)) arguments[1].j = around(lengthOf(object));
    if (is(Kind::Output)) setLong(env, arguments[1].l, "value", around(lengthOf(object)));
    if (kind.hasLongRef() && chance(10)) arguments[kind.javaCount() - 1].l = nullptr;
}

void run()
{
    const LocalFrame frame(env);
    recorder::reset();
    recorder::script().isQuiet = true;
    Call made = native->prepare(env);
    for (std::size_t place = 0; place < native->kinds.size(); ++place)
        vary(native->kinds[place], &made.arguments[native->start(place)]);
    JNI_OnUnload(jvm(), nullptr);
    if (chance(2)) native->prepare(env)(env); // its lookups are remembered
    takeException(env);
    recorder::script().answer = answer;
    libraryCalls = 0;

    // Besides the hostile arguments, a JNI call or an allocation may fail.
    const Fault fault{.call = chance(8) ? static_cast<int>(1 + below(80)) : 0};
    const HeapWatch heap;
    failAllocation(chance(8) ? static_cast<int>(1 + below(20)) : 0);
    jobject returned = nullptr;
    const Watched watched = watch(env, fault, [&] {
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
    expect(heap.blocks.empty(), "native memory left");
    expect(watched.globalRefs.empty() && watched.buffers.empty(), "global references or characters left");
    expect(watched.maxLocalRefs <= 16, "too many local references at once");
    expect(watched.violations.empty(), "a reference of the caller's is deleted");
    expect(takeJniWarnings().empty(), "the JVM's own checks complain");
    expect(!watched.failed.empty() || (returned == nullptr) != exception.empty(), "null, or more than that");
    if (returned == nullptr || !exception.empty() || native->isUtility()) return;
    const CK_RV rv = rvOf(env, returned);
    const bool isOwn = libraryCalls == 0 && (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY);
    expect(isOwn || (libraryCalls == 1 && rv == answered), "returns " + std::to_string(rv));
}

} // namespace

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    std::map<std::string, unsigned long> options = {
        {"--seed", 1}, {"--first", 0}, {"--calls", 4000000000}, {"--seconds", 1000000}};
    for (int i = 1; i + 1 < argc; i += 2)
        options.at(argv[i]) = std::stoul(argv[i + 1]);
    const unsigned long seed = options["--seed"], first = options["--first"];
    const auto end = Clock::now() + std::chrono::seconds(options["--seconds"]);

    jvm()->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_8);
    env->PushLocalFrame(512);
    std::signal(SIGABRT, [](int) {
        std::fputs(lastCall.c_str(), stderr);
        std::_Exit(1);
    });
    unsigned long number = first, reached = 0;
    for (; number - first < options["--calls"] && Clock::now() < end; ++number) {
        const auto mixed = static_cast<std::uint32_t>((seed * 0x9e3779b1UL) ^ (number * 0x85ebca6bUL));
        native = &natives()[(mixed >> 7) % natives().size()];
        lastCall = "--seed " + std::to_string(seed) + " --first " + std::to_string(number) +
                   " --calls 1: " + native->name + "\n";
        numbers.seed(mixed);
        run();
        reached += libraryCalls > 0;
    }
    std::printf("%lu calls, %lu reached the library\n", number - first, reached);
    jvm()->DestroyJavaVM(); // its threads must not outlive the program's data
}
