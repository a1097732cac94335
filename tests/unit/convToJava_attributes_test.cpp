// Attributes from native to new Java objects.
#include "helper/convToJava.h"

#include "failures.h"
#include "values.h"

namespace {

using namespace jni;
using zerlin::ckAttributeArrayToJAttributeArray;
using zerlin::ckAttributePtrToJAttribute;
using zerlin::ckAttributeValueToJObject;

struct ConvToJavaAttributes : JniTest {};

CK_ATTRIBUTE native(CK_ULONG type, const Bytes& value)
{
    return {type, const_cast<CK_BYTE*>(value.data()), value.size()};
}

// The types that become something else than byte[], from the first to the last of each range.
using Ranges = std::vector<std::pair<CK_ULONG, CK_ULONG>>;
const std::pair<const char*, Ranges> TYPES[] = {
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", {{0, 0}}},
    {"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", {{0x80, 0x80}}},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", {{0x100, 0x100}}},
    {"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", {{0x300, 0x300}}},
    {"halvorn/zerlin/CK_DATE", {{0x110, 0x111}}},
    {"[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", {{0x80000104, 0x80000104}}},
    {"halvorn/zerlin/CK_BBOOL",
        {{0x1, 0x2}, {0x86, 0x86}, {0x103, 0x10c}, {0x162, 0x165}, {0x170, 0x170}, {0x200, 0x200},
            {0x301, 0x302}, {0x80000127, 0x8000012b}, {0x80000139, 0x8000013a}, {0x80000145, 0x80000145},
            {0x80000147, 0x80000147}, {0x8000014b, 0x8000014b}, {0x80000170, 0x80000170},
            {0x80000250, 0x80000250}}},
    {"java/lang/Long", {{0x121, 0x121}, {0x133, 0x134}, {0x160, 0x161}, {0x201, 0x201},
                           {0x80000101, 0x80000101}, {0x80000136, 0x80000137}, {0x80000140, 0x80000144},
                           {0x80000148, 0x80000148}, {0x8000014c, 0x8000014e}, {0x80000151, 0x80000151},
                           {0x80000155, 0x80000156}, {0x80000158, 0x80000159}, {0x80000185, 0x80000187},
                           {0x80000189, 0x8000018a}, {0x80000200, 0x80000200}}},
};

TEST_F(ConvToJavaAttributes, theTypeDecidesTheClass)
{
    const Bytes value(8, '1');
    const auto expect = [&](CK_ULONG type) {
        const LocalFrame frame(env);
        const char* path = "[B";
        for (const auto& [other, ranges] : TYPES)
            for (const auto& [first, last] : ranges)
                if (type >= first && type <= last) path = other;
        const CK_ATTRIBUTE source = native(type, value);
        const jobject made = ckAttributeValueToJObject(env, &source);
        check(env, path);
        ASSERT_NE(made, nullptr);
        EXPECT_TRUE(env->IsSameObject(env->GetObjectClass(made), find(env, path))) << std::hex << type;
    };
    for (CK_ULONG type = 0; type <= 0x400; ++type) {
        expect(type);
        expect(0x80000000 + type);
    }
    expect(0xffff);
    expect(0xffffffff);
}

TEST_F(ConvToJavaAttributes, valuesAreTakenFromTheirFirstBytes)
{
    struct Row {
        CK_ULONG type;
        Bytes value;
        const char* shown;
    };
    const Row rows[] = {
        {0x000, {0x00, 0x02, 0x00, 0x80}, "[0x80000200]"},
        {0x080, {0x98, 0xba, 0xdc, 0xfe, 0xee}, "[0xfedcba98]"},
        {0x100, FEDC, "[0xfedcba98]"},
        {0x300, FEDC, "[0xfedcba98]"},
        {0x001, {1}, "[CK_TRUE]"},
        {0x001, {0}, "[CK_FALSE]"},
        {0x001, {2}, "[CK_FALSE]"},
        {0x001, {255}, "[CK_FALSE]"},
        {0x001, {1, 7, 7}, "[CK_TRUE]"},
        {0x110, {'2', '0', '2', '4', '0', '7', '1', '5'}, "[2024-07-15]"},
        {0x111, {'2', '0', '2', '4', '0', '7', '1', '5', '9'}, "[2024-07-15]"},
        {0x161, {255, 255, 255, 255}, "[4294967295]"},
        {0x161, {1, 0, 0, 0, 7}, "[1]"},
        {0x161, {5, 1}, "[261]"}, // what a shorter value lacks counts as zero
        {0x80000104, {8, 0, 0, 0x90, 9, 0, 0, 0x90}, "[[0x90000008, 0x90000009]]"},
        {0x80000104, {8, 0, 0, 0x90, 9, 0, 0, 0x90, 1, 1}, "[[0x90000008, 0x90000009]]"},
        {0x80000104, {8, 0, 0}, "[[]]"},
        {0x003, {'a', 255}, "[[97, -1]]"},
    };
    for (const Row& row : rows) {
        const Bytes block(row.value.begin(), row.value.end());
        const CK_ATTRIBUTE source = native(row.type, block);
        EXPECT_EQ(text(env, {ckAttributeValueToJObject(env, &source)}), row.shown);
    }
}

TEST_F(ConvToJavaAttributes, whatIsMissingBecomesNull)
{
    Bytes value = {1};
    CK_ATTRIBUTE empty = {3, value.data(), 0};
    CK_ATTRIBUTE pointerless = {0x80000101, nullptr, 0xffffffff};
    for (const CK_ATTRIBUTE* source : {static_cast<CK_ATTRIBUTE*>(nullptr), &empty, &pointerless})
        EXPECT_EQ(ckAttributeValueToJObject(env, source), nullptr);
    EXPECT_EQ(ckAttributePtrToJAttribute(env, nullptr), nullptr);
    EXPECT_EQ(ckAttributeArrayToJAttributeArray(env, nullptr, 3), nullptr);
    EXPECT_EQ(text(env, {ckAttributeArrayToJAttributeArray(env, &empty, 0)}), "[[]]");
    const jobject made = ckAttributePtrToJAttribute(env, &pointerless);
    EXPECT_EQ(valueOf(env, made), nullptr);
    EXPECT_EQ(getLong(env, made, "valueLen"), 4294967295);
}

TEST_F(ConvToJavaAttributes, aTemplateBecomesNewAttributesInItsOrder)
{
    const Bytes label = {'a', 'b'}, isToken = {1}, seven = {7, 0, 0, 0};
    const CK_ATTRIBUTE source[] = {native(3, label), native(1, isToken), native(0x80000101, seven)};
    const jobjectArray made = ckAttributeArrayToJAttributeArray(env, source, 3);
    ASSERT_TRUE(env->IsInstanceOf(made, find(env, "[Lhalvorn/zerlin/CK_ATTRIBUTE;")));
    const std::tuple<jlong, const char*, jlong> rows[] = {
        {3, "[[97, 98]]", 2}, {1, "[CK_TRUE]", 1}, {0x80000101, "[7]", 4}};
    ASSERT_EQ(env->GetArrayLength(made), 3);
    for (jsize i = 0; i < 3; ++i) {
        const jobject attribute = env->GetObjectArrayElement(made, i);
        const auto& [type, value, length] = rows[i];
        const jobject jType =
            getObject(env, attribute, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;");
        EXPECT_EQ(getLong(env, jType, "m_value"), type);
        EXPECT_EQ(text(env, {valueOf(env, attribute)}), value);
        EXPECT_EQ(getLong(env, attribute, "valueLen"), length);
    }
    const std::vector<CK_ATTRIBUTE> many(10000, source[1]);
    const Watched watched =
        watch(env, {}, [&] { ckAttributeArrayToJAttributeArray(env, many.data(), many.size()); });
    EXPECT_LE(watched.maxLocalRefs, 16U);
    EXPECT_EQ(watched.localRefs.size(), 1U);
}

TEST_F(ConvToJavaAttributes, whateverFailsNothingIsReturned)
{
    const Bytes value(8, '1');
    std::vector<CK_ATTRIBUTE> source = {native(3, value)};
    for (const CK_ULONG type : {0x000UL, 0x001UL, 0x080UL, 0x100UL, 0x110UL, 0x121UL, 0x300UL, 0x80000104UL})
        source.push_back(native(type, value));
    const auto work = [&] {
        const jobjectArray made = ckAttributeArrayToJAttributeArray(env, source.data(), source.size());
        EXPECT_EQ(made == nullptr, env->ExceptionCheck() != JNI_FALSE);
    };
    EXPECT_GT(failEachJniCall(env, [&] { return work; }), 60);
}

} // namespace
