// Attributes from native to new Java objects.
#include "helper/convToJava.h"

#include "harness/failures.h"
#include "values.h"

#include <set>

namespace {

using namespace jni;
using zerlin::ckAttributeArrayToJAttributeArray;
using zerlin::ckAttributeValueToJObject;

struct ConvToJavaAttributes : JniTest {};

// The types that become something else than byte[].
const std::pair<const char*, std::set<CK_ULONG>> TYPES[] = {
    {"halvorn/zerlin/constants/CK_OBJECT_CLASS", {0}},
    {"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE", {0x80}},
    {"halvorn/zerlin/constants/CK_KEY_TYPE", {0x100}},
    {"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE", {0x300}},
    {"halvorn/zerlin/CK_DATE", {0x110, 0x111}},
    {"[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", {0x80000104}},
    {"halvorn/zerlin/CK_BBOOL",
        {0x1, 0x2, 0x86, 0x103, 0x104, 0x105, 0x106, 0x107, 0x108, 0x109, 0x10a, 0x10b, 0x10c, 0x162, 0x163,
            0x164, 0x165, 0x170, 0x200, 0x301, 0x302, 0x80000127, 0x80000128, 0x80000129, 0x8000012a,
            0x8000012b, 0x80000139, 0x8000013a, 0x80000145, 0x80000147, 0x8000014b, 0x80000170, 0x80000250}},
    {"java/lang/Long", {0x121, 0x133, 0x134, 0x160, 0x161, 0x201, 0x80000101, 0x80000136, 0x80000137,
                           0x80000140, 0x80000141, 0x80000142, 0x80000143, 0x80000144, 0x80000148, 0x8000014c,
                           0x8000014d, 0x8000014e, 0x80000151, 0x80000155, 0x80000156, 0x80000158, 0x80000159,
                           0x80000185, 0x80000186, 0x80000187, 0x80000189, 0x8000018a, 0x80000200}},
};

TEST_F(ConvToJavaAttributes, theAttributeTypeDecidesTheClassOfItsValue)
{
    const Bytes value(8, '1');
    for (CK_ULONG type = 0; type <= 0x80000400; type += type == 0x400 ? 0x7ffffc00 : 1) {
        const LocalFrame frame(env);
        const char* path = "[B";
        for (const auto& [other, types] : TYPES)
            if (types.contains(type)) path = other;
        const CK_ATTRIBUTE source = native(type, value);
        const jobject made = ckAttributeValueToJObject(env, &source);
        ASSERT_NE(made, nullptr);
        EXPECT_TRUE(env->IsSameObject(env->GetObjectClass(made), find(env, path))) << std::hex << type;
    }
}

TEST_F(ConvToJavaAttributes, valuesAreReadFromTheirFirstBytes)
{
    const std::tuple<CK_ULONG, Bytes, const char*> rows[] = {
        {0x000, {0x00, 0x02, 0x00, 0x80}, "[0x80000200]"},
        {0x080, {0x98, 0xba, 0xdc, 0xfe, 0xee}, "[0xfedcba98]"}, {0x001, {1, 7}, "[CK_TRUE]"},
        {0x001, {2}, "[CK_FALSE]"}, {0x110, {'2', '0', '2', '4', '0', '7', '1', '5', '9'}, "[2024-07-15]"},
        {0x161, {255, 255, 255, 255, 7}, "[4294967295]"}, {0x161, {5, 1}, "[261]"},
        {0x80000104, {8, 0, 0, 0x90, 9, 0, 0, 0x90, 1}, "[[0x90000008, 0x90000009]]"},
        {0x80000104, {8, 0, 0}, "[[]]"}, {0x003, {'a', 255}, "[[97, -1]]"}, {0x003, {}, "[null]"}};
    for (const auto& [type, value, shown] : rows) {
        const CK_ATTRIBUTE source = native(type, value);
        EXPECT_EQ(text(env, {ckAttributeValueToJObject(env, &source)}), shown);
    }
}

TEST_F(ConvToJavaAttributes, aTemplateBecomesNewAttributesInItsOrder)
{
    const Bytes label = {'a', 'b'}, seven = {7, 0, 0, 0};
    const CK_ATTRIBUTE source[] = {native(3, label), {3, nullptr, 0xffffffff}, native(0x80000101, seven)};
    const jobjectArray made = ckAttributeArrayToJAttributeArray(env, source, 3);
    ASSERT_EQ(env->GetArrayLength(made), 3);
    const char* const rows[] = {"[CKA_LABEL (0x3), [97, 98]] 2", "[CKA_LABEL (0x3), null] 4294967295",
        "[CKA_USAGE_COUNT (0x80000101), 7] 4"};
    for (jsize i = 0; i < 3; ++i)
        EXPECT_EQ(describe(env, env->GetObjectArrayElement(made, i)), rows[i]);
    EXPECT_EQ(ckAttributeArrayToJAttributeArray(env, nullptr, 3), nullptr);
    EXPECT_NE(ckAttributeArrayToJAttributeArray(env, source, 0), nullptr);
}

TEST_F(ConvToJavaAttributes, aFailedConversionReturnsNothing)
{
    const Bytes value(8, '1');
    std::vector<CK_ATTRIBUTE> source(10, native(3, value));
    for (const auto& [path, types] : TYPES)
        source.push_back(native(*types.begin(), value));
    const auto work = [&] {
        const jobject made = ckAttributeArrayToJAttributeArray(env, source.data(), source.size());
        EXPECT_EQ(made == nullptr, env->ExceptionCheck() != JNI_FALSE);
    };
    EXPECT_GT(failEachJniCall(env, [&] { return work; }), 60);
}

} // namespace
