// The embedded libcryptoki.so over a module that plays what the test scripts, and over unusable modules. The
// end-to-end tests use it over SoftHSM.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <algorithm>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <map>
#include <span>
#include <sys/wait.h>

namespace {

const std::string SECRET = "0123456789abcdef";
int freedWithSecret = 0;
bool isOutOfMemory = false;

} // namespace

// The library reads values of attributes into arrays.
void* operator new[](std::size_t size)
{
    if (isOutOfMemory) throw std::bad_alloc();
    return std::malloc(size);
}
void operator delete[](void* memory) noexcept
{
    const std::string_view content(static_cast<const char*>(memory), malloc_usable_size(memory));
    freedWithSecret += content.find(SECRET) != std::string_view::npos;
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    operator delete[](memory);
}

namespace {

using Attributes = std::map<CK_ATTRIBUTE_TYPE, std::string>;

// Works in a child process, because a process loads one module only.
template <typename Work>
void inChild(const char* module, Work work)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        setenv("ZERLIN_MODULE", module, 1);
        [&]() noexcept { work(); }();
        std::fflush(nullptr);
        std::_Exit(testing::Test::HasFailure());
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the child process over the module \"" << module << '"';
}

std::string word(CK_ULONG value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

const std::string YES = "\1";
const std::string NO = {'\0'};

Attributes operator+(Attributes changes, const Attributes& base)
{
    changes.insert(base.begin(), base.end());
    return changes;
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

// ---- over a module that plays what is scripted here: session 10 is on slot 1, and so on

// Places in the list of functions.
constexpr std::size_t GET_TOKEN_INFO = 6, INIT_TOKEN = 9, CLOSE_SESSION = 13, GET_SESSION_INFO = 15,
                      CREATE_OBJECT = 20, COPY_OBJECT = 21, GET_ATTRIBUTE_VALUE = 24;
constexpr CK_ULONG SOURCE = 20;
constexpr CK_ULONG OBJECT = 77;
const std::string NO_LENGTH = "a value without a length";

struct Script {
    std::size_t failing = 0; // the function at this place returns CKR_DEVICE_ERROR
    CK_ULONG sessions = 1;
    Attributes object = {};
    std::string log = {};  // the calls that change something, with their arguments
    Attributes given = {}; // to C_CreateObject or C_CopyObject
};
Script script;

CK_RV readAttribute(CK_ATTRIBUTE& attribute)
{
    const auto found = script.object.find(attribute.type);
    if (found == script.object.end()) return CKR_ATTRIBUTE_TYPE_INVALID;
    const std::string& value = found->second;
    if (value == "sensitive") return CKR_ATTRIBUTE_SENSITIVE;
    if (attribute.pValue != nullptr) value.copy(static_cast<char*>(attribute.pValue), attribute.ulValueLen);
    attribute.ulValueLen = value == NO_LENGTH ? CK_UNAVAILABLE_INFORMATION : value.size();
    return CKR_OK;
}

template <typename T>
T& at(CK_ULONG address)
{
    return *reinterpret_cast<T*>(address);
}

void note(std::initializer_list<CK_ULONG> words, const std::string& end = "")
{
    for (const CK_ULONG one : words)
        script.log += std::to_string(one) + " ";
    script.log += end + "\n";
}

void noteTemplate(CK_ULONG attributes, CK_ULONG count)
{
    ASSERT_NE(attributes, 0U) << "some modules refuse a null template";
    for (const CK_ATTRIBUTE& one : std::span(&at<CK_ATTRIBUTE>(attributes), count))
        script.given[one.type] = {static_cast<const char*>(one.pValue), one.ulValueLen};
    EXPECT_EQ(script.given.size(), count) << "an attribute is given twice";
}

CK_RV play(std::size_t place, const CK_ULONG* words)
{
    switch (place) {
    case GET_SESSION_INFO:
        at<CK_SESSION_INFO>(words[1]).slotID = words[0] / 10;
        break;
    case GET_TOKEN_INFO:
        label("kept").copy(reinterpret_cast<char*>(at<CK_TOKEN_INFO>(words[1]).label), 32);
        at<CK_TOKEN_INFO>(words[1]).ulSessionCount = script.sessions;
        break;
    case GET_ATTRIBUTE_VALUE:
        EXPECT_EQ(std::pair(words[0], words[1]), std::pair(SOURCE, OBJECT));
        return readAttribute(at<CK_ATTRIBUTE>(words[2]));
    case INIT_TOKEN:
        note({place, words[0], words[1], words[2]}, {&at<char>(words[3]), 32});
        break;
    case CREATE_OBJECT:
        noteTemplate(words[1], words[2]);
        note({place, words[0], words[3]});
        break;
    case COPY_OBJECT:
        noteTemplate(words[2], words[3]);
        note({place, words[0], words[1], words[4]});
        break;
    default:
        note({place, words[0]});
    }
    return place == script.failing ? CKR_DEVICE_ERROR : CKR_OK;
}

void load(const char* module, CK_RV (*answer)(std::size_t, const CK_ULONG*))
{
    void* const handle = dlopen(module, RTLD_NOW);
    ASSERT_NE(handle, nullptr) << dlerror();
    *static_cast<decltype(answer)*>(dlsym(handle, "onCall")) = answer;
}

CK_BYTE* const PIN_AT = reinterpret_cast<CK_BYTE*>(4);
CK_ULONG* const MADE_AT = reinterpret_cast<CK_ULONG*>(9);

CK_RV copy(CK_SESSION_HANDLE to, const Attributes& changes)
{
    std::vector<CK_ATTRIBUTE> list = templateOf(changes);
    return CT_CopyObject(to, SOURCE, OBJECT, list.empty() ? nullptr : list.data(), list.size(), MADE_AT);
}

CK_RV init()
{
    return CT_InitToken(10, 3, PIN_AT, 8, bytes(label("new")));
}

CK_RV reset()
{
    return CT_ResetToken(10, PIN_AT, 8, bytes(label("new")));
}

TEST(Recorded, vendorFunctionsWorkWithStandardCalls)
{
    const struct {
        const char* name;
        CK_RV (*call)();
        CK_RV rv;
        std::string log;
        Script played = {};
    } rows[] = {
        {"init", init, CKR_OK, "9 3 4 8 " + label("new") + "\n"},
        {"init without a label", [] { return CT_InitToken(10, 3, PIN_AT, 8, nullptr); }, CKR_ARGUMENTS_BAD,
            ""},
        {"init, no such session", init, CKR_DEVICE_ERROR, "", {GET_SESSION_INFO}},
        {"reset", reset, CKR_OK, "13 10 \n9 1 4 8 " + label("new") + "\n"},
        {"reset, sessions unknown", reset, CKR_OK, "13 10 \n9 1 4 8 " + label("new") + "\n",
            {0, CK_UNAVAILABLE_INFORMATION}},
        {"reset keeps the label", [] { return CT_ResetToken(10, PIN_AT, 8, nullptr); }, CKR_OK,
            "13 10 \n9 1 4 8 " + label("kept") + "\n"},
        {"reset, other sessions", reset, CKR_SESSION_EXISTS, "", {0, 2}},
        {"reset, no such session", reset, CKR_DEVICE_ERROR, "", {GET_SESSION_INFO}},
        {"reset, no token", reset, CKR_DEVICE_ERROR, "", {GET_TOKEN_INFO}},
        {"reset, still open", reset, CKR_DEVICE_ERROR, "13 10 \n", {CLOSE_SESSION}},
        {"copy", [] { return copy(SOURCE + 1, {}); }, CKR_OK, "21 21 77 9 \n"},
        {"copy, no such session", [] { return copy(10, {}); }, CKR_DEVICE_ERROR, "", {GET_SESSION_INFO}},
        {"copy, nowhere to", [] { return CT_CopyObject(10, SOURCE, OBJECT, nullptr, 0, nullptr); },
            CKR_ARGUMENTS_BAD, ""},
        {"copy, no template", [] { return CT_CopyObject(10, SOURCE, OBJECT, nullptr, 1, MADE_AT); },
            CKR_ARGUMENTS_BAD, ""},
    };
    inChild(RECORDING_MODULE, [&] {
        load(RECORDING_MODULE, play);
        for (const auto& row : rows) {
            script = row.played;
            EXPECT_EQ(row.call(), row.rv) << row.name;
            EXPECT_EQ(script.log, row.log) << row.name;
        }
    });
}

TEST(Recorded, anObjectIsCopiedCompletelyOrNotAtAll)
{
    const Attributes data = {
        {CKA_CLASS, word(CKO_DATA)}, {CKA_PRIVATE, YES}, {CKA_LABEL, "a"}, {CKA_VALUE, "v"}};
    const Attributes hollow = {{CKA_CLASS, word(CKO_SECRET_KEY)}, {CKA_KEY_TYPE, word(CKK_AES)}};
    const Attributes secretKey = hollow + Attributes{{CKA_VALUE, SECRET}};
    const Attributes privateKey = {{CKA_CLASS, word(CKO_PRIVATE_KEY)}, {CKA_MODULUS, "m"}};
    const struct {
        const char* name;
        Attributes object;
        Attributes changes;
        CK_RV rv;
    } rows[] = {
        {"data", data, {}, CKR_OK},
        {"another label", data, {{CKA_LABEL, "b"}}, CKR_OK},
        {"no values", data + Attributes{{CKA_APPLICATION, ""}, {CKA_OBJECT_ID, NO_LENGTH}}, {}, CKR_OK},
        {"copyable", data + Attributes{{CKA_COPYABLE, YES}}, {}, CKR_OK},
        {"not copyable", data + Attributes{{CKA_COPYABLE, NO}}, {}, CKR_ACTION_PROHIBITED},
        {"unknown class", {{CKA_CLASS, word(CKO_HW_FEATURE)}}, {}, CKR_FUNCTION_NOT_SUPPORTED},
        {"no object", {}, {}, CKR_ATTRIBUTE_TYPE_INVALID},
        {"secret key", secretKey, {}, CKR_OK},
        {"sensitive", hollow + Attributes{{CKA_VALUE, "sensitive"}}, {}, CKR_ATTRIBUTE_SENSITIVE},
        {"sensitive, value given", hollow + Attributes{{CKA_VALUE, "sensitive"}}, {{CKA_VALUE, "v"}}, CKR_OK},
        {"hollow", hollow, {}, CKR_KEY_UNEXTRACTABLE},
        {"hollow, empty", hollow + Attributes{{CKA_VALUE, ""}}, {}, CKR_KEY_UNEXTRACTABLE},
        {"hollow, no length", hollow + Attributes{{CKA_VALUE, NO_LENGTH}}, {}, CKR_KEY_UNEXTRACTABLE},
        {"hollow private key", privateKey, {}, CKR_KEY_UNEXTRACTABLE},
        {"RSA private key", privateKey + Attributes{{CKA_PRIVATE_EXPONENT, SECRET}}, {}, CKR_OK},
        {"EC private key", privateKey + Attributes{{CKA_VALUE, SECRET}}, {}, CKR_OK},
        {"public key", {{CKA_CLASS, word(CKO_PUBLIC_KEY)}, {CKA_MODULUS, "m"}}, {}, CKR_OK},
        {"wraps", secretKey + Attributes{{CKA_WRAP_TEMPLATE, "t"}}, {}, CKR_FUNCTION_NOT_SUPPORTED},
        {"unwraps", secretKey + Attributes{{CKA_UNWRAP_TEMPLATE, "t"}}, {}, CKR_FUNCTION_NOT_SUPPORTED},
        {"derives", secretKey + Attributes{{CKA_DERIVE_TEMPLATE, "t"}}, {}, CKR_FUNCTION_NOT_SUPPORTED},
        {"template given", secretKey + Attributes{{CKA_WRAP_TEMPLATE, "t"}}, {{CKA_WRAP_TEMPLATE, "u"}},
            CKR_OK},
        {"template unknown", secretKey + Attributes{{CKA_WRAP_TEMPLATE, "sensitive"}}, {},
            CKR_ATTRIBUTE_SENSITIVE},
    };
    inChild(RECORDING_MODULE, [&] {
        load(RECORDING_MODULE, play);
        for (const auto& [name, object, changes, rv] : rows) {
            SCOPED_TRACE(name);
            script = {0, 1, object};
            EXPECT_EQ(copy(10, changes), rv);
            EXPECT_EQ(script.log, rv == CKR_OK ? "20 10 9 \n" : "");
            Attributes expected = changes + object;
            std::erase_if(expected, [](const auto& one) {
                return one.second.empty() || one.second == NO_LENGTH || one.first == CKA_COPYABLE;
            });
            EXPECT_EQ(script.given, rv == CKR_OK ? expected : Attributes());
            EXPECT_EQ(freedWithSecret, 0) << "a value that was read is not wiped";
        }
        script = {CREATE_OBJECT, 1, secretKey};
        EXPECT_EQ(copy(10, {}), CKR_DEVICE_ERROR);
        EXPECT_EQ(freedWithSecret, 0);
        isOutOfMemory = true;
        EXPECT_EQ(copy(10, {}), CKR_HOST_MEMORY);
    });
}

std::size_t lastPlace;
CK_ULONG lastArguments[8];

CK_RV record(std::size_t place, const CK_ULONG* arguments)
{
    lastPlace = place;
    std::copy_n(arguments, 8, lastArguments);
    return 1000 + place;
}

using Function = CK_RV (*)(CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG);

// The number of arguments of each function of the list, and of the vendor's.
constexpr std::string_view COUNTS = "11113223343551123541452344341355335532532335333535333555555868633113654";

TEST(Recorded, everyFunctionIsForwardedWithItsArguments)
{
    inChild(VENDOR_MODULE, [] {
        load(VENDOR_MODULE, record);
        CK_FUNCTION_LIST_PTR list = nullptr;
        EXPECT_EQ(C_GetFunctionList(nullptr), CKR_ARGUMENTS_BAD);
        ASSERT_EQ(C_GetFunctionList(&list), CKR_OK);
        EXPECT_EQ(list->C_GetFunctionList, C_GetFunctionList);
        const Function* const functions = reinterpret_cast<const Function*>(&list->C_Initialize);
        const char* const vendor[] = {"CT_CopyObject", "CT_InitToken", "CT_ResetToken"};
        const CK_ULONG given[8] = {1, 2, 3, 4, 5, 6, 7, 8};
        for (std::size_t i = 0; i < COUNTS.size(); ++i) {
            if (i == 3) continue; // C_GetFunctionList is not forwarded
            const Function function =
                i < 68 ? functions[i] : reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, vendor[i - 68]));
            EXPECT_EQ(function(1, 2, 3, 4, 5, 6, 7, 8), 1000 + i);
            EXPECT_EQ(lastPlace, i);
            EXPECT_TRUE(std::equal(given, given + (COUNTS[i] - '0'), lastArguments)) << "function " << i;
        }
    });
}

// ---- modules that lack something

void offer(const char* module, CK_VERSION version, bool isNull)
{
    load(module, record);
    auto* const list = static_cast<CK_FUNCTION_LIST**>(dlsym(dlopen(module, RTLD_NOW), "offeredList"));
    (*list)->version = version;
    if (isNull) *list = nullptr;
}

TEST(OtherModules, anOldListHasNoSlotEvents)
{
    const std::pair<CK_VERSION, CK_RV> rows[] = {
        {{2, 0}, CKR_FUNCTION_NOT_SUPPORTED}, {{2, 1}, 1067}, {{2, 40}, 1067}, {{3, 0}, 1067}};
    for (const auto& [version, rv] : rows) {
        inChild(RECORDING_MODULE, [&] {
            offer(RECORDING_MODULE, version, false);
            EXPECT_EQ(C_WaitForSlotEvent(0, nullptr, nullptr), rv)
                << int{version.major} << int{version.minor};
            EXPECT_EQ(C_CancelFunction(0), 1066U);
        });
    }
}

TEST(OtherModules, anUnusableOneIsReportedInOneLineAndDoesNothing)
{
    const struct {
        const char* module;
        const char* reason;
        CK_BYTE version = 0; // of its list
        bool isNull = false;
    } rows[] = {{"/nowhere/module.so", "No such file"}, {"/dev/null", "file too short"},
        {"libm.so.6", "it has no C_GetFunctionList"}, {"libcryptoki.so", "it is this library"},
        {RECORDING_MODULE, "it is older than PKCS#11 2.0", 1},
        {RECORDING_MODULE, "its C_GetFunctionList fails", 2, true}};
    for (const auto& row : rows) {
        inChild(row.module, [&] {
            if (row.version != 0) offer(row.module, {row.version, 20}, row.isNull);
            testing::internal::CaptureStderr();
            CK_FUNCTION_LIST_PTR list = nullptr;
            for (const CK_RV rv : {C_Initialize(nullptr), C_GetFunctionList(&list), C_GetInfo(nullptr),
                     CT_CopyObject(1, 1, 1, nullptr, 0, nullptr), CT_InitToken(1, 1, nullptr, 0, nullptr),
                     CT_ResetToken(1, nullptr, 0, nullptr)})
                EXPECT_EQ(rv, CKR_GENERAL_ERROR);
            const std::string report = testing::internal::GetCapturedStderr();
            EXPECT_EQ(report.find("zerlin: cannot use the PKCS#11 module "), 0U) << report;
            EXPECT_NE(report.find(row.reason), std::string::npos) << report;
            EXPECT_EQ(report.find('\n'), report.size() - 1) << report;
        });
    }
}

} // namespace
