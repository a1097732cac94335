// The natives for cryptographic operations, keys and random numbers: what is particular to them, beyond what
// all natives have in common.
#include "failures.h"
#include "jvm.h"
#include "param_text.h"
#include "values.h"

#include <algorithm>

namespace {

using namespace jni;

struct Crypto : JniTest {
    jobject cipher() { return mechanism(env, jlong{44}, bytes(env, {1, 2}), 2); }
    jobjectArray labelled() { return attributes(env, {attribute(env, 3, bytes(env, "lab"), 3)}); }
    Call generateKey(jobjectArray given, jlong count, jobject key = nullptr)
    {
        return call(NATIVE(C_1GenerateKey), session(env), cipher(), given, count,
            key == nullptr ? object(env, 1) : key);
    }
    Call generatePair(jobjectArray first, jlong firstCount, jobjectArray second, jlong secondCount,
        jobject publicKey, jobject privateKey)
    {
        return call(NATIVE(C_1GenerateKeyPair), session(env), cipher(), first, firstCount, second,
            secondCount, publicKey, privateKey);
    }
    Call unwrapKey(jbyteArray wrapped, jlong length, jobjectArray given, jlong count, jobject key)
    {
        return call(NATIVE(C_1UnwrapKey), session(env), cipher(), object(env, 42), wrapped, length, given,
            count, key);
    }
    Call deriveKey(jobjectArray given, jlong count, jobject key)
    {
        return call(NATIVE(C_1DeriveKey), session(env), cipher(), object(env, 42), given, count, key);
    }
};

TEST_F(Crypto, templatesGoWithTheCountThatIsGiven)
{
    struct Row {
        bool isNull;
        jlong count;
        const char* shown; // null where the call is refused
    };
    const Row rows[] = {
        {false, 1, "{{3, [6c6162], 3}}, 1"},
        {false, 9, "{{3, [6c6162], 3}, ..}, 9"},
        {false, 0, "{}, 0"},
        {false, -1, "{{3, [6c6162], 3}, ..}, 0xffffffff"},
        {true, 0, "null, 0"},
        {true, -1, "null, 0xffffffff"},
        {true, 1, nullptr},
        {true, 0x1'0000'0000, nullptr},
    };
    const std::string session41 = "(41, {44, [0102], 2}, ";
    for (const Row& row : rows) {
        const LocalFrame frame(env);
        recorder::script().attributeLimit = 1;
        const jobjectArray given = row.isNull ? nullptr : labelled();
        const jobject key = object(env, 1);
        const jobject other = object(env, 2);
        const auto expect = [&](const Call& made, const std::string& before, const std::string& after) {
            if (row.shown == nullptr)
                expectRefused(env, made);
            else
                expectCall(env, made, before + row.shown + after);
        };
        expect(generateKey(given, row.count), "C_GenerateKey" + session41, ", out)");
        expect(generatePair(given, row.count, nullptr, 0, key, other), "C_GenerateKeyPair" + session41,
            ", null, 0, out, out)");
        expect(generatePair(nullptr, -2, given, row.count, key, other),
            "C_GenerateKeyPair" + session41 + "null, 0xfffffffe, ", ", out, out)");
        expect(unwrapKey(bytes(env, {1}), 1, given, row.count, key),
            "C_UnwrapKey" + session41 + "42, [01], 1, ", ", out)");
        expect(deriveKey(given, row.count, key), "C_DeriveKey" + session41 + "42, ", ", out)");
    }
}

TEST_F(Crypto, newHandlesAreWrittenToTheCallersObjects)
{
    const jobject key = object(env, 1);
    const jobject other = object(env, 2);
    const auto values = [&] { return Longs{getLong(env, key, "m_value"), getLong(env, other, "m_value")}; };
    recorder::script().C_GenerateKey = [](auto, auto, auto, auto, auto phKey) {
        return *phKey = 0xffffffff, 0;
    };
    recorder::script().C_GenerateKeyPair = [](auto, auto, auto, auto, auto, auto, auto phPublic,
                                               auto phPrivate) { return *phPublic = 11, *phPrivate = 12, 0; };
    recorder::script().C_UnwrapKey = [](auto, auto, auto, auto, auto, auto, auto, auto phKey) {
        return *phKey = 13, 0;
    };
    recorder::script().C_DeriveKey = [](auto, auto, auto, auto, auto, auto phKey) { return *phKey = 14, 0; };
    EXPECT_EQ(rvOf(env, generateKey(nullptr, 0, key)(env)), CKR_OK);
    EXPECT_EQ(values(), (Longs{4294967295, 2}));
    EXPECT_EQ(rvOf(env, generatePair(nullptr, 0, nullptr, 0, key, other)(env)), CKR_OK);
    EXPECT_EQ(values(), (Longs{11, 12}));
    EXPECT_EQ(rvOf(env, unwrapKey(bytes(env, {1}), 1, nullptr, 0, key)(env)), CKR_OK);
    EXPECT_EQ(values(), (Longs{13, 12}));
    EXPECT_EQ(rvOf(env, deriveKey(nullptr, 0, other)(env)), CKR_OK);
    EXPECT_EQ(values(), (Longs{13, 14}));
    EXPECT_EQ(rvOf(env, deriveKey(nullptr, 0, nullptr)(env)), CKR_OK) << "the handle is dropped";
}

TEST_F(Crypto, wrappedBytesAreRequiredWhateverTheirLength)
{
    const jobject key = object(env, 1);
    for (const jlong length : {0, -1, 4})
        expectRefused(env, unwrapKey(nullptr, length, nullptr, 0, key));
    recorder::script().byteLimit = 2;
    const std::string before = "C_UnwrapKey(41, {44, [0102], 2}, 42, ";
    expectCall(env, unwrapKey(bytes(env, {1, 2}), 0, nullptr, 0, key), before + "[], 0, null, 0, out)");
    expectCall(env, unwrapKey(bytes(env, {1, 2}), -1, nullptr, 0, key),
        before + "[0102..], 0xffffffff, null, 0, out)");
}

TEST_F(Crypto, aWrappingKeyThatIsNullIsTheInvalidHandle)
{
    struct Row {
        jobject wrappingKey;
        jobject key;
        const char* shown;
    };
    const Row rows[] = {
        {object(env, 42), object(env, 43), "42, 43"},
        {nullptr, object(env, 43), "0, 43"},
        {object(env, 42), nullptr, "42, 0xffffffff"},
        {longRef(env, 5), longRef(env, 5), "0, 0"},
    };
    for (const Row& row : rows) {
        expectCall(env,
            call(NATIVE(C_1WrapKey), session(env), cipher(), row.wrappingKey, row.key, nullptr,
                longRef(env, 9)),
            std::string("C_WrapKey(41, {44, [0102], 2}, ") + row.shown + ", null(9))");
    }
}

TEST_F(Crypto, randomBytesComeThroughABufferOfExactlyTheirNumber)
{
    struct Row {
        int elements; // of the Java array; -1 for none
        jlong length;
        CK_RV rv;
        const char* line;
        Bytes written;
    };
    const Row rows[] = {
        {3, 3, CKR_OK, "C_GenerateRandom(41, out(3))", {5, 5, 5}},
        {2, 3, CKR_OK, "C_GenerateRandom(41, out(3))", {5, 5}},
        {3, 2, CKR_OK, "C_GenerateRandom(41, out(2))", {5, 5, 7}},
        {3, 0x7'0000'0002, CKR_OK, "C_GenerateRandom(41, out(2))", {5, 5, 7}},
        {3, 3, CKR_DEVICE_ERROR, "C_GenerateRandom(41, out(3))", {7, 7, 7}},
        {3, 0, CKR_OK, "C_GenerateRandom(41, out(0))", {7, 7, 7}},
        {-1, 0, CKR_OK, "C_GenerateRandom(41, null(0))", {}},
        {-1, -3, CKR_OK, "C_GenerateRandom(41, null(0xfffffffd))", {}},
    };
    for (const Row& row : rows) {
        const HeapWatch heap;
        recorder::script().C_GenerateRandom = [&](auto, CK_BYTE_PTR buffer, CK_ULONG length) {
            if (buffer == nullptr) return row.rv;
            EXPECT_EQ(heap.blocks.at(buffer), length);
            EXPECT_EQ(std::count(buffer, buffer + length, 0), static_cast<std::ptrdiff_t>(length));
            std::fill_n(buffer, length, CK_BYTE{5});
            return row.rv;
        };
        const jbyteArray array =
            row.elements < 0 ? nullptr : bytes(env, Bytes(static_cast<std::size_t>(row.elements), 7));
        EXPECT_EQ(
            rvOf(env, NATIVE(C_1GenerateRandom)(env, nullptr, session(env), array, row.length)), row.rv);
        EXPECT_EQ(recorder::calls().back(), row.line);
        if (array == nullptr) continue;
        EXPECT_EQ(toVector(env, array), row.written);
    }
    expectRefused(env, call(NATIVE(C_1GenerateRandom), session(env), nullptr, 1));
}

// One native of each shape. What cannot be had for a conversion is an error of Java's, and for an output
// buffer CKR_HOST_MEMORY; the Cryptoki library is not called either way. What was had is overwritten and
// freed.
TEST_F(Crypto, withoutMemoryNothingIsCalledOrLeft)
{
    const jbyteArray data = bytes(env, "data");
    const jbyteArray output = bytes(env, {7, 7, 7, 7});
    const jobject jSession = session(env);
    const jobject key = object(env, 42);
    const jobject length = longRef(env, 4);
    const std::string hostMemory = "CK_RV 2";
    struct Row {
        Call made;
        Lines outcomes;
    };
    const Row rows[] = {
        {call(NATIVE(C_1EncryptInit), jSession, cipher(), key), {NO_MEMORY}},
        {call(NATIVE(C_1DigestInit), jSession, cipher()), {NO_MEMORY}},
        {call(NATIVE(C_1Decrypt), jSession, data, 4, output, length), {NO_MEMORY, hostMemory}},
        {call(NATIVE(C_1DecryptFinal), jSession, output, length), {hostMemory}},
        {call(NATIVE(C_1DigestUpdate), jSession, data, 4), {NO_MEMORY}},
        {call(NATIVE(C_1Verify), jSession, data, 4, data, 4), {NO_MEMORY, NO_MEMORY}},
        {call(NATIVE(C_1DigestKey), jSession, key), {}},
        {generateKey(labelled(), 1), Lines(3, NO_MEMORY)},
        {generatePair(labelled(), 1, labelled(), 1, key, key), Lines(5, NO_MEMORY)},
        {call(NATIVE(C_1WrapKey), jSession, cipher(), key, key, output, length), {NO_MEMORY, hostMemory}},
        {unwrapKey(data, 4, labelled(), 1, key), Lines(4, NO_MEMORY)},
        {deriveKey(labelled(), 1, nullptr), Lines(3, NO_MEMORY)},
        {call(NATIVE(C_1SeedRandom), jSession, data, 4), {NO_MEMORY}},
        {call(NATIVE(C_1GenerateRandom), jSession, output, 4), {hostMemory}},
    };
    const auto fill = [](CK_BYTE_PTR buffer, CK_ULONG size) {
        std::fill_n(buffer, size, CK_BYTE{9});
        return CKR_OK;
    };
    recorder::script().C_Decrypt = [&](auto, auto, auto, CK_BYTE_PTR buffer, auto) {
        return fill(buffer, 4);
    };
    recorder::script().C_DecryptFinal = [&](auto, CK_BYTE_PTR buffer, auto) { return fill(buffer, 4); };
    recorder::script().C_GenerateRandom = [&](auto, CK_BYTE_PTR buffer, auto) { return fill(buffer, 4); };
    for (const Row& row : rows) {
        const std::size_t known = recorder::calls().size();
        const auto answer = [&] {
            const jobject returned = row.made(env);
            return env->ExceptionCheck() ? "" : "CK_RV " + std::to_string(rvOf(env, returned));
        };
        const Lines outcomes = failEachAllocation(env, answer);
        ASSERT_EQ(recorder::calls().size(), known + 1) << "where none failed";
        EXPECT_EQ(outcomes, row.outcomes) << recorder::calls().back();
        const HeapWatch heap;
        EXPECT_EQ(answer(), "CK_RV 0");
        EXPECT_EQ(heap.blocks.size(), 0U);
        for (const std::string& block : heap.freed) {
            const bool isTemplate = block.size() == sizeof(CK_ATTRIBUTE) + 1;
            EXPECT_TRUE(isTemplate || block.find_first_not_of('\0') == block.npos)
                << "not overwritten in " << recorder::calls().back();
        }
    }
}

} // namespace
