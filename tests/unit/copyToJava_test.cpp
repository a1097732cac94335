// Native results that are copied into Java objects of the caller's.
#include "conversion_cases.h"
#include "faulty_env.h"
#include "helper/jutil.h"

#include <cstring>

namespace {

using namespace cases;
using namespace jni;

struct CopyToJava : JniTest {};

// What the fields of a Java record hold, laid out like the native record; nulls leave their bytes.
Bytes bytesIn(JNIEnv* env, const Record& record, jobject object)
{
    Bytes native(record.size, UNTOUCHED);
    for (const Field& field : record.fields) {
        jobject held = field.kind == 'n' ? object : getObject(env, object, field.name, field.signature());
        if (held == nullptr) continue;
        Bytes bytes;
        if (field.kind == 't') {
            bytes = toVector(env, static_cast<jbyteArray>(held));
        } else if (field.kind == 'v') {
            for (const char* part : {"major", "minor"}) {
                bytes.push_back(static_cast<std::uint8_t>(getByte(env, held, part)));
            }
        } else {
            const jlong value = getLong(env, held, field.kind == 'n' ? field.name : "m_value");
            EXPECT_EQ(value >> 32, 0) << field.name;
            for (int i = 0; i < 4; ++i) {
                bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
            }
        }
        EXPECT_EQ(bytes.size(), field.width) << field.name;
        std::copy(bytes.begin(), bytes.end(), native.begin() + static_cast<std::ptrdiff_t>(field.offset));
    }
    return native;
}

jobject untouchedRecord(JNIEnv* env, const Record& record)
{
    const jobject object = alloc(env, record.path);
    for (const Field& field : record.fields) {
        if (field.kind == 'n') setLong(env, object, field.name, 0xEEEEEEEE);
        if (field.kind != 's') continue;
        setObject(env, object, field.name, field.signature(), holder(env, STATE, 0xEEEEEEEE));
    }
    return object;
}

TEST_F(CopyToJava, records)
{
    const char* otherPath = VERSION;
    for (const Record& record : RECORDS) {
        SCOPED_TRACE(record.path);
        const std::size_t fields = record.fields.size();
        const Bytes native = record.bytes(fields);
        // In the order of the table up to the field that is missing; in the last round none is.
        for (std::size_t missing = 0; missing <= fields; ++missing) {
            const LocalFrame frame(env);
            const std::string name = missing < fields ? record.fields[missing].name : "nothing";
            const jobject object = untouchedRecord(env, record);
            forgetLookups(env);
            watch(env, {.lookup = name}, [&] { record.toJava(env, native.data(), object); });
            EXPECT_EQ(takeException(env), missing < fields ? "java.lang.NoSuchFieldError: " + name : "");
            EXPECT_EQ(bytesIn(env, record, object), record.bytes(missing));
        }
        const LocalFrame frame(env);
        const jobject object = untouchedRecord(env, record);
        record.toJava(env, nullptr, object);
        record.toJava(env, native.data(), nullptr);
        record.toJava(env, native.data(), make(env, otherPath));
        EXPECT_EQ(bytesIn(env, record, object), Bytes(record.size, UNTOUCHED));
        otherPath = record.path;

        // A second copy replaces text and versions by new objects, but changes the state that is there.
        record.toJava(env, native.data(), object);
        for (const Field& field : record.fields) {
            if (field.kind == 'n') continue;
            const jobject first = getObject(env, object, field.name, field.signature());
            record.toJava(env, native.data(), object);
            const jobject second = getObject(env, object, field.name, field.signature());
            EXPECT_EQ(env->IsSameObject(first, second) != JNI_FALSE, field.kind == 's') << field.name;
        }
    }
}

TEST_F(CopyToJava, aSessionInfoWithoutAState)
{
    const CK_SESSION_INFO native = {1, 2, 3, 4};
    const jobject info = alloc(env, RECORDS[3].path);
    const auto copy = [&] { CopyCKSessionInfoToJSessionInfo(env, &native, info); };
    watch(env, {.lookup = STATE}, copy);
    EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + STATE);
    EXPECT_EQ(getLong(env, info, "slotID"), 0) << "both classes are looked up first";
    copy();
    EXPECT_EQ(getObject(env, info, "state", "Lhalvorn/zerlin/constants/CK_STATE;"), nullptr);
    EXPECT_EQ(getLong(env, info, "deviceError"), 4);
}

// The three arrays of a date before and after the copy, "-" for no array.
TEST_F(CopyToJava, dates)
{
    struct Row {
        Date before;
        std::string after;
        CK_ULONG length = 8;
    };
    const Row rows[] = {
        {{"....", "..", "..", ""}, "2024 20 15"}, // the month is the year's first two characters: wanted
        {{"....", "..", "..", ""}, "2024 20 15", 0},
        {{"......", "...", "....", ""}, "2024.. 20. 15.."},
        {{".", "", ".", ""}, "2  1"},
        {{nullptr, "..", nullptr, ""}, "- 20 -"},
    };
    CK_DATE native;
    std::memcpy(&native, "20240715", 8);
    for (const Row& row : rows) {
        const jobject date = row.before.make(env);
        const jobject month = getObject(env, date, "month", "[B");
        CopyCKDateToJDate(env, nullptr, row.length, date);
        CopyCKDateToJDate(env, &native, row.length, date);
        std::string after;
        for (const char* field : {"year", "month", "day"}) {
            const auto digits = static_cast<jbyteArray>(getObject(env, date, field, "[B"));
            const Bytes held = digits == nullptr ? Bytes{'-'} : toVector(env, digits);
            after.append(held.begin(), held.end());
            if (field[0] != 'd') after += ' ';
        }
        EXPECT_EQ(after, row.after);
        EXPECT_TRUE(env->IsSameObject(getObject(env, date, "month", "[B"), month));
    }
    CopyCKDateToJDate(env, &native, 8, nullptr);
    CopyCKDateToJDate(env, &native, 8, make(env, VERSION));
}

TEST_F(CopyToJava, versionsAndSetValue)
{
    const CK_VERSION native = {2, 200};
    const jobject version = make(env, VERSION);
    const jobject state = holder(env, STATE, 9);
    CopyCKVersionToJVersion(env, nullptr, version);
    CopyCKVersionToJVersion(env, &native, nullptr);
    CopyCKVersionToJVersion(env, &native, state);
    EXPECT_EQ(getByte(env, version, "major"), 0);
    CopyCKVersionToJVersion(env, &native, version);
    EXPECT_EQ(getByte(env, version, "major"), 2);
    EXPECT_EQ(getByte(env, version, "minor"), -56);

    setLongValue(env, find(env, STATE), state, ALL_ONES);
    EXPECT_EQ(takeException(env), "");
    EXPECT_EQ(getLong(env, state, "m_value"), 4294967295);
}

struct ObjectArrayRow {
    const char* name;
    const char* path;
    void (*copy)(JNIEnv*, const CK_ULONG*, CK_ULONG, jobjectArray);
};

constexpr ObjectArrayRow OBJECT_ARRAYS[] = {
    {"CopyCKULongArrayToJObjectHandleArray", HANDLE, CopyCKULongArrayToJObjectHandleArray},
    {"CopyCKULongArrayToJMechanismTypeArray", MECHANISM_TYPE, CopyCKULongArrayToJMechanismTypeArray},
    {"CopyCKMechanismTypeArrayToJMechanismTypeArray", MECHANISM_TYPE,
        CopyCKMechanismTypeArrayToJMechanismTypeArray},
};

TEST_F(CopyToJava, arrays)
{
    struct Row {
        std::size_t count;
        std::size_t length;
    };
    constexpr Row rows[] = {{0, 0}, {0, 3}, {3, 0}, {10, 4}, {2, 4}, {255, 300}, {256, 300}, {257, 300},
        {300, 256}, {1000, 1000}};
    for (const auto& [count, length] : rows) {
        SCOPED_TRACE(std::to_string(count) + " into " + std::to_string(length));
        const LocalFrame frame(env);
        std::vector<CK_ULONG> source;
        Longs wanted(length, -5);
        for (const jlong value : numbers(count)) {
            if (source.size() < length) wanted[source.size()] = value & 0xFFFFFFFF;
            source.push_back(static_cast<CK_ULONG>(value));
        }
        const auto longTarget = static_cast<jlongArray>(longArray(env, Longs(length, -5)));
        CopyCKULongArrayToJLongArray(env, nullptr, count, longTarget);
        CopyCKULongArrayToJLongArray(env, source.data(), count, nullptr);
        CopyCKULongArrayToJLongArray(env, source.data(), count, longTarget);
        EXPECT_EQ(toVector(env, longTarget), wanted);
        for (const ObjectArrayRow& row : OBJECT_ARRAYS) {
            const jobjectArray target = holders(env, row.path, Longs(length, -5));
            row.copy(env, source.data(), count, target);
            EXPECT_EQ(heldBy(env, target), wanted) << row.name;
        }
        const auto* const first = reinterpret_cast<const CK_BYTE*>(source.data());
        Bytes wantedBytes(length, UNTOUCHED);
        std::copy_n(first, std::min(count, length), wantedBytes.begin());
        const jbyteArray byteTarget = bytes(env, Bytes(length, UNTOUCHED));
        CopyCKByteArrayToJByteArray(env, nullptr, count, byteTarget);
        CopyCKByteArrayToJByteArray(env, first, count, nullptr);
        CopyCKByteArrayToJByteArray(env, first, count, byteTarget);
        EXPECT_EQ(toVector(env, byteTarget), wantedBytes);
    }
}

// The JVM lets no object of another class into such an array; this environment does, at index 1.
const JNINativeInterface_* realTable = nullptr;
jobject stranger = nullptr;

jobject JNICALL elementOrStranger(JNIEnv* env, jobjectArray array, jsize index)
{
    return index == 1 ? env->NewLocalRef(stranger) : realTable->GetObjectArrayElement(env, array, index);
}

TEST_F(CopyToJava, objectArraysOfNullsAndStrangers)
{
    const CK_ULONG source[] = {5, ALL_ONES, 7};
    for (const ObjectArrayRow& row : OBJECT_ARRAYS) {
        SCOPED_TRACE(row.name);
        const jobject element = holder(env, row.path, 1);
        const jobjectArray target = objects(env, row.path, {element, nullptr, holder(env, row.path, 3)});
        row.copy(env, nullptr, 3, target);
        row.copy(env, source, 3, nullptr);
        row.copy(env, source, 3, objects(env, "java/lang/Object", {element}));
        EXPECT_EQ(heldBy(env, target), (Longs{1, -1, 3}));
        row.copy(env, source, 3, target);
        EXPECT_EQ(heldBy(env, target), (Longs{5, -1, 7}));
        EXPECT_TRUE(env->IsSameObject(env->GetObjectArrayElement(target, 0), element));

        if (row.copy == CopyCKMechanismTypeArrayToJMechanismTypeArray) continue; // does not ask for the class
        const jobjectArray mixed = holders(env, row.path, {1, 2, 3});
        stranger = holder(env, STATE, 9);
        realTable = env->functions;
        JNINativeInterface_ table = *realTable;
        table.GetObjectArrayElement = elementOrStranger;
        env->functions = &table;
        row.copy(env, source, 3, mixed);
        env->functions = realTable;
        EXPECT_EQ(heldBy(env, mixed), (Longs{5, 2, 3})) << "nothing from the stranger on";
        EXPECT_EQ(getLong(env, stranger, "m_value"), 9);
    }
}

} // namespace
