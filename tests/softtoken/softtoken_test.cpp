// The embedded libcryptoki.so: over SoftHSM, with a token directory per test, and in child processes (the
// module is loaded once per process) over modules that are absent, broken or poor, and over a double.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

using Handle = CK_OBJECT_HANDLE;

constexpr CK_BBOOL YES = CK_TRUE;
constexpr CK_BBOOL NO = CK_FALSE;

struct Attribute {
    CK_ATTRIBUTE_TYPE type;
    std::string value;
};
using Attributes = std::vector<Attribute>;

template <typename Value>
Attribute attribute(CK_ATTRIBUTE_TYPE type, const Value& value)
{
    return {type, {reinterpret_cast<const char*>(&value), sizeof value}};
}

// Valid as long as the attributes are.
std::vector<CK_ATTRIBUTE> templateOf(const Attributes& attributes)
{
    std::vector<CK_ATTRIBUTE> result;
    for (const Attribute& each : attributes) {
        result.push_back(
            {each.type, const_cast<char*>(each.value.data()), static_cast<CK_ULONG>(each.value.size())});
    }
    return result;
}

CK_BYTE* bytes(const std::string& text)
{
    return reinterpret_cast<CK_BYTE*>(const_cast<char*>(text.data()));
}

CK_ULONG length(const std::string& text)
{
    return static_cast<CK_ULONG>(text.size());
}

const std::string SO_PIN = "so-pin";
const std::string USER_PIN = "user-pin";

std::string label(std::string text)
{
    text.resize(32, ' ');
    return text;
}

CK_RV initToken(CK_SLOT_ID slot, const std::string& name)
{
    return C_InitToken(slot, bytes(SO_PIN), length(SO_PIN), bytes(label(name)));
}

CK_TOKEN_INFO tokenInfo(CK_SLOT_ID slot)
{
    CK_TOKEN_INFO info = {};
    EXPECT_EQ(C_GetTokenInfo(slot, &info), CKR_OK);
    return info;
}

std::string labelOf(CK_SLOT_ID slot)
{
    const CK_TOKEN_INFO info = tokenInfo(slot);
    return {reinterpret_cast<const char*>(info.label), sizeof info.label};
}

CK_SESSION_HANDLE openSession(CK_SLOT_ID slot)
{
    CK_SESSION_HANDLE session = CK_INVALID_HANDLE;
    EXPECT_EQ(C_OpenSession(slot, CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr, nullptr, &session), CKR_OK);
    return session;
}

bool isOpen(CK_SESSION_HANDLE session)
{
    CK_SESSION_INFO info;
    return C_GetSessionInfo(session, &info) == CKR_OK;
}

// SoftHSM always has one slot whose token waits to be initialised.
CK_SLOT_ID blankSlot()
{
    CK_ULONG count = 0;
    EXPECT_EQ(C_GetSlotList(CK_TRUE, nullptr, &count), CKR_OK);
    std::vector<CK_SLOT_ID> slots(count);
    EXPECT_EQ(C_GetSlotList(CK_TRUE, slots.data(), &count), CKR_OK);
    const auto blank = std::ranges::find_if(
        slots, [](CK_SLOT_ID slot) { return (tokenInfo(slot).flags & CKF_TOKEN_INITIALIZED) == 0; });
    EXPECT_NE(blank, slots.end());
    return *blank;
}

CK_SLOT_ID makeToken(const std::string& name)
{
    const CK_SLOT_ID slot = blankSlot();
    EXPECT_EQ(initToken(slot, name), CKR_OK);
    const CK_SESSION_HANDLE session = openSession(slot);
    EXPECT_EQ(C_Login(session, CKU_SO, bytes(SO_PIN), length(SO_PIN)), CKR_OK);
    EXPECT_EQ(C_InitPIN(session, bytes(USER_PIN), length(USER_PIN)), CKR_OK);
    EXPECT_EQ(C_CloseSession(session), CKR_OK);
    return slot;
}

CK_SESSION_HANDLE login(CK_SLOT_ID slot)
{
    const CK_SESSION_HANDLE session = openSession(slot);
    EXPECT_EQ(C_Login(session, CKU_USER, bytes(USER_PIN), length(USER_PIN)), CKR_OK);
    return session;
}

Handle create(CK_SESSION_HANDLE session, const Attributes& attributes)
{
    std::vector<CK_ATTRIBUTE> list = templateOf(attributes);
    Handle made = CK_INVALID_HANDLE;
    EXPECT_EQ(C_CreateObject(session, list.data(), static_cast<CK_ULONG>(list.size()), &made), CKR_OK);
    return made;
}

// Such as ab, or an error code.
std::string read(CK_SESSION_HANDLE session, Handle object, CK_ATTRIBUTE_TYPE type)
{
    std::string value(512, '\0');
    CK_ATTRIBUTE wanted = {type, value.data(), length(value)};
    const CK_RV rv = C_GetAttributeValue(session, object, &wanted, 1);
    if (rv != CKR_OK) return "error " + std::to_string(rv);
    value.resize(wanted.ulValueLen);
    return value;
}

CK_ULONG countObjects(CK_SESSION_HANDLE session)
{
    std::array<Handle, 20> found;
    CK_ULONG count = 0;
    EXPECT_EQ(C_FindObjectsInit(session, nullptr, 0), CKR_OK);
    EXPECT_EQ(C_FindObjects(session, found.data(), found.size(), &count), CKR_OK);
    EXPECT_EQ(C_FindObjectsFinal(session), CKR_OK);
    return count;
}

struct KeyPair {
    Handle publicKey;
    Handle privateKey;
};

KeyPair makeKeyPair(CK_SESSION_HANDLE session, CK_MECHANISM_TYPE type, const Attributes& forPublic,
    const Attributes& forPrivate)
{
    std::vector<CK_ATTRIBUTE> publicList = templateOf(forPublic);
    std::vector<CK_ATTRIBUTE> privateList = templateOf(forPrivate);
    CK_MECHANISM mechanism = {type, nullptr, 0};
    KeyPair pair = {};
    EXPECT_EQ(
        C_GenerateKeyPair(session, &mechanism, publicList.data(), static_cast<CK_ULONG>(publicList.size()),
            privateList.data(), static_cast<CK_ULONG>(privateList.size()), &pair.publicKey, &pair.privateKey),
        CKR_OK);
    return pair;
}

const Attributes READABLE = {attribute(CKA_SENSITIVE, NO), attribute(CKA_EXTRACTABLE, YES)};

KeyPair makeRsaPair(CK_SESSION_HANDLE session, const Attributes& forPrivate)
{
    return makeKeyPair(session, CKM_RSA_PKCS_KEY_PAIR_GEN,
        {attribute(CKA_MODULUS_BITS, CK_ULONG{1024}), {CKA_PUBLIC_EXPONENT, {"\1\0\1", 3}}}, forPrivate);
}

KeyPair makeEcPair(CK_SESSION_HANDLE session)
{
    const std::string p256 = "\x06\x08\x2a\x86\x48\xce\x3d\x03\x01\x07";
    return makeKeyPair(session, CKM_EC_KEY_PAIR_GEN, {{CKA_EC_PARAMS, p256}}, READABLE);
}

std::string sign(CK_SESSION_HANDLE session, CK_MECHANISM_TYPE type, Handle key, const std::string& data)
{
    CK_MECHANISM mechanism = {type, nullptr, 0};
    EXPECT_EQ(C_SignInit(session, &mechanism, key), CKR_OK);
    std::string signature(512, '\0');
    CK_ULONG size = length(signature);
    EXPECT_EQ(C_Sign(session, bytes(data), length(data), bytes(signature), &size), CKR_OK);
    signature.resize(size);
    return signature;
}

CK_RV verify(CK_SESSION_HANDLE session, CK_MECHANISM_TYPE type, Handle key, const std::string& data,
    const std::string& signature)
{
    CK_MECHANISM mechanism = {type, nullptr, 0};
    EXPECT_EQ(C_VerifyInit(session, &mechanism, key), CKR_OK);
    return C_Verify(session, bytes(data), length(data), bytes(signature), length(signature));
}

struct SoftToken : testing::Test {
    void SetUp() override
    {
        std::string pattern = std::filesystem::temp_directory_path() / "softtoken_test.XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        directory = pattern;
        std::filesystem::create_directory(directory / "tokens");
        std::ofstream(directory / "conf") << "directories.tokendir = " << (directory / "tokens").string()
                                          << "\nobjectstore.backend = file\n";
        setenv("SOFTHSM2_CONF", (directory / "conf").c_str(), 1);
        CK_C_INITIALIZE_ARGS arguments = {};
        arguments.flags = CKF_OS_LOCKING_OK;
        ASSERT_EQ(C_Initialize(&arguments), CKR_OK);
    }
    void TearDown() override
    {
        EXPECT_EQ(C_Finalize(nullptr), CKR_OK);
        std::filesystem::remove_all(directory);
    }
    std::filesystem::path directory;
};

TEST_F(SoftToken, aSessionReachesTheModule)
{
    const CK_SLOT_ID slot = makeToken("first");
    EXPECT_EQ(labelOf(slot), label("first"));
    const CK_SESSION_HANDLE session = login(slot);

    std::string digest(32, '\0');
    CK_ULONG size = length(digest);
    CK_MECHANISM sha256 = {CKM_SHA256, nullptr, 0};
    ASSERT_EQ(C_DigestInit(session, &sha256), CKR_OK);
    ASSERT_EQ(C_Digest(session, bytes("abc"), 3, bytes(digest), &size), CKR_OK);
    EXPECT_EQ(digest.substr(0, 4), "\xba\x78\x16\xbf");

    const KeyPair pair = makeRsaPair(session, {});
    const std::string signature = sign(session, CKM_SHA256_RSA_PKCS, pair.privateKey, "text");
    EXPECT_EQ(verify(session, CKM_SHA256_RSA_PKCS, pair.publicKey, "text", signature), CKR_OK);
    EXPECT_EQ(verify(session, CKM_SHA256_RSA_PKCS, pair.publicKey, "test", signature), CKR_SIGNATURE_INVALID);
    EXPECT_EQ(countObjects(session), 2U);
}

TEST_F(SoftToken, theFunctionListIsOurOwn)
{
    EXPECT_EQ(C_GetFunctionList(nullptr), CKR_ARGUMENTS_BAD);
    CK_FUNCTION_LIST_PTR list = nullptr;
    ASSERT_EQ(C_GetFunctionList(&list), CKR_OK);
    EXPECT_EQ(list->version.major, 2);
    EXPECT_EQ(list->version.minor, 20);
    EXPECT_EQ(list->C_GetFunctionList, C_GetFunctionList);
    EXPECT_EQ(list->C_WaitForSlotEvent, C_WaitForSlotEvent);
}

struct Copying : SoftToken {
    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(SoftToken::SetUp());
        source = login(makeToken("source"));
        target = login(makeToken("target"));
    }
    CK_RV copy(CK_SESSION_HANDLE to, Handle object, const Attributes& changes, Handle& made) const
    {
        std::vector<CK_ATTRIBUTE> list = templateOf(changes);
        const CK_ULONG count = static_cast<CK_ULONG>(list.size());
        return CT_CopyObject(to, source, object, list.empty() ? nullptr : list.data(), count, &made);
    }
    Handle copied(CK_SESSION_HANDLE to, Handle object, const Attributes& changes) const
    {
        Handle made = CK_INVALID_HANDLE;
        EXPECT_EQ(copy(to, object, changes, made), CKR_OK);
        return made;
    }
    CK_SESSION_HANDLE source;
    CK_SESSION_HANDLE target;
};

Attributes data()
{
    return {attribute(CKA_CLASS, CKO_DATA), attribute(CKA_TOKEN, YES), attribute(CKA_PRIVATE, NO),
        {CKA_LABEL, "paper"}, {CKA_APPLICATION, "desk"}, {CKA_VALUE, "words"}};
}

Attributes certificate()
{
    return {attribute(CKA_CLASS, CKO_CERTIFICATE), attribute(CKA_CERTIFICATE_TYPE, CKC_X_509), {CKA_ID, "id"},
        attribute(CKA_TOKEN, YES), {CKA_SUBJECT, "\x30"}, {CKA_ISSUER, "\x30\x31"},
        {CKA_SERIAL_NUMBER, "\x02"}, {CKA_START_DATE, "20260102"}, {CKA_VALUE, "not checked"}};
}

Attributes secretKey()
{
    return {attribute(CKA_CLASS, CKO_SECRET_KEY), attribute(CKA_KEY_TYPE, CKK_AES), attribute(CKA_TOKEN, YES),
        {CKA_LABEL, "key"}, {CKA_ID, "id"}, {CKA_VALUE, "0123456789abcdef"}, attribute(CKA_DECRYPT, NO)};
}

Attributes operator+(Attributes some, const Attributes& more)
{
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

TEST_F(Copying, toEitherTokenKeepsTheAttributesButThoseGiven)
{
    for (const CK_SESSION_HANDLE to : {source, target}) {
        for (const Attributes& object : {data(), certificate(), secretKey() + READABLE}) {
            SCOPED_TRACE(to == source ? "one token" : "two tokens");
            const Handle made = copied(to, create(source, object), {{CKA_LABEL, "copy"}});
            for (const Attribute& each : object) {
                const std::string expected = each.type == CKA_LABEL ? "copy" : each.value;
                EXPECT_EQ(read(to, made, each.type), expected) << "attribute " << each.type;
            }
            EXPECT_EQ(C_DestroyObject(to, made), CKR_OK);
        }
        EXPECT_EQ(read(to, copied(to, create(source, data()), {}), CKA_LABEL), "paper");
    }
}

TEST_F(Copying, keyPairsWorkOnTheOtherToken)
{
    const struct {
        CK_MECHANISM_TYPE mechanism;
        KeyPair pair;
    } cases[] = {
        {CKM_SHA256_RSA_PKCS, makeRsaPair(source, READABLE)},
        {CKM_ECDSA, makeEcPair(source)},
    };
    const std::string text = "twenty bytes of text";
    for (const auto& [mechanism, pair] : cases) {
        SCOPED_TRACE(mechanism);
        const Handle publicKey = copied(target, pair.publicKey, {});
        const Handle privateKey = copied(target, pair.privateKey, {attribute(CKA_SENSITIVE, YES)});
        EXPECT_EQ(verify(target, mechanism, publicKey, text, sign(source, mechanism, pair.privateKey, text)),
            CKR_OK);
        EXPECT_EQ(verify(source, mechanism, pair.publicKey, text, sign(target, mechanism, privateKey, text)),
            CKR_OK);
        EXPECT_EQ(read(target, privateKey, CKA_SENSITIVE), "\1");
    }
}

TEST_F(Copying, whatCannotBeCopiedWholeIsRefused)
{
    const Attributes sensitive = {attribute(CKA_SENSITIVE, YES), attribute(CKA_EXTRACTABLE, YES)};
    const Attributes unextractable = {attribute(CKA_SENSITIVE, NO), attribute(CKA_EXTRACTABLE, NO)};
    const Attributes notCopyable = {attribute(CKA_COPYABLE, NO)};
    const CK_ATTRIBUTE inner = {CKA_EXTRACTABLE, const_cast<CK_BBOOL*>(&YES), sizeof YES};
    const Attributes wrapping = {attribute(CKA_WRAP_TEMPLATE, inner)};
    const struct {
        const char* name;
        Handle object;
        CK_RV rv;
    } cases[] = {
        {"sensitive", create(source, secretKey() + sensitive), CKR_ATTRIBUTE_SENSITIVE},
        {"unextractable", create(source, secretKey() + unextractable), CKR_ATTRIBUTE_SENSITIVE},
        {"private, sensitive", makeRsaPair(source, {}).privateKey, CKR_ATTRIBUTE_SENSITIVE},
        {"not copyable", create(source, data() + notCopyable), CKR_ACTION_PROHIBITED},
        {"rules inside", create(source, secretKey() + READABLE + wrapping), CKR_FUNCTION_NOT_SUPPORTED},
        {"no object", 12345, CKR_OBJECT_HANDLE_INVALID},
    };
    for (const auto& [name, object, rv] : cases) {
        Handle made = 77;
        EXPECT_EQ(copy(target, object, {}, made), rv) << name;
        EXPECT_EQ(made, 77U) << name;
    }
    EXPECT_EQ(countObjects(target), 0U);
}

TEST_F(Copying, badArgumentsAreRefused)
{
    const Handle object = create(source, data());
    Handle made = 77;
    EXPECT_EQ(CT_CopyObject(target, source, object, nullptr, 0, nullptr), CKR_ARGUMENTS_BAD);
    EXPECT_EQ(CT_CopyObject(target, source, object, nullptr, 1, &made), CKR_ARGUMENTS_BAD);
    EXPECT_EQ(CT_CopyObject(99, source, object, nullptr, 0, &made), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(CT_CopyObject(target, 99, object, nullptr, 0, &made), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(made, 77U);
}

TEST_F(SoftToken, aTokenIsInitialisedFromASessionOnAnother)
{
    const CK_SLOT_ID own = makeToken("own");
    const CK_SLOT_ID blank = blankSlot();
    const CK_SESSION_HANDLE session = openSession(own);
    const auto init = [&](CK_SESSION_HANDLE from, CK_SLOT_ID slot, CK_BYTE* name) {
        return CT_InitToken(from, slot, bytes(SO_PIN), length(SO_PIN), name);
    };
    const std::string name = label("new");
    EXPECT_EQ(init(99, blank, bytes(name)), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(init(session, blank, nullptr), CKR_ARGUMENTS_BAD);
    EXPECT_EQ(init(session, own, bytes(name)), CKR_SESSION_EXISTS);
    EXPECT_EQ(tokenInfo(blank).flags & CKF_TOKEN_INITIALIZED, 0U);
    EXPECT_EQ(labelOf(own), label("own"));

    EXPECT_EQ(init(session, blank, bytes(name)), CKR_OK);
    EXPECT_EQ(labelOf(blank), name);
    EXPECT_TRUE(isOpen(session));
}

TEST_F(SoftToken, aResetErasesTheSessionsTokenAndLabelsIt)
{
    const std::string second = label("second");
    const CK_SLOT_ID slot = makeToken("first");
    for (CK_BYTE* const given : {bytes(second), static_cast<CK_BYTE*>(nullptr)}) {
        const CK_SESSION_HANDLE session = openSession(slot);
        create(session, data());
        ASSERT_EQ(CT_ResetToken(session, bytes(SO_PIN), length(SO_PIN), given), CKR_OK);
        EXPECT_FALSE(isOpen(session));
        EXPECT_EQ(labelOf(slot), second);
        EXPECT_EQ(countObjects(openSession(slot)), 0U);
        C_CloseAllSessions(slot);
    }
}

TEST_F(SoftToken, aRefusedResetLeavesTheTokenAndOtherSessions)
{
    const CK_SLOT_ID slot = makeToken("kept");
    const CK_SESSION_HANDLE other = openSession(slot);
    create(other, data());
    const auto reset = [](CK_SESSION_HANDLE session, const std::string& pin) {
        return CT_ResetToken(session, bytes(pin), length(pin), nullptr);
    };
    EXPECT_EQ(reset(99, SO_PIN), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(reset(openSession(slot), SO_PIN), CKR_SESSION_EXISTS);
    EXPECT_TRUE(isOpen(other));
    EXPECT_EQ(reset(other, "wrong pin"), CKR_PIN_INCORRECT);
    EXPECT_EQ(countObjects(openSession(slot)), 1U);
}

// Children are run anew from the start, so that they have no module yet.
struct OtherModule : testing::Test {
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

void setModule(const char* module, const char* kind)
{
    setenv("ZERLIN_MODULE", module, 1);
    setenv("MODULE_DOUBLE", kind, 1);
}

// Ends the process, with status 0 when every call answers CKR_GENERAL_ERROR, also of threads that come at
// once.
[[noreturn]] void expectUnusable(const char* module, const char* kind)
{
    setModule(module, kind);
    std::atomic<int> others = 0;
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&] { others += C_Initialize(nullptr) != CKR_GENERAL_ERROR; });
        }
    }
    CK_FUNCTION_LIST_PTR list = nullptr;
    for (const CK_RV rv : {C_GetFunctionList(&list), C_GetInfo(nullptr), C_GenerateRandom(1, nullptr, 0),
             C_WaitForSlotEvent(0, nullptr, nullptr), CT_CopyObject(1, 1, 1, nullptr, 0, nullptr),
             CT_InitToken(1, 1, nullptr, 0, nullptr), CT_ResetToken(1, nullptr, 0, nullptr)}) {
        others += rv != CKR_GENERAL_ERROR;
    }
    std::_Exit(others);
}

TEST_F(OtherModule, anUnusableOneIsToldInOneLineAndAnswersNothing)
{
    const struct {
        const char* module;
        const char* kind; // of the double
        const char* reason;
    } cases[] = {
        {"/nowhere/module.so", "", "No such file"},
        {"/dev/null", "", "file too short"},
        {"libm.so.6", "", "it has no C_GetFunctionList"},
        {"libcryptoki.so", "", "it is this library"},
        {ZERLIN_MODULE_DOUBLE, "failing", "its C_GetFunctionList fails"},
        {ZERLIN_MODULE_DOUBLE, "of 1.0", "older than PKCS#11 2.0"},
    };
    for (const auto& [module, kind, reason] : cases) {
        SCOPED_TRACE(reason);
        EXPECT_EXIT(expectUnusable(module, kind), testing::ExitedWithCode(0),
            std::string("^zerlin: cannot use the PKCS#11 module [^\n]*(") + reason +
                ")[^\n]*install the package libsofthsm2:i386, or set ZERLIN_MODULE[^\n]*\n$");
    }
}

// Ends the process, with status 0 when every function comes with its own arguments to its own like.
[[noreturn]] void expectForwarded()
{
    setModule(ZERLIN_MODULE_DOUBLE, "");
    CK_FUNCTION_LIST_PTR list = nullptr;
    if (C_GetFunctionList(&list) != CKR_OK) std::_Exit(1);
    void* const module = dlopen(ZERLIN_MODULE_DOUBLE, RTLD_NOW | RTLD_NOLOAD);
    const auto last = static_cast<const CK_ULONG*>(dlsym(module, "lastArguments"));

    // As many arguments as each function of the list has, and the vendor functions after them.
    const std::string counts = "11113223343551123541452344341355335532532335333535333555555868633113"
                               "654";
    using Function =
        CK_RV (*)(CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG);
    void* const* const listed = reinterpret_cast<void* const*>(&list->C_Initialize);
    std::vector<void*> functions(listed, listed + 68);
    functions.push_back(reinterpret_cast<void*>(CT_CopyObject));
    functions.push_back(reinterpret_cast<void*>(CT_InitToken));
    functions.push_back(reinterpret_cast<void*>(CT_ResetToken));

    int wrong = 0;
    for (std::size_t i = 0; i < functions.size(); ++i) {
        if (i == 3) continue; // C_GetFunctionList is not forwarded
        const CK_ULONG given[8] = {1, 2, 3, 4, 5, 6, 7, 8};
        const CK_RV rv = reinterpret_cast<Function>(functions[i])(1, 2, 3, 4, 5, 6, 7, 8);
        if (rv != (i < 68 ? 1000 + i : 2000 + i - 68) ||
            !std::equal(given, given + (counts[i] - '0'), last)) {
            std::fprintf(stderr, "function %zu answers %lu\n", i, rv);
            ++wrong;
        }
    }
    std::_Exit(wrong);
}

TEST_F(OtherModule, everyFunctionIsForwardedWithItsArguments)
{
    EXPECT_EXIT(expectForwarded(), testing::ExitedWithCode(0), "^$");
}

[[noreturn]] void expectGaps()
{
    setModule(ZERLIN_MODULE_DOUBLE, "of 2.0 with C_GetInfo alone");
    const bool asExpected = C_GetInfo(nullptr) == 1002 &&
                            C_Initialize(nullptr) == CKR_FUNCTION_NOT_SUPPORTED &&
                            C_WaitForSlotEvent(0, nullptr, nullptr) == CKR_FUNCTION_NOT_SUPPORTED;
    std::_Exit(asExpected ? 0 : 1);
}

TEST_F(OtherModule, whatItLacksIsNotSupported)
{
    EXPECT_EXIT(expectGaps(), testing::ExitedWithCode(0), "^$");
}

TEST_F(OtherModule, anEmptyNameIsNone)
{
    const auto getInfo = [] {
        setModule("", "");
        std::_Exit(C_GetInfo(nullptr) == CKR_CRYPTOKI_NOT_INITIALIZED ? 0 : 1);
    };
    EXPECT_EXIT(getInfo(), testing::ExitedWithCode(0), "^$");
}

} // namespace
