// Varies the rows of the table of natives at random: nulls, other classes, lengths, counts, shared objects,
// callbacks that throw, JNI calls and allocations that fail, over a Cryptoki library that reads all that it
// is promised and returns random results. Each call has a seed of its own, made of --seed and its number, and
// starts alike:
// --seed S --first N --calls 1 repeats one call.
#include "halvorn_zerlin_CK_MECHANISM.h"
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
    std::string parameter; // the class of the mechanism's parameter, if it becomes a structure
    std::string log;       // printed if the call fails
    std::string wrong;
    int called = 0;
    bool raises = false;
    CK_RV answered = CKR_OK;
};

Round now;
JNIEnv* env = nullptr;

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

// ---- The Cryptoki library

// Behind every input there are zeroes, up to the declared length or 64 KiB.
constexpr CK_ULONG FENCE = 64 << 10;

void read(const void* data, CK_ULONG declared)
{
    static volatile unsigned sum = 0;
    for (CK_ULONG i = 0; data != nullptr && i < std::min(declared, FENCE); ++i)
        sum = sum + static_cast<const CK_BYTE*>(data)[i];
}

void write(void* data, CK_ULONG size)
{
    if (data != nullptr) std::memset(data, static_cast<int>(below(256)), size);
}

void use(CK_ATTRIBUTE* attributes, CK_ULONG count)
{
    const bool isServed = recorder::lastCalled() == std::string_view("C_GetAttributeValue");
    for (CK_ULONG i = 0; attributes != nullptr && i < std::min<CK_ULONG>(count, FENCE / sizeof *attributes);
         ++i) {
        CK_ATTRIBUTE& attribute = attributes[i];
        read(attribute.pValue, attribute.ulValueLen);
        if (!isServed || chance(8)) continue;
        if (attribute.type == CKA_WILDCARD || chance(8)) attribute.type = around(CKA_LABEL);
        write(attribute.pValue, std::min(attribute.ulValueLen, FENCE));
        attribute.ulValueLen = around(attribute.ulValueLen);
    }
}

void use(CK_MECHANISM& mechanism)
{
    void* const parameter = mechanism.pParameter;
    read(parameter, mechanism.ulParameterLen);
    if (parameter == nullptr && !now.parameter.empty() && !allocationFailed())
        now.wrong += "the parameter is lost\n";
    if (parameter == nullptr || chance(3)) return;
    if (now.parameter == "CK_KEY_WRAP_SET_OAEP_PARAMS") {
        auto& params = *static_cast<CK_KEY_WRAP_SET_OAEP_PARAMS*>(parameter);
        write(params.pX, params.XLen);
        params.XLen = around(params.XLen);
    } else if (now.parameter == "CK_PKCS12_PBE_IMPORT_PARAMS") {
        const auto& params = *static_cast<CK_PKCS12_PBE_IMPORT_PARAMS*>(parameter);
        if (params.hCertCount != nullptr) *params.hCertCount = around(*params.hCertCount);
    }
}

// Uses the callbacks as a library that locks does, and frees the mutex even if DestroyMutex fails.
void lock(const CK_C_INITIALIZE_ARGS* arguments)
{
    void* mutex = nullptr;
    if (arguments == nullptr || arguments->CreateMutex == nullptr) return;
    arguments->CreateMutex(&mutex);
    for (const auto function : {arguments->LockMutex, arguments->UnlockMutex, arguments->DestroyMutex})
        if (function != nullptr) function(mutex);
    const bool isGone = arguments->DestroyMutex != nullptr && !env->ExceptionCheck();
    if (mutex != nullptr && !isGone) env->DeleteGlobalRef(static_cast<jobject>(mutex));
}

CK_RV answer(std::span<const Argument> all)
{
    const std::string_view name = recorder::lastCalled();
    const bool mayPend = ++now.called > 1 || name == "C_SetAttributeValue";
    if (!mayPend && env->ExceptionCheck()) now.wrong += "called while an exception is pending\n";
    for (const Argument& argument : all) {
        const auto is = [&](Argument::Form form) { return argument.form == form; };
        if (is(Argument::Bytes)) read(argument.data, argument.number);
        if (is(Argument::Label)) read(argument.data, 32);
        if (is(Argument::Template)) use(static_cast<CK_ATTRIBUTE*>(argument.data), argument.number);
        if (is(Argument::Mechanism)) use(*static_cast<CK_MECHANISM*>(argument.data));
        if (is(Argument::InitArgs)) lock(static_cast<CK_C_INITIALIZE_ARGS*>(argument.data));
        if (is(Argument::Output)) write(argument.data, argument.elementSize);
        if (is(Argument::Outputs)) write(argument.data, argument.number * argument.elementSize);
        if (argument.reported != nullptr) *argument.reported = around(argument.number);
    }
    if (now.raises && !env->ExceptionCheck()) {
        const jclass cls = env->FindClass("java/lang/IllegalStateException");
        if (cls != nullptr) env->ThrowNew(cls, "hostile");
        env->DeleteLocalRef(cls);
    }
    return now.answered = oneOf({CK_RV{CKR_OK}, CK_RV{CKR_OK}, CK_RV{CKR_OK}, CK_RV{CKR_BUFFER_TOO_SMALL},
               around(CKR_ATTRIBUTE_SENSITIVE)});
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

// See Hostile.java.
jobject hostile(const char* method, jobject object)
{
    const char* const signature = "(Ljava/lang/Object;I)Ljava/lang/Object;";
    return callStatic(env, "Hostile", method, signature, object, static_cast<jint>(below(1000)));
}

// The parameter of a row, with arrays of any length and some nulls. Its lengths are right: others abort the
// process.
jobject someParameter(const ParamRow& row)
{
    std::string text = filled(row.java, below(20), "5a");
    for (std::size_t i = 0; (i = text.find("[] 0", i)) != text.npos && chance(2); ++i)
        text.replace(i, 2, "null");
    return hostile("hollow", jni::read(env, text));
}

// Any object, and its native length.
std::pair<jobject, std::size_t> someValue()
{
    if (chance(8)) return {nullptr, 0};
    const jbyteArray made = someBytes();
    if (chance(2)) return {made, lengthOf(made)};
    if (chance(8)) return {hostile("other", nullptr), 4};
    const std::vector<Value> all = values(env);
    const Value& value = all[below(all.size())];
    return {value.object, value.length};
}

jobject someTemplate()
{
    std::vector<jobject> elements(below(chance(6) ? 300 : 5));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto [value, length] = someValue();
        const jlong type =
            oneOf<jlong>({0, 3, 17, 257, 288, 289, 0x40000600, 65535, static_cast<jlong>(below(800))});
        if (i >= 5)
            elements[i] = elements[i % 5];
        else if (!chance(10))
            elements[i] = attribute(env, type, value, javaLength(length));
    }
    return objects(env, chance(9) ? "java/lang/Object" : "halvorn/zerlin/CK_ATTRIBUTE", elements);
}

jobject someMechanism()
{
    // A parameter of type 0 is deliberately never freed.
    const auto type = static_cast<jlong>(1 + below(1000));
    if (chance(3)) {
        const jobject value = someValue().first;
        const jlong size = Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, value);
        const bool isFree = takeException(env).empty() && value != nullptr &&
                            env->IsInstanceOf(value, find(env, "[B")); // others may be structures
        return mechanism(env, type, value, isFree ? javaLength(static_cast<std::size_t>(size)) : size);
    }
    const ParamRow& row = PARAMS[below(std::size(PARAMS))];
    now.parameter = row.java.substr(0, row.java.find(' '));
    const jlong maker = row.makers.empty() || chance(3) ? type : static_cast<jlong>(row.makers.front());
    return mechanism(env, maker, someParameter(row), (chance(4) ? 1LL << 32 : 0) + row.size);
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
    if (is(Kind::Held, Kind::New)) object = hostile("like", object);
    if (is(Kind::Bytes, Kind::Label, Kind::Random) || (is(Kind::Output) && kind.path.empty()))
        object = someBytes();
    if (is(Kind::Template)) object = someTemplate();
    if (is(Kind::Value, Kind::Served)) std::tie(object, size) = someValue();
    if (is(Kind::Mechanism)) object = someMechanism();
    if (is(Kind::InitArgs)) object = hostile("callbacks", nullptr);
    if (is(Kind::Pointer)) object = someParameter(PARAMS[below(std::size(PARAMS))]);
    if (is(Kind::Held, Kind::Record, Kind::InitArgs, Kind::Pointer) && chance(9)) object = someValue().first;
    if (chance(10)) object = nullptr;
    if (is(Kind::Value, Kind::Served)) arguments[1].j = javaLength(size);
    if (is(Kind::Bytes, Kind::Template, Kind::Found, Kind::Random))
        arguments[1].j = javaLength(lengthOf(object));
    if (is(Kind::Output)) setLong(env, arguments[1].l, "value", javaLength(lengthOf(object)));
    if (!is(Kind::Output, Kind::Found, Kind::Served)) return;
    jobject& longRef = arguments[kind.javaCount() - 1].l;
    longRef = chance(10) ? nullptr : hostile("like", longRef);
}

// Passes one object twice, where Java allows it.
void share(const Native& native, Call& made)
{
    for (std::size_t i = 1; i < native.kinds.size(); ++i) {
        const std::size_t j = below(i), from = native.start(j), to = native.start(i);
        const bool isHeld = native.kinds[i].isHeld() && native.kinds[i].path == native.kinds[j].path;
        const bool areBytes = made.kinds[from] == 'b' && made.kinds[to] == 'b';
        if (areBytes ||
            (isHeld && env->IsInstanceOf(made.arguments[from].l, find(env, native.kinds[i].cls().c_str()))))
            made.arguments[to] = made.arguments[from];
    }
}

// The table, and the natives that call no Cryptoki function.
std::vector<Native> allNatives()
{
    std::vector<Native> all = natives();
#define NAMES(of, type)                                                                                      \
    all.push_back({#of "String", withoutArguments(Java_halvorn_zerlin_CTUtil_CTU_1Get##of##String),          \
        {Kind{Kind::Held, "constants/" type}, kinds::CipherOutput}});                                        \
    all.push_back({#of "Value", withoutArguments(Java_halvorn_zerlin_CTUtil_CTU_1Get##of##Value),            \
        {kinds::LabelText}});
    NAMES(AttributeType, "CK_ATTRIBUTE_TYPE")
    NAMES(Error, "CK_RV")
    NAMES(KeyType, "CK_KEY_TYPE")
    NAMES(MechanismType, "CK_MECHANISM_TYPE")
    NAMES(ObjectClass, "CK_OBJECT_CLASS")
    NAMES(SessionState, "CK_STATE")
    return all;
}

bool isAllowed(const std::string& exception, const Watched& watched)
{
    return exception.empty() || exception == "java.lang.IllegalStateException: hostile" ||
           exception.starts_with("java.lang.UnsupportedOperationException: ") ||
           exception.starts_with("java.lang.NoClassDefFoundError: java/lang/Char") ||
           (exception == "java.lang.RuntimeException: injected" && !watched.failed.empty()) ||
           (exception == NO_MEMORY && allocationFailed());
}

// Makes one call and returns what is wrong, or "".
std::string run(const Native& native, std::uint32_t seed)
{
    const LocalFrame frame(env);
    now.random.seed(seed);
    now.parameter = now.wrong = "";
    now.called = 0;
    recorder::reset();
    recorder::script().byteLimit = recorder::script().attributeLimit = recorder::script().labelLength = 0;
    Call made = native.prepare(env);
    for (std::size_t i = 0; i < native.kinds.size(); ++i)
        vary(native.kinds[i], &made.arguments[native.start(i)]);
    if (chance(4)) share(native, made);
    JNI_OnUnload(jvm(), nullptr);
    if (chance(2)) native.prepare(env)(env); // its lookups are remembered
    takeException(env);
    now.raises = chance(20);
    if (now.raises) initialiseWithCallbacks(env);
    recorder::script().answer = answer;

    // Besides the hostile arguments, a JNI call or an allocation may fail.
    const Fault fault{.call = chance(8) ? static_cast<int>(1 + below(80)) : 0};
    const int failing = chance(8) ? static_cast<int>(1 + below(20)) : 0;
    now.log += native.name + ", JNI call " + std::to_string(fault.call) + " fails, allocation " +
               std::to_string(failing) + ", parameter " + now.parameter + "\n";
    const HeapWatch heap;
    failAllocation(failing);
    jobject returned = nullptr;
    const Watched watched = watch(env, fault, [&] {
        returned = made(env);
        JNI_OnUnload(jvm(), nullptr); // ends a registration
    });
    const std::string exception = takeException(env);

    const auto expect = [](bool holds, const std::string& otherwise) {
        now.wrong += holds ? "" : otherwise + "\n";
    };
    expect(isAllowed(exception, watched), "not to be raised: " + exception);
    failAllocation(0);
    expect(heap.blocks.empty(), std::to_string(heap.blocks.size()) + " blocks of native memory left");
    expect(watched.globalRefs.empty() && watched.buffers.empty(), "global references or characters left");
    expect(watched.maxLocalRefs <= 16, std::to_string(watched.maxLocalRefs) + " local references at once");
    expect(watched.violations.empty(), watched.violations.empty() ? "" : watched.violations.front());
    expect(takeJniWarnings().empty(), "the JVM's own checks complain");
    expect(!watched.failed.empty() || (returned == nullptr) != exception.empty(),
        "null, or more than " + exception);
    if (returned == nullptr || !exception.empty() || !native.name.starts_with("C_")) return now.wrong;
    const CK_RV rv = rvOf(env, returned);
    const bool isOwn = now.called == 0 && (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY);
    expect(isOwn || (now.called == 1 && rv == now.answered), "returns " + std::to_string(rv));
    return now.wrong;
}

extern "C" void printLog()
{
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, now.log.data(), std::min<std::size_t>(now.log.size(), 20000));
}

void printLogAndAbort(int)
{
    printLog();
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
}

} // namespace

const char* const CLASS_PATH = ZERLIN_CLASSPATH;

extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());

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
    std::signal(SIGABRT, printLogAndAbort);
    if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(printLog);
    const std::vector<Native> all = allNatives();

    unsigned long number = first, reached = 0;
    int failures = 0;
    for (; number - first < calls && failures < 10 && Clock::now() < end; ++number) {
        const auto mixed = static_cast<std::uint32_t>((seed * 0x9e3779b1UL) ^ (number * 0x85ebca6bUL));
        const Native& native = all[(mixed >> 7) % all.size()];
        now.log = "--seed " + std::to_string(seed) + " --first " + std::to_string(number) + " --calls 1: ";
        const std::string wrong = run(native, mixed);
        reached += now.called > 0;
        if (wrong.empty()) continue;
        ++failures;
        printLog();
        std::fprintf(stderr, "%s", wrong.c_str());
    }
    std::printf("%lu calls of %zu natives, %lu reached the library; %d failed\n", number - first, all.size(),
        reached, failures);
    jvm()->DestroyJavaVM(); // its threads must not outlive the program's data
    return failures == 0 ? 0 : 1;
}
