// The utility natives that find an object by its label and read or write one attribute.
#include "failures.h"
#include "halvorn_zerlin_CTUtil.h"
#include "values.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace jni;

const CK_RV FAILURE = 0x80000100;

struct CtutilObject : JniTest {
    jobject typedOf(const char* path, jlong value) { return make(env, path, "(J)V", value); }
    jobject objectClass() { return typedOf("halvorn/zerlin/constants/CK_OBJECT_CLASS", 4); }
    jobject attributeType() { return typedOf("halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", 17); }

    Call find(jbyteArray label, jobject phObject)
    {
        return call(Java_halvorn_zerlin_CTUtil_CTU_1FindObject, session(env), objectClass(), label, phObject);
    }
    Call get(jobject value, jlong length, jobject pulLength)
    {
        return call(Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue, session(env), object(env, 42),
            attributeType(), value, length, pulLength);
    }
    Call set(jobject value, jlong length)
    {
        return call(Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue, session(env), object(env, 42),
            attributeType(), value, length);
    }

    // A library that finds object 9 and whose attributes are "new", as far as the query says.
    static void answer(CK_ULONG found = 1, CK_ULONG length = 3)
    {
        recorder::Script& script = recorder::script();
        script.C_FindObjects = [=](auto, CK_OBJECT_HANDLE_PTR phObject, auto, CK_ULONG_PTR pulCount) {
            *phObject = 0xfffffff9;
            *pulCount = found;
            return CKR_OK;
        };
        script.C_GetAttributeValue = [=](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            if (pTemplate->pValue != nullptr) std::memcpy(pTemplate->pValue, "new", std::min(length, 3UL));
            pTemplate->ulValueLen = length;
            return CKR_OK;
        };
    }
};

// What a search for the label makes of calls.
Lines search(const std::string& label)
{
    return {"C_FindObjectsInit(41, {{0, [04000000], 4}, {3, " + label + "}}, 2)",
        "C_FindObjects(41, out(1), out)", "C_FindObjectsFinal(41)"};
}

TEST_F(CtutilObject, argumentsAreReadInTheirOrderAndOutputsNotAtAll)
{
    EXPECT_EQ(readBy(env, find(nullptr, object(env, 99))), (Longs{41, 4}));
    EXPECT_EQ(readBy(env, get(typedOf("halvorn/zerlin/constants/CK_RV", 5), 4, longRef(env, 99))),
        (Longs{41, 42, 17, 5}));
    EXPECT_EQ(readBy(env, set(typedOf("halvorn/zerlin/constants/CK_RV", 5), 4)), (Longs{41, 42, 17, 5}));
}

TEST_F(CtutilObject, outputsAreRequiredAfterTheLookupOfTheirClass)
{
    const std::pair<Call, const char*> rows[] = {{find(nullptr, nullptr), "halvorn/zerlin/CK_OBJECT_HANDLE"},
        {get(nullptr, 0, nullptr), "halvorn/zerlin/LongRef"}};
    for (const auto& [made, path] : rows) {
        for (const char* missing : {path, "halvorn/zerlin/CK_SESSION_HANDLE"}) {
            JNI_OnUnload(jvm(), nullptr);
            jobject returned = nullptr;
            watch(env, {.lookup = missing}, [&, &call = made] { returned = call(env); });
            const std::string error = std::string("java.lang.NoClassDefFoundError: ") + path;
            EXPECT_EQ(takeException(env), missing == path ? error : "");
            EXPECT_EQ(returned == nullptr ? CKR_OK : rvOf(env, returned), missing == path ? CKR_OK : 7);
        }
    }
    EXPECT_EQ(recorder::calls(), Lines{});
}

TEST_F(CtutilObject, labelsEndAtTheirFirstZeroByte)
{
    using namespace std::string_view_literals;
    const std::pair<jbyteArray, const char*> rows[] = {{bytes(env, "my"), "[6d79], 2"},
        {bytes(env, "m\0y"sv), "[6d], 1"}, {bytes(env, ""), "[], 0"}, {nullptr, "[], 0"}};
    answer();
    for (const auto& [label, shown] : rows) {
        const jobject found = object(env, 7);
        const std::size_t known = recorder::calls().size();
        EXPECT_EQ(rvOf(env, find(label, found)(env)), CKR_OK);
        const Lines lines = recorder::calls();
        EXPECT_EQ(Lines(lines.begin() + static_cast<std::ptrdiff_t>(known), lines.end()), search(shown));
        EXPECT_EQ(text(env, {found}), "[object 4294967289]");
    }
}

TEST_F(CtutilObject, onlyAnObjectThatWasFoundIsWrittenBack)
{
    const auto fails = [](auto...) { return FAILURE; };
    const std::tuple<std::function<void()>, CK_RV, std::size_t> rows[] = {
        {[] { answer(0); }, CKR_GENERAL_ERROR, 3},
        {[&] { recorder::script().C_FindObjectsInit = fails; }, FAILURE, 1},
        {[&] { recorder::script().C_FindObjects = fails; }, FAILURE, 2},
        {[&] { recorder::script().C_FindObjectsFinal = fails; }, FAILURE, 3},
    };
    for (const auto& [prepare, rv, calls] : rows) {
        recorder::reset();
        answer();
        prepare();
        const jobject found = object(env, 7);
        EXPECT_EQ(rvOf(env, find(bytes(env, "my"), found)(env)), rv);
        EXPECT_EQ(recorder::calls().size(), calls);
        EXPECT_EQ(text(env, {found}), "[object 7]");
    }
}

TEST_F(CtutilObject, attributesAreReadWhenTheirLengthFits)
{
    const std::string query = "C_GetAttributeValue(41, 42, {{17, null, 0}}, 1)";
    struct Row {
        jobject value;
        jlong length;
        CK_ULONG reported;
        CK_RV rv;
        std::string fetch; // the second call; "" when there is none
        const char* after; // the value and the LongRef of 77
    };
    const auto fetch = [](const std::string& shown) {
        return "C_GetAttributeValue(41, 42, {{17, " + shown + "}}, 1)";
    };
    const jobject abcd = bytes(env, "abcd");
    const Row rows[] = {
        {abcd, 2, 3, CKR_ATTRIBUTE_TYPE_INVALID, "", "[[97, 98, 99, 100], 77]"},
        {abcd, 0x1'00000002, 3, CKR_ATTRIBUTE_TYPE_INVALID, "", "[[97, 98, 99, 100], 77]"},
        {abcd, 4, 0xffffffff, CKR_ATTRIBUTE_TYPE_INVALID, "", "[[97, 98, 99, 100], 77]"},
        {abcd, 0, 3, CKR_OK, "", "[[97, 98, 99, 100], 3]"},
        {abcd, 0, 0xffffffff, CKR_OK, "", "[[97, 98, 99, 100], 4294967295]"},
        {nullptr, 0, 3, CKR_OK, "", "[null, 3]"},
        {abcd, 4, 0, CKR_OK, fetch("[], 0"), "[[97, 98, 99, 100], 0]"},
        {abcd, 4, 3, CKR_OK, fetch("[616263], 3"), "[[110, 101, 119, 100], 3]"},
        {boxedLong(env, 5), 4, 4, CKR_OK, fetch("[05000000], 4"), "[7824750, 4]"},
        {boxedLong(env, 5), 4, 3, CKR_OK, fetch("[050000], 3"), "[5, 3]"},
        {bbool(env, true), 1, 1, CKR_OK, fetch("[01], 1"), "[CK_FALSE, 1]"},
    };
    for (const Row& row : rows) {
        recorder::reset();
        answer(1, row.reported);
        const jobject length = longRef(env, 77);
        EXPECT_EQ(rvOf(env, get(row.value, row.length, length)(env)), row.rv);
        EXPECT_EQ(recorder::calls(), row.fetch.empty() ? Lines{query} : (Lines{query, row.fetch}));
        EXPECT_EQ(text(env, {row.value, length}), row.after);
    }
}

TEST_F(CtutilObject, anAttributeThatCannotBeReadLeavesAllAsItWas)
{
    for (const int failing : {1, 2}) {
        int number = 0;
        recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            pTemplate->ulValueLen = 3;
            return ++number == failing ? FAILURE : CKR_OK;
        };
        const Call made = get(bytes(env, "abc"), 3, longRef(env, 77));
        const std::string before = made.objects(env);
        EXPECT_EQ(rvOf(env, made(env)), FAILURE);
        EXPECT_EQ(made.objects(env), before);
        EXPECT_EQ(number, failing);
    }
}

TEST_F(CtutilObject, valuesThatCannotBeConvertedOrWrittenBack)
{
    const char* const unsupported = "java.lang.UnsupportedOperationException: ";
    const jobject number = make(env, "java/lang/Double", "(D)V", 1.5);
    for (const Call& made : {get(number, 8, longRef(env, 77)), set(number, 8)}) {
        EXPECT_EQ(made(env), nullptr);
        EXPECT_EQ(takeException(env),
            std::string(unsupported) + "No Conversion from java.lang.Double to a CK type");
        EXPECT_EQ(recorder::calls(), Lines{});
    }
    answer();
    const jobject length = longRef(env, 77);
    EXPECT_EQ(get(string(env, "abc"), 3, length)(env), nullptr);
    EXPECT_EQ(takeException(env), std::string(unsupported) + "Can not copy from CK type to java.lang.String");
    EXPECT_EQ(text(env, {length}), "[3]");
}

TEST_F(CtutilObject, attributesAreWrittenWithTheLengthThatIsGiven)
{
    recorder::script().byteLimit = 5;
    const std::tuple<jobject, jlong, const char*> rows[] = {
        {bytes(env, "abc"), 3, "[616263], 3"},
        {bytes(env, "abc"), 2, "[6162], 2"},
        {bytes(env, "abc"), 0x1'00000002, "[6162], 2"},
        {bytes(env, "abcde"), 9, "[6162636465..], 9"},
        {bytes(env, "abcde"), -1, "[6162636465..], 0xffffffff"},
        {boxedLong(env, 5), 4, "[05000000], 4"},
        {longs(env, {1, 2}), 5, "[0100000002], 5"},
        {bbool(env, true), 1, "[01], 1"},
        {nullptr, 0, "null, 0"},
        {nullptr, 7, "null, 7"},
    };
    for (const auto& [value, length, shown] : rows)
        expectCall(
            env, set(value, length), "C_SetAttributeValue(41, 42, {{17, " + std::string(shown) + "}}, 1)");
}

TEST_F(CtutilObject, whateverFailsThereAreNoHalfCalls)
{
    const Lines get2 = {"C_GetAttributeValue(41, 42, {{17, null, 0}}, 1)",
        "C_GetAttributeValue(41, 42, {{17, [736563], 3}}, 1)"};
    struct Row {
        std::function<Call()> prepare;
        Lines lines;
        Lines withoutMemory;
    };
    const Row rows[] = {
        {[this] { return find(bytes(env, "my"), object(env, 7)); }, search("[6d79], 2"), {"2"}},
        {[this] { return get(bytes(env, "secret"), 6, longRef(env, 77)); }, get2, {NO_MEMORY}},
        {[this] { return set(bytes(env, "secret"), 6); },
            {"C_SetAttributeValue(41, 42, {{17, [736563726574], 6}}, 1)"}, {NO_MEMORY}},
    };
    for (const Row& row : rows) {
        const auto expectAllOrNothing = [&](bool failed) {
            const Lines lines = recorder::calls();
            EXPECT_TRUE(lines == row.lines || (failed && lines.empty()));
            recorder::reset();
            answer();
        };
        recorder::reset();
        answer();
        EXPECT_GT(failEachJniCall(env,
                      [&] {
                          return [&, made = row.prepare()] {
                              made(env);
                              expectAllOrNothing(env->ExceptionCheck());
                          };
                      }),
            6);
        const auto work = [&] {
            const jobject returned = row.prepare()(env);
            const bool failed = allocationFailed();
            if (failed) {
                EXPECT_EQ(recorder::calls(), Lines{});
            }
            expectAllOrNothing(failed);
            return returned == nullptr ? std::string() : std::to_string(rvOf(env, returned));
        };
        EXPECT_EQ(failEachAllocation(env, work), row.withoutMemory);
        const Call made = row.prepare();
        const HeapWatch heap;
        EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
        EXPECT_EQ(heap.freed.size(), 1U);
        for (const std::string& freed : heap.freed)
            EXPECT_EQ(freed.find("sec"), std::string::npos);
        expectAllOrNothing(false);
    }
}

} // namespace
