// What all natives have in common, over a table to which every native adds its row: how arguments become what
// the Cryptoki library is given, what is refused, what comes back, and what happens when a JNI call fails.
#include "faulty_env.h"
#include "jvm.h"
#include "values.h"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <optional>
#include <sstream>

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

// What the Cryptoki library does with its output: it writes a 3 to wherever it may, or 11, 12, ... into the
// buffer, as far as it goes, and reports that length.
struct Answer {
    std::function<CK_RV()> result;
    std::optional<CK_ULONG> reported = {};
};

template <typename Argument>
void fill(Argument argument)
{
    using Pointed = std::remove_pointer_t<Argument>;
    if constexpr (std::is_pointer_v<Argument> && std::is_object_v<Pointed> &&
                  !std::is_same_v<Pointed, CK_ATTRIBUTE> && !std::is_same_v<Pointed, CK_MECHANISM>) {
        if (argument == nullptr) return;
        std::memset(static_cast<void*>(argument), 0, sizeof *argument);
        *reinterpret_cast<CK_BYTE*>(argument) = 3;
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

// Bytes that come with a length.
enum class Refuses { nothing, missingBytes, missingOrNoBytes };

struct Rules {
    Refuses refuses = Refuses::nothing;
    std::vector<std::size_t> required = {}; // arguments that must not be null
    const char* firstLookup = nullptr;      // the class that is looked up before they are checked
    const char* afterError = nullptr;       // what the objects hold then, where it is not the same as before
};

struct Native {
    const char* line; // of a call as prepared
    void (*answer)(const Answer& wanted);
    Call (*prepare)(JNIEnv* e);
    Rules rules = {};
};

const char* const LONG_REF = "halvorn/zerlin/LongRef";
const char* const SESSION = "halvorn/zerlin/CK_SESSION_HANDLE";
const char* const OBJECT = "halvorn/zerlin/CK_OBJECT_HANDLE";
const char* const MECHANISM_TYPE = "halvorn/zerlin/constants/CK_MECHANISM_TYPE";
const char* const USER_TYPE = "halvorn/zerlin/constants/CK_USER_TYPE";

// The classes that hold one number, and what an object of another class counts as, where one is taken.
struct Holder {
    const char* path;
    const char* field;
    const char* foreign = nullptr;
};
const Holder HOLDERS[] = {
    {LONG_REF, "value"},
    {SESSION, "m_value", "0"},
    {OBJECT, "m_value", "0"},
    {MECHANISM_TYPE, "m_value", "0xffffffff"},
    {USER_TYPE, "m_value", "0xffffffff"},
};

const Holder* holderOf(JNIEnv* env, jobject object)
{
    for (const Holder& holder : HOLDERS)
        if (object != nullptr && env->IsInstanceOf(object, find(env, holder.path))) return &holder;
    return nullptr;
}

jbyteArray pin(JNIEnv* e)
{
    return bytes(e, "1234");
}
jbyteArray label(JNIEnv* e)
{
    return bytes(e, "lab");
}
jobjectArray twoAttributes(JNIEnv* e)
{
    return attributes(e, {attribute(e, 3, bytes(e, "abc"), 3), attribute(e, 0x121, boxedLong(e, 2048), 4)});
}

// The arguments of the cryptographic natives, by shape.

jobject cipher(JNIEnv* e)
{
    return make(e, "halvorn/zerlin/CK_MECHANISM", "(JLjava/lang/Object;)V", jlong{44}, bytes(e, {1, 2}));
}
template <auto native>
Call initWithKey(JNIEnv* e)
{
    return call(native, session(e), cipher(e), object(e, 42));
}
template <auto native>
Call dataInDataOut(JNIEnv* e)
{
    return call(native, session(e), bytes(e, "data"), 4, bytes(e, {7, 7, 7, 7}), longRef(e, 4));
}
template <auto native>
Call finalDataOut(JNIEnv* e)
{
    return call(native, session(e), bytes(e, {7, 7, 7, 7}), longRef(e, 4));
}
template <auto native>
Call dataIn(JNIEnv* e)
{
    return call(native, session(e), bytes(e, "data"), 4);
}
const Rules MECHANISM_REQUIRED = {.required = {1}};
const Rules DATA_IN_DATA_OUT = {.required = {4},
    .firstLookup = LONG_REF,
    .afterError = "[session 41, [100, 97, 116, 97], [7, 7, 7, 7], 3]"};
const Rules FINAL_DATA_OUT = {
    .required = {2}, .firstLookup = LONG_REF, .afterError = "[session 41, [7, 7, 7, 7], 3]"};

// Numbers of handles and types differ from all others in the line, so that each is found there.
const Native NATIVES[] = {
    {"C_Initialize({null, null, null, null, 2, null})", answer<&Script::C_Initialize>,
        [](JNIEnv* e) {
            const jobject args = make(e, "halvorn/zerlin/CK_C_INITIALIZE_ARGS");
            setLong(e, args, "flags", 2);
            return call(NATIVE(C_1Initialize), args);
        }},
    {"C_Finalize(null)", answer<&Script::C_Finalize>,
        [](JNIEnv*) { return call(NATIVE(C_1Finalize), nullptr); }},
    {"C_GetInfo(out)", answer<&Script::C_GetInfo>,
        [](JNIEnv* e) { return call(NATIVE(C_1GetInfo), make(e, "halvorn/zerlin/CK_INFO")); },
        {.required = {0}}},
    {"C_GetSlotList(1, out(4))", answer<&Script::C_GetSlotList>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GetSlotList), 1, longs(e, {7, 7, 7, 7}), longRef(e, 4));
        },
        {.required = {2}, .firstLookup = LONG_REF, .afterError = "[[7, 7, 7, 7], 3]"}},
    {"C_GetSlotInfo(9, out)", answer<&Script::C_GetSlotInfo>,
        [](JNIEnv* e) { return call(NATIVE(C_1GetSlotInfo), 9, make(e, "halvorn/zerlin/CK_SLOT_INFO")); },
        {.required = {1}}},
    {"C_GetTokenInfo(9, out)", answer<&Script::C_GetTokenInfo>,
        [](JNIEnv* e) { return call(NATIVE(C_1GetTokenInfo), 9, make(e, "halvorn/zerlin/CK_TOKEN_INFO")); },
        {.required = {1}}},
    {"C_WaitForSlotEvent(1, out, null)", answer<&Script::C_WaitForSlotEvent>,
        [](JNIEnv* e) { return call(NATIVE(C_1WaitForSlotEvent), 1, longRef(e, 8), nullptr); },
        {.required = {1}, .firstLookup = LONG_REF}},
    {"C_GetMechanismList(9, out(4))", answer<&Script::C_GetMechanismList>,
        [](JNIEnv* e) {
            const jobject first = mechanismType(e, 0x80000abc);
            const jobject second = mechanismType(e, 0x80000abc);
            return call(
                NATIVE(C_1GetMechanismList), 9, objects(e, MECHANISM_TYPE, {first, second}), longRef(e, 4));
        },
        {.required = {2}, .firstLookup = LONG_REF, .afterError = "[[0x80000abc, 0x80000abc], 3]"}},
    {"C_GetMechanismInfo(9, 44, out)", answer<&Script::C_GetMechanismInfo>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GetMechanismInfo), 9, mechanismType(e, 44),
                make(e, "halvorn/zerlin/CK_MECHANISM_INFO"));
        },
        {.required = {2}}},
    {"C_InitToken(9, [31323334], 4, [6c6162])", answer<&Script::C_InitToken>,
        [](JNIEnv* e) { return call(NATIVE(C_1InitToken), 9, pin(e), 4, label(e)); },
        {.refuses = Refuses::missingBytes}},
    {"C_InitPIN(41, [31323334], 4)", answer<&Script::C_InitPIN>,
        [](JNIEnv* e) { return call(NATIVE(C_1InitPIN), session(e), pin(e), 4); },
        {.refuses = Refuses::missingBytes}},
    {"C_SetPIN(41, [31323334], 4, [6e6577], 3)", answer<&Script::C_SetPIN>,
        [](JNIEnv* e) { return call(NATIVE(C_1SetPIN), session(e), pin(e), 4, bytes(e, "new"), 3); },
        {.refuses = Refuses::missingBytes}},
    {"CT_InitToken(41, 9, [31323334], 4, [6c6162])", answer<&Script::CT_InitToken>,
        [](JNIEnv* e) { return call(NATIVE(CT_1InitToken), session(e), 9, pin(e), 4, label(e)); }},
    {"CT_ResetToken(41, [31323334], 4, [6c6162])", answer<&Script::CT_ResetToken>,
        [](JNIEnv* e) { return call(NATIVE(CT_1ResetToken), session(e), pin(e), 4, label(e)); }},
    {"C_OpenSession(9, 6, null, null, out)", answer<&Script::C_OpenSession>,
        [](JNIEnv* e) { return call(NATIVE(C_1OpenSession), 9, 6, nullptr, nullptr, session(e)); },
        {.required = {4}, .firstLookup = SESSION}},
    {"C_CloseSession(41)", answer<&Script::C_CloseSession>,
        [](JNIEnv* e) { return call(NATIVE(C_1CloseSession), session(e)); }},
    {"C_CloseAllSessions(9)", answer<&Script::C_CloseAllSessions>,
        [](JNIEnv*) { return call(NATIVE(C_1CloseAllSessions), 9); }},
    {"C_GetSessionInfo(41, out)", answer<&Script::C_GetSessionInfo>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GetSessionInfo), session(e), make(e, "halvorn/zerlin/CK_SESSION_INFO"));
        },
        {.required = {1}}},
    {"C_GetOperationState(41, out(4))", answer<&Script::C_GetOperationState>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GetOperationState), session(e), bytes(e, {7, 7, 7, 7}), longRef(e, 4));
        },
        {.required = {2}, .firstLookup = LONG_REF, .afterError = "[session 41, [7, 7, 7, 7], 3]"}},
    {"C_SetOperationState(41, [7374617465], 5, 42, 43)", answer<&Script::C_SetOperationState>,
        [](JNIEnv* e) {
            return call(
                NATIVE(C_1SetOperationState), session(e), bytes(e, "state"), 5, object(e, 42), object(e, 43));
        },
        {.refuses = Refuses::missingOrNoBytes}},
    {"C_Login(41, 45, [31323334], 4)", answer<&Script::C_Login>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1Login), session(e), make(e, USER_TYPE, "(J)V", jlong{45}), pin(e), 4);
        },
        {.refuses = Refuses::missingBytes}},
    {"C_Logout(41)", answer<&Script::C_Logout>,
        [](JNIEnv* e) { return call(NATIVE(C_1Logout), session(e)); }},
    {"C_CreateObject(41, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)", answer<&Script::C_CreateObject>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1CreateObject), session(e), twoAttributes(e), 2, object(e, 99));
        },
        {.required = {3}, .firstLookup = OBJECT}},
    {"C_CopyObject(41, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)", answer<&Script::C_CopyObject>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1CopyObject), session(e), object(e, 42), twoAttributes(e), 2, object(e, 99));
        },
        {.required = {4}, .firstLookup = OBJECT}},
    {"CT_CopyObject(41, 43, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        answer<&Script::CT_CopyObject>,
        [](JNIEnv* e) {
            return call(NATIVE(CT_1CopyObject), session(e), session(e, 43), object(e, 42), twoAttributes(e),
                2, object(e, 99));
        },
        {.required = {5}, .firstLookup = OBJECT}},
    {"C_DestroyObject(41, 42)", answer<&Script::C_DestroyObject>,
        [](JNIEnv* e) { return call(NATIVE(C_1DestroyObject), session(e), object(e, 42)); }},
    {"C_GetObjectSize(41, 42, out)", answer<&Script::C_GetObjectSize>,
        [](JNIEnv* e) { return call(NATIVE(C_1GetObjectSize), session(e), object(e, 42), longRef(e, 7)); },
        {.required = {2}, .firstLookup = LONG_REF}},
    {"C_GetAttributeValue(41, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2)",
        answer<&Script::C_GetAttributeValue>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GetAttributeValue), session(e), object(e, 42), twoAttributes(e), 2);
        }},
    {"C_FindObjectsInit(41, {{3, [616263], 3}, {289, [00080000], 4}}, 2)", answer<&Script::C_FindObjectsInit>,
        [](JNIEnv* e) { return call(NATIVE(C_1FindObjectsInit), session(e), twoAttributes(e), 2); }},
    {"C_FindObjects(41, out(2), out)", answer<&Script::C_FindObjects>,
        [](JNIEnv* e) {
            const jobjectArray found = objects(e, OBJECT, {object(e, 99), object(e, 99)});
            return call(NATIVE(C_1FindObjects), session(e), found, 2, longRef(e, 7));
        },
        {.required = {3}, .firstLookup = LONG_REF, .afterError = "[session 41, [object 99, object 99], 3]"}},
    {"C_FindObjectsFinal(41)", answer<&Script::C_FindObjectsFinal>,
        [](JNIEnv* e) { return call(NATIVE(C_1FindObjectsFinal), session(e)); }},
    {"C_EncryptInit(41, {44, [0102], 2}, 42)", answer<&Script::C_EncryptInit>,
        initWithKey<NATIVE(C_1EncryptInit)>, MECHANISM_REQUIRED},
    {"C_DecryptInit(41, {44, [0102], 2}, 42)", answer<&Script::C_DecryptInit>,
        initWithKey<NATIVE(C_1DecryptInit)>, MECHANISM_REQUIRED},
    {"C_SignInit(41, {44, [0102], 2}, 42)", answer<&Script::C_SignInit>, initWithKey<NATIVE(C_1SignInit)>,
        MECHANISM_REQUIRED},
    {"C_SignRecoverInit(41, {44, [0102], 2}, 42)", answer<&Script::C_SignRecoverInit>,
        initWithKey<NATIVE(C_1SignRecoverInit)>, MECHANISM_REQUIRED},
    {"C_VerifyInit(41, {44, [0102], 2}, 42)", answer<&Script::C_VerifyInit>,
        initWithKey<NATIVE(C_1VerifyInit)>, MECHANISM_REQUIRED},
    {"C_VerifyRecoverInit(41, {44, [0102], 2}, 42)", answer<&Script::C_VerifyRecoverInit>,
        initWithKey<NATIVE(C_1VerifyRecoverInit)>, MECHANISM_REQUIRED},
    {"C_DigestInit(41, {44, [0102], 2})", answer<&Script::C_DigestInit>,
        [](JNIEnv* e) { return call(NATIVE(C_1DigestInit), session(e), cipher(e)); }, MECHANISM_REQUIRED},
    {"C_Encrypt(41, [64617461], 4, out(4))", answer<&Script::C_Encrypt>, dataInDataOut<NATIVE(C_1Encrypt)>,
        DATA_IN_DATA_OUT},
    {"C_EncryptUpdate(41, [64617461], 4, out(4))", answer<&Script::C_EncryptUpdate>,
        dataInDataOut<NATIVE(C_1EncryptUpdate)>, DATA_IN_DATA_OUT},
    {"C_Decrypt(41, [64617461], 4, out(4))", answer<&Script::C_Decrypt>, dataInDataOut<NATIVE(C_1Decrypt)>,
        DATA_IN_DATA_OUT},
    {"C_DecryptUpdate(41, [64617461], 4, out(4))", answer<&Script::C_DecryptUpdate>,
        dataInDataOut<NATIVE(C_1DecryptUpdate)>, DATA_IN_DATA_OUT},
    {"C_Digest(41, [64617461], 4, out(4))", answer<&Script::C_Digest>, dataInDataOut<NATIVE(C_1Digest)>,
        DATA_IN_DATA_OUT},
    {"C_Sign(41, [64617461], 4, out(4))", answer<&Script::C_Sign>, dataInDataOut<NATIVE(C_1Sign)>,
        DATA_IN_DATA_OUT},
    {"C_SignRecover(41, [64617461], 4, out(4))", answer<&Script::C_SignRecover>,
        dataInDataOut<NATIVE(C_1SignRecover)>, DATA_IN_DATA_OUT},
    {"C_VerifyRecover(41, [64617461], 4, out(4))", answer<&Script::C_VerifyRecover>,
        dataInDataOut<NATIVE(C_1VerifyRecover)>, DATA_IN_DATA_OUT},
    {"C_DigestEncryptUpdate(41, [64617461], 4, out(4))", answer<&Script::C_DigestEncryptUpdate>,
        dataInDataOut<NATIVE(C_1DigestEncryptUpdate)>, DATA_IN_DATA_OUT},
    {"C_DecryptDigestUpdate(41, [64617461], 4, out(4))", answer<&Script::C_DecryptDigestUpdate>,
        dataInDataOut<NATIVE(C_1DecryptDigestUpdate)>, DATA_IN_DATA_OUT},
    {"C_SignEncryptUpdate(41, [64617461], 4, out(4))", answer<&Script::C_SignEncryptUpdate>,
        dataInDataOut<NATIVE(C_1SignEncryptUpdate)>, DATA_IN_DATA_OUT},
    {"C_DecryptVerifyUpdate(41, [64617461], 4, out(4))", answer<&Script::C_DecryptVerifyUpdate>,
        dataInDataOut<NATIVE(C_1DecryptVerifyUpdate)>, DATA_IN_DATA_OUT},
    {"C_EncryptFinal(41, out(4))", answer<&Script::C_EncryptFinal>, finalDataOut<NATIVE(C_1EncryptFinal)>,
        FINAL_DATA_OUT},
    {"C_DecryptFinal(41, out(4))", answer<&Script::C_DecryptFinal>, finalDataOut<NATIVE(C_1DecryptFinal)>,
        FINAL_DATA_OUT},
    {"C_DigestFinal(41, out(4))", answer<&Script::C_DigestFinal>, finalDataOut<NATIVE(C_1DigestFinal)>,
        FINAL_DATA_OUT},
    {"C_SignFinal(41, out(4))", answer<&Script::C_SignFinal>, finalDataOut<NATIVE(C_1SignFinal)>,
        FINAL_DATA_OUT},
    {"C_DigestUpdate(41, [64617461], 4)", answer<&Script::C_DigestUpdate>, dataIn<NATIVE(C_1DigestUpdate)>},
    {"C_SignUpdate(41, [64617461], 4)", answer<&Script::C_SignUpdate>, dataIn<NATIVE(C_1SignUpdate)>},
    {"C_VerifyUpdate(41, [64617461], 4)", answer<&Script::C_VerifyUpdate>, dataIn<NATIVE(C_1VerifyUpdate)>},
    {"C_VerifyFinal(41, [64617461], 4)", answer<&Script::C_VerifyFinal>, dataIn<NATIVE(C_1VerifyFinal)>},
    {"C_Verify(41, [64617461], 4, [736967], 3)", answer<&Script::C_Verify>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1Verify), session(e), bytes(e, "data"), 4, bytes(e, "sig"), 3);
        }},
    {"C_DigestKey(41, 42)", answer<&Script::C_DigestKey>,
        [](JNIEnv* e) { return call(NATIVE(C_1DigestKey), session(e), object(e, 42)); }},
    {"C_GenerateKey(41, {44, [0102], 2}, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        answer<&Script::C_GenerateKey>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GenerateKey), session(e), cipher(e), twoAttributes(e), 2, object(e, 99));
        },
        {.required = {1, 4}, .firstLookup = OBJECT}},
    {"C_GenerateKeyPair(41, {44, [0102], 2}, {{3, [616263], 3}, {289, [00080000], 4}}, 2, {{3, [616263], 3}, "
     "{289, [00080000], 4}}, 2, out, out)",
        answer<&Script::C_GenerateKeyPair>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GenerateKeyPair), session(e), cipher(e), twoAttributes(e), 2,
                twoAttributes(e), 2, object(e, 98), object(e, 99));
        },
        {.required = {1, 6, 7}, .firstLookup = OBJECT}},
    {"C_WrapKey(41, {44, [0102], 2}, 0, 43, out(4))", answer<&Script::C_WrapKey>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1WrapKey), session(e), cipher(e), nullptr, object(e, 43),
                bytes(e, {7, 7, 7, 7}), longRef(e, 4));
        },
        {.required = {1, 5},
            .firstLookup = LONG_REF,
            .afterError = "[session 41, CK_MECHANISM[mechanism=0x2c, pParameter=byte[] of 2 bytes, "
                          "parameterLen=2], null, object 43, [7, 7, 7, 7], 3]"}},
    {"C_UnwrapKey(41, {44, [0102], 2}, 42, [77726170], 4, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        answer<&Script::C_UnwrapKey>,
        [](JNIEnv* e) {
            Call made = call(NATIVE(C_1UnwrapKey), session(e), cipher(e), object(e, 42), bytes(e, "wrap"), 4,
                twoAttributes(e), 2, object(e, 99));
            made.kinds[3] = 'o'; // bytes that are required whatever the length
            return made;
        },
        {.required = {1, 3, 7}, .firstLookup = OBJECT}},
    {"C_DeriveKey(41, {44, [0102], 2}, 42, {{3, [616263], 3}, {289, [00080000], 4}}, 2, out)",
        answer<&Script::C_DeriveKey>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1DeriveKey), session(e), cipher(e), object(e, 42), twoAttributes(e), 2,
                object(e, 99));
        },
        {.required = {1}, .firstLookup = OBJECT}},
    {"C_SeedRandom(41, [64617461], 4)", answer<&Script::C_SeedRandom>, dataIn<NATIVE(C_1SeedRandom)>,
        {.refuses = Refuses::missingBytes}},
    {"C_GenerateRandom(41, out(3))", answer<&Script::C_GenerateRandom>,
        [](JNIEnv* e) {
            return call(NATIVE(C_1GenerateRandom), session(e), bytes(e, {7, 7, 7}), 3);
        }},
    {"C_GetFunctionStatus(41)", answer<&Script::C_GetFunctionStatus>,
        [](JNIEnv* e) { return call(NATIVE(C_1GetFunctionStatus), session(e)); }},
    {"C_CancelFunction(41)", answer<&Script::C_CancelFunction>,
        [](JNIEnv* e) { return call(NATIVE(C_1CancelFunction), session(e)); }},
};

// Runs the test for every native.
void forEach(JNIEnv* env, const std::function<void(const Native&)>& test)
{
    for (const Native& native : NATIVES) {
        SCOPED_TRACE(native.line);
        const LocalFrame frame(env);
        recorder::reset();
        recorder::script().labelLength = 3;
        test(native);
    }
}

struct Outcome {
    Watched watched = {};
    jobject returned = nullptr;
    std::string exception = {};
    Lines lines = {};
};

// One call with fresh arguments, over a library that succeeds.
Outcome run(JNIEnv* env, const Native& native, const Fault& fault)
{
    native.answer({[env] {
        EXPECT_FALSE(env->ExceptionCheck()) << "no call while an exception is pending";
        return CKR_OK;
    }});
    const std::size_t known = recorder::calls().size();
    const Call made = native.prepare(env);
    Outcome outcome;
    outcome.watched = watch(env, fault, [&] { outcome.returned = made(env); });
    outcome.exception = takeException(env);
    outcome.lines = recorder::calls();
    outcome.lines.erase(outcome.lines.begin(), outcome.lines.begin() + static_cast<std::ptrdiff_t>(known));
    EXPECT_EQ(outcome.watched.violations, Lines{});
    EXPECT_TRUE(outcome.watched.globalRefs.empty());
    EXPECT_TRUE(outcome.watched.buffers.empty());
    EXPECT_LE(outcome.watched.maxLocalRefs, 16U);
    return outcome;
}

// Once with every lookup made anew, once with all remembered: other calls can fail then.
TEST_F(Frame, whereverAJniCallFailsItsExceptionComesOut)
{
    forEach(env, [this](const Native& native) {
        for (const bool remembers : {false, true}) {
            forgetLookups();
            const Outcome good = run(env, native, {});
            EXPECT_EQ(rvOf(env, good.returned), CKR_OK);
            EXPECT_EQ(good.lines, Lines{native.line});
            int number = 1;
            for (; number <= good.watched.calls; ++number) {
                SCOPED_TRACE(number);
                const LocalFrame frame(env);
                if (!remembers) forgetLookups();
                const Outcome bad = run(env, native, {.call = number});
                if (bad.watched.failed.empty()) break;
                // A CK_RV is returned all the same when only its value could not be set.
                const bool isUnset = number == good.watched.calls && bad.watched.failed == "GetFieldID";
                EXPECT_EQ(bad.returned != nullptr, isUnset) << bad.watched.failed;
                EXPECT_EQ(bad.exception, "java.lang.RuntimeException: injected") << bad.watched.failed;
                if (!bad.lines.empty()) {
                    EXPECT_EQ(bad.lines, good.lines) << bad.watched.failed;
                }
            }
            EXPECT_GT(number, 1) << "no call was met that can fail";
        }
    });
}

TEST_F(Frame, withoutTheClassOfReturnValuesNothingIsReturned)
{
    forEach(env, [this](const Native& native) {
        forgetLookups();
        const Outcome outcome = run(env, native, {.lookup = "halvorn/zerlin/constants/CK_RV"});
        EXPECT_EQ(outcome.returned, nullptr);
        EXPECT_EQ(outcome.exception, "java.lang.NoClassDefFoundError: halvorn/zerlin/constants/CK_RV");
        if (!outcome.lines.empty()) {
            EXPECT_EQ(outcome.lines, Lines{native.line});
        }
    });
}

// Java code cannot call a native so: what the JVM has to say of it does not matter.
TEST_F(Frame, anExceptionFromBeforeTheCallStays)
{
    testing::internal::CaptureStdout();
    forEach(env, [this](const Native& native) {
        for (const bool remembers : {true, false}) {
            if (remembers) run(env, native, {});
            if (!remembers) forgetLookups();
            recorder::reset();
            const Call made = native.prepare(env);
            raise("from before");
            EXPECT_EQ(made(env), nullptr);
            EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from before");
        }
    });
    const std::string printed = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::puts(printed.c_str());
    takeJniWarnings();
}

// As a locking callback that throws makes it.
TEST_F(Frame, anExceptionFromWithinTheLibraryStaysAndNothingIsWrittenBack)
{
    forEach(env, [this](const Native& native) {
        run(env, native, {}); // so that every lookup is remembered, and would let a native go on
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

TEST_F(Frame, anErrorIsHandedOnAndOnlyLengthsAreWrittenBack)
{
    forEach(env, [this](const Native& native) {
        for (const CK_RV rv : {CKR_BUFFER_TOO_SMALL, 0x80000100UL, 0xffffffffUL}) {
            const Call made = native.prepare(env);
            const std::string before = made.objects(env);
            native.answer({[rv] { return rv; }});
            EXPECT_EQ(rvOf(env, made(env)), rv);
            const char* const afterError = native.rules.afterError;
            EXPECT_EQ(made.objects(env), afterError == nullptr ? before : afterError);
        }
    });
}

TEST_F(Frame, whatIsRequiredIsLookedForBeforeAnythingIsConverted)
{
    forEach(env, [this](const Native& native) {
        for (const std::size_t index : native.rules.required) {
            Call made = native.prepare(env);
            made.arguments[index].l = nullptr;
            expectRefused(env, made);
            for (const char* missing : {LONG_REF, SESSION, OBJECT, MECHANISM_TYPE}) {
                forgetLookups();
                jobject returned = nullptr;
                watch(env, {.lookup = missing}, [&] { returned = made(env); });
                const bool isFirst = native.rules.firstLookup == missing;
                const std::string error = std::string("java.lang.NoClassDefFoundError: ") + missing;
                EXPECT_EQ(takeException(env), isFirst ? error : "");
                EXPECT_EQ(returned == nullptr, isFirst);
            }
            EXPECT_EQ(recorder::calls(), Lines{});
        }
    });
}

TEST_F(Frame, onlyTheLowHalfOfALongCounts)
{
    const jlong highHalf = 0x7'0000'0000;
    forEach(env, [&](const Native& native) {
        const std::size_t count = native.prepare(env).kinds.size();
        for (std::size_t i = 0; i < count; ++i) {
            Call made = native.prepare(env);
            const jobject object = made.kinds[i] == 'o' ? made.arguments[i].l : nullptr;
            if (made.kinds[i] == 'j') {
                made.arguments[i].j += highHalf;
            } else if (const Holder* const holder = holderOf(env, object)) {
                setLong(env, object, holder->field, getLong(env, object, holder->field) + highHalf);
            }
            expectCall(env, made, native.line);
        }
    });
}

// The line with another text in the place of its part.
std::string replaced(std::string line, const std::string& part, const std::string& other)
{
    return line.replace(line.find(part), part.size(), other);
}

TEST_F(Frame, aHandleOrTypeThatIsNullOrOfAnotherClassIsLeftToTheLibrary)
{
    int taken = 0;
    forEach(env, [&](const Native& native) {
        Call made = native.prepare(env);
        for (std::size_t i = 0; i < made.kinds.size(); ++i) {
            const jobject object = made.kinds[i] == 'o' ? made.arguments[i].l : nullptr;
            const Holder* const holder = holderOf(env, object);
            if (holder == nullptr || holder->foreign == nullptr) continue;
            const std::string number = std::to_string(getLong(env, object, holder->field));
            const std::string line = native.line;
            if (line.find(number) == line.npos) continue; // it is an output
            made.arguments[i].l = nullptr;
            expectCall(env, made, replaced(line, number, "0xffffffff"));
            made.arguments[i].l = longRef(env, 9);
            expectCall(env, made, replaced(line, number, holder->foreign));
            made.arguments[i].l = object;
            ++taken;
        }
    });
    EXPECT_GT(taken, 15);
}

std::string shown(JNIEnv* env, jobject array, jlong length)
{
    std::ostringstream text;
    for (const int byte : toVector(env, static_cast<jbyteArray>(array)))
        text << std::hex << std::setw(2) << std::setfill('0') << byte;
    return "[" + text.str() + "], " + std::to_string(length);
}

TEST_F(Frame, bytesGoWithTheLengthThatIsGiven)
{
    struct Row {
        bool isNull;
        jlong length;
        const char* shown;
    };
    const Row rows[] = {
        {false, 4, "[31323334], 4"},
        {false, 2, "[3132], 2"},
        {false, 9, "[31323334..], 9"},
        {false, 0, "[], 0"},
        {false, -1, "[31323334..], 0xffffffff"},
        {false, 0x1'0000'0000, "[], 0"},
        {true, 4, "null, 4"},
        {true, 0, "null, 0"},
        {true, -1, "null, 0xffffffff"},
        {true, 0x1'0000'0000, "null, 0"},
    };
    int taken = 0;
    forEach(env, [&](const Native& native) {
        recorder::script().byteLimit = 4;
        const std::string line = native.line;
        Call made = native.prepare(env);
        for (std::size_t i = made.kinds.find("bj"); i != made.kinds.npos; i = made.kinds.find("bj", i + 1)) {
            const std::string part = shown(env, made.arguments[i].l, made.arguments[i + 1].j);
            if (line.find(part) == line.npos) continue; // it is an output
            ++taken;
            const auto before = made.arguments;
            for (const Row& row : rows) {
                made.arguments[i].l = row.isNull ? nullptr : bytes(env, "1234");
                made.arguments[i + 1].j = row.length;
                const Refuses refuses = native.rules.refuses;
                if ((refuses != Refuses::nothing && row.isNull && row.length > 0) ||
                    (refuses == Refuses::missingOrNoBytes && (row.isNull || row.length == 0))) {
                    forgetLookups();
                    watch(env, {.lookup = SESSION}, [&] { expectRefused(env, made); });
                } else {
                    expectCall(env, made, replaced(line, part, row.shown));
                }
            }
            made.arguments = before;
        }
    });
    EXPECT_GE(taken, 8);
}

// An array of the kind of another.
jarray arrayLike(JNIEnv* env, jobject kind, const Longs& values)
{
    const auto size = static_cast<jsize>(values.size());
    if (env->IsInstanceOf(kind, find(env, "[B"))) {
        Bytes cut;
        for (const jlong value : values)
            cut.push_back(static_cast<std::uint8_t>(value));
        return bytes(env, cut);
    }
    if (env->IsInstanceOf(kind, find(env, "[J"))) {
        const jlongArray array = env->NewLongArray(size);
        env->SetLongArrayRegion(array, 0, size, values.data());
        return array;
    }
    const jobjectArray array = env->NewObjectArray(size, find(env, MECHANISM_TYPE), nullptr);
    for (jsize i = 0; i < size; ++i)
        env->SetObjectArrayElement(array, i, mechanismType(env, values[static_cast<std::size_t>(i)]));
    return array;
}

// Of natives whose last arguments are an array for output and its LongRef.
TEST_F(Frame, outputGoesThroughABufferOfTheCapacityThatIsGiven)
{
    struct Row {
        int elements; // of the Java array, each 7; -1 for none
        jlong capacity;
        CK_ULONG reported;
        CK_RV rv;
        const char* shown;
        Longs written; // from the start of the array
    };
    const Row rows[] = {
        {3, 3, 3, CKR_OK, "out(3)", {11, 12, 13}},
        {3, 3, 2, CKR_OK, "out(3)", {11, 12}},
        {2, 4, 4, CKR_OK, "out(4)", {11, 12}},
        {4, 2, 2, CKR_OK, "out(2)", {11, 12}},
        {0, 2, 2, CKR_OK, "out(2)", {}},
        {2, 0, 0, CKR_OK, "out(0)", {}},
        {-1, 0, 4, CKR_OK, "null(0)", {}},
        {-1, -1, 0xffffffff, CKR_OK, "null(0xffffffff)", {}},
        {-1, 7, 9, CKR_DEVICE_ERROR, "null(7)", {}},
        {4, 2, 4, CKR_BUFFER_TOO_SMALL, "out(2)", {}},
        {2, 2, 0xffffffff, CKR_DEVICE_ERROR, "out(2)", {}},
        // What is reported beyond the capacity is not read.
        {90, 2, 80, CKR_OK, "out(2)", {11, 12}},
        {90, 2, 0xffffffff, CKR_OK, "out(2)", {11, 12}},
    };
    int tested = 0;
    forEach(env, [&](const Native& native) {
        const std::string line = native.line;
        if (line.find("out(4)") == line.npos) return;
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.shown) + " reports " + std::to_string(row.reported));
            Call made = native.prepare(env);
            jobject& array = made.arguments[made.arguments.size() - 2].l;
            const jobject length = made.arguments.back().l;
            const auto elements = static_cast<std::size_t>(std::max(row.elements, 0));
            Longs expected = row.written;
            expected.resize(elements, 7);
            const jarray filled = arrayLike(env, array, expected);
            array = row.elements < 0 ? nullptr : arrayLike(env, array, Longs(elements, 7));
            setLong(env, length, "value", row.capacity);

            native.answer({[&] { return row.rv; }, row.reported});
            EXPECT_EQ(rvOf(env, made(env)), row.rv);
            EXPECT_EQ(recorder::calls().back(), replaced(line, "out(4)", row.shown));
            EXPECT_EQ(getLong(env, length, "value"), static_cast<jlong>(row.reported));
            if (array == nullptr) continue;
            std::string held = text(env, {array});
            if (row.elements == 90) {
                expected[2] = 0; // lists have a spare element
                if (held == text(env, {arrayLike(env, array, expected)})) held = text(env, {filled});
            }
            EXPECT_EQ(held, text(env, {filled}));
            ++tested;
        }
    });
    EXPECT_GE(tested, 3 * 10);
}

TEST_F(Frame, aCapacityThatCannotBeHadIsRefused)
{
    forEach(env, [this](const Native& native) {
        if (std::strstr(native.line, "out(4)") == nullptr) return;
        const Call made = native.prepare(env);
        const bool isBytes = made.kinds[made.kinds.size() - 2] == 'b'; // 2 GiB of which there may be
        for (const jlong capacity : {jlong{-1}, jlong{isBytes ? -1 : 0x7fff'fff0}}) {
            setLong(env, made.arguments.back().l, "value", capacity);
            expectRefused(env, made, CKR_HOST_MEMORY);
        }
    });
}

} // namespace
