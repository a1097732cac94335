// Attribute values and templates from Java to native.
#include "helper/convToCK.h"

#include "harness/failures.h"
#include "values.h"

#include <cstdlib>

namespace {

using namespace jni;

struct ConvToCKAttributes : JniTest {};

const char* const NONE = "java.lang.UnsupportedOperationException: No Conversion from ";

// The template as "type: value", freed.
Lines converted(JNIEnv* env, jobjectArray array)
{
    CK_ATTRIBUTE_PTR data = nullptr;
    CK_ULONG count = 0;
    zerlin::jAttributeArrayToCKAttributeArray(env, array, &data, &count);
    Lines lines;
    for (CK_ULONG i = 0; data != nullptr && i < count; ++i) {
        const auto* const value = static_cast<const char*>(data[i].pValue);
        lines.push_back(
            std::to_string(data[i].type) + ": " + (value ? std::string(value, data[i].ulValueLen) : "null"));
        std::free(data[i].pValue);
    }
    std::free(data);
    return lines;
}

TEST_F(ConvToCKAttributes, theClassOfAValueDecidesItsNativeForm)
{
    const jclass character = find(env, "java/lang/Character");
    std::vector<Value> rows = values(env);
    rows.push_back({make(env, "java/lang/Double", "(D)V", 1.5), {}, 0, {}, "java.lang.Double"});
    rows.push_back({objects(env, "[B", {}), {}, 0, {}, "[[B"});
    for (const Value& row : rows) {
        std::string refused = std::string(NONE) + row.after + " to a CK type";
        if (env->IsInstanceOf(row.object, character))
            refused = "java.lang.NoClassDefFoundError: java/lang/Char";
        void* data = nullptr;
        CK_ULONG length = 77;
        zerlin::jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
        EXPECT_EQ(takeException(env), row.native.empty() ? refused : "");
        const auto* const first = static_cast<CK_BYTE*>(data);
        EXPECT_EQ(first ? Bytes(first, first + row.native.size()) : Bytes(), row.native) << row.after;
        EXPECT_EQ(length, row.length) << row.after;
        std::free(data);
    }
}

TEST_F(ConvToCKAttributes, theGivenLengthIsKeptExceptForFourByteNumbers)
{
    const jlong LABEL = 3, CLASS = 0, MECHANISM_LIST = 0x80000104;
    const jobject seven = bytes(env, "1234567"), three = longs(env, {1, 2, 3});
    const std::tuple<jlong, jobject, jlong, CK_ULONG> rows[] = {{LABEL, nullptr, 4, 4}, {LABEL, seven, 4, 4},
        {LABEL, seven, 0, 0}, {LABEL, seven, 9, 9}, {LABEL, seven, -1, 0xffffffff},
        {LABEL, seven, 0x1'00000003, 3}, {1, seven, 4, 4}, {0x80000147, seven, 4, 4}, {CLASS, nullptr, 4, 0},
        {CLASS, nullptr, 8, 8}, {CLASS, seven, 0x1'00000004, 7}, {CLASS, seven, 5, 5}, {0x121, seven, 4, 7},
        {0x8000012c, seven, 4, 7}, {MECHANISM_LIST, three, 4, 3}, {MECHANISM_LIST, three, 12, 12}};
    for (const auto& [type, value, given, length] : rows) {
        const CK_ATTRIBUTE native = zerlin::jAttributeToCKAttribute(env, attribute(env, type, value, given));
        EXPECT_EQ(native.type, static_cast<CK_ULONG>(type));
        EXPECT_EQ(native.ulValueLen, length) << std::hex << type << ", " << given;
        std::free(native.pValue);
    }
}

TEST_F(ConvToCKAttributes, nullElementsAreUnavailableAndABadValueEndsTheTemplate)
{
    const jobject untyped = attribute(env, 3, bytes(env, "two"), 3);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const jobject bad = attribute(env, 18, make(env, "java/lang/Double", "(D)V", 1.5), 8);
    const jobjectArray array =
        attributes(env, {attribute(env, 3, bytes(env, "one"), 2), nullptr, untyped, bad, untyped});
    EXPECT_EQ(converted(env, array),
        (Lines{"3: on", "4294967295: null", "4294967295: two", "18: null", "0: null"}));
    EXPECT_EQ(takeException(env), std::string(NONE) + "java.lang.Double to a CK type");
    EXPECT_EQ(converted(env, attributes(env, {})).size() + converted(env, nullptr).size(), 0U);
}

// A large array has memory of its own. The one of objects comes after the sweep: each element is a call.
TEST_F(ConvToCKAttributes, aFailureLeavesNothingOfATemplate)
{
    std::vector<jobject> small;
    for (const Value& value : values(env))
        if (!value.native.empty()) small.push_back(attribute(env, 3, value.object, 1));
    std::vector<jobject> large;
    for (const jobject value : {jobject{env->NewByteArray(3000)}, jobject{env->NewLongArray(3000)},
             jobject{env->NewIntArray(3000)}, jobject{env->NewBooleanArray(3000)},
             jobject{env->NewCharArray(3000)}, jobject{string(env, std::string(3000, 'x').c_str())}})
        large.push_back(attribute(env, 3, value, 1));
    recorder::script().byteLimit = 0;
    const auto create = [this, on = session(env), made = object(env, 1)](const std::vector<jobject>& all) {
        const jobjectArray array = attributes(env, all);
        return [=, this] { return NATIVE(C_1CreateObject)(env, nullptr, on, array, 1, made); };
    };
    EXPECT_GT(failEachJniCall(env, [&] { return create(small); }), 50);
    EXPECT_GT(failEachJniCall(env, [&] { return create(large); }), 0);
    const jclass type = find(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE");
    large.push_back(attribute(env, 3, env->NewObjectArray(3000, type, nullptr), 1));
    const Lines outcomes =
        failEachAllocation(env, [&] { return create(large)() == nullptr ? "" : "survived"; });
    EXPECT_GE(outcomes.size(), large.size());
    EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
    const jobjectArray longer = attributes(env, std::vector<jobject>(10000, small[3]));
    const Watched watched = watch(env, {}, [&] { EXPECT_EQ(converted(env, longer).size(), 10000U); });
    EXPECT_LE(watched.maxLocalRefs, 16U);
}

} // namespace
