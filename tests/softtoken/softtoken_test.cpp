// The embedded libcryptoki.so: over SoftHSM, with a directory of tokens per test, and over unusable modules
// and the recording module, in child processes because a process loads one module only.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

struct Attribute {
    CK_ATTRIBUTE_TYPE type;
    std::string value;
};
using Attributes = std::vector<Attribute>;

std::string word(CK_ULONG value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

const std::string PIN = "some pin";
const std::string YES = "\1";
const std::string NO = {'\0'};
const Attributes DATA = {{CKA_CLASS, word(CKO_DATA)}, {CKA_TOKEN, YES}, {CKA_PRIVATE, NO},
    {CKA_APPLICATION, "desk"}, {CKA_VALUE, "words"}};
const Attributes KEY = {{CKA_CLASS, word(CKO_SECRET_KEY)}, {CKA_KEY_TYPE, word(CKK_AES)}, {CKA_DECRYPT, NO},
    {CKA_VALUE, "0123456789abcdef"}};
const Attributes READABLE = {{CKA_SENSITIVE, NO}, {CKA_EXTRACTABLE, YES}};

Attributes operator+(Attributes some, const Attributes& more)
{
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

CK_BYTE* bytes(const std::string& text)
{
    return reinterpret_cast<CK_BYTE*>(const_cast<char*>(text.data()));
}

// The result points into the attributes.
std::vector<CK_ATTRIBUTE> templateOf(const Attributes& attributes)
{
    std::vector<CK_ATTRIBUTE> result;
    for (const auto& [type, value] : attributes)
        result.push_back({type, bytes(value), value.size()});
    return result;
}

std::string label(std::string text)
{
    text.resize(32, ' ');
    return text;
}

std::string labelOf(CK_SLOT_ID slot)
{
    CK_TOKEN_INFO info = {};
    EXPECT_EQ(C_GetTokenInfo(slot, &info), CKR_OK);
    return {reinterpret_cast<const char*>(info.label), sizeof info.label};
}

CK_SESSION_HANDLE openSession(CK_SLOT_ID slot)
{
    CK_SESSION_HANDLE session = CK_INVALID_HANDLE;
    EXPECT_EQ(C_OpenSession(slot, CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr, nullptr, &session), CKR_OK);
    return session;
}

// The user's session on a new token. SoftHSM then adds an uninitialised token in the next slot.
CK_SESSION_HANDLE makeToken(CK_SLOT_ID slot)
{
    CK_ULONG count = 0;
    EXPECT_EQ(C_GetSlotList(CK_TRUE, nullptr, &count), CKR_OK);
    EXPECT_EQ(C_InitToken(slot, bytes(PIN), PIN.size(), bytes(label("old"))), CKR_OK);
    const CK_SESSION_HANDLE session = openSession(slot);
    EXPECT_EQ(C_Login(session, CKU_SO, bytes(PIN), PIN.size()), CKR_OK);
    EXPECT_EQ(C_InitPIN(session, bytes(PIN), PIN.size()), CKR_OK);
    EXPECT_EQ(C_Logout(session), CKR_OK);
    EXPECT_EQ(C_Login(session, CKU_USER, bytes(PIN), PIN.size()), CKR_OK);
    return session;
}

CK_OBJECT_HANDLE create(CK_SESSION_HANDLE session, const Attributes& attributes)
{
    std::vector<CK_ATTRIBUTE> list = templateOf(attributes);
    CK_OBJECT_HANDLE made = CK_INVALID_HANDLE;
    EXPECT_EQ(C_CreateObject(session, list.data(), list.size(), &made), CKR_OK);
    return made;
}

std::string read(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    std::string value(512, '\0');
    CK_ATTRIBUTE attribute = {type, value.data(), value.size()};
    EXPECT_EQ(C_GetAttributeValue(session, object, &attribute, 1), CKR_OK) << "attribute " << type;
    value.resize(std::min<CK_ULONG>(attribute.ulValueLen, value.size()));
    return value;
}

CK_ULONG countObjects(CK_SESSION_HANDLE session)
{
    CK_OBJECT_HANDLE found[20];
    CK_ULONG count = 0;
    EXPECT_EQ(C_FindObjectsInit(session, nullptr, 0), CKR_OK);
    EXPECT_EQ(C_FindObjects(session, found, 20, &count), CKR_OK);
    EXPECT_EQ(C_FindObjectsFinal(session), CKR_OK);
    return count;
}

// The tokens are in slots 0 and 1. The token in slot 2 is not initialised.
struct SoftToken : testing::Test {
    void SetUp() override
    {
        directory = std::filesystem::temp_directory_path() / "softtoken_test.XXXXXX";
        ASSERT_NE(mkdtemp(directory.data()), nullptr);
        const std::string conf = directory + "/conf";
        std::ofstream(conf) << "directories.tokendir = " << directory << "\n";
        setenv("SOFTHSM2_CONF", conf.c_str(), 1);
        ASSERT_EQ(C_Initialize(nullptr), CKR_OK);
        source = makeToken(0);
        target = makeToken(1);
    }
    void TearDown() override
    {
        EXPECT_EQ(C_Finalize(nullptr), CKR_OK);
        std::filesystem::remove_all(directory);
    }
    CK_RV copy(CK_SESSION_HANDLE to, CK_OBJECT_HANDLE object, const Attributes& changes)
    {
        std::vector<CK_ATTRIBUTE> list = templateOf(changes);
        return CT_CopyObject(to, source, object, list.data(), list.size(), &made);
    }
    std::string directory;
    CK_SESSION_HANDLE source;
    CK_SESSION_HANDLE target;
    CK_OBJECT_HANDLE made = 77;
};

TEST_F(SoftToken, aCopyTakesTheGivenAttributesAndKeepsTheOthers)
{
    for (const CK_SESSION_HANDLE to : {source, target}) {
        for (const Attributes& object : {DATA, KEY + READABLE}) {
            ASSERT_EQ(
                copy(to, create(source, object + Attributes{{CKA_LABEL, "a"}}), {{CKA_LABEL, "b"}}), CKR_OK);
            for (const auto& [type, value] : object + Attributes{{CKA_LABEL, "b"}})
                EXPECT_EQ(read(to, made, type), value) << "attribute " << type;
        }
        EXPECT_EQ(copy(to, create(source, DATA), {}), CKR_OK);
    }
}

TEST_F(SoftToken, uncopyableObjectsAreRefused)
{
    const std::pair<CK_OBJECT_HANDLE, CK_RV> rows[] = {
        {create(source, KEY + Attributes{{CKA_SENSITIVE, YES}}), CKR_ATTRIBUTE_SENSITIVE},
        {create(source, KEY + Attributes{{CKA_EXTRACTABLE, NO}}), CKR_ATTRIBUTE_SENSITIVE},
        {create(source, DATA + Attributes{{CKA_COPYABLE, NO}}), CKR_ACTION_PROHIBITED},
        {12345, CKR_OBJECT_HANDLE_INVALID},
    };
    for (const auto& [object, rv] : rows)
        EXPECT_EQ(copy(target, object, {}), rv);
    EXPECT_EQ(copy(99, create(source, DATA), {}), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(CT_CopyObject(target, source, rows[0].first, nullptr, 1, &made), CKR_ARGUMENTS_BAD);
    EXPECT_EQ(made, 77U);
    EXPECT_EQ(countObjects(target), 0U);
}

TEST_F(SoftToken, aTokenIsInitialisedFromASessionOnAnother)
{
    const std::string name = label("new");
    CK_ULONG count = 0;
    EXPECT_EQ(C_GetSlotList(CK_TRUE, nullptr, &count), CKR_OK);
    EXPECT_EQ(CT_InitToken(99, 2, bytes(PIN), PIN.size(), bytes(name)), CKR_SESSION_HANDLE_INVALID);
    EXPECT_EQ(CT_InitToken(source, 1, bytes(PIN), PIN.size(), bytes(name)), CKR_SESSION_EXISTS);
    EXPECT_EQ(labelOf(1), label("old"));
    EXPECT_EQ(CT_InitToken(source, 2, bytes(PIN), PIN.size(), bytes(name)), CKR_OK);
    EXPECT_EQ(labelOf(2), name);
}

TEST_F(SoftToken, aResetErasesTheSessionsTokenAndLabelsIt)
{
    create(target, DATA);
    const std::string name = label("new");
    EXPECT_EQ(CT_ResetToken(openSession(1), bytes(PIN), PIN.size(), bytes(name)), CKR_SESSION_EXISTS);
    EXPECT_EQ(CT_ResetToken(target, bytes("wrong pin"), 9, bytes(name)), CKR_PIN_INCORRECT);
    target = openSession(1);
    EXPECT_EQ(countObjects(target), 1U);
    EXPECT_EQ(CT_ResetToken(target, bytes(PIN), PIN.size(), bytes(name)), CKR_OK);
    EXPECT_EQ(labelOf(1), name);
    target = openSession(1);
    EXPECT_EQ(countObjects(target), 0U);
    EXPECT_EQ(CT_ResetToken(target, bytes(PIN), PIN.size(), nullptr), CKR_OK);
    EXPECT_EQ(labelOf(1), name) << "kept when none is given";
}

// A child process runs the program again from its start, so that no module is loaded yet.
struct OtherModule : testing::Test {
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

[[noreturn]] void expectUnusable(const char* module)
{
    setenv("ZERLIN_MODULE", module, 1);
    CK_FUNCTION_LIST_PTR list = nullptr;
    int wrong = 0;
    for (const CK_RV rv : {C_Initialize(nullptr), C_GetFunctionList(&list), C_GetInfo(nullptr),
             CT_CopyObject(1, 1, 1, nullptr, 0, nullptr), CT_InitToken(1, 1, nullptr, 0, nullptr),
             CT_ResetToken(1, nullptr, 0, nullptr)}) {
        wrong += rv != CKR_GENERAL_ERROR;
    }
    std::_Exit(wrong);
}

TEST_F(OtherModule, anUnusableModuleIsReportedInOneLineAndDoesNothing)
{
    const std::pair<const char*, std::string> rows[] = {{"/nowhere/module.so", "No such file"},
        {"/dev/null", "file too short"}, {"libm.so.6", "it has no C_GetFunctionList"},
        {"libcryptoki.so", "it is this library"}};
    for (const auto& [module, reason] : rows) {
        EXPECT_EXIT(expectUnusable(module), testing::ExitedWithCode(0),
            "^zerlin: cannot use the PKCS#11 module [^\n]*(" + reason + ")[^\n]*\n$");
    }
}

// The number of arguments of each function of the list.
const std::string COUNTS = "11113223343551123541452344341355335532532335333535333555555868633113";

[[noreturn]] void expectForwarded()
{
    setenv("ZERLIN_MODULE", ZERLIN_RECORDING_MODULE, 1);
    CK_FUNCTION_LIST_PTR list = nullptr;
    if (C_GetFunctionList(&list) != CKR_OK || list->C_GetFunctionList != C_GetFunctionList) std::_Exit(1);
    void* const module = dlopen(ZERLIN_RECORDING_MODULE, RTLD_NOW | RTLD_NOLOAD);
    const auto last = static_cast<const CK_ULONG*>(dlsym(module, "lastArguments"));
    using Function =
        CK_RV (*)(CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG);
    const Function* const functions = reinterpret_cast<const Function*>(&list->C_Initialize);
    const CK_ULONG given[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    for (std::size_t i = 0; i < 68; ++i) {
        if (i == 3) continue; // C_GetFunctionList is not forwarded
        const CK_RV rv = functions[i](1, 2, 3, 4, 5, 6, 7, 8);
        if (rv != 1000 + i || !std::equal(given, given + (COUNTS[i] - '0'), last)) std::_Exit(2);
    }
    std::_Exit(0);
}

TEST_F(OtherModule, everyFunctionIsForwardedWithItsArguments)
{
    EXPECT_EXIT(expectForwarded(), testing::ExitedWithCode(0), "^$");
}

} // namespace
