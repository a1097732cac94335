// Every conversion with each of its JNI calls and allocations failing in turn.
#include "conversion_cases.h"
#include "harness/failures.h"
#include "values.h"

#include <cstdlib>

namespace {

using namespace cases;
using namespace jni;

struct ConversionFaults : JniTest {
    // The exception of each failure comes out and nothing native is left.
    void failEach(const std::string& name, const std::function<void()>& work)
    {
        SCOPED_TRACE(name);
        failEachJniCall(env, [&] { return work; });
        const auto answered = [&] {
            work();
            return std::string("survived");
        };
        for (const std::string& outcome : failEachAllocation(env, answered))
            EXPECT_EQ(outcome, NO_MEMORY);
    }
    template <typename Native, typename JArray>
    void failConverting(void (*convert)(JNIEnv*, JArray, Native**, CK_ULONG*), JArray array)
    {
        failEach("to a buffer", [&] {
            Native* data = nullptr;
            CK_ULONG length = 0;
            convert(env, array, &data, &length);
            EXPECT_TRUE(data != nullptr || env->ExceptionCheck());
            std::free(data);
        });
    }
};

TEST_F(ConversionFaults, typedValuesReportEachFailure)
{
    for (const TypedClass& typed : TYPED_CLASSES) {
        const jobject object = holder(env, typed.path, 5);
        failEach(typed.path, [&] { typed.toCK(env, object); });
        failEach(typed.path, [&] { typed.toJava(env, 5); });
        for (const auto& [missing, native] : {std::pair{typed.path, typed.failure}, {"m_value", ALL_ONES}}) {
            JNI_OnUnload(jvm(), nullptr);
            watch(env, {.lookup = missing}, [&] { EXPECT_EQ(typed.toCK(env, object), native); });
            EXPECT_NE(takeException(env), "");
        }
    }
}

TEST_F(ConversionFaults, arraysReportEachFailure)
{
    const CK_ULONG words[300] = {};
    const jbyteArray byteArray = bytes(env, Bytes(20));
    const jlongArray longs = longArray(env, Longs(300));
    const jobjectArray handles = holders(env, HANDLE, Longs(20));
    const jobjectArray types = holders(env, MECHANISM_TYPE, Longs(20));
    failConverting(jByteArrayToCKByteArray, byteArray);
    failConverting(jLongArrayToCKULongArray, longs);
    failConverting(jStringToCKCharArray, string(env, "text"));
    failConverting(jObjectHandleArrayToCKObjectHandleArray, handles);
    failConverting(jMechanismTypeArrayToCKMechanismTypeArray, types);
    failEach("new handles", [&] { ckObjHandleArrayToJObjHandleArray(env, words, 20); });
    failEach("long[]", [&] { CopyCKULongArrayToJLongArray(env, words, 300, longs); });
    failEach("handles", [&] { CopyCKULongArrayToJObjectHandleArray(env, words, 20, handles); });
}

TEST_F(ConversionFaults, recordsAndAttributesReportEachFailure)
{
    for (const Record& record : RECORDS) {
        Bytes native = recordBytes();
        const jobject object = make(env, record.path);
        failEach(record.path, [&] { record.toJava(env, native.data(), object); });
        failEach(record.path, [&] { record.toCK(env, object, native.data()); });
    }
    CK_ULONG buffer[20];
    for (const Value& value : values(env))
        failEach("value", [&] { CopyJObjectPrimativeToCKObjectPtr(env, value.object, buffer, 8); });
}

} // namespace
