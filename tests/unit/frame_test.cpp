// What all natives have in common, tested for each row of the table of natives: what arguments become, what
// is refused, what is written back, how big the buffers are, and what happens when a JNI call or an
// allocation fails.
#include "harness/failures.h"
#include "harness/native_table.h"
#include "jni/mutexCallbacks.h"

namespace {

using namespace jni;

struct Frame : JniTest, testing::WithParamInterface<Native> {
    const Native& native = GetParam();

    // Calls the test for every argument. Utility natives make other Cryptoki calls than the test expects.
    void forEachArgument(const std::function<void(const Kind&, std::size_t place)>& test) const
    {
        for (std::size_t place = 0; !native.isUtility() && place < native.kinds.size(); ++place) {
            SCOPED_TRACE("argument " + std::to_string(place));
            const LocalFrame frame(env);
            test(native.kinds[place], place);
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Each, Frame, testing::ValuesIn(natives()), [](auto& row) { return row.param.name; });

constexpr CK_ULONG NEW = 0x80000003;
constexpr jsize LARGE = 3000; // bytes, more than any buffer on the stack holds

// The Cryptoki library writes the number through every output pointer and as every length, and 11, 12, ...
// into a buffer up to its end.
void answer(CK_RV rv, CK_ULONG written)
{
    script().answer = [rv, written](Arguments all) {
        for (const auto& [form, data, number, size, length] : all) {
            if (form == Argument::Output)
                std::memcpy(data, &written, std::min(size, CK_ULONG{sizeof written}));
            auto* const bytes = static_cast<CK_BYTE*>(data);
            const CK_ULONG elements = form == Argument::Outputs && data != nullptr ? number : 0;
            for (CK_ULONG i = 0; i < std::min(elements, written); ++i)
                bytes[i * size] = static_cast<CK_BYTE>(11 + i);
            if (form == Argument::Template && number == 1) // of a utility native
                static_cast<CK_ATTRIBUTE*>(data)->ulValueLen = 3;
            if (length != nullptr) *length = written;
        }
        return rv;
    };
}

struct NativeTable : JniTest {};

TEST_F(NativeTable, everyNativeOfCryptokiHasItsRow)
{
    const jobject methods = callStatic(env, "Fields", "methodsOfCryptoki", "()Ljava/lang/String;");
    std::string declared = toString(env, static_cast<jstring>(methods));
    for (const Native& native : natives()) {
        const std::size_t name = declared.find("." + native.name + "(");
        if (name == declared.npos) continue;
        const std::size_t start = declared.rfind(" native ", name);
        declared.erase(start, name - start);
    }
    EXPECT_EQ(declared.find(" native "), declared.npos) << declared;
}

TEST_P(Frame, eachFailedJniCallRaisesItsException)
{
    script().byteLimit = 8;
    answer(CKR_OK, 3);
    const auto prepared = [&] { return [this, made = native.prepare(env, LARGE)] { return made(env); }; };
    // The only native that makes its call although an argument could not be read.
    EXPECT_GT(failEachJniCall(env, prepared, native.name == "C_SetAttributeValue"), 0);
}

// Without memory a conversion raises an OutOfMemoryError and an output buffer leads to CKR_HOST_MEMORY.
// Either way the Cryptoki library is not called.
TEST_P(Frame, aFailedAllocationCallsNothingAndLeavesNothing)
{
    script().byteLimit = 0;
    answer(CKR_OK, 3);
    const Lines others = failEachAllocation(env, [&] {
        recorder::takeCalls();
        const jobject returned = native.prepare(env, LARGE)(env);
        EXPECT_EQ(recorder::calls.empty(), allocationFailed());
        return returned == nullptr ? "" : std::to_string(rvOf(env, returned));
    });
    const bool hasBuffer =
        std::ranges::any_of(native.kinds, &Kind::isOutput) || native.name == "CTU_FindObject";
    EXPECT_EQ(others, Lines(hasBuffer, "2"));
}

// A locking callback that throws leads to such an exception. It may have ended its registration before.
TEST_P(Frame, anExceptionRaisedInTheLibraryStaysAndNothingIsWrittenBack)
{
    native.prepare(env)(env); // remembers every lookup, so that none can end the native
    initialiseWithCallbacks(env);
    const Call made = native.prepare(env);
    const std::string before = made.objects(env);
    answer(CKR_OK, NEW);
    script().onCall = [this, cls = find(env, "java/lang/IllegalStateException")] {
        if (env->ExceptionCheck()) return;
        zerlin::releaseInitArgs(env);
        env->ThrowNew(cls, "from within");
    };
    const Watched watched = watch(env, {}, [&] { EXPECT_EQ(made(env), nullptr); });
    EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
    EXPECT_EQ(made.objects(env), before);
    EXPECT_EQ(watched.violations, Lines{});
}

TEST_P(Frame, successWritesBackEverythingAndAnErrorOnlyLengths)
{
    forEachArgument([this](const Kind& kind, std::size_t place) {
        for (const CK_RV rv : {CK_RV{CKR_OK}, CK_RV{CKR_BUFFER_TOO_SMALL}, ~CK_RV{0}}) {
            const Call made = native.prepare(env);
            const auto textOf = [&](std::size_t i) {
                return text(env, {made.areObjects[i] ? made.arguments[i].l : nullptr});
            };
            const std::size_t first = native.start(place), last = first + kind.javaCount() - 1;
            const std::string before = textOf(first), lengthBefore = textOf(last);
            answer(rv, NEW);
            EXPECT_EQ(rvOf(env, made(env)), rv);
            const bool isResult = kind.isOutput() || kind.form == Kind::Record || kind.form == Kind::New;
            EXPECT_EQ(textOf(first) != before, isResult && rv == CKR_OK);
            EXPECT_TRUE(last == first || textOf(last) == (kind.hasLongRef() ? "[2147483651]" : lengthBefore));
        }
    });
}

TEST_P(Frame, requiredArgumentsAreCheckedBeforeAnythingIsConverted)
{
    for (std::size_t place = 0; place < native.kinds.size(); ++place) {
        if (native.kinds[place].refused != Kind::Null) continue;
        Call made = native.prepare(env);
        const bool isLongRef = native.kinds[place].hasLongRef();
        made.arguments[isLongRef ? native.start(place + 1) - 1 : native.start(place)].l = nullptr;
        expectRefused(env, made);
        EXPECT_EQ(watch(env, {}, [&] { made(env); }).read, Longs{}) << place;
    }
}

TEST_P(Frame, lowHalvesArePassedOnAndNullOrForeignHandlesAreLeftToTheLibrary)
{
    forEachArgument([this](const Kind& kind, std::size_t place) {
        Call made = native.prepare(env);
        expectCall(env, made, native.line(env));
        if (kind.form != Kind::Held) return;
        made.arguments[native.start(place)].l = nullptr;
        expectCall(env, made, native.line(env, place, kind.ofNull));
        made.arguments[native.start(place)].l = longRef(env, 9);
        const bool isType = kind.path.starts_with("constants");
        expectCall(env, made, native.line(env, place, isType ? ALL_ONES : "0"));
    });
}

TEST_P(Frame, bytesAndTemplatesArePassedWithTheGivenLength)
{
    const std::string beyond = ", " + std::string(ALL_ONES);
    const std::tuple<bool, jlong, std::string> rows[] = {
        {false, 2, "[3132], 2"},
        {false, 9, "[313233340000000000], 9"},
        {false, 0, "[], 0"},
        {false, -1, "[31323334" + std::string(56, '0') + "..]" + beyond},
        {true, 4, "null, 4"},
        {true, -1, "null" + beyond},
        {true, HIGH_HALF, "null, 0"},
    };
    forEachArgument([&](const Kind& kind, std::size_t place) {
        if (kind.form != Kind::Bytes && kind.form != Kind::Template) return;
        script().byteLimit = 32;
        for (const auto& [isNull, length, shown] : rows) {
            if (!isNull && kind.form == Kind::Template) continue;
            SCOPED_TRACE(shown);
            Call made = native.prepare(env);
            jvalue* const arguments = &made.arguments[native.start(place)];
            arguments[0].l = isNull ? nullptr : bytes(env, "1234");
            arguments[1].j = length;
            const bool isRefused = kind.refused == Kind::NullWithLength   ? isNull && length > 0
                                   : kind.refused == Kind::NullOrNoLength ? isNull || length == 0
                                                                          : isNull && kind.refused;
            if (isRefused)
                expectRefused(env, made);
            else
                expectCall(env, made, native.line(env, place, shown));
        }
    });
}

TEST_P(Frame, outputGoesThroughABufferOfTheGivenCapacity)
{
    // Whether the array is null, the capacity, the reported length, the return value, and what becomes of an
    // array of six 7.
    const std::tuple<bool, jlong, CK_ULONG, CK_RV, std::string> rows[] = {
        {false, 4, 2, CKR_OK, "[[11, 12, 7, 7, 7, 7]]"},
        {false, 8, 8, CKR_OK, "[[11, 12, 13, 14, 15, 16]]"},
        {false, 0, 0, CKR_OK, "[[7, 7, 7, 7, 7, 7]]"},
        {true, 0, 4, CKR_OK, "[null]"},
        {true, -1, ~CK_ULONG{0}, CKR_OK, "[null]"},
        {true, 2, 2, CKR_OK, "[null]"},
        {false, 2, 4, CKR_BUFFER_TOO_SMALL, "[[7, 7, 7, 7, 7, 7]]"},
        // More is reported than there is room for: what the buffer has is copied, with its spare element.
        {false, 3, 6, CKR_OK, "[[11, 12, 13, 0, 7, 7]]"},
        {false, -1, 0, CKR_HOST_MEMORY, ""},
    };
    forEachArgument([&](const Kind& kind, std::size_t place) {
        if (!kind.isOutput()) return;
        for (auto [isNull, capacity, reported, rv, after] : rows) {
            SCOPED_TRACE("reports " + std::to_string(reported) + " of " + std::to_string(capacity));
            if (kind.form == Kind::Random && reported < static_cast<CK_ULONG>(capacity)) continue;
            Call made = native.prepare(env);
            jvalue* const arguments = &made.arguments[native.start(place)];
            if (isNull) arguments[0].l = nullptr;
            arguments[1].j = capacity;
            if (kind.form == Kind::Output) arguments[1].l = longRef(env, capacity);
            answer(rv, reported);
            if (isNull && capacity > 0 && kind.form != Kind::Output) rv = CKR_ARGUMENTS_BAD;
            if (rv == CKR_ARGUMENTS_BAD || rv == CKR_HOST_MEMORY) {
                expectRefused(env, made, rv);
                continue;
            }
            EXPECT_EQ(rvOf(env, made(env)), rv);
            const std::string number = capacity < 0 ? ALL_ONES : std::to_string(capacity);
            const std::string shown = (isNull ? "null(" : "out(") + number + ")";
            EXPECT_EQ(recorder::calls.back(),
                native.line(env, place, shown + (kind.form == Kind::Found ? ", out" : "")));
            std::ranges::replace(after, '0', kind.spare == 0 ? '7' : '0');
            const bool hasNumbers = kind.path.empty() || kind.path == "long";
            EXPECT_TRUE(!hasNumbers || text(env, {arguments[0].l}) == after) << after;
        }
    });
}

} // namespace
