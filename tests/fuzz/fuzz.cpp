// Calls natives with hostile arguments, over a Cryptoki library that returns random results, and checks after
// each call what must hold for all arguments. Each call has its own seed, made of --seed and its number, so
// that
// --seed S --first N --calls 1 repeats one call.
#include "harness/failing_alloc.h"
#include "harness/faulty_env.h"
#include "harness/jni_helpers.h"
#include "harness/jvm.h"

#include "fakes/recorder.h"
#include "halvorn_zerlin_Cryptoki.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <random>
#include <sstream>
#include <tuple>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

// What the Cryptoki library needs to know about the call that runs.
struct Round {
    JNIEnv* env = nullptr;
    std::mt19937 random;
    std::vector<jint> sizes;  // see Hostile.addSizes
    std::size_t nextSize = 0; // of the Cryptoki call that runs
    std::string parameter;
    std::string log; // printed if the call fails
    int called = 0;  // Cryptoki functions
    bool hasRaised = false;
    bool raises = false; // from within the library
    CK_RV answered = CKR_OK;
    std::string wrong;
    unsigned sum = 0; // of what was read
};

Round now;

CK_ULONG below(CK_ULONG limit)
{
    return static_cast<CK_ULONG>(now.random()) % limit;
}

bool chance(CK_ULONG oneIn)
{
    return below(oneIn) == 0;
}

CK_ULONG around(CK_ULONG real)
{
    const CK_ULONG all[] = {
        real, real, real, real - 1, real + 1, 0, ~CK_ULONG{0}, 0x7fffffff, 0x80000000, below(5000)};
    return all[below(std::size(all))];
}

CK_ULONG nextSize()
{
    if (now.nextSize < now.sizes.size()) return static_cast<CK_ULONG>(now.sizes[now.nextSize++]);
    std::fprintf(stderr, "an input that Java did not give\n");
    std::abort();
}

// Reads an input, but not beyond its real length.
void read(const void* data, CK_ULONG declared, CK_ULONG real)
{
    const auto* const bytes = static_cast<const CK_BYTE*>(data);
    for (CK_ULONG i = 0; bytes != nullptr && i < std::min(declared, real); ++i)
        now.sum += bytes[i];
}

void write(void* data, CK_ULONG size)
{
    for (CK_ULONG i = 0; data != nullptr && i < size; ++i)
        static_cast<CK_BYTE*>(data)[i] = static_cast<CK_BYTE>(below(256));
}

void readTemplate(std::string_view name, CK_ATTRIBUTE_PTR attributes, CK_ULONG declared)
{
    const CK_ULONG real = nextSize();
    for (CK_ULONG i = 0; i < real; ++i) {
        const CK_ULONG size = nextSize();
        if (attributes == nullptr || i >= declared) continue;
        CK_ATTRIBUTE& attribute = attributes[i];
        read(attribute.pValue, attribute.ulValueLen, size);
        if (name != "C_GetAttributeValue" || chance(8)) continue;
        if (attribute.type == CKA_WILDCARD || chance(8)) attribute.type = around(CKA_LABEL);
        write(attribute.pValue, std::min(size, attribute.ulValueLen));
        attribute.ulValueLen = around(size);
    }
}

void readMechanism(std::string_view, CK_MECHANISM_PTR mechanism)
{
    const CK_ULONG size = nextSize();
    void* const parameter = mechanism->pParameter;
    read(parameter, size, size);
    // Only a failed allocation of the structure passes silently.
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
    } else if (now.parameter == "CK_SSL3_KEY_MAT_PARAMS") {
        auto* const out = static_cast<CK_SSL3_KEY_MAT_PARAMS*>(parameter)->pReturnedKeyMaterial;
        write(out, offsetof(CK_SSL3_KEY_MAT_OUT, pIVClient));
    } else if (now.parameter == "CK_SSL3_MASTER_KEY_DERIVE_PARAMS") {
        write(static_cast<CK_SSL3_MASTER_KEY_DERIVE_PARAMS*>(parameter)->pVersion, sizeof(CK_VERSION));
    }
}

// Uses the callbacks as a library that locks does, and frees the mutex even if DestroyMutex fails.
void lock(const CK_C_INITIALIZE_ARGS* arguments)
{
    void* mutex = nullptr;
    if (arguments == nullptr || arguments->CreateMutex == nullptr) return;
    arguments->CreateMutex(&mutex);
    if (arguments->LockMutex != nullptr) arguments->LockMutex(mutex);
    if (arguments->UnlockMutex != nullptr) arguments->UnlockMutex(mutex);
    if (arguments->DestroyMutex != nullptr) arguments->DestroyMutex(mutex);
    const bool isGone = arguments->DestroyMutex != nullptr && !now.env->ExceptionCheck();
    if (mutex != nullptr && !isGone) now.env->DeleteGlobalRef(static_cast<jobject>(mutex));
}

// Reads or writes the arguments of a Cryptoki function, one or two at a time.
template <std::size_t I = 0, typename... A>
void take(std::string_view name, const std::tuple<A...>& all)
{
    if constexpr (I < sizeof...(A)) {
        using T = std::tuple_element_t<I, std::tuple<A...>>;
        using Next = std::tuple_element_t<std::min(I + 1, sizeof...(A) - 1), std::tuple<A...>>;
        constexpr bool isPair = I + 1 < sizeof...(A);
        constexpr bool isBuffer = std::is_same_v<T, CK_BYTE_PTR> || std::is_same_v<T, CK_ULONG_PTR>;
        const T value = std::get<I>(all);
        if constexpr (isPair && std::is_same_v<T, CK_ATTRIBUTE_PTR>) {
            readTemplate(name, value, std::get<I + 1>(all));
            return take<I + 2>(name, all);
        } else if constexpr (isPair && isBuffer && std::is_same_v<Next, CK_ULONG_PTR>) {
            CK_ULONG& length = *std::get<I + 1>(all);
            const bool isOne = name == "C_GenerateKeyPair"; // two handles
            const CK_ULONG capacity = isOne ? 1 : length;
            length = around(capacity);
            write(value, std::min(capacity, length) * sizeof *value);
            return take<I + 2>(name, all);
        } else if constexpr (isPair && isBuffer && std::is_same_v<Next, CK_ULONG>) {
            const CK_ULONG length = std::get<I + 1>(all);
            const bool isOutput = name == "C_FindObjects" || name == "C_GenerateRandom";
            if (isOutput)
                write(value, length * sizeof *value);
            else
                read(value, length, nextSize());
            return take<I + 2>(name, all);
        } else if constexpr (std::is_same_v<T, CK_BYTE_PTR>) {
            read(value, ~CK_ULONG{0}, nextSize()); // a label
        } else if constexpr (std::is_same_v<T, CK_MECHANISM_PTR>) {
            readMechanism(name, value);
        } else if constexpr (std::is_same_v<T, CK_VOID_PTR>) {
            if (name == "C_Initialize") lock(static_cast<CK_C_INITIALIZE_ARGS*>(value));
        } else if constexpr (std::is_pointer_v<T> && !std::is_same_v<T, CK_NOTIFY>) {
            write(value, sizeof *value);
        }
        take<I + 1>(name, all);
    }
}

template <typename... A>
CK_RV answer(const char* name, A... arguments)
{
    const CK_RV all[] = {CKR_OK, CKR_OK, CKR_OK, CKR_BUFFER_TOO_SMALL, around(CKR_ATTRIBUTE_SENSITIVE)};
    now.nextSize = 0;
    const bool mayPend = ++now.called > 1 || name == std::string_view("C_SetAttributeValue");
    if (!mayPend && now.env->ExceptionCheck()) now.wrong += "called while an exception is pending\n";
    take(name, std::tuple(arguments...));
    if (now.raises && !now.env->ExceptionCheck()) {
        const jclass cls = now.env->FindClass("java/lang/IllegalStateException");
        if (cls != nullptr) now.env->ThrowNew(cls, "hostile");
        now.env->DeleteLocalRef(cls);
    }
    return now.answered = all[below(std::size(all))];
}

void answerAll()
{
    recorder::reset();
    recorder::script().byteLimit = recorder::script().attributeLimit = recorder::script().labelLength = 0;
#define ANSWER(name) recorder::script().name = [](auto... arguments) { return answer(#name, arguments...); };
    STANDARD_FUNCTIONS(ANSWER)
    VENDOR_FUNCTIONS(ANSWER)
}

struct Native {
    std::string symbol;
    std::string kinds; // see Hostile.natives
    void* function;
};

template <typename Result>
Result javaCall(jobject object, const char* method, const char* signature)
{
    const jclass cls = object == nullptr ? jni::find(now.env, "Hostile") : now.env->GetObjectClass(object);
    jobject returned = nullptr;
    if (object == nullptr)
        returned = now.env->CallStaticObjectMethod(cls, now.env->GetStaticMethodID(cls, method, signature));
    else
        returned = now.env->CallObjectMethod(object, now.env->GetMethodID(cls, method, signature));
    jni::check(now.env, method);
    return static_cast<Result>(returned);
}

std::vector<Native> natives()
{
    JNIEnv* const env = now.env;
    const auto rows = javaCall<jobjectArray>(nullptr, "natives", "()[Ljava/lang/String;");
    std::vector<Native> all(static_cast<std::size_t>(env->GetArrayLength(rows)));
    for (std::size_t i = 0; i < all.size(); ++i) {
        const jobject row = env->GetObjectArrayElement(rows, static_cast<jsize>(i));
        std::istringstream(jni::toString(env, static_cast<jstring>(row))) >> all[i].symbol >> all[i].kinds;
        all[i].function = dlsym(RTLD_DEFAULT, all[i].symbol.c_str());
        if (all[i].function == nullptr) throw std::runtime_error(all[i].symbol + " is not there");
        if (!all[i].symbol.ends_with("getMechanismParameterSize")) continue;
        const JNINativeMethod method = {const_cast<char*>("getMechanismParameterSize"),
            const_cast<char*>("(Ljava/lang/Object;)J"), all[i].function};
        env->RegisterNatives(jni::find(env, "halvorn/zerlin/CK_MECHANISM"), &method, 1); // Hostile asks it
    }
    return all;
}

// The arguments as they lie on the stack. Surplus words do no harm, because the caller removes them.
struct Words {
    std::uint32_t all[12];
};

Words words(const Native& native, jobjectArray boxes)
{
    Words words{};
    std::uint32_t* next = words.all;
    for (jsize i = 0; i < now.env->GetArrayLength(boxes); ++i) {
        const jobject box = now.env->GetObjectArrayElement(boxes, i);
        const char kind = native.kinds[static_cast<std::size_t>(i)];
        const jlong number = kind == 'j'   ? jni::getLong(now.env, box, "value")
                             : kind == 'z' ? jni::getBool(now.env, box, "value")
                                           : reinterpret_cast<jint>(box);
        std::memcpy(next, &number, sizeof number);
        next += kind == 'j' ? 2 : 1;
    }
    return words;
}

// Registers locking callbacks, without which the library raises no exception.
void initialise()
{
    const jclass cls = jni::find(now.env, "TestCallbacks");
    const char* const signature = "()Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS;";
    const jobject callbacks =
        now.env->CallStaticObjectMethod(cls, now.env->GetStaticMethodID(cls, "throwing", signature));
    jni::check(now.env, "throwing");
    recorder::reset();
    Java_halvorn_zerlin_Cryptoki_C_1Initialize(now.env, nullptr, callbacks);
}

void finalise()
{
    recorder::script().C_Finalize = [](auto) { return CKR_OK; };
    Java_halvorn_zerlin_Cryptoki_C_1Finalize(now.env, nullptr, nullptr);
}

bool isAllowed(const std::string& exception, const std::string& allowed)
{
    std::istringstream lines(allowed);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && exception.starts_with(line)) return true;
    return exception.empty();
}

// Makes one call and returns what is wrong, or "".
std::string run(const Native& native, int index, std::uint32_t seed)
{
    JNIEnv* const env = now.env;
    const LocalFrame frame(env);
    now.random.seed(seed);
    if (chance(16)) JNI_OnUnload(jvm(), nullptr);
    now.raises = chance(20);
    if (now.raises) initialise();
    answerAll();
    const jobject hostile = jni::make(env, "Hostile", "(JI)V", static_cast<jlong>(seed), index);
    const auto text = [&](const char* name) {
        return jni::toString(
            env, static_cast<jstring>(jni::getObject(env, hostile, name, "Ljava/lang/String;")));
    };
    now.log += native.symbol + "\n" + text("description");
    now.parameter = text("parameter");
    now.called = 0;
    now.wrong.clear();
    const auto sizes = javaCall<jintArray>(hostile, "sizes", "()[I");
    now.sizes.resize(static_cast<std::size_t>(env->GetArrayLength(sizes)));
    env->GetIntArrayRegion(sizes, 0, env->GetArrayLength(sizes), now.sizes.data());
    const Words arguments = words(
        native, static_cast<jobjectArray>(jni::getObject(env, hostile, "arguments", "[Ljava/lang/Object;")));

    // Besides the hostile arguments, a JNI call or an allocation may fail, or the library raise an exception.
    const Fault fault{.call = chance(8) ? static_cast<int>(1 + below(80)) : 0};
    jlong result = 0;
    const int failing = chance(8) ? static_cast<int>(1 + below(20)) : 0;
    now.log +=
        "  JNI call " + std::to_string(fault.call) + " fails, allocation " + std::to_string(failing) + "\n";
    HeapWatch heap;
    failAllocation(failing);
    const Watched watched = watch(env, fault, [&] {
        result = reinterpret_cast<jlong(JNICALL*)(JNIEnv*, jclass, Words)>(native.function)(
            env, nullptr, arguments);
        if (now.raises || native.symbol.ends_with("C_1Initialize")) finalise();
    });
    const std::string exception = jni::takeException(env);
    now.hasRaised = !exception.empty();
    std::string allowed = text("allowed");
    if (now.raises) allowed += "java.lang.IllegalStateException: hostile\n";
    if (!watched.failed.empty()) allowed += "java.lang.RuntimeException: injected\n";
    if (allocationFailed()) allowed += "java.lang.OutOfMemoryError: no native memory left\n";
    failAllocation(0);
    if (jni::getBool(env, hostile, "keepsParameter"))
        for (const auto& [block, size] : std::map(heap.blocks))
            std::free(block);

    const auto expect = [](bool holds, const std::string& otherwise) {
        now.wrong += holds ? "" : otherwise + "\n";
    };
    expect(heap.blocks.empty(), std::to_string(heap.blocks.size()) + " blocks of native memory left");
    expect(isAllowed(exception, allowed), "not to be raised: " + exception);
    expect(watched.globalRefs.empty() && watched.buffers.empty(), "global references or characters left");
    expect(watched.maxLocalRefs <= 16, std::to_string(watched.maxLocalRefs) + " local references at once");
    expect(watched.violations.empty(), watched.violations.empty() ? "" : watched.violations.front());
    expect(takeJniWarnings().empty(), "the JVM's own checks complain");
    const std::string changed =
        jni::toString(env, javaCall<jstring>(hostile, "changed", "()Ljava/lang/String;"));
    expect(changed.empty(), changed);
    if (native.kinds.back() == 'j') return now.wrong;
    const auto returned = reinterpret_cast<jobject>(static_cast<std::uint32_t>(result));
    const bool isSet = watched.failed.empty();
    expect(!isSet || (returned == nullptr) != exception.empty(),
        returned == nullptr ? "null" : "more than " + exception);
    if (returned == nullptr || !exception.empty() || native.symbol.find("Cryptoki") == std::string::npos)
        return now.wrong;
    const CK_RV rv = jni::rvOf(env, returned);
    const bool isOwn = now.called == 0 && (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY);
    expect(isOwn || (now.called == 1 && rv == now.answered), "answers " + std::to_string(rv));
    return now.wrong;
}

extern "C" void printLog()
{
    const std::string text = now.log.substr(0, 20000);
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
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
    const std::vector<std::string> options(argv + 1, argv + argc);
    const auto option = [&](const char* name, const std::string& otherwise) {
        const auto found = std::find(options.begin(), options.end(), name);
        return found == options.end() || found + 1 == options.end() ? otherwise : *(found + 1);
    };
    const auto seed = std::stoul(option("--seed", "1"));
    const auto first = std::stoul(option("--first", "0"));
    const auto calls = std::stoul(option("--calls", "4000000000"));
    const auto end = Clock::now() + std::chrono::seconds(std::stoul(option("--seconds", "1000000")));
    const std::string only = option("--only", "");

    jvm()->GetEnv(reinterpret_cast<void**>(&now.env), JNI_VERSION_1_8);
    now.env->PushLocalFrame(512);
    std::signal(SIGABRT, printLogAndAbort);
    if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(printLog);
    const std::vector<Native> all = natives();

    unsigned long made = 0, reached = 0, raised = 0;
    int failures = 0;
    for (unsigned long number = first; made < calls && failures < 10 && Clock::now() < end; ++number) {
        const auto mixed = static_cast<std::uint32_t>((seed * 0x9e3779b1UL) ^ (number * 0x85ebca6bUL));
        const std::size_t index = (mixed >> 7) % all.size();
        if (all[index].symbol.find(only) == std::string::npos) continue;
        ++made;
        now.log = "--seed " + std::to_string(seed) + " --first " + std::to_string(number) + " --calls 1: ";
        const std::string wrong = run(all[index], static_cast<int>(index), mixed);
        reached += now.called > 0;
        raised += now.hasRaised;
        if (wrong.empty()) continue;
        ++failures;
        printLog();
        std::fprintf(stderr, "%s", wrong.c_str());
    }
    std::printf("%lu calls of %zu natives, %lu reached the library, %lu raised an exception; %d failed\n",
        made, all.size(), reached, raised, failures);
    jvm()->DestroyJavaVM(); // its threads must not outlive the program's data
    return failures == 0 ? 0 : 1;
}
