// The embedded libcryptoki.so over a module that plays what the test scripts, and over unusable modules. The
// end-to-end tests use it over SoftHSM.
#include "cryptoki/functions.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <map>
#include <optional>
#include <span>

namespace {

const std::string SECRET = "0123456789abcdef";
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
    EXPECT_EQ(content.find(SECRET), content.npos) << "a value that was read is not wiped";
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    operator delete[](memory);
}

namespace {

using Answer = CK_RV (*)(std::size_t place, const CK_ULONG* words);

template <typename T>
T& variable(const char* module, const char* name)
{
    return *static_cast<T*>(dlsym(dlopen(module, RTLD_NOW), name));
}

// Works in a child process, because a process loads one module only. The answers are those of the recording
// module; what is printed is a regular expression.
template <typename Work>
void inChild(const char* module, Answer answer, const std::string& printed, Work work)
{
    const auto run = [&] {
        setenv("ZERLIN_MODULE", module, 1);
        if (answer != nullptr) variable<Answer>(module, "onCall") = answer;
        GTEST_FLAG_SET(throw_on_failure, true);
        work();
        std::_Exit(0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "^" + printed + "$") << module;
}

CK_BYTE* const PIN_AT = reinterpret_cast<CK_BYTE*>(4);
CK_ULONG* const MADE_AT = reinterpret_cast<CK_ULONG*>(9);
CK_BYTE NEW_LABEL[] = "n";

// ---- vendor functions that the module lacks, over a module that plays what is scripted here: session 10 is
// on slot 1, and so on

// Places in the list of functions.
constexpr std::size_t GET_TOKEN_INFO = 6, INIT_TOKEN = 9, CLOSE_SESSION = 13, GET_SESSION_INFO = 15,
                      CREATE_OBJECT = 20, COPY_OBJECT = 21, GET_ATTRIBUTE_VALUE = 24;
const std::string NO_LENGTH = "a value without a length";

using Attributes = std::map<CK_ATTRIBUTE_TYPE, std::string>;

struct Script {
    std::size_t failing = 0; // the function at this place returns CKR_DEVICE_ERROR
    CK_ULONG sessions = 1;
    Attributes object = {};
    std::vector<CK_ULONG> log = {}; // the calls that change something, with their arguments
    Attributes given = {};          // to C_CreateObject or C_CopyObject
};
Script script;

template <typename T>
T& at(CK_ULONG address)
{
    return *reinterpret_cast<T*>(address);
}

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

void noteCreation(const std::vector<CK_ULONG>& call, CK_ULONG attributes, CK_ULONG count)
{
    script.log = call;
    EXPECT_NE(attributes, 0U) << "some modules refuse a null template";
    for (const CK_ATTRIBUTE& one : std::span(&at<CK_ATTRIBUTE>(attributes), count))
        script.given[one.type] = {static_cast<const char*>(one.pValue), one.ulValueLen};
    EXPECT_EQ(script.given.size(), count) << "an attribute is given twice";
}

CK_RV play(std::size_t place, const CK_ULONG* words)
{
    if (place == GET_SESSION_INFO) at<CK_SESSION_INFO>(words[1]).slotID = words[0] / 10;
    if (place == GET_TOKEN_INFO) {
        at<CK_TOKEN_INFO>(words[1]).label[0] = 'k';
        at<CK_TOKEN_INFO>(words[1]).ulSessionCount = script.sessions;
    }
    if (place == GET_ATTRIBUTE_VALUE && words[0] == 20 && words[1] == 77)
        return readAttribute(at<CK_ATTRIBUTE>(words[2]));
    if (place == CLOSE_SESSION) script.log = {place, words[0]};
    if (place == INIT_TOKEN)
        script.log.insert(script.log.end(), {place, words[0], words[1], words[2], at<CK_BYTE>(words[3])});
    if (place == CREATE_OBJECT) noteCreation({place, words[0], words[3]}, words[1], words[2]);
    if (place == COPY_OBJECT) noteCreation({place, words[0], words[1], words[4]}, words[2], words[3]);
    return place == script.failing ? CKR_DEVICE_ERROR : CKR_OK;
}

TEST(SoftToken, vendorFunctionsWorkWithStandardCalls)
{
    CK_RV (*const init)() = [] { return CT_InitToken(10, 3, PIN_AT, 8, NEW_LABEL); };
    CK_RV (*const reset)() = [] { return CT_ResetToken(10, PIN_AT, 8, NEW_LABEL); };
    const std::vector<CK_ULONG> whole = {CLOSE_SESSION, 10, INIT_TOKEN, 1, 4, 8, 'n'};
    const struct {
        const char* name;
        CK_RV (*call)();
        CK_RV rv;
        std::vector<CK_ULONG> log = {};
        Script played = {};
    } rows[] = {
        {"init", init, CKR_OK, {INIT_TOKEN, 3, 4, 8, 'n'}},
        {"init, no such session", init, CKR_DEVICE_ERROR, {}, {GET_SESSION_INFO}},
        {"reset", reset, CKR_OK, whole},
        {"reset, sessions unknown", reset, CKR_OK, whole, {0, CK_UNAVAILABLE_INFORMATION}},
        {"reset keeps the label", [] { return CT_ResetToken(10, PIN_AT, 8, nullptr); }, CKR_OK,
            {CLOSE_SESSION, 10, INIT_TOKEN, 1, 4, 8, 'k'}},
        {"reset, other sessions", reset, CKR_SESSION_EXISTS, {}, {0, 2}},
        {"reset, still open", reset, CKR_DEVICE_ERROR, {CLOSE_SESSION, 10}, {CLOSE_SESSION}},
        {"copy within a slot", [] { return CT_CopyObject(21, 20, 77, nullptr, 0, MADE_AT); }, CKR_OK,
            {COPY_OBJECT, 21, 77, 9}},
        {"no template", [] { return CT_CopyObject(10, 20, 77, nullptr, 1, MADE_AT); }, CKR_ARGUMENTS_BAD},
    };
    inChild(RECORDING_MODULE, play, "", [&] {
        for (const auto& row : rows) {
            script = row.played;
            EXPECT_EQ(row.call(), row.rv) << row.name;
            EXPECT_EQ(script.log, row.log) << row.name;
        }
    });
}

// An object has all attributes that a row does not change.
TEST(SoftToken, anObjectIsCopiedCompletelyOrNotAtAll)
{
    const struct {
        const char* name;
        CK_OBJECT_CLASS type;
        Attributes object = {};
        CK_RV rv = CKR_OK;
        CK_ULONG sum = 0; // of the types that the copy is given
        Attributes changes = {};
    } rows[] = {
        {"data", CKO_DATA, {{CKA_OBJECT_ID, NO_LENGTH}}, CKR_OK, 777, {{CKA_LABEL, "b"}}},
        {"certificate", CKO_CERTIFICATE, {}, CKR_OK, 3429},
        {"public key", CKO_PUBLIC_KEY, {}, CKR_OK, 0x40001c1e},
        {"RSA key", CKO_PRIVATE_KEY, {{CKA_VALUE, ""}}, CKR_OK, 0x400027e2},
        {"EC key", CKO_PRIVATE_KEY, {{CKA_PRIVATE_EXPONENT, ""}, {CKA_VALUE, SECRET}}, CKR_OK, 0x400026d0},
        {"hollow private", CKO_PRIVATE_KEY, {{CKA_PRIVATE_EXPONENT, ""}, {CKA_VALUE, ""}},
            CKR_KEY_UNEXTRACTABLE},
        {"hollow secret", CKO_SECRET_KEY, {{CKA_VALUE, ""}}, CKR_KEY_UNEXTRACTABLE},
        {"sensitive", CKO_SECRET_KEY, {{CKA_VALUE, "sensitive"}}, CKR_ATTRIBUTE_SENSITIVE},
        {"given", CKO_SECRET_KEY, {{CKA_VALUE, "sensitive"}, {CKA_WRAP_TEMPLATE, "t"}}, CKR_OK, 0x80001ad6,
            {{CKA_VALUE, "v"}, {CKA_WRAP_TEMPLATE, "u"}}},
        {"wraps", CKO_SECRET_KEY, {{CKA_WRAP_TEMPLATE, "t"}}, CKR_FUNCTION_NOT_SUPPORTED},
        {"template unknown", CKO_SECRET_KEY, {{CKA_WRAP_TEMPLATE, "sensitive"}}, CKR_ATTRIBUTE_SENSITIVE},
        {"not copyable", CKO_DATA, {{CKA_COPYABLE, {'\0'}}}, CKR_ACTION_PROHIBITED},
        {"unknown class", CKO_HW_FEATURE, {}, CKR_FUNCTION_NOT_SUPPORTED},
        {"domain parameters", CKO_DOMAIN_PARAMETERS, {}, CKR_OK, 1915},
    };
    const std::vector<CK_ULONG> created = {CREATE_OBJECT, 10, 9};
    inChild(RECORDING_MODULE, play, "", [&] {
        for (const auto& [name, type, object, rv, sum, changes] : rows) {
            SCOPED_TRACE(name);
            script = {0, 1, object};
            script.object[CKA_CLASS] = {reinterpret_cast<const char*>(&type), sizeof type};
            script.object.emplace(CKA_ALLOWED_MECHANISMS, "v");
            for (CK_ATTRIBUTE_TYPE each = 0; each < 0x800; ++each)
                script.object.try_emplace(each, "v");
            std::vector<CK_ATTRIBUTE> list;
            for (const auto& [changed, value] : changes)
                list.push_back({changed, const_cast<char*>(value.data()), value.size()});
            EXPECT_EQ(CT_CopyObject(10, 20, 77, list.data(), list.size(), MADE_AT), rv);
            EXPECT_EQ(script.log, rv == CKR_OK ? created : std::vector<CK_ULONG>());

            CK_ULONG copied = 0;
            for (const auto& [each, value] : script.given) {
                copied += each;
                EXPECT_EQ(value, changes.contains(each) ? changes.at(each) : script.object[each]);
            }
            EXPECT_EQ(copied, sum);
        }
        isOutOfMemory = true;
        EXPECT_EQ(CT_CopyObject(10, 20, 77, nullptr, 0, MADE_AT), CKR_HOST_MEMORY);
    });
}

// ---- the start of a module

// The structure that some modules take has the parameters before its last member.
TEST(SoftToken, aModuleGetsItsParametersAndItsRefusalIsExplained)
{
    const struct {
        const char* parameters;
        CK_RV rv;
        std::string line;
    } rows[] = {{"", CKR_OK, ""}, {"a=b", CKR_CANT_LOCK, ""},
        {"", CKR_DEVICE_ERROR,
            "zerlin: the PKCS#11 module [^\n]* does not start \\(C_Initialize returns 0x30\\); "
            "see its documentation; if it needs parameters, set ZERLIN_MODULE_ARGS\n"},
        {"a=b", CKR_DEVICE_ERROR, "zerlin: [^\n]* look at those in ZERLIN_MODULE_ARGS\n"}};
    for (const auto& [parameters, rv, line] : rows) {
        static CK_RV returned = CKR_OK;
        const Answer start = [](std::size_t, const CK_ULONG* words) {
            const auto* const args = &at<CK_ULONG>(words[0]);
            const bool isLonger = *std::getenv("ZERLIN_MODULE_ARGS") != '\0';
            EXPECT_STREQ(isLonger ? &at<char>(args[5]) : "a=b", "a=b");
            EXPECT_EQ(args[4], CKF_OS_LOCKING_OK);
            EXPECT_EQ(args[isLonger ? 6 : 5], 9U);
            return returned;
        };
        inChild(RECORDING_MODULE, start, line, [&] {
            setenv("ZERLIN_MODULE_ARGS", parameters, 1);
            returned = rv;
            CK_C_INITIALIZE_ARGS args = {};
            args.flags = CKF_OS_LOCKING_OK;
            args.pReserved = MADE_AT;
            EXPECT_EQ(C_Initialize(&args), rv);
        });
    }
}

// ---- forwarding

constexpr CK_RV FIRST = CKR_CRYPTOKI_ALREADY_INITIALIZED; // nothing is printed if C_Initialize returns it
constexpr CK_ULONG GIVEN[] = {1, 2, 3, 4, 5, 6, 7, 8};
std::size_t argumentCount = 0;

CK_RV record(std::size_t place, const CK_ULONG* words)
{
    EXPECT_TRUE(std::equal(GIVEN, GIVEN + argumentCount, words));
    return FIRST + place;
}

using Function = CK_RV (*)(CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG, CK_ULONG);

template <typename List, typename... Args>
std::size_t countOf(CK_RV (*List::*)(Args...))
{
    return sizeof...(Args);
}

TEST(SoftToken, everyFunctionIsForwardedWithItsArguments)
{
    inChild(VENDOR_MODULE, record, "", [] {
        CK_FUNCTION_LIST_PTR list = nullptr;
        EXPECT_EQ(C_GetFunctionList(&list), CKR_OK);
        EXPECT_EQ(list->C_GetFunctionList, C_GetFunctionList);
        std::size_t place = 0;
        const auto expect = [&](const char* name, auto member) {
            SCOPED_TRACE(name);
            const auto function = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
            EXPECT_TRUE(place >= 68 || reinterpret_cast<Function*>(&list->C_Initialize)[place] == function);
            argumentCount = countOf(member);
            EXPECT_EQ(function(1, 2, 3, 4, 5, 6, 7, 8), FIRST + place);
            place += place == 2 ? 2 : 1; // C_GetFunctionList is not forwarded
        };
        zerlin::forEachStandardFunction(expect);
        zerlin::forEachVendorFunction(expect);
    });
}

TEST(SoftToken, modulesThatLackSomethingAreReportedOrUsedWithoutIt)
{
    const struct {
        const char* module;
        std::string reason;                     // empty if it can be used
        std::optional<CK_VERSION> version = {}; // of the list that the recording module offers; 0: none
        CK_RV rv = CKR_GENERAL_ERROR;
    } rows[] = {{"/nowhere/module.so", "[^\n]*No such file[^\n]*"},
        {"libm.so.6", "it has no C_GetFunctionList"}, {"libcryptoki.so", "it is this library"},
        {RECORDING_MODULE, "its C_GetFunctionList fails", CK_VERSION{0, 0}},
        {RECORDING_MODULE, "it is older than PKCS#11 2.0", CK_VERSION{1, 20}},
        {RECORDING_MODULE, "", CK_VERSION{2, 0}, CKR_FUNCTION_NOT_SUPPORTED},
        {RECORDING_MODULE, "", CK_VERSION{2, 1}, FIRST + 67},
        {RECORDING_MODULE, "", CK_VERSION{3, 0}, FIRST + 67}};
    for (const auto& [module, reason, version, rv] : rows) {
        const std::string line = "zerlin: cannot use the PKCS#11 module [^\n]* \\(" + reason + "\\);[^\n]*\n";
        inChild(module, version ? record : nullptr, reason.empty() ? "" : line, [&] {
            if (version) {
                auto*& list = variable<CK_FUNCTION_LIST*>(module, "offeredList");
                list->version = *version;
                if (version->major == 0) list = nullptr;
            }
            EXPECT_EQ(C_WaitForSlotEvent(0, nullptr, nullptr), rv);
            for (const CK_RV refused : {C_GetFunctionList(nullptr), CT_InitToken(1, 1, nullptr, 0, nullptr)})
                EXPECT_EQ(refused, reason.empty() ? CKR_ARGUMENTS_BAD : CKR_GENERAL_ERROR);
        });
    }
}

} // namespace
