// Java values that are copied into native memory of a given capacity.
#include "conversion_cases.h"
#include "faulty_env.h"
#include "helper/jutil.h"

#include <cstring>

namespace {

using namespace cases;
using namespace jni;

struct CopyToCK : JniTest {};

// What is in memory of that size after the bytes were written.
Bytes written(const Bytes& bytes, std::size_t size)
{
    Bytes all(size, UNTOUCHED);
    std::copy(bytes.begin(), bytes.end(), all.begin());
    return all;
}

TEST_F(CopyToCK, arrays)
{
    for (const ArrayClass& row : ARRAY_CLASSES) {
        if (row.copy == nullptr) continue;
        for (const std::size_t count : LENGTHS) {
            for (const std::size_t capacity : {count / 2, count, count + 3}) {
                SCOPED_TRACE(row.name + std::to_string(count) + " into " + std::to_string(capacity));
                const LocalFrame frame(env);
                Bytes native = row.native(numbers(count));
                native.resize(std::min(count, capacity) * row.width);
                const std::size_t size = (count + 3) * row.width;
                Bytes destination(size, UNTOUCHED);
                row.copy(env, row.make(env, numbers(count)), destination.data(), capacity);
                EXPECT_EQ(destination, written(native, size));
                // The length of a mechanism type array is not looked at: wanted.
                const bool fails = row.unit == 4 && capacity > count;
                EXPECT_EQ(takeException(env).starts_with(OUT_OF_BOUNDS), fails);
            }
        }
        Bytes destination(8, UNTOUCHED);
        row.copy(env, nullptr, destination.data(), 2);
        EXPECT_EQ(destination, Bytes(8, UNTOUCHED)) << row.name;
        row.copy(env, row.make(env, {1, 2}), nullptr, 2);
    }
}

TEST_F(CopyToCK, strings)
{
    for (const String& row : STRINGS) {
        const std::size_t length = row.native.size();
        for (const std::size_t capacity : {std::size_t{0}, length / 2, length, length + 5}) {
            Bytes native(row.native.begin(), row.native.end());
            native.resize(capacity, 0);
            Bytes destination(length + 6, UNTOUCHED);
            CopyJStringToCKCharArray(env, row.make(env), destination.data(), capacity);
            EXPECT_EQ(destination, written(native, length + 6)) << row.native << " into " << capacity;
        }
    }
    Bytes destination(9, UNTOUCHED);
    CopyJStringToCKCharArray(env, nullptr, destination.data(), 9);
    EXPECT_EQ(destination, Bytes(9, UNTOUCHED));
    CopyJStringToCKCharArray(env, string(env, "abc"), nullptr, 9);
}

TEST_F(CopyToCK, datesAndVersions)
{
    union {
        char bytes[9];
        CK_DATE date;
        CK_VERSION version;
    } native;
    const auto after = [&](const auto& copyIt) {
        std::fill_n(native.bytes, 9, '.');
        copyIt();
        return std::string(native.bytes, 9);
    };
    for (const Date& date : DATES) {
        const std::string copied = after([&] { CopyJDateToCKDate(env, date.make(env), &native.date); });
        EXPECT_EQ(copied, std::string(date.native) + ".");
    }
    const jobject version = make(env, VERSION, "(II)V", jint{2}, jint{200});
    EXPECT_EQ(after([&] { CopyJVersionToCKVersion(env, version, &native.version); }), "\x02\xC8.......");

    const jobject date = DATES[0].make(env);
    const std::string nothing(9, '.');
    EXPECT_EQ(after([&] { CopyJDateToCKDate(env, version, &native.date); }), nothing);
    EXPECT_EQ(after([&] { CopyJDateToCKDate(env, nullptr, &native.date); }), nothing);
    EXPECT_EQ(after([&] { CopyJVersionToCKVersion(env, date, &native.version); }), nothing);
    EXPECT_EQ(after([&] { CopyJVersionToCKVersion(env, nullptr, &native.version); }), nothing);
    CopyJDateToCKDate(env, date, nullptr);
    CopyJVersionToCKVersion(env, version, nullptr);
}

TEST_F(CopyToCK, valuesOfAnyClass)
{
    struct Row {
        jobject value;
        CK_ULONG capacity;
        Bytes native;
        std::string refused = ""; // the class name in the exception's text
    };
    const auto box = [&](const char* path, const char* signature, auto value) {
        return make(env, path, signature, value);
    };
    const jobject aLong = box("java/lang/Long", "(J)V", jlong{0x100000005});
    const jobject integer = box("java/lang/Integer", "(I)V", jint{-2});
    const jobject date = DATES[0].make(env);
    const jobject mechanisms = holders(env, MECHANISM_TYPE, {5, 6});
    const jobject object = make(env, "java/lang/Object");
    std::vector<Row> rows = {
        {bytes(env, {1, 2, 3}), 2, {1, 2}},
        {bytes(env, {1, 2, 3}), 16, {1, 2, 3}},
        {aLong, 4, {5, 0, 0, 0}},
        {aLong, 16, {5, 0, 0, 0}},
        {aLong, 3, {}, "java.lang.Long"},
        {box("halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_TRUE), 1, {1}},
        {box("halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_FALSE), 4, {0}},
        {date, 8, {'0', '7', '2', '4', UNTOUCHED, UNTOUCHED, '1', '5'}},
        {date, 7, {}, "halvorn.zerlin.CK_DATE"},
        {mechanisms, 8, {5, 0, 0, 0, 6, 0, 0, 0}},
        {mechanisms, 7, {5, 0, 0, 0}},
        {mechanisms, 3, {}},
        {box("java/lang/Boolean", "(Z)V", JNI_TRUE), 1, {1}},
        {box("java/lang/Boolean", "(Z)V", JNI_FALSE), 4, {0}},
        {longs(env, {7, 0x100000008, 9}), 2, {7, 0, 0, 0, 8, 0, 0, 0}}, // the capacity in elements: wanted
        {string(env, "abc"), 5, {'a', 'b', 'c', 0, 0}},
        {string(env, "abc"), 2, {'a', 'b'}},
        {integer, 4, {0xFE, 0xFF, 0xFF, 0xFF}},
        {integer, 3, {}, "java.lang.Integer"},
        {intArray(env, {-7, 8, 9}), 2, {0xF9, 0xFF, 0xFF, 0xFF, 8, 0, 0, 0}}, // and here
        {booleanArray(env, {1, 0, 1}), 2, {1, 0}},
        {charArray(env, {0x2141, 'b'}), 5, {0x41, 'b'}},
        {box("java/lang/Byte", "(B)V", jbyte{-128}), 1, {0x80}},
        {box("java/lang/Character", "(C)V", jchar{0x2141}), 1, {0x41}},
        {object, 16, {}, "java.lang.Object"},
        {holders(env, HANDLE, {1}), 16, {}, "[Lhalvorn.zerlin.CK_OBJECT_HANDLE;"},
        {env->NewShortArray(1), 16, {}, "[S"},
        {object, 0, {}},
        {bytes(env, {1}), 0, {}},
        {nullptr, 16, {}},
    };
    for (const TypedClass& typed : TYPED_CLASSES) {
        std::string name = typed.path;
        std::replace(name.begin(), name.end(), '/', '.');
        const jobject value = holder(env, typed.path, 0x180000105);
        rows.push_back({value, 4, {5, 1, 0, 0x80}});
        rows.push_back({value, 3, {}, name});
    }
    for (const Row& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows.data()));
        Bytes destination(16, UNTOUCHED);
        CopyJObjectPrimativeToCKObjectPtr(env, row.value, destination.data(), row.capacity);
        EXPECT_EQ(destination, written(row.native, 16));
        const std::string text = "java.lang.UnsupportedOperationException: Can not copy from ";
        EXPECT_EQ(takeException(env), row.refused.empty() ? "" : text + row.refused + " to a CK type");
        CopyJObjectPrimativeToCKObjectPtr(env, row.value, nullptr, row.capacity);
    }
    CK_ULONG three[3] = {};
    CopyJObjectPrimativeToCKObjectPtr(env, mechanisms, three, sizeof three);
    EXPECT_TRUE(takeException(env).starts_with(OUT_OF_BOUNDS));
    EXPECT_EQ(three[1], 6U);
}

TEST_F(CopyToCK, attributes)
{
    const auto attribute = [&](jobject type, jobject value, jlong length) {
        const jobject made = alloc(env, "halvorn/zerlin/CK_ATTRIBUTE");
        setObject(env, made, "type", "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;", type);
        setObject(env, made, "pValue", "Ljava/lang/Object;", value);
        setLong(env, made, "valueLen", length);
        return made;
    };
    const jobject type = holder(env, TYPED_CLASSES[2].path, 0x180000103);
    struct Row {
        jobject object;
        CK_ULONG type;
        Bytes value;
        CK_ULONG length;
        std::string exception = "";
    };
    const std::vector<Row> rows = {
        {attribute(type, bytes(env, {1, 2, 3, 4, 5, 6}), 0x100000007), 0x80000103, {1, 2, 3, 4, 5}, 7},
        {nullptr, 99, {}, 5},
        {attribute(nullptr, nullptr, -1), ALL_ONES, {}, ALL_ONES},
        {attribute(type, type, 8), 0x80000103, {3, 1, 0, 0x80}, 8}, // no special length for a number
        {attribute(type, make(env, VERSION), 7), 0x80000103, {}, 5,
            "java.lang.UnsupportedOperationException: "
            "Can not copy from halvorn.zerlin.CK_VERSION to a CK type"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows.data()));
        Bytes buffer(6, UNTOUCHED);
        CK_ATTRIBUTE native = {99, buffer.data(), 5};
        CopyJAttributeToCKAttribute(env, row.object, &native);
        EXPECT_EQ(takeException(env), row.exception);
        EXPECT_EQ(native.type, row.type);
        EXPECT_EQ(native.ulValueLen, row.length);
        EXPECT_EQ(buffer, written(row.value, 6));
    }
    CopyJAttributeToCKAttribute(env, rows[0].object, nullptr);

    const jobjectArray array =
        objects(env, "halvorn/zerlin/CK_ATTRIBUTE", {rows[0].object, nullptr, rows[2].object});
    for (const CK_ULONG count : {0U, 2U, 3U, 4U}) {
        CK_ATTRIBUTE natives[4] = {{99, nullptr, 0}, {99, nullptr, 0}, {99, nullptr, 0}, {99, nullptr, 0}};
        CopyJAttributeArrayToCKAttributeArray(env, array, natives, count);
        EXPECT_EQ(takeException(env).starts_with(OUT_OF_BOUNDS), count > 3);
        EXPECT_EQ(natives[0].ulValueLen, count > 0 ? 7 : 0);
        EXPECT_EQ(natives[1].type, 99U);
        EXPECT_EQ(natives[2].type, count > 2 ? ALL_ONES : 99);
    }
    CopyJAttributeArrayToCKAttributeArray(env, nullptr, nullptr, 1);
    CopyJAttributeArrayToCKAttributeArray(env, array, nullptr, 1);
}

// The Java records are made by the copy in the other direction, which has tests of its own.
TEST_F(CopyToCK, records)
{
    const char* otherPath = VERSION;
    for (const Record& record : RECORDS) {
        SCOPED_TRACE(record.path);
        const LocalFrame frame(env);
        const std::size_t fields = record.fields.size();
        const jobject object = make(env, record.path);
        record.toJava(env, record.bytes(fields).data(), object);
        // In the order of the table up to the field that is missing; in the last round none is.
        for (std::size_t missing = 0; missing <= fields; ++missing) {
            const std::string name = missing < fields ? record.fields[missing].name : "nothing";
            Bytes destination(record.size, UNTOUCHED);
            forgetLookups(env);
            watch(env, {.lookup = name}, [&] { record.toCK(env, object, destination.data()); });
            EXPECT_EQ(takeException(env), missing < fields ? "java.lang.NoSuchFieldError: " + name : "");
            EXPECT_EQ(destination, record.bytes(missing));
        }
        Bytes destination(record.size, UNTOUCHED);
        record.toCK(env, nullptr, destination.data());
        record.toCK(env, make(env, otherPath), destination.data());
        EXPECT_EQ(destination, Bytes(record.size, UNTOUCHED));
        record.toCK(env, object, nullptr);
        otherPath = record.path;
    }
}

TEST_F(CopyToCK, recordsOfOtherLengthsOrNulls)
{
    const jobject info = alloc(env, "halvorn/zerlin/CK_TOKEN_INFO");
    setObject(env, info, "label", "[B", bytes(env, std::string(40, 'l')));
    setObject(env, info, "model", "[B", bytes(env, "ten bytes."));
    setLong(env, info, "maxPinLen", 0x100000008);
    CK_TOKEN_INFO native;
    std::memset(&native, UNTOUCHED, sizeof native);
    CopyJTokenInfoToCKTokenInfo(env, info, &native);
    EXPECT_EQ(Bytes(native.label, native.label + 32), Bytes(32, 'l'));
    EXPECT_EQ(Bytes(native.manufacturerID, native.manufacturerID + 32), Bytes(32, UNTOUCHED));
    EXPECT_EQ(std::string(native.model, native.model + 16), "ten bytes." + std::string(6, '\xEE'));
    EXPECT_EQ(native.ulMaxPinLen, 8U);
    EXPECT_EQ(native.hardwareVersion.major, UNTOUCHED);

    CK_SESSION_INFO session = {};
    CopyJSessionInfoToCKSessionInfo(env, alloc(env, "halvorn/zerlin/CK_SESSION_INFO"), &session);
    EXPECT_EQ(session.state, ALL_ONES);
}

} // namespace
