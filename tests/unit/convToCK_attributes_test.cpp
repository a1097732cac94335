// Attribute values and templates from Java to native.
#include "helper/convToCK.h"

#include "failures.h"
#include "values.h"

#include <cstdlib>

namespace {

using namespace jni;
using zerlin::jAttributeArrayToCKAttributeArray;
using zerlin::jAttributeToCKAttribute;
using zerlin::jObjectToPrimitiveCKObjectPtrPtr;

struct ConvToCKAttributes : JniTest {};

Bytes bytesAt(const void* data, std::size_t size)
{
    const auto* const first = static_cast<const std::uint8_t*>(data);
    return first == nullptr ? Bytes() : Bytes(first, first + size);
}

// What an output holds that nobody has written to.
CK_BYTE place = 0;
CK_VOID_PTR const UNTOUCHED = &place;

struct Converted {
    CK_VOID_PTR data = UNTOUCHED;
    CK_ULONG length = 77;

    Converted(JNIEnv* env, jobject value) { jObjectToPrimitiveCKObjectPtrPtr(env, value, &data, &length); }
    Converted(const Converted&) = delete;
    Converted& operator=(const Converted&) = delete;
    ~Converted()
    {
        if (data != UNTOUCHED) std::free(data);
    }
};

struct Template {
    CK_ATTRIBUTE_PTR data = static_cast<CK_ATTRIBUTE_PTR>(UNTOUCHED);
    CK_ULONG count = 77;

    Template(JNIEnv* env, jobjectArray array)
    {
        jAttributeArrayToCKAttributeArray(env, array, &data, &count);
    }
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;
    ~Template()
    {
        if (data == UNTOUCHED || data == nullptr) return;
        for (CK_ULONG i = 0; i < count; ++i)
            std::free(data[i].pValue);
        std::free(data);
    }
};

TEST_F(ConvToCKAttributes, valuesByTheirClass)
{
    for (const ValueClass& row : VALUES) {
        if (row.native.empty()) continue;
        const Converted converted(env, row.make(env, row.path));
        EXPECT_EQ(takeException(env), "") << row.path;
        EXPECT_EQ(bytesAt(converted.data, row.native.size()), row.native) << row.path;
        EXPECT_EQ(converted.length, row.length) << row.path;
    }
    const Converted one(env, ints(env, {-1})), none(env, ints(env, {})), null(env, nullptr);
    EXPECT_EQ(bytesAt(one.data, 4), Bytes(4, 255));
    EXPECT_NE(none.data, nullptr);
    EXPECT_EQ(none.length, 0U);
    EXPECT_EQ(null.data, nullptr);
    EXPECT_EQ(null.length, 0U);
}

TEST_F(ConvToCKAttributes, valuesWithoutANativeForm)
{
    const std::pair<jobject, const char*> rows[] = {
        {make(env, "java/lang/Double", "(D)V", 1.5), "java.lang.Double"},
        {longRef(env, 3), "halvorn.zerlin.LongRef"},
        {objects(env, "java/lang/Object", {}), "[Ljava.lang.Object;"},
        {objects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", {}), "[Lhalvorn.zerlin.CK_OBJECT_HANDLE;"},
        {objects(env, "[B", {}), "[[B"},
    };
    for (const auto& [value, name] : rows) {
        const Converted converted(env, value);
        EXPECT_EQ(
            takeException(env), std::string("java.lang.UnsupportedOperationException: No Conversion from ") +
                                    name + " to a CK type");
        EXPECT_EQ(converted.data, nullptr);
        EXPECT_EQ(converted.length, 0U);
    }
    const Converted character(env, VALUES[25].make(env, nullptr));
    EXPECT_EQ(takeException(env), "java.lang.NoClassDefFoundError: java/lang/Char");
    EXPECT_EQ(character.data, nullptr);
}

TEST_F(ConvToCKAttributes, everyClassIsLookedUpBeforeTheValueIsLookedAt)
{
    for (const ValueClass& row : VALUES) {
        for (const jobject value : {jobject{bytes(env, "x")}, jobject{nullptr}}) {
            JNI_OnUnload(jvm(), nullptr);
            watch(env, {.lookup = row.path}, [&] {
                const Converted converted(env, value);
                EXPECT_EQ(converted.data, UNTOUCHED);
                EXPECT_EQ(converted.length, 77U);
            });
            EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + row.path);
        }
    }
}

TEST_F(ConvToCKAttributes, theLengthIsTheGivenOneButForNumbersOfFour)
{
    const jlong LABEL = 3, CLASS = 0, TOKEN = 1, MODULUS_BITS = 0x121, MECHANISM_LIST = 0x80000104;
    const jobject test = string(env, "test"), seven = bytes(env, "1234567"), number = boxedLong(env, 5);
    const jobject types = mechanismTypes(env, {1, 2});
    struct Row {
        jlong type;
        jobject value;
        jlong valueLen;
        CK_ULONG length;
    };
    const Row rows[] = {
        {LABEL, nullptr, 256, 256},
        {LABEL, nullptr, 4, 4},
        {LABEL, test, 4, 4},
        {LABEL, test, 2, 2},
        {LABEL, test, 0, 0},
        {LABEL, test, 9, 9},
        {LABEL, test, -1, 0xffffffff},
        {LABEL, seven, 4, 4},
        {LABEL, seven, 0x1'00000003, 3},
        {TOKEN, seven, 4, 4},
        {0x80000147, seven, 4, 4}, // a vendor's type that looks like a number
        {CLASS, nullptr, 4, 0},
        {CLASS, nullptr, 8, 8},
        {CLASS, nullptr, 0, 0},
        {CLASS, seven, 4, 7},
        {CLASS, seven, 0x1'00000004, 7},
        {CLASS, seven, 5, 5},
        {0x1'00000000, seven, 4, 7},
        {MODULUS_BITS, number, 4, 4},
        {MODULUS_BITS, number, 3, 3},
        {MODULUS_BITS, bytes(env, {1}), 4, 1},
        {0x8000012c, seven, 4, 7},
        {MECHANISM_LIST, types, 4, 8},
        {MECHANISM_LIST, types, 12, 12},
        {MECHANISM_LIST, longs(env, {1, 2, 3}), 4, 3},
        {MECHANISM_LIST, longs(env, {1, 2, 3}), 12, 12},
    };
    for (const Row& row : rows) {
        const jobject object = attribute(env, row.type, row.value, row.valueLen);
        const CK_ATTRIBUTE native = jAttributeToCKAttribute(env, object);
        const Converted bare(env, row.value);
        EXPECT_EQ(native.type, static_cast<CK_ULONG>(row.type));
        EXPECT_EQ(bytesAt(native.pValue, bare.length), bytesAt(bare.data, bare.length));
        EXPECT_EQ(native.ulValueLen, row.length) << text(env, {object});
        std::free(native.pValue);
    }
}

std::string shown(const CK_ATTRIBUTE& native, std::size_t size)
{
    const Bytes value = bytesAt(native.pValue, size);
    return std::to_string(native.type) + ": " + std::string(value.begin(), value.end()) + ", " +
           std::to_string(native.ulValueLen);
}

TEST_F(ConvToCKAttributes, whatIsNullOrEmpty)
{
    const HeapWatch heap;
    const Template none(env, nullptr), empty(env, attributes(env, {}));
    EXPECT_EQ(none.data, nullptr);
    EXPECT_EQ(none.count, 0U);
    EXPECT_EQ(heap.blocks, (std::map<void*, std::size_t>{{empty.data, 1}})) << "a spare byte";
    EXPECT_EQ(empty.count, 0U);

    const jobject untyped = attribute(env, 3, bytes(env, "two"), 3);
    setObject(env, untyped, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", nullptr);
    const Template native(env, attributes(env, {attribute(env, 3, bytes(env, "one"), 3), nullptr, untyped}));
    ASSERT_EQ(native.count, 3U);
    EXPECT_EQ(shown(native.data[0], 3), "3: one, 3");
    EXPECT_EQ(shown(native.data[1], 0), "4294967295: , 0");
    EXPECT_EQ(native.data[1].pValue, nullptr);
    EXPECT_EQ(shown(native.data[2], 3), "4294967295: two, 3");
}

TEST_F(ConvToCKAttributes, aBadValueEndsTheTemplate)
{
    const jobject bad = make(env, "java/lang/Double", "(D)V", 1.5);
    const jobjectArray array =
        attributes(env, {attribute(env, 3, bytes(env, "one"), 3), attribute(env, 17, string(env, "two"), 2),
                            attribute(env, 18, bad, 8), attribute(env, 19, bytes(env, "four"), 4)});
    const HeapWatch heap;
    {
        const Template native(env, array);
        EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: "
                                      "No Conversion from java.lang.Double to a CK type");
        ASSERT_EQ(native.count, 4U);
        EXPECT_EQ(shown(native.data[0], 3), "3: one, 3");
        EXPECT_EQ(shown(native.data[1], 4), std::string("17: two\0, 2", 11));
        EXPECT_EQ(native.data[2].type, 18U);
        EXPECT_EQ(native.data[2].pValue, nullptr);
        EXPECT_EQ(native.data[3].pValue, nullptr);
    }
    EXPECT_EQ(heap.blocks.size(), 0U);
}

TEST_F(ConvToCKAttributes, aLongTemplateTakesFewReferences)
{
    const jobjectArray array = env->NewObjectArray(10000, find(env, "halvorn/zerlin/CK_ATTRIBUTE"), nullptr);
    for (jsize i = 0; i < 10000; ++i) {
        const LocalFrame frame(env);
        const ValueClass& row = VALUES[static_cast<std::size_t>(i) % CONVERTIBLE];
        env->SetObjectArrayElement(array, i, attribute(env, i, row.make(env, row.path), 4));
    }
    const Watched watched = watch(env, {}, [&] {
        const Template native(env, array);
        ASSERT_EQ(native.count, 10000U);
        EXPECT_EQ(native.data[9999].type, 9999U);
        EXPECT_EQ(bytesAt(native.data[9999].pValue, 1), Bytes{255});
    });
    EXPECT_LE(watched.maxLocalRefs, 16U);
    EXPECT_TRUE(watched.localRefs.empty());
}

TEST_F(ConvToCKAttributes, whateverFailsLeavesATemplateThatCanBeFreed)
{
    const jobjectArray all = attributesOfAllClasses(env, CONVERTIBLE);
    const auto convert = [&] {
        const Template native(env, all);
        EXPECT_EQ(native.count, native.data == UNTOUCHED ? 77U : CONVERTIBLE);
        return std::string();
    };
    EXPECT_GT(failEachJniCall(env, [&] { return convert; }), 100);
    const Lines outcomes = failEachAllocation(env, convert);
    EXPECT_EQ(outcomes, Lines(CONVERTIBLE + 1, NO_MEMORY)); // one for each value, and the array's own

    const jclass unsupported = find(env, "java/lang/UnsupportedOperationException");
    const jobject bad = make(env, "java/lang/Object");
    const auto refuse = [&] {
        const Converted converted(env, bad);
        EXPECT_TRUE(converted.data == nullptr || converted.data == UNTOUCHED);
        takeBack(env, unsupported);
        return std::string();
    };
    EXPECT_GT(failEachJniCall(env, [&] { return refuse; }), CONVERTIBLE);
    EXPECT_EQ(failEachAllocation(env, refuse), Lines(2, NO_MEMORY)); // the class's name and the message
}

} // namespace
