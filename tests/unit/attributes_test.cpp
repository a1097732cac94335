// Attribute values and templates, in all directions.
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "param_text.h"
#include "values.h"

#include <set>

namespace {

using namespace jni;
using namespace zerlin;

struct Attributes : JniTest {
    void expectRefused(const char* prefix, const std::string& cls, const char* suffix = " to a CK type")
    {
        EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: " + (prefix + cls) + suffix);
    }
    std::string after(const Bytes& native, jobject target)
    {
        const bool isDone = CopyCKObjectPtrToJObjectPrimitive(env, native.data(), native.size(), target);
        EXPECT_EQ(isDone, !env->ExceptionCheck());
        return isDone ? text(env, {target}) : "refused";
    }
};

// New native values, copies of every capacity, and native values of every length back into the object.
TEST_F(Attributes, theClassOfAValueDecidesItsNativeForm)
{
    for (const Value& row : values(env)) {
        const std::string cls = className(env, row.object);
        SCOPED_TRACE(cls);
        void* data = nullptr;
        CK_ULONG length = 77;
        const auto blocks = [&] {
            const HeapWatch heap;
            jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
            return heap.blocks;
        }();
        ASSERT_EQ(data == nullptr, row.native.empty());
        EXPECT_TRUE(data == nullptr || blocks.at(data) == row.native.size() + cls.starts_with('['))
            << "spare byte";
        const auto* const first = static_cast<CK_BYTE*>(data);
        EXPECT_EQ(Bytes(first, first + row.native.size()), row.native);
        EXPECT_EQ(length, row.length);
        std::free(data);
        if (cls == "java.lang.Character")
            EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: java/lang/Char");
        else if (row.native.empty())
            expectRefused("No Conversion from ", cls);
        failEach(env, "new", [&] {
            data = nullptr;
            jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
            std::free(data);
        });

        CK_BYTE buffer[16];
        for (CK_ULONG capacity = 0; capacity < row.length + 2; ++capacity) {
            std::fill(std::begin(buffer), std::end(buffer), UNTOUCHED);
            CopyJObjectPrimativeToCKObjectPtr(env, row.object, buffer, capacity);
            const bool isCut = row.isWhole() && capacity < row.length;
            const bool isRefused = capacity > 0 && (row.copied.empty() || isCut);
            if (isRefused) expectRefused("Can not copy from ", cls);
            // Deliberate: the capacity counts the elements of a number array.
            std::size_t size = capacity * (row.isNumberArray() ? 4 : 1);
            if (cls.starts_with("[Lhalvorn")) size -= size % 4; // mechanism types are not cut
            Bytes expected = row.copied;
            expected.resize(isRefused ? 0 : std::min(size, expected.size()));
            expected.resize(sizeof buffer, UNTOUCHED);
            EXPECT_EQ(Bytes(std::begin(buffer), std::end(buffer)), expected) << capacity;
        }
        failEach(env, "copied", [&] {
            buffer[0] = UNTOUCHED;
            CopyJObjectPrimativeToCKObjectPtr(env, row.object, buffer, 8);
            EXPECT_TRUE(!env->ExceptionCheck() || row.length > 4 || buffer[0] == UNTOUCHED);
        });

        const std::string before = text(env, {row.object});
        for (std::size_t size = 0; size < row.written.size(); ++size)
            EXPECT_EQ(after(Bytes(&row.written[0], &row.written[size]), row.object), before) << size;
        EXPECT_TRUE(CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 64, row.object));
        EXPECT_EQ(after({}, row.object), before);
        EXPECT_EQ(after(row.written.empty() ? Bytes{1} : row.written, row.object), row.after);
        if (row.written.empty()) expectRefused("Can not copy from CK type to ", cls, "");
    }
    // Deliberate: a Boolean takes the byte, of which the JVM keeps the lowest bit.
    EXPECT_EQ(after({2}, make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE)), "[false]");
    EXPECT_EQ(after({3}, bbool(env, true)), "[CK_FALSE]");
    const jobject types =
        objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {mechanismType(env, 0x77)});
    EXPECT_EQ(after({1, 0, 0, 0x80, 2, 0}, types), "[[0x77]]");
    EXPECT_EQ(after({1, 0, 0, 0x80, 2, 0, 0, 0x80}, types), "[[0x80000001]]");
}

TEST_F(Attributes, theGivenLengthIsKeptExceptForFourByteNumbers)
{
    const jlong LABEL = 3, CLASS = 0, MECHANISM_LIST = 0x80000104;
    const jobject seven = bytes(env, "1234567"), three = longs(env, {1, 2, 3});
    const std::tuple<jlong, jobject, jlong, CK_ULONG> rows[] = {{LABEL, nullptr, 4, 4}, {LABEL, seven, 4, 4},
        {LABEL, seven, 0, 0}, {LABEL, seven, 9, 9}, {LABEL, seven, -1, 0xffffffff},
        {LABEL, seven, 0x1'00000003, 3}, {1, seven, 4, 4}, {0x80000147, seven, 4, 4}, {CLASS, nullptr, 4, 0},
        {CLASS, nullptr, 8, 8}, {CLASS, seven, 0x1'00000004, 7}, {CLASS, seven, 5, 5}, {0x121, seven, 4, 7},
        {0x8000012c, seven, 4, 7}, {MECHANISM_LIST, three, 4, 3}, {MECHANISM_LIST, three, 12, 12}};
    for (const auto& [type, value, given, length] : rows) {
        const CK_ATTRIBUTE made = jAttributeToCKAttribute(env, attribute(env, type, value, given));
        EXPECT_EQ(made.type, static_cast<CK_ULONG>(type));
        EXPECT_EQ(made.ulValueLen, length) << std::hex << type << ", " << given;
        std::free(made.pValue);
    }
}

// The length of a number array counts elements; its bytes arrive whole, and zeroes up to a greater length.
TEST_F(Attributes, numberArraysArriveWhole)
{
    const jobject numbers = longs(env, {1, 2, 3});
    for (const auto& [length, shown] : {std::pair{12, "], 12}"}, {16, "00000000], 16}"}})
        expectCall(env,
            call(NATIVE(C_1FindObjectsInit), session(env),
                attributes(env, {attribute(env, 3, numbers, length)}), 1),
            std::string("C_FindObjectsInit(41, {{3, [010000000200000003000000") + shown + "}, 1)");
}

// The new template as "type: value", freed.
Lines converted(JNIEnv* env, jobjectArray array)
{
    CK_ATTRIBUTE_PTR data = nullptr;
    CK_ULONG count = 0;
    jAttributeArrayToCKAttributeArray(env, array, &data, &count);
    Lines lines;
    for (CK_ULONG i = 0; i < count; ++i) {
        const auto* const value = static_cast<const char*>(data[i].pValue);
        lines.push_back(
            std::to_string(data[i].type) + ": " + (value ? std::string(value, data[i].ulValueLen) : "null"));
        std::free(data[i].pValue);
    }
    std::free(data);
    return lines;
}

TEST_F(Attributes, nullElementsAreUnavailableAndABadValueEndsTheTemplate)
{
    const jobject untyped = attribute(env, 3, bytes(env, "two"), 3);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const jobject bad = attribute(env, 18, make(env, "java/lang/Double", "(D)V", 1.5), 8);
    const std::vector<jobject> all = {
        attribute(env, 3, bytes(env, "one"), 2), nullptr, untyped, bad, untyped};
    EXPECT_EQ(converted(env, attributes(env, all)),
        (Lines{"3: on", "4294967295: null", "4294967295: two", "18: null", "0: null"}));
    expectRefused("No Conversion from ", "java.lang.Double");
    const jobjectArray other = objects(env, "java/lang/Object", {all[0], string(env, "no attribute")});
    EXPECT_EQ(converted(env, other), (Lines{"3: on", "4294967295: null"}));
    EXPECT_EQ(converted(env, attributes(env, {})).size() + converted(env, nullptr).size(), 0U);
    const jobjectArray longer = attributes(env, std::vector<jobject>(10000, all[0]));
    EXPECT_LE(watch(env, {}, [&] { EXPECT_EQ(converted(env, longer).size(), 10000U); }).maxLocalRefs, 16U);

    Bytes first(4, UNTOUCHED), second(4, UNTOUCHED);
    CK_ATTRIBUTE copied[] = {native(0, first), native(0, second)};
    CopyJAttributeArrayToCKAttributeArray(env, attributes(env, {all[0], bad}), copied, 2);
    expectRefused("Can not copy from ", "java.lang.Double");
    EXPECT_EQ(first, (Bytes{'o', 'n', 'e', UNTOUCHED}));
    EXPECT_TRUE(
        copied[0].type == 3 && copied[0].ulValueLen == 2 && copied[1].type == 18 && second[0] == UNTOUCHED);
    failEach(env, "copied attribute", [&, one = attributes(env, {all[0]})] {
        copied[0].ulValueLen = 4;
        CopyJAttributeArrayToCKAttributeArray(env, one, copied, 1);
        EXPECT_EQ(copied[0].ulValueLen, env->ExceptionCheck() ? 4 : 2) << "the last that is set";
    });
}

// The types that become something else than byte[].
const std::pair<const char*, std::set<CK_ULONG>> TYPES[] = {{"halvorn.zerlin.constants.CK_OBJECT_CLASS", {0}},
    {"halvorn.zerlin.constants.CK_CERTIFICATE_TYPE", {0x80}},
    {"halvorn.zerlin.constants.CK_KEY_TYPE", {0x100}},
    {"halvorn.zerlin.constants.CK_HW_FEATURE_TYPE", {0x300}}, {"halvorn.zerlin.CK_DATE", {0x110, 0x111}},
    {"[Lhalvorn.zerlin.constants.CK_MECHANISM_TYPE;", {0x80000104}},
    {"halvorn.zerlin.CK_BBOOL",
        {0x1, 0x2, 0x86, 0x103, 0x104, 0x105, 0x106, 0x107, 0x108, 0x109, 0x10a, 0x10b, 0x10c, 0x162, 0x163,
            0x164, 0x165, 0x170, 0x200, 0x301, 0x302, 0x80000127, 0x80000128, 0x80000129, 0x8000012a,
            0x8000012b, 0x80000139, 0x8000013a, 0x80000145, 0x80000147, 0x8000014b, 0x80000170, 0x80000250}},
    {"java.lang.Long", {0x121, 0x133, 0x134, 0x160, 0x161, 0x201, 0x80000101, 0x80000136, 0x80000137,
                           0x80000140, 0x80000141, 0x80000142, 0x80000143, 0x80000144, 0x80000148, 0x8000014c,
                           0x8000014d, 0x8000014e, 0x80000151, 0x80000155, 0x80000156, 0x80000158, 0x80000159,
                           0x80000185, 0x80000186, 0x80000187, 0x80000189, 0x8000018a, 0x80000200}}};

TEST_F(Attributes, theTypeDecidesTheClassOfANewValue)
{
    const Bytes value(8, '1');
    for (CK_ULONG type = 0; type <= 0x80000400; type += type == 0x400 ? 0x7ffffc00 : 1) {
        const LocalFrame frame(env);
        const char* cls = "[B";
        for (const auto& [other, types] : TYPES)
            if (types.contains(type)) cls = other;
        const CK_ATTRIBUTE source = native(type, value);
        EXPECT_EQ(className(env, ckAttributeValueToJObject(env, &source)), cls) << std::hex << type;
    }
    std::vector<CK_ATTRIBUTE> all(10, native(3, value));
    for (const auto& [cls, types] : TYPES)
        all.push_back(native(*types.begin(), value));
    failEach(env, "new attributes",
        [&] { return ckAttributeArrayToJAttributeArray(env, all.data(), all.size()) != nullptr; });
}

TEST_F(Attributes, newAttributesHaveTheirFirstBytesAndTheirLength)
{
    const std::tuple<CK_ULONG, Bytes, CK_ULONG, const char*> rows[] = {
        {0x000, {0x00, 0x02, 0x00, 0x80}, 4, "[0x80000200]"},
        {0x080, {0x98, 0xba, 0xdc, 0xfe, 0xee}, 5, "[0xfedcba98]"}, {0x001, {1, 7}, 2, "[CK_TRUE]"},
        {0x001, {2}, 1, "[CK_FALSE]"},
        {0x110, {'2', '0', '2', '4', '0', '7', '1', '5', '9'}, 9, "[2024-07-15]"},
        {0x161, {255, 255, 255, 255, 7}, 5, "[4294967295]"}, {0x161, {5, 1, 9, 9}, 2, "[261]"},
        {0x80000104, {8, 0, 0, 0x90, 9, 0, 0, 0x90, 1}, 9, "[[0x90000008, 0x90000009]]"},
        {0x80000104, {8, 0, 0, 0}, 3, "[[]]"}, {0x003, {'a', 255}, 2, "[[97, -1]]"},
        {0x003, {1}, 0, "[null]"}, {0x003, {}, 0xffffffff, "[null]"}};
    std::vector<CK_ATTRIBUTE> source;
    for (const auto& [type, value, length, shown] : rows)
        source.push_back({type, const_cast<CK_BYTE*>(value.data()), length});
    const jobjectArray made = ckAttributeArrayToJAttributeArray(env, source.data(), source.size());
    for (jsize i = 0; const auto& [type, value, length, shown] : rows) {
        const jobject element = env->GetObjectArrayElement(made, i++);
        EXPECT_EQ(text(env, {getObject(env, element, "pValue", "Ljava/lang/Object;")}), shown);
        EXPECT_EQ(getLong(env, element, "valueLen"), jlong{length}) << shown;
        const CK_ATTRIBUTE again = jAttributeToCKAttribute(env, element);
        EXPECT_EQ(again.type, type) << shown;
        std::free(again.pValue);
    }
    EXPECT_EQ(env->GetArrayLength(made), std::ssize(rows));
    EXPECT_EQ(ckAttributeArrayToJAttributeArray(env, nullptr, 3), nullptr);
    EXPECT_NE(ckAttributeArrayToJAttributeArray(env, source.data(), 0), nullptr);
}

TEST_F(Attributes, aWriteTakesTheLengthAndAWildcardTheTypeUpToAnEndOrAnException)
{
    const Bytes five = {1, 2, 3, 4, 5}, eight = {8};
    const auto to = [&](jlong type, bool hasValue = true) {
        return attribute(env, type, hasValue ? bytes(env, {7, 7}) : nullptr, 6);
    };
    const jobject bad = attribute(env, 3, string(env, "no"), 6);
    const std::tuple<std::vector<jobject>, CK_ATTRIBUTE, CK_ULONG, Lines> rows[] = {
        {{to(3)}, native(0x11, five), 1, {"[CKA_LABEL (0x3), [1, 2]] 5"}},
        {{to(3)}, {3, nullptr, 9}, 1, {"[CKA_LABEL (0x3), [7, 7]] 9"}},
        {{to(3)}, {3, native(3, five).pValue, 0xffffffff}, 1, {"[CKA_LABEL (0x3), [1, 2]] 4294967295"}},
        {{to(65535)}, native(3, eight), 1, {"[CKA_LABEL (0x3), [8, 7]] 1"}},
        {{to(0x1'0000ffff, false)}, native(3, eight), 1, {"[CKA_LABEL (0x3), null] 1"}},
        {{to(3), to(3)}, native(3, eight), 1, {"[CKA_LABEL (0x3), [8, 7]] 1", "[CKA_LABEL (0x3), [7, 7]] 6"}},
        {{nullptr, to(3)}, native(3, eight), 0xffffffff, {"", "[CKA_LABEL (0x3), [8, 7]] 1"}},
        {{bad, to(3)}, native(3, eight), 2, {"[CKA_LABEL (0x3), no] 6", "[CKA_LABEL (0x3), [7, 7]] 6"}}};
    for (const auto& [targets, one, count, after] : rows) {
        const std::vector<CK_ATTRIBUTE> source(2, one);
        const bool isDone =
            CopyCKAttributeArrayToJAttributeArray(env, source.data(), count, attributes(env, targets));
        EXPECT_EQ(isDone, targets[0] != bad);
        if (!isDone) expectRefused("Can not copy from CK type to ", "java.lang.String", "");
        for (std::size_t i = 0; i < targets.size(); ++i)
            EXPECT_EQ(targets[i] ? describe(env, targets[i]) : "", after[i]);
        if (count == 1) CopyCKAttributeToJAttribute(env, &one, targets.back());
        EXPECT_TRUE(count != 1 || describe(env, targets.back()) == after[0]);
    }
}

TEST_F(Attributes, aFailureOfATemplateRaisesItsExceptionAndLeavesNothing)
{
    std::vector<jobject> readable, writable = {attribute(env, 65535, nullptr, 0)}; // the type is written, too
    for (const Value& row : values(env)) {
        const jobject made = attribute(env, 3, row.object, 1);
        if (!row.native.empty()) readable.push_back(made);
        if (!row.written.empty()) writable.push_back(made);
    }
    recorder::script().byteLimit = 0;
    const jobject on = session(env), key = object(env, 1);
    for (const Call& made : {call(NATIVE(C_1CreateObject), on, attributes(env, readable), 1, key),
             call(NATIVE(C_1GetAttributeValue), on, key, attributes(env, writable), std::ssize(writable))})
        EXPECT_GT(failEachJniCall(env, [&] { return [&] { return made(env); }; }), 50);
}

// The numbers that a native reads, in its order: handles, types, lengths and capacities.
Longs readBy(JNIEnv* env, const Call& made)
{
    static const JNINativeInterface_* real;
    static Longs read;
    real = env->functions;
    read.clear();
    JNINativeInterface_ table = *real;
    table.GetLongField = [](JNIEnv* e, jobject object, jfieldID field) {
        read.push_back(real->GetLongField(e, object, field));
        return read.back();
    };
    env->functions = &table;
    made(env);
    env->functions = real;
    return read;
}

TEST_F(Attributes, argumentsAreConvertedInTheirOrder)
{
    const jobject on = session(env, 1), key = object(env, 2), other = object(env, 3), made = object(env, 0);
    const jobject aes = mechanism(env, 4, bytes(env, "iv"), 5);
    const jobjectArray all = attributes(env, {attribute(env, 6, nullptr, 7)});
    const jobjectArray more = attributes(env, {attribute(env, 8, nullptr, 9)});
    const std::tuple<const char*, Call, Longs> rows[] = {
        {"C_SetOperationState", call(NATIVE(C_1SetOperationState), on, bytes(env, "x"), 1, key, other),
            {1, 2, 3}},
        // Deliberate: the template comes before the object.
        {"C_SetAttributeValue", call(NATIVE(C_1SetAttributeValue), on, key, all, 1), {1, 6, 7, 2}},
        {"C_GenerateKeyPair", call(NATIVE(C_1GenerateKeyPair), on, aes, all, 1, more, 1, made, made),
            {1, 4, 5, 6, 7, 8, 9}},
        {"C_WrapKey", call(NATIVE(C_1WrapKey), on, aes, key, other, nullptr, longRef(env, 5)),
            {1, 4, 5, 2, 3, 5}},
        {"C_UnwrapKey", call(NATIVE(C_1UnwrapKey), on, aes, key, bytes(env, "x"), 1, all, 1, made),
            {1, 4, 5, 2, 6, 7}}};
    for (const auto& [name, native, order] : rows)
        EXPECT_EQ(readBy(env, native), order) << name;
}

// An int[] becomes a long[], which is read in full; values are not shown.
TEST_F(Attributes, javaAttributesKnowTheirLength)
{
    const jobject ints = filled(env, env->NewIntArray(3), &JNIEnv::SetIntArrayRegion, {1, 9, -2});
    const jobject made = make(env, "halvorn/zerlin/CK_ATTRIBUTE", "(JLjava/lang/Object;)V", jlong{3}, ints);
    EXPECT_EQ(describe(env, made), "[CKA_LABEL (0x3), [1, 9, -2]] 12");
    EXPECT_EQ(text(env, {made, attribute(env, 3, bytes(env, "secret"), 0xffffffff)}),
        "[CK_ATTRIBUTE[type=CKA_LABEL (0x3), pValue=long[] of 12 bytes, valueLen=12], "
        "CK_ATTRIBUTE[type=CKA_LABEL (0x3), pValue=byte[] of 6 bytes, valueLen=unavailable]]");
}

} // namespace
