// Java values that are copied into native memory of a given capacity.
#include "conversion_cases.h"

namespace {

using namespace cases;
using namespace jni;

struct CopyToCK : JniTest {
    template <typename Native, typename JArray>
    void expect(void (*copy)(JNIEnv*, JArray, Native*, CK_ULONG), jobject array,
        const std::vector<Native>& wanted, const std::string& whenShort = "")
    {
        const std::size_t count = wanted.size();
        for (const std::size_t capacity : {count / 2, count, count + 3}) {
            std::vector<Native> destination(count + 3, UNTOUCHED);
            std::vector<Native> expected = destination;
            std::copy_n(wanted.begin(), std::min(count, capacity), expected.begin());
            copy(env, static_cast<JArray>(array), destination.data(), static_cast<CK_ULONG>(capacity));
            EXPECT_EQ(destination, expected) << capacity;
            const std::string exception = takeException(env);
            EXPECT_EQ(exception.substr(0, exception.find(':')), capacity > count ? whenShort : "");
            copy(env, nullptr, destination.data(), 2);
            EXPECT_EQ(destination, expected);
        }
        copy(env, static_cast<JArray>(array), nullptr, 1);
    }
};

TEST_F(CopyToCK, arraysAreCutToTheCapacity)
{
    for (const std::size_t count : LENGTHS) {
        SCOPED_TRACE(count);
        const LocalFrame frame(env);
        const Longs values = numbers(count);
        const Words words(values.begin(), values.end());
        const Bytes bytes(values.begin(), values.end());
        expect(CopyJByteArrayToCKByteArray, jni::bytes(env, bytes), bytes);
        expect(CopyJLongArrayToCKULongArray, longArray(env, values), words);
        expect(CopyJMechanismTypeArrayToCKMechanismTypeArray, holders(env, MECHANISM_TYPE, values), words,
            "java.lang.ArrayIndexOutOfBoundsException"); // deliberate: the array's length is not checked
    }
}

TEST_F(CopyToCK, valuesOfEachClassAreCopiedOrRefused)
{
    struct Row {
        jobject value;
        CK_ULONG capacity;
        Bytes native;
        std::string refused = ""; // the class name in the exception's text
    };
    const jobject day = make(
        env, "halvorn/zerlin/CK_DATE", "([B[B[B)V", bytes(env, "2024"), bytes(env, "07"), bytes(env, "15"));
    const jobject integer = make(env, "java/lang/Integer", "(I)V", jint{-2});
    const jobject types = holders(env, MECHANISM_TYPE, {5, 6});
    std::vector<Row> rows = {
        {bytes(env, {1, 2, 3}), 2, {1, 2}},
        {make(env, "java/lang/Long", "(J)V", jlong{0x100000005}), 4, {5, 0, 0, 0}},
        {day, 8, {'0', '7', '2', '4', UNTOUCHED, UNTOUCHED, '1', '5'}},
        {day, 7, {}, "halvorn.zerlin.CK_DATE"},
        {types, 7, {5, 0, 0, 0}},
        {longs(env, {7, 0x100000008, 9}), 2,
            {7, 0, 0, 0, 8, 0, 0, 0}}, // deliberate: the capacity counts elements
        {string(env, "abc"), 5, {'a', 'b', 'c', 0, 0}},
        {string(env, "abc"), 2, {'a', 'b'}},
        {integer, 4, {0xFE, 0xFF, 0xFF, 0xFF}},
        {integer, 3, {}, "java.lang.Integer"},
        {make(env, "java/lang/Character", "(C)V", jchar{0x2141}), 1, {0x41}},
        {holders(env, HANDLE, {1}), 16, {}, "[Lhalvorn.zerlin.CK_OBJECT_HANDLE;"},
        {nullptr, 16, {}},
    };
    for (const TypedClass& typed : TYPED_CLASSES) {
        std::string name = typed.path;
        std::replace(name.begin(), name.end(), '/', '.');
        rows.push_back({holder(env, typed.path, 0x180000105), 4, {5, 1, 0, 0x80}});
        rows.push_back({holder(env, typed.path, 5), 3, {}, name});
    }
    for (const Row& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows.data()));
        Bytes destination(16, UNTOUCHED);
        Bytes wanted = row.native;
        wanted.resize(16, UNTOUCHED);
        CopyJObjectPrimativeToCKObjectPtr(env, row.value, destination.data(), row.capacity);
        EXPECT_EQ(destination, wanted);
        const std::string text = "java.lang.UnsupportedOperationException: Can not copy from ";
        EXPECT_EQ(takeException(env), row.refused.empty() ? "" : text + row.refused + " to a CK type");
    }
}

} // namespace
