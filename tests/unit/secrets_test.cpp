// Secrets of every form and size that pass through the natives leave nothing in the native memory of this
// process, neither in freed heap memory nor on the stack.
#include "harness/jvm.h"
#include "native_table.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <set>
#include <sys/mman.h>
#include <unistd.h>

// The JVM's table of its own structures, for debuggers.
struct VMStructEntry {
    const char* type;
    const char* field;
    const char* fieldType;
    int32_t isStatic;
    std::uint64_t offset;
    char* address;
};
extern "C" JNIIMPORT VMStructEntry* gHotSpotVMStructs;

namespace {

using namespace jni;

// Every byte of a secret has this value, so that it looks the same in bytes, characters and numbers. Only the
// JVM and the Cryptoki library write it.
constexpr char SECRET = 0x17;

struct Range {
    char* begin;
    char* end;
};

Range javaHeap()
{
    const auto entry = [](std::string_view type, std::string_view field) {
        const VMStructEntry* found = gHotSpotVMStructs;
        while (found->type != type || found->field != field)
            ++found;
        return *found;
    };
    const auto word = [](const char* place) { return *reinterpret_cast<char* const*>(place); };
    char* const reserved =
        word(entry("Universe", "_collectedHeap").address) + entry("CollectedHeap", "_reserved").offset;
    char* const begin = word(reserved + entry("MemRegion", "_start").offset);
    const auto words =
        reinterpret_cast<std::size_t>(word(reserved + entry("MemRegion", "_word_size").offset));
    return {begin, begin + words * sizeof(void*)};
}

// Whether a page has 16 bytes of a secret. One of 40 bytes and more that lies on two pages has them on one of
// them. The JVM leaves 8 bytes of a long[] on the stack.
[[gnu::no_sanitize("address", "undefined"), gnu::optimize("O3"), gnu::target("sse2")]] bool hasSecret(
    const char* page)
{
    constexpr std::uint32_t WORD = SECRET * 0x01010101;
    const auto* const words = reinterpret_cast<const std::uint32_t*>(page);
    std::uint32_t found = 0;
    for (std::size_t i = 3; i < 1024; ++i)
        found |=
            (words[i - 3] == WORD) & (words[i - 2] == WORD) & (words[i - 1] == WORD) & (words[i] == WORD);
    return found != 0;
}

// Reads the list of this process's mappings. Allocates nothing.
template <std::size_t SIZE>
void readMaps(char (&maps)[SIZE])
{
    const int file = open("/proc/self/maps", O_RDONLY);
    std::size_t length = 0;
    for (ssize_t n = 1; n > 0; length += static_cast<std::size_t>(n))
        n = read(file, maps + length, SIZE - 1 - length);
    close(file);
    maps[length] = '\0';
}

char mapsBefore[1 << 18]; // the test

// Finds a secret in writable private memory: malloc's, this thread's stack and mappings that are
// not as they were before the test. Of the others the Java heap and the JVM's own memory hold no native's
// data. Returns the line of the mapping, or null. Allocates nothing, so that freed memory stays as it is.
const char* findSecret(const Range& heap)
{
    static char maps[1 << 18];
    static unsigned char isResident[1 << 20];
    readMaps(maps);
    for (char *line = maps, *next = nullptr; *line != '\0'; line = std::strchr(line, '\n') + 1) {
        char* const begin = reinterpret_cast<char*>(std::strtoul(line, &next, 16));
        char* const end = reinterpret_cast<char*>(std::strtoul(next + 1, &next, 16));
        if (next[1] != 'r' || next[2] != 'w' || next[4] != 'p') continue;
        const std::string_view whole(line, std::strcspn(line, "\n"));
        if (!whole.ends_with("[heap]") && !whole.ends_with("[stack]") &&
            std::string_view(mapsBefore).find(whole) != std::string_view::npos)
            continue;
        if (mincore(begin, static_cast<std::size_t>(end - begin), isResident) != 0) continue;
        for (char* page = begin; page != end; page += 4096) {
            if ((isResident[(page - begin) / 4096] & 1) == 0 || (page >= heap.begin && page < heap.end))
                continue;
            if (hasSecret(page)) return line;
        }
    }
    return nullptr;
}

// Calls the native from further down the stack, so that later calls do not overwrite what it leaves there.
[[gnu::noinline]] jobject callBelow(JNIEnv* env, const Call& made)
{
    char room[1 << 16];
    __asm__ volatile("" : : "r"(room));
    return made(env);
}

// Overwrites what the preparations of a test have left on the stack.
[[gnu::noinline]] void overwriteStack()
{
    char room[1 << 17];
    std::memset(room, 0, sizeof room);
    __asm__ volatile("" : : "r"(room) : "memory");
}

struct Secrets : JniTest {
    void SetUp() override
    {
        JniTest::SetUp();
        readMaps(mapsBefore);
    }
    // An array full of the secret.
    template <typename JArray, typename Element>
    JArray fill(JArray array, const char* signature, Element element)
    {
        const jclass cls = find(env, "java/util/Arrays");
        env->CallStaticVoidMethod(cls, env->GetStaticMethodID(cls, "fill", signature), array, element);
        check(env, signature);
        return array;
    }
    jbyteArray secret(jsize n) { return fill(env->NewByteArray(n), "([BB)V", jint{SECRET}); }

    // Templates of values of that many bytes each. The string is last, so that its memory is not used again.
    jobjectArray types(jsize n)
    {
        return env->NewObjectArray(n / 4, find(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE"),
            mechanismType(env, SECRET * 0x01010101));
    }
    jobjectArray secretTemplate(jsize n)
    {
        const auto chars = [&](int element) { return fill(env->NewCharArray(n), "([CC)V", element); };
        const jobject string =
            callStatic(env, "java/lang/String", "valueOf", "([C)Ljava/lang/String;", chars(SECRET));
        const jlongArray longs = fill(env->NewLongArray(n / 4), "([JJ)V", SECRET * 0x0101010101010101);
        const jintArray ints = fill(env->NewIntArray(n / 2), "([II)V", SECRET * 0x01010101);
        std::vector<jobject> all;
        for (const jobject value :
            std::vector<jobject>{secret(n), chars(SECRET * 0x0101), longs, ints, types(n), string})
            all.push_back(attribute(env, CKA_VALUE, value, n));
        return attributes(env, all);
    }

    Call withSecrets(const Native& native, jsize n);
    void expectNothingLeft(const Call& made, const std::vector<Kind>& kinds, CK_RV rv = CKR_OK);
};

// The native, with a secret of that length as every input that may hold one, and room for one as every
// output.
Call Secrets::withSecrets(const Native& native, jsize n)
{
    Call made = native.prepare(env, n);
    for (std::size_t i = 0; i < native.kinds.size(); ++i) {
        const Kind& kind = native.kinds[i];
        jvalue* const arguments = &made.arguments[native.start(i)];
        if (kind.isOutput() && kind.path.empty()) arguments[0].l = env->NewByteArray(n);
        if (!kind.isSecret || kind.isOutput()) continue;
        arguments[0].l = kind.form == Kind::Mechanism ? mechanism(env, 44, secret(n), n) : secret(n);
        if (kind.form != Kind::Template) continue;
        // Only some classes are written back.
        const jobjectArray full = native.name != "C_GetAttributeValue"
                                      ? secretTemplate(n)
                                      : attributes(env, {attribute(env, CKA_VALUE, env->NewByteArray(n), n),
                                                            attribute(env, CKA_VALUE, types(n), n)});
        arguments[0].l = full;
        arguments[1].j = env->GetArrayLength(full);
    }
    return made;
}

// The Cryptoki library writes a secret through every output that may hold one.
void Secrets::expectNothingLeft(const Call& made, const std::vector<Kind>& kinds, CK_RV rv)
{
    static const Range heap = javaHeap();
    recorder::script().isQuiet = true;
    bool isBelow = false; // the call: what the conversions have left, and later calls overwrite
    recorder::script().onCall = [&isBelow] {
        const auto* const here = static_cast<const char*>(__builtin_frame_address(0));
        isBelow |= hasSecret(here - 8192) || hasSecret(here - 4096);
    };
    recorder::script().answer = [&kinds, rv](std::span<const recorder::Argument> all) {
        const bool isServed = recorder::lastCalled() == std::string_view("C_GetAttributeValue");
        for (std::size_t i = 0; i < all.size(); ++i) {
            auto* const attributes = static_cast<CK_ATTRIBUTE*>(all[i].data);
            const bool isSecretOutput = all[i].form == recorder::Argument::Outputs && kinds[i].isSecret;
            if (isSecretOutput) std::memset(all[i].data, SECRET, all[i].number);
            if (isServed && all[i].form == recorder::Argument::Template)
                for (CK_ATTRIBUTE* one = attributes; one != attributes + all[i].number; ++one)
                    if (one->pValue != nullptr) std::memset(one->pValue, SECRET, one->ulValueLen);
        }
        return rv;
    };
    recorder::script().C_FindObjects = [rv](auto, auto, auto, auto count) { return *count = 1, rv; };
    const jobject returned = callBelow(env, made);
    const char* const left = findSecret(heap);
    ASSERT_EQ(left, nullptr) << recorder::lastCalled() << " left it in "
                             << std::string_view(left).substr(0, 80);
    EXPECT_EQ(rvOf(env, returned), rv) << recorder::lastCalled();
    EXPECT_FALSE(isBelow) << recorder::lastCalled() << " is called above a secret on the stack";
    recorder::script().onCall = {};
}

// Each native once from malloc, and once with one of the sizes around which the memory of a call changes its
// kind, also when the call fails: a search takes long. On the stack and in mappings one native stands for all
// with such an argument.
TEST_F(Secrets, noNativeLeavesSecretsInMemory)
{
    ASSERT_EQ(findSecret(javaHeap()), nullptr);
    constexpr jsize SIZES[] = {400, 1024, 1025, 2552, 16384, 524288};
    std::size_t next = 0;
    std::set<std::pair<Kind::Form, Kind::Refused>> known;
    for (const Native& native : natives()) {
        bool isNew = false;
        for (const Kind& kind : native.kinds)
            isNew |= kind.isSecret && known.insert({kind.form, kind.refused}).second;
        if (std::ranges::none_of(native.kinds, &Kind::isSecret)) continue;
        const jsize size = SIZES[next++ % std::size(SIZES)];
        std::vector<std::pair<jsize, CK_RV>> cases = {
            {3000, CKR_OK}, {size, CKR_OK}, {size, CKR_FUNCTION_FAILED}};
        if (isNew) cases.insert(cases.end(), {{40, CKR_OK}, {600000, CKR_OK}});
        for (const auto& [n, rv] : cases) {
            SCOPED_TRACE(native.name + ", " + std::to_string(n) + " bytes");
            const LocalFrame frame(env);
            expectNothingLeft(withSecrets(native, n), native.kinds, rv);
            if (HasFatalFailure()) return; // what is left would be found again
        }
    }
}

// One value at a time, because the next one overwrites what is left on the stack. Many fill more than a
// chunk.
TEST_F(Secrets, noValueLeavesItsBytesInMemory)
{
    for (const jsize n : {40, 400, 3000}) {
        const jobjectArray full = secretTemplate(n);
        for (jsize i = 0; i < env->GetArrayLength(full); ++i) {
            for (const std::size_t count : {1, 60}) {
                SCOPED_TRACE("value " + std::to_string(i) + ", " + std::to_string(count) + " times");
                const LocalFrame frame(env);
                const jobjectArray all =
                    attributes(env, std::vector(count, env->GetObjectArrayElement(full, i)));
                overwriteStack();
                expectNothingLeft(
                    call(NATIVE(C_1FindObjectsInit), session(env), all, static_cast<jlong>(count)), {});
            }
        }
    }
}

TEST_F(Secrets, noMechanismParameterLeavesSecretsInMemory)
{
    for (const ParamRow& row : PARAMS) {
        if (row.java.find('[') == row.java.npos) continue;
        SCOPED_TRACE(row.java);
        for (const std::size_t n : {40U, 400U}) {
            const jobject jMechanism = mechanism(env, 4225, read(env, filled(row.java, n, "17")), row.size);
            expectNothingLeft(call(NATIVE(C_1EncryptInit), session(env), jMechanism, object(env, 7)), {});
        }
    }
}

} // namespace
