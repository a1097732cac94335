// What is special about single natives; frame_test.cpp has what all have in common.
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "halvorn_zerlin_CTUtil.h"
#include "halvorn_zerlin_constants_CK.h"
#include "harness/native_table.h"

namespace {

using namespace jni;

struct Natives : JniTest {};

TEST_F(Natives, unusualArgumentsReachTheLibrary)
{
    const jobject any = string(env, "any object"), other = string(env, "another one");
    const jobject label = attribute(env, 3, nullptr, 0), on = session(env), key = object(env, 42);
    const auto set = Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue;
    const jbyteArray longLabel = bytes(env, std::string(40, 'f')); // must be neither cut nor refused
    script().labelLength = 40;
    const std::pair<Call, std::string> rows[] = {
        {call(NATIVE(C_1GetSlotList), 2, nullptr, longRef(env, 6)), "C_GetSlotList(0, null(6))"},
        {call(NATIVE(C_1InitToken), 1, nullptr, 0, longLabel),
            "C_InitToken(1, null, 0, [" + std::string(80, '6') + "])"},
        {call(NATIVE(C_1InitToken), 1, nullptr, 0, nullptr), "C_InitToken(1, null, 0, null)"},
        {call(NATIVE(C_1OpenSession), 3, 4, any, other, session(env)),
            "C_OpenSession(3, 4, " + recorder::address(any) + ", " + recorder::address(other) + ", out)"},
        {call(NATIVE(C_1FindObjectsInit), on, attributes(env, {label, label}), 1),
            "C_FindObjectsInit(41, {{3, null, 0}}, 1)"},
        {call(NATIVE(C_1DeriveKey), on, mechanism(env, 44, nullptr, 0), key, nullptr, 0, nullptr),
            "C_DeriveKey(41, {44, null, 0}, 42, null, 0, out)"},
        {call(set, on, key, any, bytes(env, "abc"), 2), "C_SetAttributeValue(41, 42, {{0, [6162], 2}}, 1)"},
        {call(set, on, key, nullptr, bytes(env, "abc"), 2),
            "C_SetAttributeValue(41, 42, {{" + std::string(ALL_ONES) + ", [6162], 2}}, 1)"}};
    for (const auto& [made, line] : rows)
        expectCall(env, made, line);
}

TEST_F(Natives, theLibraryVersionIsTheBindingsOwn)
{
    script().C_GetInfo = [](CK_INFO_PTR info) { return info->libraryVersion = {7, 8}, CKR_OK; };
    const jobject info = make(env, "halvorn/zerlin/CK_INFO");
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetInfo), info)(env)), CKR_OK);
    EXPECT_NE(text(env, {info}).find("libraryVersion=3.10]]"), std::string::npos);
}

// On the stack, in chunks, from malloc and in mappings: every value is whole and none overlaps another.
TEST_F(Natives, valuesOfAllSizesArriveWholeInOneTemplate)
{
    std::vector<jobject> values;
    for (const jsize size : {3, 1000, 1000, 1000, 1023, 1024, 2000, 524287, 524288, 700001, 1500000})
        for (int twice = 0; twice < 2; ++twice)
            values.push_back(attribute(env, 17, bytes(env, Bytes(size, CK_BYTE('A' + values.size()))), size));
    const CK_ULONG different = values.size();
    values.resize(different + 600, attribute(env, 17, bytes(env, Bytes(15, '-')), 15)); // fill a chunk
    script().byteLimit = 0;
    script().C_CreateObject = [&](auto, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, auto) {
        for (CK_ULONG i = 0; i < ulCount; ++i) {
            const auto* const data = static_cast<const char*>(pTemplate[i].pValue);
            const auto length = static_cast<std::ptrdiff_t>(pTemplate[i].ulValueLen);
            EXPECT_EQ(std::count(data, data + length, i < different ? 'A' + i : '-'), length) << i;
        }
        return CKR_OK;
    };
    call(NATIVE(C_1CreateObject), session(env), attributes(env, values), std::ssize(values), object(env, 0))(
        env);
    EXPECT_EQ(recorder::calls.size(), 1U);
}

TEST_F(Natives, setAttributeValueConvertsItsObjectLast)
{
    const jobjectArray one = attributes(env, {attribute(env, 17, nullptr, 5)});
    const Call made = call(NATIVE(C_1SetAttributeValue), session(env), object(env, 42), one, 1);
    EXPECT_EQ(watch(env, {}, [&] { made(env); }).read, (Longs{41, 17, 5, 42}));
}

// Each ends with the first call that fails, and writes only if all succeed.
TEST_F(Natives, findObjectAndGetAttributeValueMakeSeveralCalls)
{
    const auto find = Java_halvorn_zerlin_CTUtil_CTU_1FindObject;
    const auto get = Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue;
    const jobject on = session(env), key = object(env, 42);
    const jbyteArray label = bytes(env, {'m', 0, 'y'}), value = bytes(env, "abcd"); // ends at the first zero
    const auto finding = [&] { return call(find, on, nullptr, label, object(env, 7)); };
    const auto getting = [&](int room) { return call(get, on, key, nullptr, value, room, longRef(env, 77)); };
    finding()(env);
    const std::string width = std::to_string(sizeof(CK_ULONG)), none(2 * sizeof(CK_ULONG), 'f');
    EXPECT_EQ(recorder::takeCalls(),
        (Lines{"C_FindObjectsInit(41, {{0, [" + none + "], " + width + "}, {3, [6d], 1}}, 2)",
            "C_FindObjects(41, out(1), out)", "C_FindObjectsFinal(41)"}));
    // How many calls are made, what they report, what the native returns, and the result.
    const std::tuple<Call, std::size_t, CK_ULONG, CK_RV, std::string> rows[] = {
        {finding(), 3, 1, CKR_OK, "object 4294967289]"}, {finding(), 3, 0, CKR_GENERAL_ERROR, "object 7]"},
        {finding(), 3, 1, CKR_DEVICE_REMOVED, "object 7]"},
        {getting(4), 2, 3, CKR_DEVICE_REMOVED, "[97, 98, 99, 100], 77]"},
        {getting(0), 1, 3, CKR_OK, "[97, 98, 99, 100], 3]"},
        {getting(4), 2, 3, CKR_OK, "[110, 101, 119, 100], 3]"}};
    for (const auto& [made, count, reported, rv, after] : rows) {
        recorder::takeCalls();
        script().answer = [&](Arguments all) {
            for (const auto& [form, data, number, size, length] : all) {
                auto* const attribute = static_cast<CK_ATTRIBUTE*>(data);
                if (form == Argument::Outputs) *static_cast<CK_ULONG*>(data) = 0xfffffff9;
                if (form == Argument::Output) *static_cast<CK_ULONG*>(data) = reported;
                if (form != Argument::Template || number != 1) continue;
                if (attribute->pValue != nullptr) std::memcpy(attribute->pValue, "new", 3);
                attribute->ulValueLen = reported;
            }
            return rv == CKR_DEVICE_REMOVED && recorder::calls.size() == count ? rv : CKR_OK;
        };
        EXPECT_EQ(rvOf(env, made(env)), rv) << after;
        EXPECT_EQ(recorder::calls.size(), count) << after;
        EXPECT_TRUE(made.objects(env).ends_with(after)) << made.objects(env);
    }
}

// The natives that name constants and return the sizes of mechanism parameters.
struct Names : JniTest {};

constexpr jlong NONE{static_cast<jlong>(~CK_ULONG{0})};

using NameOf = decltype(&Java_halvorn_zerlin_CTUtil_CTU_1GetErrorString);
using ValueOf = decltype(&Java_halvorn_zerlin_CTUtil_CTU_1GetErrorValue);
#define CTU(kind)                                                                                            \
    Java_halvorn_zerlin_CTUtil_CTU_1Get##kind##String, Java_halvorn_zerlin_CTUtil_CTU_1Get##kind##Value
const std::tuple<std::string, NameOf, ValueOf, jlong, std::string> NAMED_CLASSES[] = {
    {"ATTRIBUTE_TYPE", CTU(AttributeType), 3, "LABEL"}, {"RV", CTU(Error), 0xa3, "PIN expiered"},
    {"KEY_TYPE", CTU(KeyType), 0x18, "CAST128"}, {"MECHANISM_TYPE", CTU(MechanismType), 0x80000201, "MD4"},
    {"OBJECT_CLASS", CTU(ObjectClass), 0x80000202, "CRL"},
    {"STATE", CTU(SessionState), 1, "Read Only User Functions"}};

TEST_F(Names, ofEachClassAreItsOwnAndLeadBackToItsValues)
{
    for (const auto& [cls, nameOf, valueOf, number, name] : NAMED_CLASSES) {
        SCOPED_TRACE(cls);
        const std::string path = "halvorn/zerlin/constants/CK_" + cls, dots(name.size(), '.');
        const auto size = static_cast<jlong>(name.size());
        const jobject value = make(env, path.c_str(), "(J)V", number + HIGH_HALF), length = longRef(env, 99);
        const jbyteArray room = bytes(env, name);
        // The object, the array, its capacity; then what is returned, the array, and the name's length.
        const std::tuple<jobject, std::string, jlong, CK_RV, std::string, jlong> rows[] = {
            {value, dots, size, CKR_OK, name, size}, {value, dots, size - 1, CKR_DATA_LEN_RANGE, dots, size},
            {nullptr, "......", 5, CKR_OK, "null..", 4}, {nullptr, "...", -1, CKR_DATA_LEN_RANGE, "...", 4}};
        for (const auto& [named, before, capacity, rv, after, lengthAfter] : rows) {
            const jbyteArray array = bytes(env, before);
            setLong(env, length, "value", capacity);
            EXPECT_EQ(rvOf(env, nameOf(env, nullptr, named, array, length)), rv);
            EXPECT_EQ(text(env, {array, length}), text(env, {bytes(env, after), longRef(env, lengthAfter)}));
        }
        EXPECT_EQ(rvOf(env, nameOf(env, nullptr, value, nullptr, length)), CKR_OK);
        EXPECT_EQ(getLong(env, length, "value"), size);
        EXPECT_EQ(rvOf(env, nameOf(env, nullptr, value, nullptr, nullptr)), CKR_ARGUMENTS_BAD);
        EXPECT_EQ(rvOf(env, valueOf(env, nullptr, nullptr)), CKR_ARGUMENTS_BAD);

        const auto numberOf = [&, from = valueOf](const std::string& given) {
            return getLong(env, from(env, nullptr, bytes(env, given)), "m_value");
        };
        EXPECT_EQ(numberOf(name + '\0' + std::string(600, 'A')), number);
        EXPECT_EQ(numberOf(std::string(512, 'A')), NONE);
        failEachJniCall(env, [&] { return [&] { return nameOf(env, nullptr, value, room, length); }; });
        failEachJniCall(env, [&] { return [&] { return valueOf(env, nullptr, room); }; });
    }
}

TEST_F(Names, onlyOneConstantIsKnownAndEveryParameterHasTheSizeOfItsNativeForm)
{
    const auto constant = [this](const char* name) {
        return Java_halvorn_zerlin_constants_CK_GetConstantValue(env, nullptr, string(env, name));
    };
    const auto sizeOf = [this](jobject parameter) {
        return Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(env, nullptr, parameter);
    };
    EXPECT_EQ(constant("UNAVAILABLE_INFORMATION"), NONE);
    EXPECT_EQ(constant("unknown"), 0);
    EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: Constant unknown not recognised");
    for (const ParamRow& row : PARAMS)
        EXPECT_EQ(sizeOf(read(env, row.java)), row.size) << row.java;
    EXPECT_EQ(sizeOf(nullptr), 0);
    EXPECT_EQ(sizeOf(string(env, "abc")), 3);
    EXPECT_EQ(sizeOf(longs(env, {1})), 0);
    EXPECT_EQ(
        takeException(env), "java.lang.UnsupportedOperationException: No Conversion from [J to a CK type");
    failEach(env, [&] { return constant("unknown"); });
    failEach(env, [&, wrong = longs(env, {1})] { return sizeOf(wrong); });
}

} // namespace
