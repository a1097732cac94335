// Attribute values from native into the Java objects that a template holds.
#include "helper/copyToJava.h"

#include "failures.h"
#include "values.h"

#include <algorithm>
#include <memory>
#include <span>

namespace {

using namespace jni;
using zerlin::CopyCKAttributeArrayToJAttributeArray;
using zerlin::CopyCKAttributeToJAttribute;
using zerlin::CopyCKObjectPtrToJObjectPrimitive;

struct CopyToJavaAttributes : JniTest {
    // In a block of its own size: reading on is found out.
    void copy(const Bytes& native, jobject target)
    {
        const auto block = std::make_unique<CK_BYTE[]>(native.size());
        std::copy(native.begin(), native.end(), block.get());
        CopyCKObjectPtrToJObjectPrimitive(env, block.get(), native.size(), target);
    }
    std::string after(const Bytes& native, jobject target)
    {
        copy(native, target);
        check(env, "copy");
        return text(env, {target});
    }
};

CK_ATTRIBUTE native(CK_ULONG type, const Bytes& value)
{
    return {type, const_cast<CK_BYTE*>(value.data()), value.size()};
}

const CK_ULONG UNAVAILABLE = 0xffffffff;
const char* const CANNOT = "java.lang.UnsupportedOperationException: Can not copy from CK type to ";

TEST_F(CopyToJavaAttributes, valuesByTheClassOfTheTarget)
{
    for (const ValueClass& row : std::span(VALUES).first(WRITABLE)) {
        SCOPED_TRACE(row.path);
        const std::string before = text(env, {row.make(env, row.path)});
        const jobject unwritten = row.make(env, row.path);
        for (Bytes tooShort = row.written; !tooShort.empty();) {
            tooShort.pop_back();
            EXPECT_EQ(after(tooShort, unwritten), before);
        }
        CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 64, unwritten);
        EXPECT_EQ(text(env, {unwritten}), before);

        EXPECT_EQ(after(row.written, row.make(env, row.path)), row.after);
        Bytes longer = row.written;
        longer.insert(longer.end(), 5, 0xee);
        EXPECT_EQ(after(longer, row.make(env, row.path)), row.afterLonger ? row.afterLonger : row.after);
    }
    copy({1, 2, 3, 4}, nullptr);
}

TEST_F(CopyToJavaAttributes, aCkBboolIsStrictAndABooleanTakesTheByte)
{
    // The JVM itself keeps but the lowest bit of what a boolean field is set to.
    const std::pair<std::uint8_t, const char*> rows[] = {{0, "[CK_FALSE][false]"}, {1, "[CK_TRUE][true]"},
        {2, "[CK_FALSE][false]"}, {3, "[CK_FALSE][true]"}, {0xff, "[CK_FALSE][true]"}};
    for (const auto& [byte, expected] : rows) {
        for (const bool before : {false, true}) {
            const jobject strict = bbool(env, before);
            const jobject raw = make(env, "java/lang/Boolean", "(Z)V", static_cast<jboolean>(before));
            EXPECT_EQ(after({byte}, strict) + after({byte}, raw), expected);
        }
    }
}

TEST_F(CopyToJavaAttributes, listsOfMechanismsAreWholeAndCutToTheArray)
{
    const Bytes three = {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0};
    const std::pair<std::size_t, const char*> rows[] = {{12, "[[0x80000001, 0x80000002]]"},
        {10, "[[0x80000077, 0x80000077]]"}, {8, "[[0x80000001, 0x80000002]]"},
        {4, "[[0x80000001, 0x80000077]]"}, {3, "[[0x80000077, 0x80000077]]"}};
    for (const auto& [length, expected] : rows) {
        Bytes list = three;
        for (std::size_t i = 3; i < list.size(); i += 4)
            list[i] = 0x80;
        list.resize(length);
        EXPECT_EQ(after(list, mechanismTypes(env, {0x80000077, 0x80000077})), expected) << length;
    }
    EXPECT_EQ(after(three, mechanismTypes(env, {})), "[[]]");
}

TEST_F(CopyToJavaAttributes, otherClassesAreRefusedWhenThereIsSomethingToWrite)
{
    std::vector<std::pair<jobject, std::string>> rows = {
        {make(env, "java/lang/Double", "(D)V", 1.5), "java.lang.Double"},
        {longRef(env, 1), "halvorn.zerlin.LongRef"},
        {objects(env, "java/lang/Object", {}), "[Ljava.lang.Object;"},
    };
    for (const ValueClass& row : std::span(VALUES).subspan(WRITABLE)) {
        std::string name = row.path;
        std::replace(name.begin(), name.end(), '/', '.');
        rows.emplace_back(row.make(env, row.path), name);
    }
    for (const auto& [target, name] : rows) {
        CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 4, target);
        copy({}, target);
        EXPECT_EQ(takeException(env), "");
        copy({1}, target);
        EXPECT_EQ(takeException(env), CANNOT + name);
    }
}

TEST_F(CopyToJavaAttributes, everyClassIsLookedUpBeforeAnythingElse)
{
    for (const ValueClass& row : std::span(VALUES).first(WRITABLE)) {
        for (const jobject target : {jobject{bytes(env, {7})}, jobject{nullptr}}) {
            JNI_OnUnload(jvm(), nullptr);
            watch(env, {.lookup = row.path}, [&] { copy({9}, target); });
            EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + row.path);
            EXPECT_EQ(text(env, {target}), target == nullptr ? "[null]" : "[[7]]");
        }
    }
}

TEST_F(CopyToJavaAttributes, anAttributeTakesItsLengthAndAWildcardTheType)
{
    struct Row {
        jobject before;
        CK_ATTRIBUTE source;
        const char* after;
        const char* exception = "";
    };
    const Bytes five = {1, 2, 3, 4, 5}, two = {1, 2};
    const auto seven = [&] { return bytes(env, {7, 7, 7, 7, 7, 7}); };
    const jobject untyped = attribute(env, 0, nullptr, 0);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const Row rows[] = {
        {attribute(env, 3, seven(), 6), native(0x11, five), "[CKA_LABEL (0x3), [1, 2, 3, 4, 5, 7]] 5"},
        {attribute(env, 3, seven(), 6), {3, nullptr, 9}, "[CKA_LABEL (0x3), [7, 7, 7, 7, 7, 7]] 9"},
        {attribute(env, 3, seven(), 6), {3, nullptr, UNAVAILABLE},
            "[CKA_LABEL (0x3), [7, 7, 7, 7, 7, 7]] 4294967295"},
        {attribute(env, 3, bytes(env, {7, 7, 7, 7, 7}), 5),
            {3, const_cast<CK_BYTE*>(five.data()), UNAVAILABLE},
            "[CKA_LABEL (0x3), [1, 2, 3, 4, 5]] 4294967295"},
        {attribute(env, 3, seven(), 6), native(3, {}), "[CKA_LABEL (0x3), [7, 7, 7, 7, 7, 7]] 0"},
        {attribute(env, 3, nullptr, 6), native(3, five), "[CKA_LABEL (0x3), null] 5"},
        {attribute(env, 3, boxedLong(env, 5), 4), native(3, two), "[CKA_LABEL (0x3), 5] 2"},
        {attribute(env, 65535, seven(), 6), native(3, two), "[CKA_LABEL (0x3), [1, 2, 7, 7, 7, 7]] 2"},
        {attribute(env, 0x1'0000ffff, nullptr, 6), native(0x80000101, two),
            "[CKA_USAGE_COUNT (0x80000101), null] 2"},
        {attribute(env, 65535, string(env, "no"), 6), native(3, two), "[CKA_LABEL (0x3), no] 6",
            "java.lang.String"},
        {untyped, native(3, two), "[null, null] 2"},
    };
    for (const Row& row : rows) {
        CopyCKAttributeToJAttribute(env, &row.source, row.before);
        const std::string exception = row.exception;
        EXPECT_EQ(takeException(env), exception.empty() ? "" : CANNOT + exception);
        EXPECT_EQ(told(env, row.before), row.after);
    }
    const CK_ATTRIBUTE source = native(3, two);
    const jobject target = attribute(env, 65535, seven(), 6);
    const jobject other = longRef(env, 6);
    CopyCKAttributeToJAttribute(env, nullptr, target);
    CopyCKAttributeToJAttribute(env, &source, nullptr);
    CopyCKAttributeToJAttribute(env, &source, other);
    EXPECT_EQ(text(env, {other}), "[6]");
    EXPECT_EQ(told(env, target), "[CKA_WILDCARD (0xffff), [7, 7, 7, 7, 7, 7]] 6");
}

TEST_F(CopyToJavaAttributes, anArrayIsWalkedToItsEndTheCountOrAnException)
{
    const Bytes one = {1};
    const CK_ATTRIBUTE source[] = {native(3, one), native(3, one), native(3, one)};
    const auto fresh = [&] { return attribute(env, 3, bytes(env, {7}), 0); };
    const jobject bad = attribute(env, 3, string(env, "no"), 0);
    struct Row {
        std::vector<jobject> targets;
        CK_ULONG count;
        std::vector<jlong> lengths;
        const char* exception = "";
    };
    const Row rows[] = {
        {{fresh(), fresh()}, 2, {1, 1}},
        {{fresh(), fresh(), fresh()}, 2, {1, 1, 0}},
        {{fresh(), fresh()}, 3, {1, 1}},
        {{fresh(), fresh()}, UNAVAILABLE, {1, 1}},
        {{fresh()}, 0, {0}},
        {{fresh(), nullptr, fresh()}, 3, {1, -1, 1}},
        {{fresh(), bad, fresh()}, 3, {1, 0, 0}, "java.lang.String"},
    };
    for (const Row& row : rows) {
        CopyCKAttributeArrayToJAttributeArray(env, source, row.count, attributes(env, row.targets));
        const std::string exception = row.exception;
        EXPECT_EQ(takeException(env), exception.empty() ? "" : CANNOT + exception);
        for (std::size_t i = 0; i < row.targets.size(); ++i) {
            if (row.targets[i] == nullptr) continue;
            EXPECT_EQ(getLong(env, row.targets[i], "valueLen"), row.lengths[i]);
            if (row.targets[i] == bad) continue;
            EXPECT_EQ(text(env, {valueOf(env, row.targets[i])}), row.lengths[i] == 1 ? "[[1]]" : "[[7]]");
        }
    }
    const jobject untouched = fresh();
    CopyCKAttributeArrayToJAttributeArray(env, nullptr, 1, attributes(env, {untouched}));
    CopyCKAttributeArrayToJAttributeArray(env, source, 1, nullptr);
    CopyCKAttributeArrayToJAttributeArray(env, source, 1, objects(env, "java/lang/Object", {untouched}));
    EXPECT_EQ(getLong(env, untouched, "valueLen"), 0);
    const jobjectArray longer = attributes(env, std::vector<jobject>(10000, untouched));
    const std::vector<CK_ATTRIBUTE> many(10000, source[0]);
    const Watched watched =
        watch(env, {}, [&] { CopyCKAttributeArrayToJAttributeArray(env, many.data(), many.size(), longer); });
    EXPECT_LE(watched.maxLocalRefs, 16U);
    EXPECT_TRUE(watched.localRefs.empty());
}

TEST_F(CopyToJavaAttributes, whateverFailsItsExceptionComesOut)
{
    std::vector<CK_ATTRIBUTE> source;
    for (const ValueClass& row : std::span(VALUES).first(WRITABLE))
        source.push_back(native(3, row.written));
    source.push_back(native(3, FEDC));
    const jobjectArray target = attributesOfAllClasses(env, WRITABLE + 1); // the last one is refused
    const jclass unsupported = find(env, "java/lang/UnsupportedOperationException");
    const auto work = [&] {
        CopyCKAttributeArrayToJAttributeArray(env, source.data(), source.size(), target);
        EXPECT_TRUE(env->ExceptionCheck());
        takeBack(env, unsupported);
        return std::string();
    };
    EXPECT_GT(failEachJniCall(env, [&] { return work; }), 60);
    EXPECT_EQ(failEachAllocation(env, work), Lines(2, NO_MEMORY)); // the class's name and the message
}

} // namespace
