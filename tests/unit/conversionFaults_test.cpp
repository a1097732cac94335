// Every conversion with each of its JNI calls and allocations failing in turn.
#include "conversion_cases.h"
#include "failures.h"
#include "helper/jutil.h"
#include "values.h"

#include <cstdlib>
#include <type_traits>

namespace {

using namespace cases;
using namespace jni;

// Whether the work had a result: a Java object, a native buffer, a right answer, or at least no exception.
template <typename Work>
bool hasResult(JNIEnv* env, const Work& work)
{
    using Result = decltype(work());
    if constexpr (std::is_void_v<Result>) {
        work();
        return !env->ExceptionCheck();
    } else if constexpr (std::is_same_v<Result, bool>) {
        return work();
    } else {
        const Result result = work();
        if constexpr (!std::is_convertible_v<Result, jobject>) std::free(result);
        return result != nullptr;
    }
}

struct ConversionFaults : JniTest {
    // Each JNI call and each allocation fails in turn; there is a result unless an exception is pending.
    template <typename Work>
    void failEach(const std::string& name, const Work& work)
    {
        SCOPED_TRACE(name);
        const auto checked = [this, &work] {
            const bool result = hasResult(env, work);
            EXPECT_EQ(result, !env->ExceptionCheck());
            return std::string("survived");
        };
        EXPECT_GT(failEachJniCall(env, [&] { return checked; }), 0);
        for (const std::string& outcome : failEachAllocation(env, checked)) {
            EXPECT_EQ(outcome, NO_MEMORY);
        }
    }
};

TEST_F(ConversionFaults, typedValues)
{
    for (const TypedClass& typed : TYPED_CLASSES) {
        const jobject object = holder(env, typed.path, 5);
        failEach(typed.path, [&] { return typed.toCK(env, object) == 5; });
        failEach(typed.path, [&] { return typed.toJava(env, 5) != nullptr && !env->ExceptionCheck(); });
    }
    failEach("LongRef", [&] { return LongRefObj(env, 5) != nullptr && !env->ExceptionCheck(); });
}

// What comes out when it is the class that is missing, and what when it is the field.
TEST_F(ConversionFaults, typedValuesWithoutClassOrField)
{
    for (const TypedClass& typed : TYPED_CLASSES) {
        SCOPED_TRACE(typed.path);
        const jobject object = holder(env, typed.path, 5);
        CK_ULONG native = 5;
        jobject java = object;
        watch(env, {.lookup = typed.path}, [&] { native = typed.toCK(env, object); });
        EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + typed.path);
        EXPECT_EQ(native, typed.failure);
        watch(env, {.lookup = typed.path}, [&] { java = typed.toJava(env, 5); });
        EXPECT_EQ(takeException(env), std::string("java.lang.NoClassDefFoundError: ") + typed.path);
        EXPECT_EQ(java, nullptr);
        watch(env, {.lookup = "m_value"}, [&] { native = typed.toCK(env, object); });
        EXPECT_EQ(takeException(env), "java.lang.NoSuchFieldError: m_value");
        EXPECT_EQ(native, ALL_ONES) << "the field accessor's answer";
        watch(env, {.lookup = "m_value"}, [&] { java = typed.toJava(env, 5); });
        EXPECT_EQ(takeException(env), "java.lang.NoSuchFieldError: m_value");
        EXPECT_NE(java, nullptr) << "the object is there all the same";
    }
}

TEST_F(ConversionFaults, arraysToCK)
{
    for (const ArrayClass& row : ARRAY_CLASSES) {
        const CK_ULONG count = row.unit == 1 ? 300 : 20;
        const jobject array = row.make(env, numbers(count));
        const auto convert = [&] {
            int anything = 0;
            void* data = &anything;
            CK_ULONG length = 99;
            row.convert(env, array, &data, &length);
            // After a failure a byte array clears both outputs, the others tell their length.
            const bool fails = env->ExceptionCheck();
            EXPECT_TRUE(!fails || length == (row.make == byteArray ? 0 : count));
            EXPECT_TRUE(row.make != byteArray || data != &anything);
            if (data != &anything) std::free(data); // object arrays leave it after a failure too
            return data != &anything && data != nullptr && !fails;
        };
        std::vector<CK_ULONG> destination(count);
        if (row.convert != nullptr) failEach(row.name, convert);
        if (row.copy != nullptr) failEach(row.name, [&] { row.copy(env, array, destination.data(), count); });
    }
}

TEST_F(ConversionFaults, arraysToJava)
{
    const CK_ULONG words[300] = {};
    const auto* const bytes = reinterpret_cast<const CK_BYTE*>(words);
    failEach("new byte[]", [&] { return ckByteArrayToJByteArray(env, bytes, 20); });
    failEach("new byte[] of text", [&] { return ckCharArrayToJByteArray(env, bytes, 20); });
    failEach("new long[]", [&] { return ckULongArrayToJLongArray(env, words, 300); });
    failEach("new handles", [&] { return ckObjHandleArrayToJObjHandleArray(env, words, 20); });
    failEach("new types", [&] { return ckMechanismTypeArrayToJMechanismTypeArray(env, words, 20); });

    const auto byteTarget = static_cast<jbyteArray>(byteArray(env, Longs(20)));
    const auto longTarget = static_cast<jlongArray>(longArray(env, Longs(300)));
    const jobjectArray handles = holders(env, HANDLE, Longs(20));
    const jobjectArray types = holders(env, MECHANISM_TYPE, Longs(20));
    failEach("byte[]", [&] { CopyCKByteArrayToJByteArray(env, bytes, 20, byteTarget); });
    failEach("long[]", [&] { CopyCKULongArrayToJLongArray(env, words, 300, longTarget); });
    failEach("handles", [&] { CopyCKULongArrayToJObjectHandleArray(env, words, 20, handles); });
    failEach("types", [&] { CopyCKULongArrayToJMechanismTypeArray(env, words, 20, types); });
    failEach("same", [&] { CopyCKMechanismTypeArrayToJMechanismTypeArray(env, words, 20, types); });
}

TEST_F(ConversionFaults, records)
{
    const jobject date = DATES[0].make(env);
    const jobject version = make(env, VERSION);
    CK_DATE nativeDate = {};
    CK_VERSION nativeVersion = {};
    failEach("new native date", [&] { return jDateObjectToCKDatePtr(env, date); });
    failEach("native date", [&] { CopyJDateToCKDate(env, date, &nativeDate); });
    failEach("new date", [&] { return ckDatePtrToJDateObject(env, &nativeDate); });
    failEach("date", [&] { CopyCKDateToJDate(env, &nativeDate, 8, date); });
    failEach("native version", [&] { CopyJVersionToCKVersion(env, version, &nativeVersion); });
    failEach("new version", [&] { return ckVersionPtrToJVersion(env, &nativeVersion); });
    failEach("version", [&] { CopyCKVersionToJVersion(env, &nativeVersion, version); });
    for (const Record& record : RECORDS) {
        Bytes native = record.bytes(record.fields.size());
        const jobject object = make(env, record.path);
        failEach(record.path, [&] { record.toJava(env, native.data(), object); });
        failEach(record.path, [&] { record.toCK(env, object, native.data()); });
    }
}

TEST_F(ConversionFaults, values)
{
    const jobject yes = make(env, "halvorn/zerlin/CK_BBOOL", "(Z)V", JNI_TRUE);
    const jobject boolean = make(env, "java/lang/Boolean", "(Z)V", JNI_TRUE);
    const jobject aByte = make(env, "java/lang/Byte", "(B)V", jbyte{1});
    const jobject integer = make(env, "java/lang/Integer", "(I)V", jint{1});
    const jobject aLong = make(env, "java/lang/Long", "(J)V", jlong{1});
    const jobject character = make(env, "java/lang/Character", "(C)V", jchar{'A'});
    const jstring text = string(env, "text");
    const jobject state = holder(env, STATE, 1);
    const CK_ULONG native = 1;
    failEach("boolean", [&] { return jBBoolToCKBBool(env, yes) == CK_TRUE; });
    failEach("Boolean", [&] { return jBooleanObjectToCKBBoolPtr(env, boolean); });
    failEach("Byte", [&] { return jByteObjectToCKBytePtr(env, aByte); });
    failEach("Integer", [&] { return jIntegerObjectToCKULongPtr(env, integer); });
    failEach("Long", [&] { return jLongObjectToCKULongPtr(env, aLong); });
    failEach("String", [&] {
        CK_CHAR_PTR data = nullptr;
        CK_ULONG length = 0;
        jStringToCKCharArray(env, text, &data, &length);
        return data;
    });
    failEach("new boolean", [&] { return ckBBoolToJBBool(env, 1); });
    failEach("new Long", [&] { return ckULongPtrToJLongObject(env, &native); });
    failEach("class name", [&] { return GetClassName(env, state); });

    const jobject attribute =
        make(env, "halvorn/zerlin/CK_ATTRIBUTE", "(JLjava/lang/Object;)V", jlong{1}, text);
    const jobjectArray attributes =
        env->NewObjectArray(20, find(env, "halvorn/zerlin/CK_ATTRIBUTE"), attribute);
    CK_ULONG buffer[20];
    failEach("CK_ATTRIBUTE[]", [&] {
        std::vector<CK_ATTRIBUTE> natives(20, CK_ATTRIBUTE{0, buffer, 8});
        CopyJAttributeArrayToCKAttributeArray(env, attributes, natives.data(), 20);
    });
    const jobject types = holders(env, MECHANISM_TYPE, Longs(20));
    for (const jobject value : {yes, boolean, aByte, integer, aLong, character, state, types}) {
        failEach("value", [&] { CopyJObjectPrimativeToCKObjectPtr(env, value, buffer, 80); });
    }
    const jclass refusal = find(env, "java/lang/UnsupportedOperationException");
    failEach("value of another class", [&] {
        CopyJObjectPrimativeToCKObjectPtr(env, attribute, buffer, 8);
        takeBack(env, refusal);
    });
}

} // namespace
