// Attribute values and templates, in all directions.
#include "digest.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"
#include "param_text.h"
#include "values.h"

namespace {

using namespace jni;
using namespace zerlin;

struct Attributes : JniTest {
    void expectRefused(
        const std::string& prefix, const std::string& cls, const char* suffix = " to a CK type")
    {
        EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: " + prefix + cls + suffix);
    }
    std::string after(const Bytes& native, jobject target)
    {
        const bool isDone = CopyCKObjectPtrToJObjectPrimitive(env, native.data(), native.size(), target);
        EXPECT_EQ(isDone, !env->ExceptionCheck());
        return isDone ? text(env, {target}) : REFUSED;
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
        {
            const HeapWatch heap;
            jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
            ASSERT_EQ(heap.sizeFrom(data),
                row.native.size() + (cls.starts_with('[') && !row.native.empty())); // a spare byte
        }
        EXPECT_TRUE(std::equal(row.native.begin(), row.native.end(), static_cast<CK_BYTE*>(data)));
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
            return !env->ExceptionCheck();
        });

        // Deliberate: the capacity counts the elements of a number array. Whole mechanism types are copied,
        // as many as it has room for, and numbers and dates only as a whole.
        const bool isWhole = row.native.size() == row.length && (row.length == WORD || row.length == 8);
        const CK_ULONG unit = cls.starts_with("[Lhalvorn") ? WORD : isWhole ? row.length : 1;
        const CK_ULONG size = row.native.size() == WORD * row.length ? WORD : 1;
        Bytes buffer;
        for (CK_ULONG capacity = 0; capacity < row.length + 2; ++capacity) {
            buffer.assign(32, UNTOUCHED);
            CopyJObjectPrimativeToCKObjectPtr(env, row.object, buffer.data(), capacity);
            Bytes expected = row.copied;
            expected.resize(std::min<std::size_t>(capacity / unit * unit * size, expected.size()));
            if (capacity > 0 && (row.copied.empty() || (isWhole && capacity < length)))
                expectRefused("Can not copy from ", cls);
            expected.resize(32, UNTOUCHED);
            EXPECT_EQ(buffer, expected) << capacity;
        }
        failEach(env, "copied", [&] {
            buffer[0] = UNTOUCHED;
            CopyJObjectPrimativeToCKObjectPtr(env, row.object, buffer.data(), 8);
            EXPECT_TRUE(!env->ExceptionCheck() || row.length > 4 || buffer[0] == UNTOUCHED);
            return !env->ExceptionCheck();
        });

        const std::string before = text(env, {row.object});
        for (std::size_t shorter = 0; shorter < row.written.size(); ++shorter)
            EXPECT_EQ(after(Bytes(&row.written[0], &row.written[shorter]), row.object), before) << shorter;
        EXPECT_TRUE(CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 64, row.object));
        EXPECT_EQ(after(row.written.empty() ? Bytes{1} : row.written, row.object), row.after);
        if (row.written.empty()) expectRefused("Can not copy from CK type to ", cls, "");
    }
    // Deliberate: a Boolean takes the byte, of which the JVM keeps the lowest bit.
    EXPECT_EQ(after({2}, make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE)), "[false]");
    EXPECT_EQ(after({3}, bbool(env, true)), "[CK_FALSE]");
}

TEST_F(Attributes, theGivenLengthIsKeptExceptForNumbersOfTheirSize)
{
    const jlong LABEL = 3, CLASS = 0, VALUE_LEN = 0x161, MECHANISM_LIST = 0x80000104, ONE = WORD;
    const jobject seven = bytes(env, "1234567"), three = longs(env, {1, 2, 3});
    const std::tuple<jlong, jobject, jlong, jlong> rows[] = {{LABEL, nullptr, ONE, ONE},
        {LABEL, seven, ONE, ONE}, {LABEL, seven, 0x1'00000003, 0x1'00000003}, {CLASS, nullptr, ONE, 0},
        {CLASS, nullptr, 2 * ONE, 2 * ONE}, {VALUE_LEN, seven, ONE, 7}, {MECHANISM_LIST, three, ONE, 3},
        {MECHANISM_LIST, three, 3 * ONE, 3 * ONE}};
    for (const auto& [type, value, given, length] : rows) {
        const CK_ATTRIBUTE made = jAttributeToCKAttribute(env, attribute(env, type, value, given));
        EXPECT_EQ(made.type, static_cast<CK_ULONG>(type));
        EXPECT_EQ(made.ulValueLen, static_cast<CK_ULONG>(length)) << std::hex << type << ", " << given;
        std::free(made.pValue);
    }
    // The length of a number array counts elements; its bytes arrive whole, and zeroes up to a greater
    // length.
    const Bytes native = words({1, 2, 3, 0});
    expectCall(env,
        call(NATIVE(C_1FindObjectsInit), session(env), attributes(env, {attribute(env, 3, three, 4 * ONE)}),
            1),
        "C_FindObjectsInit(41, {{3, [" + nativeText(native.data(), std::string(8 * WORD, '.')) + "], " +
            std::to_string(4 * WORD) + "}}, 1)");
}

// The new template as "type: value", freed.
std::string converted(JNIEnv* env, jobjectArray array)
{
    CK_ATTRIBUTE_PTR data = nullptr;
    CK_ULONG count = 0;
    jAttributeArrayToCKAttributeArray(env, array, &data, &count);
    std::string text;
    for (CK_ULONG i = 0; i < count; ++i) {
        const auto* const value = static_cast<const char*>(data[i].pValue);
        text += std::to_string(static_cast<CK_LONG>(data[i].type)) + ": " +
                (value ? std::string(value, data[i].ulValueLen) : "null") + ", ";
        std::free(data[i].pValue);
    }
    std::free(data);
    return text;
}

TEST_F(Attributes, nullElementsAreUnavailableAndABadValueEndsTheTemplate)
{
    const jobject one = attribute(env, 3, bytes(env, "one"), 2),
                  untyped = attribute(env, 3, bytes(env, "two"), 3);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const jobject bad = attribute(env, 18, make(env, "java/lang/Double", "(D)V", 1.5), 8);
    const jobject other = string(env, "no attribute");
    EXPECT_EQ(converted(env, objects(env, "java/lang/Object", {one, nullptr, other, untyped, bad, untyped})),
        "3: on, -1: null, -1: null, -1: two, 18: null, 0: null, ");
    expectRefused("No Conversion from ", "java.lang.Double");
    EXPECT_EQ(converted(env, attributes(env, {})) + converted(env, nullptr), "");
    const jobjectArray longer = attributes(env, std::vector<jobject>(1000, one));
    EXPECT_LE(watch(env, {}, [&] { converted(env, longer); }).maxLocalRefs, 16U);

    Bytes buffer(4);
    CK_ATTRIBUTE copied = native(0, buffer);
    failEach(env, "copied attribute", [&, array = attributes(env, {one})] {
        buffer.assign(4, UNTOUCHED);
        copied.ulValueLen = 4;
        CopyJAttributeArrayToCKAttributeArray(env, array, &copied, 1);
        EXPECT_EQ(copied.ulValueLen, env->ExceptionCheck() ? 4 : 2) << "the last that is set";
        return !env->ExceptionCheck();
    });
    EXPECT_EQ(buffer, (Bytes{'o', 'n', 'e', UNTOUCHED}));
    EXPECT_EQ(copied.type, 3U);
}

TEST_F(Attributes, theTypeDecidesTheClassOfANewValueAndItsFirstBytesFillIt)
{
    const auto made = [&](const CK_ATTRIBUTE& source) {
        const jobjectArray all = ckAttributeArrayToJAttributeArray(env, &source, 1);
        return describe(env, env->GetObjectArrayElement(all, 0));
    };
    const Bytes value = {'2', '0', '2', '4', 0, 0, 0, 0};
    std::string lines; // the types that become something else than byte[]
    for (CK_ULONG type = 0; type <= 0x80000400; type += type == 0x400 ? 0x7ffffc00 : 1) {
        const LocalFrame frame(env);
        const std::string shown = made(native(type, value));
        if (type != CKA_MECHANISM_LIST && shown.find(" [50, 48") == shown.npos) lines += shown + '\n';
    }
    EXPECT_EQ(digest(lines), "68 lines, 3730744211") << lines;
    const std::tuple<CK_ULONG, Bytes, CK_ULONG, std::string> rows[] = {
        {0x080, words({0xfedcba98, 0xee}), WORD + 1, "CKA_CERTIFICATE_TYPE (0x80), 0xfedcba98"},
        {0x001, {1, 7}, 2, "CKA_TOKEN (0x1), CK_TRUE"},
        {0x161, {5, 1, 9, 9}, 2, "CKA_VALUE_LEN (0x161), 261"},
        {CKA_MECHANISM_LIST, words({8, 0x90000009, 1}), 3 * WORD - 1,
            "CKA_MECHANISM_LIST (0x80000104), [CKM_RIPEMD160_RSA_PKCS (0x8), 0x90000009]"},
        {0x003, {1}, 0, "CKA_LABEL (0x3), null"}, {0x003, {}, 77, "CKA_LABEL (0x3), null"}};
    std::vector<CK_ATTRIBUTE> all = {native(0x110, value), native(0x100, value)};
    for (const auto& [type, bytes, length, shown] : rows) {
        all.push_back({type, const_cast<CK_BYTE*>(bytes.data()), length});
        EXPECT_EQ(made(all.back()), "[" + shown + "] " + std::to_string(length));
    }
    EXPECT_EQ(ckAttributeArrayToJAttributeArray(env, nullptr, 3), nullptr);
    failEach(env, "new attributes",
        [&] { return ckAttributeArrayToJAttributeArray(env, all.data(), all.size()) != nullptr; });
}

TEST_F(Attributes, aWriteTakesTheLengthAndAWildcardTheTypeUpToAnEndOrAnException)
{
    const Bytes five = {1, 2, 3, 4, 5}, eight = {8};
    const auto to = [&](jlong type) { return attribute(env, type, bytes(env, {7, 7}), 6); };
    const jobject bad = attribute(env, 3, string(env, "no"), 6);
    const std::tuple<std::vector<jobject>, CK_ATTRIBUTE, CK_ULONG, Lines> rows[] = {
        {{to(3)}, native(0x11, five), 1, {"[CKA_LABEL (0x3), [1, 2]] 5"}},
        {{to(3)}, {3, nullptr, 9}, 1, {"[CKA_LABEL (0x3), [7, 7]] 9"}},
        {{to(3)}, {3, native(3, five).pValue, 99999}, 1, {"[CKA_LABEL (0x3), [1, 2]] 99999"}},
        {{to(65535)}, native(3, eight), 1, {"[CKA_LABEL (0x3), [8, 7]] 1"}},
        {{to(3), to(3)}, native(3, eight), 1, {"[CKA_LABEL (0x3), [8, 7]] 1", "[CKA_LABEL (0x3), [7, 7]] 6"}},
        {{nullptr, to(3)}, native(3, eight), ~CK_ULONG{0}, {"", "[CKA_LABEL (0x3), [8, 7]] 1"}},
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

} // namespace
