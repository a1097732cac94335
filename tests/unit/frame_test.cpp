// What all natives have in common, tested over a table with a row for each native: what arguments become,
// what is refused, what is written back, and what happens when a JNI call fails.
#include "harness/failures.h"
#include "param_text.h"
#include "values.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>

namespace {

using namespace jni;
using recorder::Script;

struct Frame : JniTest {
    void forgetLookups() { JNI_OnUnload(jvm(), nullptr); }
    void raise(const char* message)
    {
        env->ThrowNew(env->FindClass("java/lang/IllegalStateException"), message);
    }
};

// What the Cryptoki library writes: NEW through every output pointer, or, if a length is to be reported, 11,
// 12, ... into the buffer, up to its end, and that length.
const CK_ULONG NEW = 0x80000003;

struct Answer {
    std::function<CK_RV()> result;
    std::optional<CK_ULONG> reported = {};
};

template <typename Argument>
void fill(Argument argument)
{
    using Pointed = std::remove_pointer_t<Argument>;
    if constexpr (std::is_same_v<Argument, CK_ULONG*>) {
        if (argument != nullptr) *argument = NEW;
    } else if constexpr (std::is_pointer_v<Argument> && std::is_object_v<Pointed> &&
                         !std::is_same_v<Pointed, CK_ATTRIBUTE> && !std::is_same_v<Pointed, CK_MECHANISM>) {
        if (argument != nullptr) std::memset(static_cast<void*>(argument), 3, 1);
    }
}

template <typename... Arguments>
void report(CK_ULONG reported, Arguments... arguments)
{
    constexpr std::size_t count = sizeof...(arguments);
    if constexpr (count >= 2) {
        const auto all = std::tuple(arguments...);
        const auto buffer = std::get<count - 2>(all);
        const auto length = std::get<count - 1>(all);
        using Element = std::remove_pointer_t<std::remove_const_t<decltype(buffer)>>;
        if constexpr (std::is_same_v<decltype(length), CK_ULONG* const> && std::is_integral_v<Element> &&
                      std::is_pointer_v<decltype(buffer)>) {
            for (CK_ULONG i = 0; buffer != nullptr && i < std::min(reported, *length); ++i)
                buffer[i] = static_cast<Element>(11 + i);
            *length = reported;
        }
    }
}

template <auto Handler>
void answer(const Answer& wanted)
{
    recorder::script().*Handler = [wanted](auto... arguments) {
        if (wanted.reported)
            report(*wanted.reported, arguments...);
        else
            (fill(arguments), ...);
        return wanted.result();
    };
}

const char* const LONG_REF = "halvorn/zerlin/LongRef";
const char* const SESSION = "halvorn/zerlin/CK_SESSION_HANDLE";
const char* const OBJECT = "halvorn/zerlin/CK_OBJECT_HANDLE";
const char* const MECHANISM_TYPE = "halvorn/zerlin/constants/CK_MECHANISM_TYPE";

// The field that holds the number of an argument of this letter; null if it holds none.
const char* fieldOf(char letter)
{
    return letter == 'L' ? "value" : std::strchr("stkhuySnN", letter) != nullptr ? "m_value" : nullptr;
}

// p and v must not be null if their length is above 0; x must be neither null nor empty.
const std::map<char, const char*> BYTES = {
    {'d', "data"}, {'D', "wrap"}, {'g', "sig"}, {'p', "1234"}, {'v', "new"}, {'x', "state"}, {'b', "lab"}};

// The argument of a letter. Capitals are required arguments. All numbers in the line of a call differ, so
// that each can be found there.
jvalue argument(JNIEnv* e, char letter, const char* info)
{
    if (BYTES.contains(letter)) return pack(bytes(e, BYTES.at(letter)));
    if (letter == 's' || letter == 'S') return pack(session(e));
    if (letter == 't') return pack(session(e, 43));
    if (letter == 'k' || letter == 'h') return pack(object(e, letter == 'k' ? 42 : 43));
    if (letter == 'n' || letter == 'N') return pack(object(e, 99));
    if (letter == 'u') return pack(make(e, "halvorn/zerlin/constants/CK_USER_TYPE", "(J)V", jlong{45}));
    if (letter == 'y') return pack(mechanismType(e, 44));
    if (letter == 'L') return pack(longRef(e, 4));
    if (letter == 'i' || letter == 'I') return pack(make(e, ("halvorn/zerlin/" + std::string(info)).c_str()));
    if (letter == 'M') return pack(mechanism(e, jlong{44}, bytes(e, {1, 2}), 2));
    if (letter == 'c') return pack(attributes(e, {attribute(e, 258, bytes(e, "ab"), 2)}));
    if (letter == 'a') {
        const jobject bits = attribute(e, 289, boxedLong(e, 2048), 4);
        return pack(attributes(e, {attribute(e, 3, bytes(e, "abc"), 3), bits}));
    }
    // Outputs.
    if (letter == 'o') return pack(bytes(e, {7, 7, 7, 7}));
    if (letter == 'l') return pack(longs(e, {7, 7, 7, 7}));
    if (letter == 'e') return pack(objects(e, MECHANISM_TYPE, {mechanismType(e, 7), mechanismType(e, 7)}));
    if (letter == 'f') return pack(objects(e, OBJECT, {object(e, 99), object(e, 99)}));
    return pack(jlong{letter - '0'}); // 0 also stands for null
}

constexpr jsize LARGE = 3000; // bytes, more than any buffer on the stack holds

struct Native {
    const char* name;
    void (*answer)(const Answer& wanted);
    Call native;
    const char* shown; // the arguments in the line of the call
    std::string_view letters;
    const char* info = nullptr;

    std::string line() const { return std::string(name) + shown; }
    bool has(char letter) const { return letters.find(letter) != letters.npos; }
    // Whether the last arguments are an output array and a LongRef for its capacity and length.
    bool isSized() const { return line().find("out(4)") != std::string::npos; }

    Call prepare(JNIEnv* e) const
    {
        Call made = native;
        for (std::size_t i = 0; i < letters.size(); ++i)
            made.arguments[i] = argument(e, letters[i], info);
        return made;
    }

    // With large arrays, for which memory must be allocated.
    Call prepareLarge(JNIEnv* e) const
    {
        Call made = prepare(e);
        const jbyteArray large = bytes(e, std::string(LARGE, 'x'));
        for (std::size_t i = 0; i < letters.size(); ++i) {
            jvalue& argument = made.arguments[i];
            if (BYTES.contains(letters[i])) argument.l = large;
            if (letters[i] == 'M') argument.l = mechanism(e, 44, large, LARGE);
            if (letters[i] == 'L') setLong(e, argument.l, "value", LARGE);
            if (i > 0 && (letters[i - 1] == 'o' || letters[i - 1] == 'f') && made.kinds[i] == 'j')
                argument.j = LARGE;
            if (letters[i] != 'a' && letters[i] != 'c') continue;
            std::vector<jobject> all(LARGE / sizeof(CK_ATTRIBUTE), attribute(e, 3, nullptr, 0));
            all.back() = attribute(e, 3, large, LARGE);
            argument.l = attributes(e, all);
        }
        return made;
    }
};

template <typename... Parameters>
Call withoutArguments(jobject(JNICALL* native)(JNIEnv*, jclass, Parameters...))
{
    return call(native, Parameters{}...);
}

// clang-format off
#define CALL(prefix, name) \
    #prefix "_" #name, answer<&Script::prefix##_##name>, withoutArguments(NATIVE(prefix##_1##name))
// clang-format on

const Native NATIVES[] = {
    {CALL(C, Initialize), "({null, null, null, null, 0, null})", "i", "CK_C_INITIALIZE_ARGS"},
    {CALL(C, Finalize), "(null)", "0"},
    {CALL(C, GetInfo), "(out)", "I", "CK_INFO"},
    {CALL(C, GetSlotList), "(1, out(4))", "1lL"},
    {CALL(C, GetSlotInfo), "(9, out)", "9I", "CK_SLOT_INFO"},
    {CALL(C, GetTokenInfo), "(9, out)", "9I", "CK_TOKEN_INFO"},
    {CALL(C, WaitForSlotEvent), "(1, out, null)", "1L0"},
    {CALL(C, GetMechanismList), "(9, out(4))", "9eL"},
    {CALL(C, GetMechanismInfo), "(9, 44, out)", "9yI", "CK_MECHANISM_INFO"},
    {CALL(C, InitToken), "(9, [31323334], 4, [6c6162])", "9p4b"},
    {CALL(C, InitPIN), "(41, [31323334], 4)", "sp4"},
    {CALL(C, SetPIN), "(41, [31323334], 4, [6e6577], 3)", "sp4v3"},
    {CALL(CT, InitToken), "(41, 9, [64617461], 4, [6c6162])", "s9d4b"},
    {CALL(CT, ResetToken), "(41, [64617461], 4, [6c6162])", "sd4b"},
    {CALL(C, OpenSession), "(9, 6, null, null, out)", "9600S"},
    {CALL(C, CloseSession), "(41)", "s"},
    {CALL(C, CloseAllSessions), "(9)", "9"},
    {CALL(C, GetSessionInfo), "(41, out)", "sI", "CK_SESSION_INFO"},
    {CALL(C, GetOperationState), "(41, out(4))", "soL"},
    {CALL(C, SetOperationState), "(41, [7374617465], 5, 42, 43)", "sx5kh"},
    {CALL(C, Login), "(41, 45, [31323334], 4)", "sup4"},
    {CALL(C, Logout), "(41)", "s"},
    {CALL(C, CreateObject), "(41, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)", "sa2N"},
    {CALL(C, CopyObject), "(41, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)", "ska2N"},
    {CALL(CT, CopyObject), "(41, 43, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)", "stka2N"},
    {CALL(C, DestroyObject), "(41, 42)", "sk"},
    {CALL(C, GetObjectSize), "(41, 42, out)", "skL"},
    {CALL(C, GetAttributeValue), "(41, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2)", "ska2"},
    {CALL(C, SetAttributeValue), "(41, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2)", "ska2"},
    {CALL(C, FindObjectsInit), "(41, {{3, [616263], 3}, {289, [00080000], 4}}, 2)", "sa2"},
    {CALL(C, FindObjects), "(41, out(2), out)", "sf2L"},
    {CALL(C, FindObjectsFinal), "(41)", "s"},
    {CALL(C, EncryptInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, DecryptInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, SignInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, SignRecoverInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, VerifyInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, VerifyRecoverInit), "(41, {44, [0102], 2}, 42)", "sMk"},
    {CALL(C, DigestInit), "(41, {44, [0102], 2})", "sM"},
    {CALL(C, Encrypt), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, EncryptUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, Decrypt), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, DecryptUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, Digest), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, Sign), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, SignRecover), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, VerifyRecover), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, DigestEncryptUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, DecryptDigestUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, SignEncryptUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, DecryptVerifyUpdate), "(41, [64617461], 4, out(4))", "sd4oL"},
    {CALL(C, EncryptFinal), "(41, out(4))", "soL"},
    {CALL(C, DecryptFinal), "(41, out(4))", "soL"},
    {CALL(C, DigestFinal), "(41, out(4))", "soL"},
    {CALL(C, SignFinal), "(41, out(4))", "soL"},
    {CALL(C, DigestUpdate), "(41, [64617461], 4)", "sd4"},
    {CALL(C, SignUpdate), "(41, [64617461], 4)", "sd4"},
    {CALL(C, VerifyUpdate), "(41, [64617461], 4)", "sd4"},
    {CALL(C, VerifyFinal), "(41, [64617461], 4)", "sd4"},
    {CALL(C, Verify), "(41, [64617461], 4, [736967], 3)", "sd4g3"},
    {CALL(C, DigestKey), "(41, 42)", "sk"},
    {CALL(C, GenerateKey), "(41, {44, [0102], 2}, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        "sMa2N"},
    {CALL(C, GenerateKeyPair),
        "(41, {44, [0102], 2}, {{3, [616263], 3}, {289, [00080000], 4}}, 2, {{258, [6162], 2}}, 1, out, out)",
        "sMa2c1NN"},
    {CALL(C, WrapKey), "(41, {44, [0102], 2}, 0, 43, out(4))", "sM0hoL"},
    {CALL(C, UnwrapKey),
        "(41, {44, [0102], 2}, 42, [77726170], 4, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        "sMkD4a2N"},
    {CALL(C, DeriveKey), "(41, {44, [0102], 2}, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        "sMka2n"},
    {CALL(C, SeedRandom), "(41, [31323334], 4)", "sp4"},
    {CALL(C, GenerateRandom), "(41, out(3))", "so3"},
    {CALL(C, GetFunctionStatus), "(41)", "s"},
    {CALL(C, CancelFunction), "(41)", "s"},
};

// Runs the test for every native.
void forEach(JNIEnv* env, const std::function<void(const Native&)>& test)
{
    for (const Native& native : NATIVES) {
        SCOPED_TRACE(native.line());
        const LocalFrame frame(env);
        recorder::reset();
        recorder::script().labelLength = 3;
        test(native);
    }
}

TEST_F(Frame, eachFailedJniCallRaisesItsException)
{
    forEach(env, [this](const Native& native) {
        native.answer({[] { return CKR_OK; }});
        // The only native that makes its call although an argument could not be read.
        const bool callsAnyway = native.line().starts_with("C_SetAttributeValue");
        for (const auto prepare : {&Native::prepare, &Native::prepareLarge}) {
            const auto prepared = [&] { return [this, made = (native.*prepare)(env)] { return made(env); }; };
            EXPECT_GT(failEachJniCall(env, prepared, callsAnyway), 0);
        }
    });
}

// Without memory a conversion raises an OutOfMemoryError and an output buffer leads to CKR_HOST_MEMORY.
// Either way the Cryptoki library is not called.
TEST_F(Frame, aFailedAllocationCallsNothingAndLeavesNothing)
{
    forEach(env, [this](const Native& native) {
        native.answer({[] { return CKR_OK; }});
        recorder::script().byteLimit = recorder::script().attributeLimit = 0;
        const auto work = [&] {
            const jobject returned = native.prepareLarge(env)(env);
            return returned == nullptr ? "" : std::to_string(rvOf(env, returned));
        };
        Lines outcomes = failEachAllocation(env, work);
        EXPECT_EQ(recorder::calls().size(), 1U);
        const auto takes = [](char letter) {
            return letter == 'M' || letter == 'a' || letter == 'c' || BYTES.contains(letter);
        };
        const bool hasOutput = native.letters.find_first_of("olef") != native.letters.npos;
        EXPECT_GE(outcomes.size(), std::ranges::count_if(native.letters, takes) + (hasOutput ? 1 : 0));
        if (hasOutput && outcomes.back() == "2") outcomes.pop_back();
        EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
        EXPECT_EQ(work(), "0");
    });
}

// A locking callback that throws leads to such an exception.
TEST_F(Frame, anExceptionRaisedInTheLibraryStaysAndNothingIsWrittenBack)
{
    forEach(env, [this](const Native& native) {
        native.prepare(env)(env); // remembers every lookup, so that none can end the native
        recorder::script().C_Initialize = {};
        initialiseWithCallbacks(env);
        const Call made = native.prepare(env);
        const std::string before = made.objects(env);
        native.answer({[this] {
            raise("from within");
            return CKR_OK;
        }});
        const Watched watched = watch(env, {}, [&] { EXPECT_EQ(made(env), nullptr); });
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_EQ(made.objects(env), before);
        EXPECT_EQ(watched.violations, Lines{});
    });
}

TEST_F(Frame, successWritesBackEverythingAndAnErrorOnlyLengths)
{
    forEach(env, [this](const Native& native) {
        for (const CK_RV rv : {CKR_OK, CKR_BUFFER_TOO_SMALL, CKR_DEVICE_REMOVED, 0xffffffffUL}) {
            const Call made = native.prepare(env);
            const std::string before = made.objects(env);
            native.answer({[rv] { return rv; }});
            jobject returned = nullptr;
            {
                const HeapWatch heap;
                const Watched watched = watch(env, {}, [&] { returned = made(env); });
                EXPECT_TRUE(heap.blocks.empty() && watched.globalRefs.empty() && watched.buffers.empty());
            }
            EXPECT_EQ(rvOf(env, returned), rv);
            std::string after = before;
            if (native.isSized() || native.has('f'))
                after.replace(before.rfind(' '), before.npos, " 2147483651]");
            EXPECT_TRUE(rv == CKR_OK || made.objects(env) == after) << made.objects(env);
            for (std::size_t i = 0; rv == CKR_OK && i < native.letters.size(); ++i) {
                if (made.kinds[i] != 'o') continue;
                const std::string held = text(env, {made.arguments[i].l});
                const bool isNumber = std::strchr("LSNn", native.letters[i]) != nullptr;
                EXPECT_TRUE(!isNumber || held.find("2147483651") != held.npos) << held;
                EXPECT_TRUE(native.letters[i] != 'I' || before.find(held.substr(1)) == before.npos) << held;
            }
        }
    });
}

TEST_F(Frame, requiredArgumentsAreCheckedBeforeAnyConversion)
{
    forEach(env, [this](const Native& native) {
        const bool hasHandle = native.has('N') || native.has('n');
        const std::string first = hasHandle         ? OBJECT
                                  : native.has('S') ? SESSION
                                  : native.has('L') ? LONG_REF
                                                    : "none";
        for (std::size_t i = 0; i < native.letters.size(); ++i) {
            if (native.letters[i] < 'A' || native.letters[i] > 'Z') continue;
            Call made = native.prepare(env);
            made.arguments[i].l = nullptr;
            expectRefused(env, made);
            for (const char* missing : {LONG_REF, SESSION, OBJECT, MECHANISM_TYPE}) {
                forgetLookups();
                jobject returned = nullptr;
                watch(env, {.lookup = missing}, [&] { returned = made(env); });
                const std::string error = std::string("java.lang.NoClassDefFoundError: ") + missing;
                EXPECT_EQ(takeException(env), first == missing ? error : "");
                EXPECT_EQ(returned == nullptr, first == missing);
            }
            EXPECT_EQ(recorder::calls(), Lines{});
        }
    });
}

TEST_F(Frame, onlyTheLowHalfOfALongCounts)
{
    const jlong highHalf = 0x7'0000'0000;
    forEach(env, [&](const Native& native) {
        for (std::size_t i = 0; i < native.letters.size(); ++i) {
            Call made = native.prepare(env);
            const jobject object = made.arguments[i].l;
            if (made.kinds[i] == 'j') {
                made.arguments[i].j += highHalf;
            } else if (const char* const field = fieldOf(native.letters[i])) {
                setLong(env, object, field, getLong(env, object, field) + highHalf);
            }
            expectCall(env, made, native.line());
        }
    });
}

// The line with its part replaced.
std::string replaced(std::string line, const std::string& part, const std::string& other)
{
    return line.replace(line.find(part), part.size(), other);
}

TEST_F(Frame, nullOrForeignHandlesAndTypesAreLeftToTheLibrary)
{
    forEach(env, [&](const Native& native) {
        for (std::size_t i = 0; i < native.letters.size(); ++i) {
            if (std::strchr("stkhuy", native.letters[i]) == nullptr) continue;
            Call made = native.prepare(env);
            const std::string number = std::to_string(getLong(env, made.arguments[i].l, "m_value"));
            const bool isType = native.letters[i] == 'u' || native.letters[i] == 'y';
            made.arguments[i].l = nullptr;
            expectCall(env, made, replaced(native.line(), number, "0xffffffff"));
            made.arguments[i].l = longRef(env, 9);
            expectCall(env, made, replaced(native.line(), number, isType ? "0xffffffff" : "0"));
        }
    });
}

TEST_F(Frame, bytesAndTemplatesArePassedWithTheGivenLength)
{
    struct Row {
        bool isNull;
        jlong length;
        const char* shown;
        const char* shownTemplate;
    };
    const Row rows[] = {
        {false, 2, "[3132], 2", "{{3, [616263], 3}, {3, [616263], 3}}, 2"},
        {false, 1, "[31], 1", "{{3, [616263], 3}}, 1"},
        {false, 9, "[31323334..], 9", "{{3, [616263], 3}, {3, [616263], 3}, ..}, 9"},
        {false, 0, "[], 0", "{}, 0"},
        {false, -1, "[31323334..], 0xffffffff", "{{3, [616263], 3}, {3, [616263], 3}, ..}, 0xffffffff"},
        {false, 0x1'0000'0000, "[], 0", "{}, 0"},
        {true, 4, "null, 4", nullptr},
        {true, 0, "null, 0", "null, 0"},
        {true, -1, "null, 0xffffffff", "null, 0xffffffff"},
        {true, 0x1'0000'0000, "null, 0", nullptr},
    };
    const std::map<char, const char*> parts = {{'d', "[64617461], 4"}, {'g', "[736967], 3"},
        {'p', "[31323334], 4"}, {'v', "[6e6577], 3"}, {'x', "[7374617465], 5"},
        {'a', "{{3, [616263], 3}, {289, [00080000], 4}}, 2"}, {'c', "{{258, [6162], 2}}, 1"}};
    forEach(env, [&](const Native& native) {
        for (std::size_t i = 0; i < native.letters.size(); ++i) {
            const char letter = native.letters[i];
            if (!parts.contains(letter)) continue;
            const bool isTemplate = letter == 'a' || letter == 'c';
            for (const Row& row : rows) {
                Call made = native.prepare(env);
                const jobject label = attribute(env, 3, bytes(env, "abc"), 3);
                made.arguments[i].l = bytes(env, "1234");
                if (isTemplate) made.arguments[i].l = attributes(env, {label, label});
                if (row.isNull) made.arguments[i].l = nullptr;
                made.arguments[i + 1].j = row.length;
                recorder::script().byteLimit = 4;
                recorder::script().attributeLimit = 2;
                const char* const shown = isTemplate ? row.shownTemplate : row.shown;
                const bool needsBytes = std::strchr("pvx", letter) != nullptr && row.isNull && row.length > 0;
                const bool needsLength = letter == 'x' && (row.isNull || row.length == 0);
                if (shown == nullptr || needsBytes || needsLength) {
                    forgetLookups();
                    watch(env, {.lookup = SESSION}, [&] { expectRefused(env, made); });
                } else {
                    expectCall(env, made, replaced(native.line(), parts.at(letter), shown));
                }
            }
        }
    });
}

// For natives whose last arguments are an output array and its LongRef.
TEST_F(Frame, outputGoesThroughABufferOfTheGivenCapacity)
{
    struct Row {
        bool isNull;
        jlong capacity;
        CK_ULONG reported;
        CK_RV rv;
        const char* shown;
        const char* after; // what becomes of an array of four 7, if it holds numbers
    };
    const Row rows[] = {
        {false, 4, 4, CKR_OK, "out(4)", "[[11, 12, 13, 14]]"},
        {false, 4, 2, CKR_OK, "out(4)", "[[11, 12, 7, 7]]"},
        {false, 5, 5, CKR_OK, "out(5)", "[[11, 12, 13, 14]]"},
        {false, 2, 2, CKR_OK, "out(2)", "[[11, 12, 7, 7]]"},
        {false, 0, 0, CKR_OK, "out(0)", "[[7, 7, 7, 7]]"},
        {true, 0, 4, CKR_OK, "null(0)", "[null]"},
        {true, -1, 0xffffffff, CKR_OK, "null(0xffffffff)", "[null]"},
        {false, 2, 4, CKR_BUFFER_TOO_SMALL, "out(2)", "[[7, 7, 7, 7]]"},
    };
    forEach(env, [&](const Native& native) {
        if (!native.isSized()) return;
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.shown) + " reports " + std::to_string(row.reported));
            Call made = native.prepare(env);
            jobject& array = made.arguments[made.arguments.size() - 2].l;
            const jobject length = made.arguments.back().l;
            if (row.isNull) array = nullptr;
            setLong(env, length, "value", row.capacity);
            native.answer({[&] { return row.rv; }, row.reported});
            EXPECT_EQ(rvOf(env, made(env)), row.rv);
            EXPECT_EQ(recorder::calls().back(), replaced(native.line(), "out(4)", row.shown));
            EXPECT_EQ(getLong(env, length, "value"), static_cast<jlong>(row.reported));
            EXPECT_TRUE(native.has('e') || text(env, {array}) == row.after) << text(env, {array});
        }
    });
}

TEST_F(Frame, aCapacityThatCannotBeAllocatedIsRefused)
{
    forEach(env, [this](const Native& native) {
        if (!native.isSized()) return;
        const Call made = native.prepare(env);
        const bool isBytes = made.kinds[made.kinds.size() - 2] == 'b'; // 2 GiB may be available
        for (const jlong capacity : {jlong{-1}, jlong{isBytes ? -1 : 0x7fff'fff0}}) {
            setLong(env, made.arguments.back().l, "value", capacity);
            expectRefused(env, made, CKR_HOST_MEMORY);
        }
    });
}

} // namespace
