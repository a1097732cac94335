// Attribute values from native into the Java objects that a template holds.
#include "helper/copyToJava.h"

#include "harness/failures.h"
#include "values.h"

#include <algorithm>

namespace {

using namespace jni;

struct CopyToJavaAttributes : JniTest {
    std::string after(const Bytes& native, jobject target)
    {
        zerlin::CopyCKObjectPtrToJObjectPrimitive(env, native.data(), native.size(), target);
        const std::string exception = takeException(env);
        return exception.empty() ? text(env, {target}) : exception;
    }
};

const std::string CANNOT = "java.lang.UnsupportedOperationException: Can not copy from CK type to ";

TEST_F(CopyToJavaAttributes, theClassOfTheTargetDecidesHowAValueIsWritten)
{
    for (const auto& [target, given, length, written, shown] : values(env)) {
        const std::string before = text(env, {target});
        for (Bytes tooShort = written; !tooShort.empty();) {
            tooShort.pop_back();
            EXPECT_EQ(after(tooShort, target), before) << shown;
        }
        zerlin::CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 64, target);
        EXPECT_EQ(after({}, target), before) << shown;
        EXPECT_EQ(
            after(written.empty() ? Bytes{1} : written, target), written.empty() ? CANNOT + shown : shown);
    }
    // A Boolean takes the byte, of which the JVM keeps the lowest bit.
    EXPECT_EQ(after({3}, bbool(env, true)) + after({3}, make(env, "java/lang/Boolean", "(Z)V", JNI_FALSE)),
        "[CK_FALSE][true]");
    const jobject types =
        objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {mechanismType(env, 0x80000077)});
    EXPECT_EQ(after({1, 0, 0, 0x80, 2, 0}, types), "[[0x80000077]]");
    EXPECT_EQ(after({1, 0, 0, 0x80, 2, 0, 0, 0x80}, types), "[[0x80000001]]");
}

TEST_F(CopyToJavaAttributes, anAttributeTakesTheLengthAndAWildcardAlsoTheType)
{
    const Bytes five = {1, 2, 3, 4, 5}, two = {1, 2};
    const CK_ATTRIBUTE unavailable = {3, const_cast<CK_BYTE*>(five.data()), 0xffffffff};
    const auto seven = [&] { return bytes(env, {7, 7, 7}); };
    const std::tuple<jobject, CK_ATTRIBUTE, const char*> rows[] = {
        {attribute(env, 3, seven(), 6), native(0x11, five), "[CKA_LABEL (0x3), [1, 2, 3]] 5"},
        {attribute(env, 3, seven(), 6), {3, nullptr, 9}, "[CKA_LABEL (0x3), [7, 7, 7]] 9"},
        {attribute(env, 3, seven(), 6), unavailable, "[CKA_LABEL (0x3), [1, 2, 3]] 4294967295"},
        {attribute(env, 65535, seven(), 6), native(3, two), "[CKA_LABEL (0x3), [1, 2, 7]] 2"},
        {attribute(env, 0x1'0000ffff, nullptr, 6), native(3, two), "[CKA_LABEL (0x3), null] 2"}};
    for (const auto& [target, source, after] : rows) {
        zerlin::CopyCKAttributeToJAttribute(env, &source, target);
        EXPECT_EQ(describe(env, target), after);
    }
}

TEST_F(CopyToJavaAttributes, copyingStopsAtTheEndTheCountOrAnException)
{
    const Bytes one = {1};
    const std::vector<CK_ATTRIBUTE> source(3, native(3, one));
    const auto fresh = [&] { return attribute(env, 3, nullptr, 0); };
    const jobject bad = attribute(env, 3, string(env, "no"), 0);
    const std::tuple<std::vector<jobject>, CK_ULONG, Longs, std::string> rows[] = {
        {{fresh(), fresh(), fresh()}, 2, {1, 1, 0}, ""}, {{fresh(), fresh()}, 0xffffffff, {1, 1}, ""},
        {{fresh(), nullptr, fresh()}, 3, {1, -1, 1}, ""},
        {{fresh(), bad, fresh()}, 3, {1, 0, 0}, CANNOT + "java.lang.String"}};
    for (const auto& [targets, count, lengths, exception] : rows) {
        zerlin::CopyCKAttributeArrayToJAttributeArray(env, source.data(), count, attributes(env, targets));
        EXPECT_EQ(takeException(env), exception);
        for (std::size_t i = 0; i < targets.size(); ++i)
            EXPECT_EQ(targets[i] ? getLong(env, targets[i], "valueLen") : -1, lengths[i]);
    }
}

TEST_F(CopyToJavaAttributes, eachFailedJniCallRaisesItsException)
{
    std::vector<jobject> targets = {attribute(env, 65535, nullptr, 0)}; // whose type is written, too
    for (const Value& value : values(env))
        if (!value.written.empty())
            targets.push_back(attribute(env, 3, value.object, static_cast<jlong>(value.length)));
    const jobjectArray array = attributes(env, targets);
    recorder::script().byteLimit = 0;
    const auto count = static_cast<jlong>(targets.size());
    const auto work = [&, on = session(env), object = jni::object(env, 42)] {
        return NATIVE(C_1GetAttributeValue)(env, nullptr, on, object, array, count);
    };
    EXPECT_GT(failEachJniCall(env, [&] { return work; }), 100);
}

} // namespace
