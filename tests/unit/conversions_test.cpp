// Handles, typed constants, booleans, versions, dates, arrays, information records and attributes, from Java
// to native and back.
#include "digest.h"
#include "harness/native_table.h"
#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/copyToCK.h"
#include "helper/copyToJava.h"

namespace {

using namespace jni;
using namespace zerlin;
using Conversions = JniTest;

// In the length of a native array an element counts as unit.
template <typename Native, typename JArray>
void convertArray(JNIEnv* env, const char* shown, CK_ULONG unit,
    void (*toCK)(JNIEnv*, JArray, Native**, CK_ULONG*), JArray (*toJava)(JNIEnv*, const Native*, CK_ULONG))
{
    Native* data = nullptr;
    CK_ULONG length = 99;
    std::vector<Native> natives(1);
    for (const std::size_t count : {0, 2, 256, 513}) { // around the pieces of a conversion
        SCOPED_TRACE(shown + std::to_string(count));
        const LocalFrame frame(env);
        while (natives.size() < count)
            natives.push_back(static_cast<Native>(0xDEADBEEF * natives.size()));
        const JArray array = toJava(env, natives.data(), count);
        EXPECT_TRUE(count != 2 || text(env, {array}) == shown) << text(env, {array});
        const HeapWatch heap;
        toCK(env, array, &data, &length);
        EXPECT_EQ(length, count * unit);
        EXPECT_TRUE(std::equal(data, data + count, natives.begin()));
        EXPECT_EQ(heap.blocks.at(data), count * sizeof(Native) + 1) << "spare byte";
        std::free(data);
    }
    toCK(env, nullptr, &data, &length);
    EXPECT_TRUE(data == nullptr && length == 0 && toJava(env, nullptr, 3) == nullptr);
    failEach(env, [&] {
        data = nullptr;
        const JArray array = toJava(env, natives.data(), 20);
        if (array != nullptr) toCK(env, array, &data, &length);
        std::free(data); // it may be there all the same
        return !env->ExceptionCheck();
    });
}

TEST_F(Conversions, arrays)
{
    convertArray(env, "[[0, -17]]", 1, jByteArrayToCKByteArray, ckByteArrayToJByteArray);
    convertArray(env, "[[0, 3735928559]]", 1, jLongArrayToCKULongArray, ckULongArrayToJLongArray);
    convertArray(env, "[[object 0, object 3735928559]]", WORD, jObjectHandleArrayToCKObjectHandleArray,
        ckObjHandleArrayToJObjHandleArray);
    convertArray(env, "[[CKM_RSA_PKCS_KEY_PAIR_GEN (0x0), 0xdeadbeef]]", WORD,
        jMechanismTypeArrayToCKMechanismTypeArray, ckMechanismTypeArrayToJMechanismTypeArray);
}

TEST_F(Conversions, nullsAndOtherObjects)
{
    EXPECT_EQ(jBBoolToCKBBool(env, object(env, 1)) + jBBoolToCKBBool(env, nullptr), CK_FALSE);
    const jobject other = make(env, "halvorn/zerlin/CK_BBOOL");
    EXPECT_EQ(jDateObjectToCKDatePtr(env, other), nullptr);
    EXPECT_EQ(jKeyTypeToCKKeyType(env, other), ~CK_ULONG{0});
    const jobjectArray types =
        objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {nullptr, mechanismType(env, 7)});
    const jobjectArray handles = objects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", {nullptr, object(env, 1)});
    const jobjectArray others = objects(env, "java/lang/Object", {string(env, "8"), nullptr});
    CK_ULONG numbers[] = {1, 0xfedcba98, 3};
    for (const jobjectArray target : {types, handles, others}) {
        EXPECT_TRUE(CopyCKULongArrayToJMechanismTypeArray(env, numbers, 3, target));
        EXPECT_TRUE(CopyCKULongArrayToJObjectHandleArray(env, numbers, 3, target));
    }
    EXPECT_EQ(text(env, {types, handles}), "[[null, 0xfedcba98], [null, object 4275878552]]");
    // Deliberate: the length of the array is not checked.
    CopyJMechanismTypeArrayToCKMechanismTypeArray(env, others, numbers, 3);
    EXPECT_TRUE(takeException(env).starts_with("java.lang.ArrayIndexOutOfBounds"));
    EXPECT_TRUE(numbers[0] == ~0UL && numbers[1] == ~0UL && numbers[2] == 3);
}

// A record whose fields all differ: a text of that many bytes, a version where 2 stands, or a number (0).
template <typename Native>
void convertRecord(JNIEnv* env, std::string java, const std::vector<int>& widths,
    void (*toCK)(JNIEnv*, jobject, Native*), bool (*toJava)(JNIEnv*, const Native*, jobject))
{
    SCOPED_TRACE(java);
    const jobject again = make(env, ("halvorn/zerlin/" + java).c_str()), other = object(env, 1);
    std::string native;
    for (int number = 1; const int width : widths) {
        const std::string bytes(width, static_cast<char>(number)), digit = std::to_string(number);
        const std::string shown = width == 0 ? digit : recorder::hex(bytes.data(), bytes.size());
        java += width == 0   ? " " + digit
                : width == 2 ? " CK_VERSION " + digit + " " + digit
                             : " [" + shown + "]";
        native += (width == 0 ? " " : " .") + shown;
        ++number;
    }
    const jobject made = read(env, java);
    Native converted{};
    toCK(env, made, nullptr);
    for (const jobject object : {made, jobject{}, other})
        toCK(env, object, &converted);
    EXPECT_EQ(" " + nativeText(&converted, native), native);
    for (const jobject object : {again, jobject{}, other})
        EXPECT_TRUE(toJava(env, &converted, object) && toJava(env, nullptr, object));
    EXPECT_EQ(show(env, again), java);
    failEach(env, [&] {
        return toCK(env, made, &converted), !env->ExceptionCheck() && toJava(env, &converted, again);
    });
}

TEST_F(Conversions, informationRecords)
{
    convertRecord(env, "CK_INFO", {2, 32, 0, 32, 2}, CopyJInfoToCKInfo, CopyCKInfoToJInfo);
    convertRecord(
        env, "CK_SLOT_INFO", {64, 32, 0, 2, 2}, CopyJSlotInfoToCKSlotInfo, CopyCKSlotInfoToJSlotInfo);
    convertRecord(env, "CK_TOKEN_INFO", {32, 32, 16, 16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 2, 16},
        CopyJTokenInfoToCKTokenInfo, CopyCKTokenInfoToJTokenInfo);
    convertRecord(env, "CK_SESSION_INFO", {0, 0, 0, 0}, CopyJSessionInfoToCKSessionInfo,
        CopyCKSessionInfoToJSessionInfo);
    convertRecord(
        env, "CK_MECHANISM_INFO", {0, 0, 0}, CopyJMechInfoToCKMechInfo, CopyCKMechanismInfoToJMechanismInfo);
}

// Attribute values and templates, in all directions.
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
            HeapWatch heap;
            jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
            ASSERT_EQ(heap.blocks[data],
                row.native.size() + (cls.starts_with('[') && !row.native.empty())); // a spare byte
        }
        EXPECT_TRUE(std::equal(row.native.begin(), row.native.end(), static_cast<CK_BYTE*>(data)));
        EXPECT_EQ(length, row.length);
        std::free(data);
        if (cls == "java.lang.Character")
            EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: java/lang/Char");
        else if (row.native.empty())
            expectRefused("No Conversion from ", cls);

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
        const std::string before = text(env, {row.object});
        for (std::size_t shorter = 0; shorter < row.written.size(); ++shorter)
            EXPECT_EQ(after(Bytes(&row.written[0], &row.written[shorter]), row.object), before) << shorter;
        EXPECT_TRUE(CopyCKObjectPtrToJObjectPrimitive(env, nullptr, 64, row.object));
        EXPECT_EQ(after(row.written.empty() ? Bytes{1} : row.written, row.object), row.after);
        if (row.written.empty()) expectRefused("Can not copy from CK type to ", cls, "");
        failEach(env, [&] {
            data = nullptr;
            jObjectToPrimitiveCKObjectPtrPtr(env, row.object, &data, &length);
            std::free(data);
            buffer[0] = UNTOUCHED;
            if (!env->ExceptionCheck()) CopyJObjectPrimativeToCKObjectPtr(env, row.object, buffer.data(), 8);
            EXPECT_TRUE(!env->ExceptionCheck() || row.length > 4 || buffer[0] == UNTOUCHED);
            return !env->ExceptionCheck() &&
                   (row.written.empty() || CopyCKObjectPtrToJObjectPrimitive(
                                               env, row.written.data(), row.written.size(), row.object));
        });
    }
    // Deliberate: a Boolean takes the byte, of which the JVM keeps the lowest bit.
    EXPECT_EQ(after({2}, make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE)), "[false]");
    EXPECT_EQ(after({3}, make(env, "halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_TRUE)), "[CK_FALSE]");
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
    const std::string shown = recorder::hex(words({1, 2, 3, 0}).data(), 4 * WORD);
    const Call made = call(
        NATIVE(C_1FindObjectsInit), session(env), attributes(env, {attribute(env, 3, three, 4 * ONE)}), 1);
    expectCall(
        env, made, "C_FindObjectsInit(41, {{3, [" + shown + "], " + std::to_string(4 * WORD) + "}}, 1)");
}

TEST_F(Attributes, nullElementsAreUnavailableAndABadValueEndsTheTemplate)
{
    const jobject one = attribute(env, 3, bytes(env, "one"), 2),
                  untyped = attribute(env, 3, bytes(env, "two"), 3);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const jobject bad = attribute(env, 18, make(env, "java/lang/Double", "(D)V", 1.5), 8);
    const auto creating = [&](const std::vector<jobject>& all) {
        const jobjectArray array = objects(env, "java/lang/Object", all);
        return call(NATIVE(C_1CreateObject), session(env), array, std::ssize(all), object(env, 1));
    };
    const std::string null = "{" + std::string(ALL_ONES) + ", null, 0}, ";
    expectCall(env, creating({one, nullptr, string(env, "no attribute"), untyped}),
        "C_CreateObject(41, {{3, [6f6e], 2}, " + null + null + "{" + ALL_ONES + ", [74776f], 3}}, 4, out)");
    EXPECT_EQ(creating({one, bad, untyped})(env), nullptr);
    expectRefused("No Conversion from ", "java.lang.Double");
    CK_ATTRIBUTE_PTR data = nullptr;
    CK_ULONG count = 77;
    jAttributeArrayToCKAttributeArray(env, nullptr, &data, &count);
    EXPECT_TRUE(data == nullptr && count == 0);

    const Bytes buffer(4, UNTOUCHED);
    CK_ATTRIBUTE copied = native(0, buffer);
    CopyJAttributeArrayToCKAttributeArray(env, attributes(env, {one}), &copied, 1);
    EXPECT_EQ(buffer, (Bytes{'o', 'n', 'e', UNTOUCHED}));
    EXPECT_TRUE(copied.type == 3 && copied.ulValueLen == 2);
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
        {0x001, {1, 7}, 2, "CKA_TOKEN (0x1), CK_TRUE"}, {0x002, {2}, 1, "CKA_PRIVATE (0x2), CK_FALSE"},
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
    failEach(env, [&] { return ckAttributeArrayToJAttributeArray(env, all.data(), all.size()) != nullptr; });
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
    }
}

} // namespace
