// Secrets of every form and size that pass through the natives leave nothing in the native memory of this
// process, neither in freed heap memory nor on the stack.
#include "halvorn_zerlin_CTUtil.h"
#include "harness/jvm.h"
#include "param_text.h"
#include "values.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
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

// Finds 8 bytes of a secret in writable private memory outside the Java heap. Returns the line of the
// mapping, or null. Allocates nothing, so that freed memory stays as it is.
[[gnu::no_sanitize("address", "undefined"), gnu::optimize("O2")]] const char* findSecret(const Range& heap)
{
    static char maps[1 << 18];
    static unsigned char isResident[1 << 20];
    const int file = open("/proc/self/maps", O_RDONLY);
    std::size_t length = 0;
    for (ssize_t n = 1; n > 0; length += static_cast<std::size_t>(n))
        n = read(file, maps + length, sizeof maps - 1 - length);
    close(file);
    maps[length] = '\0';
    constexpr std::uint32_t WORD = SECRET * 0x01010101;
    for (char* line = maps; *line != '\0'; line = std::strchr(line, '\n') + 1) {
        char* next = nullptr;
        char* const begin = reinterpret_cast<char*>(std::strtoul(line, &next, 16));
        char* const end = reinterpret_cast<char*>(std::strtoul(next + 1, &next, 16));
        if (next[1] != 'r' || next[2] != 'w' || next[4] != 'p') continue;
        if (mincore(begin, static_cast<std::size_t>(end - begin), isResident) != 0) continue;
        bool follows = false;
        for (char* page = begin; page != end; page += 4096) {
            if ((isResident[(page - begin) / 4096] & 1) == 0 || (page >= heap.begin && page < heap.end))
                continue;
            const auto* const words = reinterpret_cast<const std::uint32_t*>(page);
            for (std::size_t i = 0; i < 1024; ++i) {
                if (words[i] == WORD && follows) return line;
                follows = words[i] == WORD;
            }
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

struct Secrets : JniTest {
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

    // Every native, with a secret of that length as every argument that may hold one. Signatures, digests,
    // wrapped keys and cipher text are no secrets.
    std::vector<Call> calls(jsize n);
    void expectNothingLeft(const std::vector<Call>& all, CK_RV rv = CKR_OK);
};

std::vector<Call> Secrets::calls(jsize n)
{
    const jobject on = session(env), key = object(env, 42), length = longRef(env, n);
    const jobject user = make(env, "halvorn/zerlin/constants/CK_USER_TYPE", "(J)V", jlong{1});
    const jobject type = make(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", "(J)V", jlong{CKA_VALUE});
    const jbyteArray data = secret(n), out = env->NewByteArray(n), label = bytes(env, "label");
    const jobject cipher = mechanism(env, 44, data, n);
    const jobjectArray full = secretTemplate(n);
    const jsize count = env->GetArrayLength(full);
    const jobjectArray empty =
        attributes(env, {attribute(env, CKA_VALUE, out, n), attribute(env, CKA_VALUE, types(n), n)});
    std::vector<Call> all = {
        call(NATIVE(C_1Login), on, user, data, n),
        call(NATIVE(C_1SetPIN), on, data, n, secret(n), n),
        call(NATIVE(C_1InitToken), 1, data, n, label),
        call(NATIVE(CT_1InitToken), on, 1, data, n, label),
        call(NATIVE(CT_1ResetToken), on, data, n, label),
        call(NATIVE(C_1SetOperationState), on, data, n, key, key),
        call(NATIVE(C_1Verify), on, data, n, label, 5),
        call(NATIVE(C_1DigestInit), on, cipher),
        call(NATIVE(C_1WrapKey), on, cipher, key, key, out, length),
        call(NATIVE(C_1UnwrapKey), on, cipher, key, label, 5, full, count, key),
        call(NATIVE(C_1GenerateKey), on, cipher, full, count, key),
        call(NATIVE(C_1GenerateKeyPair), on, cipher, full, count, full, count, key, key),
        call(NATIVE(C_1DeriveKey), on, cipher, key, full, count, key),
        call(NATIVE(C_1CreateObject), on, full, count, key),
        call(NATIVE(C_1CopyObject), on, key, full, count, key),
        call(NATIVE(CT_1CopyObject), on, on, key, full, count, key),
        call(NATIVE(C_1SetAttributeValue), on, key, full, count),
        call(NATIVE(C_1GetAttributeValue), on, key, empty, 2),
        call(NATIVE(C_1FindObjectsInit), on, full, count),
        call(NATIVE(C_1GenerateRandom), on, out, n),
        call(Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue, on, key, type, data, n),
        call(Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue, on, key, type, out, n, length),
    };
    for (const auto in : {NATIVE(C_1InitPIN), NATIVE(C_1DigestUpdate), NATIVE(C_1SignUpdate),
             NATIVE(C_1VerifyUpdate), NATIVE(C_1SeedRandom)})
        all.push_back(call(in, on, data, n));
    for (const auto init : {NATIVE(C_1EncryptInit), NATIVE(C_1DecryptInit), NATIVE(C_1SignInit),
             NATIVE(C_1SignRecoverInit), NATIVE(C_1VerifyInit), NATIVE(C_1VerifyRecoverInit)})
        all.push_back(call(init, on, cipher, key));
    for (const auto in : {NATIVE(C_1Encrypt), NATIVE(C_1EncryptUpdate), NATIVE(C_1Digest), NATIVE(C_1Sign),
             NATIVE(C_1SignRecover), NATIVE(C_1DigestEncryptUpdate), NATIVE(C_1SignEncryptUpdate)})
        all.push_back(call(in, on, data, n, out, length));
    for (const auto output : {NATIVE(C_1Decrypt), NATIVE(C_1DecryptUpdate), NATIVE(C_1VerifyRecover),
             NATIVE(C_1DecryptDigestUpdate), NATIVE(C_1DecryptVerifyUpdate)})
        all.push_back(call(output, on, label, 5, out, length));
    for (const auto output : {NATIVE(C_1GetOperationState), NATIVE(C_1DecryptFinal)})
        all.push_back(call(output, on, out, length));
    return all;
}

void Secrets::expectNothingLeft(const std::vector<Call>& all, CK_RV rv)
{
    const Range heap = javaHeap();
    recorder::script().isQuiet = true;
    recorder::script().result = rv;
    recorder::script().C_GenerateRandom = [=](auto, CK_BYTE_PTR data, CK_ULONG length) {
        std::memset(data, SECRET, length);
        return rv;
    };
    recorder::script().C_GetAttributeValue = [=](auto, auto, CK_ATTRIBUTE_PTR attributes, CK_ULONG count) {
        for (CK_ATTRIBUTE* one = attributes; one != attributes + count; ++one)
            if (one->pValue != nullptr) std::memset(one->pValue, SECRET, one->ulValueLen);
        return rv;
    };
    const auto output = [=](auto, CK_BYTE_PTR data, CK_ULONG_PTR length) {
        std::memset(data, SECRET, *length);
        return rv;
    };
    const auto outputOfInput = [=](auto on, auto, auto, CK_BYTE_PTR data, CK_ULONG_PTR length) {
        return output(on, data, length);
    };
    recorder::Script& script = recorder::script();
    script.C_GetOperationState = script.C_DecryptFinal = output;
    script.C_Decrypt = script.C_DecryptUpdate = script.C_VerifyRecover = outputOfInput;
    script.C_DecryptDigestUpdate = script.C_DecryptVerifyUpdate = outputOfInput;
    for (const Call& made : all) {
        const jobject returned = callBelow(env, made);
        const char* const left = findSecret(heap);
        ASSERT_EQ(left, nullptr) << recorder::lastCalled() << " left it in "
                                 << std::string_view(left).substr(0, 80);
        EXPECT_EQ(rvOf(env, returned), rv) << recorder::lastCalled();
    }
}

TEST_F(Secrets, noNativeLeavesSecretsInMemory)
{
    ASSERT_EQ(findSecret(javaHeap()), nullptr);
    for (const jsize n : {40, 3000, 1200000}) { // on the stack, on the heap, in a mapping of its own
        const LocalFrame frame(env);
        SCOPED_TRACE(n);
        expectNothingLeft(calls(n));
    }
}

// Around these sizes the memory of a call changes its kind. A search takes long, so each native has one of
// them.
TEST_F(Secrets, noSizeAndNoErrorLeavesSecretsInMemory)
{
    constexpr jsize SIZES[] = {400, 1024, 1025, 2552, 16384, 524288};
    for (std::size_t i = 0; i < std::size(SIZES); ++i) {
        const LocalFrame frame(env);
        SCOPED_TRACE(SIZES[i]);
        const std::vector<Call> all = calls(SIZES[i]);
        std::vector<Call> some;
        for (std::size_t k = i; k < all.size(); k += std::size(SIZES))
            some.push_back(all[k]);
        expectNothingLeft(some);
        expectNothingLeft(some, CKR_FUNCTION_FAILED);
    }
}

TEST_F(Secrets, noMechanismParameterLeavesSecretsInMemory)
{
    for (const ParamRow& row : PARAMS) {
        if (row.java.find('[') == row.java.npos) continue;
        SCOPED_TRACE(row.java);
        std::vector<Call> all;
        for (const std::size_t n : {40U, 3000U}) {
            const jobject jMechanism = mechanism(env, 4225, read(env, filled(row.java, n, "17")), row.size);
            all.push_back(call(NATIVE(C_1EncryptInit), session(env), jMechanism, object(env, 7)));
        }
        expectNothingLeft(all);
    }
}

} // namespace
