// Varies the rows of the table of natives at random: nulls, other classes, lengths, counts, JNI calls and
// allocations that fail, over a Cryptoki library that reads all that it is promised and returns random
// results. Each call has a seed of its own, made of --seed and its number, and starts alike:
// --seed S --first N --calls 1 repeats one call.
#include "harness/failures.h"
#include "unit/native_table.h"

#include <chrono>
#include <random>

namespace {

using namespace jni;
using recorder::Argument;

// What the Cryptoki library needs to know about the call that runs.
struct Round {
    std::mt19937 random;
    std::string parameter = {}; // the class of the mechanism's parameter, if it becomes a structure
    std::string read = {};      // what the library was given last
    std::string wrong = {};
    int called = 0;
    CK_RV answered = CKR_OK;
};

Round now;
JNIEnv* env = nullptr;
std::string lastCall; // printed if it fails

CK_ULONG below(CK_ULONG limit)
{
    return static_cast<CK_ULONG>(now.random()) % limit;
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

CK_ULONG around(CK_ULONG real)
{
    return oneOf<CK_ULONG>(
        {real, real, real, real - 1, real + 1, 0, ~CK_ULONG{0}, 0x7fffffff, 0x80000000, below(5000)});
}

// No capacity of 2 GiB less a few bytes, which may be there.
jlong javaLength(std::size_t size)
{
    const auto real = static_cast<jlong>(size);
    return oneOf<jlong>({real, real, real, real, real - 1, real + 1, 0, -1, 1LL << 31, 0xffff'ffff, 1LL << 32,
        (1LL << 32) + real, std::numeric_limits<jlong>::min(), static_cast<jlong>(below(5000))});
}

void expect(bool holds, const std::string& otherwise)
{
    now.wrong += holds ? "" : otherwise + "\n";
}

// ---- The Cryptoki library

// Behind every input there are zeroes, up to the declared length or 64 KiB.
constexpr CK_ULONG FENCE = 64 << 10;

void read(const void* data, CK_ULONG declared)
{
    if (data != nullptr) now.read.assign(static_cast<const char*>(data), std::min(declared, FENCE));
}

void write(void* data, CK_ULONG size)
{
    if (data != nullptr) std::memset(data, static_cast<int>(below(256)), size);
}

void use(CK_ATTRIBUTE* attributes, CK_ULONG count)
{
    const bool isServed = recorder::lastCalled() == std::string_view("C_GetAttributeValue");
    if (attributes == nullptr) return;
    for (CK_ATTRIBUTE& attribute : std::span(attributes, std::min(count, FENCE / sizeof *attributes))) {
        read(attribute.pValue, attribute.ulValueLen);
        if (!isServed || chance(8)) continue;
        if (attribute.type == CKA_WILDCARD || chance(8)) attribute.type = around(CKA_LABEL);
        write(attribute.pValue, std::min(attribute.ulValueLen, FENCE));
        attribute.ulValueLen = around(attribute.ulValueLen);
    }
}

void use(const CK_MECHANISM& mechanism)
{
    void* const parameter = mechanism.pParameter;
    read(parameter, mechanism.ulParameterLen);
    expect(parameter != nullptr || now.parameter.empty() || allocationFailed(), "the parameter is lost");
    if (parameter == nullptr || chance(3)) return;
    if (now.parameter == "CK_KEY_WRAP_SET_OAEP_PARAMS") {
        auto& params = *static_cast<CK_KEY_WRAP_SET_OAEP_PARAMS*>(parameter);
        write(params.pX, params.XLen);
        params.XLen = around(params.XLen);
    } else if (now.parameter == "CK_PKCS12_PBE_IMPORT_PARAMS") {
        CK_ULONG* const count = static_cast<CK_PKCS12_PBE_IMPORT_PARAMS*>(parameter)->hCertCount;
        if (count != nullptr) *count = around(*count);
    }
}

CK_RV answer(std::span<const Argument> all)
{
    const bool mayPend =
        ++now.called > 1 || recorder::lastCalled() == std::string_view("C_SetAttributeValue");
    expect(mayPend || !env->ExceptionCheck(), "called while an exception is pending");
    for (const auto& [form, data, number, elementSize, reported] : all) {
        if (form == Argument::Bytes) read(data, number);
        if (form == Argument::Label) read(data, 32);
        if (form == Argument::Template) use(static_cast<CK_ATTRIBUTE*>(data), number);
        if (form == Argument::Mechanism) use(*static_cast<CK_MECHANISM*>(data));
        if (form == Argument::Output) write(data, elementSize);
        if (form == Argument::Outputs) write(data, number * elementSize);
        if (reported != nullptr) *reported = around(number);
    }
    return now.answered =
               oneOf<CK_RV>({CKR_OK, CKR_OK, CKR_OK, CKR_BUFFER_TOO_SMALL, around(CKR_ATTRIBUTE_SENSITIVE)});
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

// The parameter of a row, with arrays of any length and some nulls. Its lengths are right: others abort the
// process.
jobject someParameter(const ParamRow& row)
{
    std::string text = filled(row.java, below(20), "5a");
    for (std::size_t i = 0; (i = text.find("[] 0", i)) != text.npos && chance(2); ++i)
        text.replace(i, 2, "null");
    return jni::read(env, text);
}

// Any object, and its native length.
std::pair<jobject, std::size_t> someValue()
{
    if (chance(8)) return {nullptr, 0};
    const jbyteArray made = someBytes();
    if (chance(2)) return {made, lengthOf(made)};
    if (chance(8))
        return {
            callStatic(env, "Hostile", "other", "(J)Ljava/lang/Object;", static_cast<jlong>(below(1000))), 4};
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
        elements[i] = i >= 5 ? elements[i % 5] : attribute(env, type, value, javaLength(length));
        if (chance(10)) elements[i] = nullptr;
    }
    return objects(env, chance(9) ? "java/lang/Object" : "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

jobject someMechanism()
{
    // A parameter of type 0 is deliberately never freed.
    const auto type = static_cast<jlong>(1 + below(1000));
    if (chance(3)) {
        const jbyteArray value = someBytes();
        return mechanism(env, type, value, value == nullptr ? 0 : javaLength(lengthOf(value)));
    }
    const ParamRow& row = PARAMS[below(std::size(PARAMS))];
    now.parameter = row.java.substr(0, row.java.find(' '));
    const bool isImport = now.parameter == "CK_PKCS12_PBE_IMPORT_PARAMS";
    const jlong writtenBack = isImport ? 0x800009f3 : 0x401; // the type of those that are
    return mechanism(env, chance(2) ? type : writtenBack, someParameter(row), row.size);
}

// Varies the Java arguments of one kind, which begin there.
void vary(const Kind& kind, jvalue* arguments)
{
    jobject& object = arguments[0].l;
    const auto is = [&](auto... forms) { return ((kind.form == forms) || ...); };
    if (is(Kind::Number)) arguments[0].j = javaLength(5);
    if (is(Kind::Number, Kind::Boolean)) return;
    std::size_t size = 0;
    if (is(Kind::Held)) setLong(env, object, "m_value", javaLength(40));
    if (is(Kind::Bytes, Kind::Label, Kind::Random) || (is(Kind::Output) && kind.path.empty()))
        object = someBytes();
    if (is(Kind::Template)) object = someTemplate();
    if (is(Kind::Value, Kind::Served)) std::tie(object, size) = someValue();
    if (is(Kind::Mechanism)) object = someMechanism();
    if (is(Kind::Pointer)) object = someParameter(PARAMS[below(std::size(PARAMS))]);
    if (is(Kind::Held, Kind::Record, Kind::InitArgs) && chance(9)) object = someValue().first;
    if (chance(10)) object = nullptr;
    if (is(Kind::Value, Kind::Served)) arguments[1].j = javaLength(size);
    if (is(Kind::Bytes, Kind::Template, Kind::Found, Kind::Random))
        arguments[1].j = javaLength(lengthOf(object));
    if (is(Kind::Output)) setLong(env, arguments[1].l, "value", javaLength(lengthOf(object)));
    if (is(Kind::Output, Kind::Found, Kind::Served) && chance(10))
        arguments[kind.javaCount() - 1].l = nullptr;
}

// Makes one call and returns what is wrong, or "".
std::string run(const Native& native, std::uint32_t seed)
{
    const LocalFrame frame(env);
    now = {std::mt19937(seed)};
    recorder::reset();
    recorder::script().byteLimit = recorder::script().attributeLimit = recorder::script().labelLength = 0;
    Call made = native.prepare(env);
    jvalue* next = made.arguments.data();
    for (const Kind& kind : native.kinds) {
        vary(kind, next);
        next += kind.javaCount();
    }
    JNI_OnUnload(jvm(), nullptr);
    if (chance(2)) native.prepare(env)(env); // its lookups are remembered
    takeException(env);
    recorder::script().answer = answer;

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
               exception == "java.lang.IllegalStateException: hostile" ||
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
    if (returned == nullptr || !exception.empty() || !native.name.starts_with("C_")) return now.wrong;
    const CK_RV rv = rvOf(env, returned);
    const bool isOwn = now.called == 0 && (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY);
    expect(isOwn || (now.called == 1 && rv == now.answered), "returns " + std::to_string(rv));
    return now.wrong;
}

} // namespace

const char* const CLASS_PATH = ZERLIN_CLASSPATH;

int main(int argc, char** argv)
{
    using Clock = std::chrono::steady_clock;
    std::map<std::string, unsigned long> options = {
        {"--seed", 1}, {"--first", 0}, {"--calls", 4000000000}, {"--seconds", 1000000}};
    for (int i = 1; i + 1 < argc; i += 2)
        options.at(argv[i]) = std::stoul(argv[i + 1]);
    const unsigned long seed = options["--seed"], first = options["--first"], calls = options["--calls"];
    const auto end = Clock::now() + std::chrono::seconds(options["--seconds"]);

    jvm()->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_8);
    env->PushLocalFrame(512);
    std::signal(SIGABRT, [](int) {
        std::fputs(lastCall.c_str(), stderr);
        std::_Exit(1);
    });
    unsigned long number = first, reached = 0;
    int failures = 0;
    for (; number - first < calls && failures < 10 && Clock::now() < end; ++number) {
        const auto mixed = static_cast<std::uint32_t>((seed * 0x9e3779b1UL) ^ (number * 0x85ebca6bUL));
        const Native& native = natives()[(mixed >> 7) % natives().size()];
        lastCall = "--seed " + std::to_string(seed) + " --first " + std::to_string(number) +
                   " --calls 1: " + native.name + "\n";
        const std::string wrong = run(native, mixed);
        reached += now.called > 0;
        if (wrong.empty()) continue;
        ++failures;
        std::fputs((lastCall + wrong).c_str(), stderr);
    }
    std::printf("%lu calls, %lu reached the library; %d failed\n", number - first, reached, failures);
    jvm()->DestroyJavaVM(); // its threads must not outlive the program's data
    return failures == 0 ? 0 : 1;
}
