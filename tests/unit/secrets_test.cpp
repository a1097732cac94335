// Secrets of every form and size that pass through the natives leave nothing in the native memory of this
// process, neither in freed heap memory nor on the stack.
#include "harness/native_table.h"

#include <cstdint>

namespace {

using namespace jni;

// Every byte of a secret has this value, so that it looks the same in bytes, characters and numbers. Only the
// JVM and the Cryptoki library write it.
constexpr char SECRET = 0x17;

// Whether 16 bytes of a secret lie there. The JVM leaves 8 bytes of a long[] on the stack.
[[gnu::no_sanitize("address", "undefined"), gnu::optimize("O3"), gnu::target("sse2")]] bool hasSecret(
    const char* begin, const char* end)
{
    constexpr std::uint32_t WORD = SECRET * 0x01010101;
    const auto* const words = reinterpret_cast<const std::uint32_t*>(begin);
    std::uint32_t found = 0;
    for (std::ptrdiff_t i = 3; i < (end - begin) / 4; ++i)
        found |=
            (words[i - 3] == WORD) & (words[i - 2] == WORD) & (words[i - 1] == WORD) & (words[i] == WORD);
    return found != 0;
}

struct Secrets : JniTest {
    jbyteArray secret(jsize n) { return bytes(env, std::string(static_cast<std::size_t>(n), SECRET)); }
    jobject holding(jobject value, jsize n) { return attribute(env, CKA_VALUE, value, n); }

    void expectNothingLeft(const Call& made, const std::vector<Kind>& kinds = {}, CK_RV rv = CKR_OK);
};

// The Cryptoki library writes a secret through every output that may hold one.
void Secrets::expectNothingLeft(const Call& made, const std::vector<Kind>& kinds, CK_RV rv)
{
    bool isBelow = false; // the call: what the conversions have left, and later calls overwrite
    script().isQuiet = true;
    script().onCall = [&isBelow] {
        const auto* const here = static_cast<const char*>(__builtin_frame_address(0));
        isBelow |= hasSecret(here - 8192, here);
    };
    script().answer = [&kinds, rv](Arguments all) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const auto* const attributes = static_cast<CK_ATTRIBUTE*>(all[i].data);
            if (all[i].form == Argument::Outputs && kinds[i].isSecret)
                std::fill_n(static_cast<char*>(all[i].data), all[i].number, SECRET);
            if (all[i].form == Argument::Template)
                for (CK_ULONG k = 0; k < all[i].number; ++k)
                    std::fill_n(static_cast<char*>(attributes[k].pValue), attributes[k].ulValueLen, SECRET);
        }
        return rv;
    };
    script().C_FindObjects = [rv](auto, auto, auto, auto count) { return *count = 1, rv; };
    const HeapWatch heap;
    const jobject returned = made(env);
    const auto* const here = static_cast<const char*>(__builtin_frame_address(0));
    EXPECT_FALSE(hasSecret(here - (1 << 18), here)) << "on the stack";
    for (const std::string& block : heap.freed)
        EXPECT_FALSE(hasSecret(block.data(), block.data() + block.size()));
    script().onCall = {};
    EXPECT_EQ(rvOf(env, returned), rv);
    EXPECT_FALSE(isBelow) << "called above a secret on the stack";
}

// On the stack, in chunks and from malloc, also when the call fails.
TEST_F(Secrets, noNativeLeavesSecretsInMemory)
{
    for (const Native& native : natives()) {
        if (std::ranges::none_of(native.kinds, &Kind::isSecret)) continue;
        for (const auto& [n, rv] : {std::pair(40, CKR_OK), {400, CKR_FUNCTION_FAILED}, {1024, CKR_OK},
                 {1025, CKR_FUNCTION_FAILED}, {2552, CKR_OK}, {16384, CKR_FUNCTION_FAILED}, {16384, CKR_OK},
                 {524288, CKR_FUNCTION_FAILED}}) {
            SCOPED_TRACE(native.name + ", " + std::to_string(n) + " bytes");
            const LocalFrame frame(env);
            Call made = native.prepare(env, n);
            for (std::size_t i = 0; i < native.kinds.size(); ++i) {
                const Kind& kind = native.kinds[i];
                jobject& argument = made.arguments[native.start(i)].l;
                if (!kind.isSecret || kind.isOutput()) continue;
                argument = kind.form == Kind::Mechanism ? mechanism(env, 44, secret(n), n) : secret(n);
                if (kind.form == Kind::Template) // of two values, as its length is
                    argument = attributes(env, {holding(secret(n), n), holding(secret(n), n)});
            }
            expectNothingLeft(made, native.kinds, static_cast<CK_RV>(rv));
        }
    }
}

// One value at a time, because the next one overwrites what is left on the stack. Many fill more than a
// chunk.
TEST_F(Secrets, noValueLeavesItsBytesInMemory)
{
    for (const jsize n : {40, 400, 3000}) {
        const std::vector<jchar> chars(n, SECRET * 0x0101);
        const std::vector<jlong> longs(n / 4, SECRET * 0x0101010101010101);
        const std::vector<jint> ints(n / 2, SECRET * 0x01010101);
        const jobject values[] = {secret(n), string(env, std::string(n, SECRET).c_str()),
            filled(env, env->NewCharArray(n), &JNIEnv::SetCharArrayRegion, chars),
            filled(env, env->NewLongArray(n / 4), &JNIEnv::SetLongArrayRegion, longs),
            filled(env, env->NewIntArray(n / 2), &JNIEnv::SetIntArrayRegion, ints),
            env->NewObjectArray(n / 4, find(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE"),
                mechanismType(env, SECRET * 0x01010101))};
        for (const jobject value : values) {
            for (const jlong count : {1, 60}) {
                SCOPED_TRACE(className(env, value) + ", " + std::to_string(count) + " times");
                const LocalFrame frame(env);
                const jobjectArray all =
                    attributes(env, {static_cast<std::size_t>(count), holding(value, n)});
                expectNothingLeft(call(NATIVE(C_1FindObjectsInit), session(env), all, count));
            }
        }
    }
}

TEST_F(Secrets, noMechanismParameterLeavesSecretsInMemory)
{
    for (const ParamRow& row : PARAMS) {
        SCOPED_TRACE(row.java);
        const jobject jMechanism = mechanism(env, 4225, read(env, filled(row.java, 400, SECRET)), row.size);
        expectNothingLeft(call(NATIVE(C_1EncryptInit), session(env), jMechanism, object(env, 7)));
    }
}

} // namespace
