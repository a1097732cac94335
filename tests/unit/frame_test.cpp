// What all natives have in common, tested for each row of the table of natives: what arguments become, what
// is refused, what is written back, how big the buffers are, and what happens when a JNI call or an
// allocation fails.
#include "harness/failures.h"
#include "native_table.h"

#include <algorithm>
#include <optional>
#include <ranges>

namespace {

using namespace jni;
using recorder::Argument;

struct Frame : JniTest {};

// What the Cryptoki library writes: NEW through every output pointer, 11, 12, ... into a buffer up to its
// end, and a length: NEW, or the given one, where the pointers get 1.
const CK_ULONG NEW = 0x80000003;

void answer(CK_RV rv, std::optional<CK_ULONG> reported = {})
{
    recorder::script().answer = [rv, reported](std::span<const Argument> all) {
        for (const Argument& argument : all) {
            auto* const bytes = static_cast<CK_BYTE*>(argument.data);
            if (argument.form == Argument::Output && argument.elementSize == sizeof NEW)
                *static_cast<CK_ULONG*>(argument.data) = reported ? 1 : NEW;
            else if (argument.form == Argument::Output)
                *bytes = 3;
            const CK_ULONG elements = std::min(reported.value_or(argument.number), argument.number);
            for (CK_ULONG i = 0; bytes != nullptr && argument.form == Argument::Outputs && i < elements; ++i)
                bytes[i * argument.elementSize] = static_cast<CK_BYTE>(11 + i);
            if (argument.form == Argument::Template && argument.number == 1) // of a utility native
                static_cast<CK_ATTRIBUTE*>(argument.data)->ulValueLen = 3;
            if (argument.reported != nullptr) *argument.reported = reported.value_or(NEW);
        }
        return rv;
    };
    // Of the natives that make several calls.
    recorder::script().C_FindObjectsInit = [rv](auto...) { return rv; };
    recorder::script().C_FindObjectsFinal = [rv](auto...) { return rv; };
}

constexpr jsize LARGE = 3000; // bytes, more than any buffer on the stack holds

// Runs the test for every native, those with a line of their own only if there is none for the others.
enum Rows { ALL, CRYPTOKI };
void forEach(JNIEnv* env, Rows rows, const std::function<void(const Native&)>& test)
{
    for (const Native& native : natives()) {
        if (rows == CRYPTOKI && native.isUtility()) continue;
        SCOPED_TRACE(native.line());
        const LocalFrame frame(env);
        recorder::reset();
        test(native);
    }
}

// The same, for each argument of every native.
void forEachArgument(JNIEnv* env, Rows rows,
    const std::function<void(const Native&, const Kind&, std::size_t place, std::size_t start)>& test)
{
    forEach(env, rows, [&](const Native& native) {
        for (std::size_t place = 0; place < native.kinds.size(); ++place) {
            SCOPED_TRACE("argument " + std::to_string(place));
            test(native, native.kinds[place], place, native.start(place));
        }
    });
}

TEST_F(Frame, everyNativeOfCryptokiHasItsRow)
{
    const jobject methods = callStatic(env, "Fields", "methodsOfCryptoki", "()Ljava/lang/String;");
    const std::string declared = toString(env, static_cast<jstring>(methods));
    std::size_t count = 0;
    for (std::size_t i = 0; (i = declared.find(" native ", i)) != declared.npos; ++i)
        ++count;
    forEach(env, CRYPTOKI, [&](const Native& native) {
        EXPECT_NE(declared.find("." + native.name + "("), declared.npos);
        --count;
    });
    EXPECT_EQ(count, 0U);
}

TEST_F(Frame, eachFailedJniCallRaisesItsException)
{
    forEach(env, ALL, [this](const Native& native) {
        recorder::script().byteLimit = 8;
        answer(CKR_OK, 3);
        // The only native that makes its call although an argument could not be read.
        const bool callsAnyway = native.name == "C_SetAttributeValue";
        const auto prepared = [&] { return [this, made = native.prepare(env, LARGE)] { return made(env); }; };
        EXPECT_GT(failEachJniCall(env, prepared, callsAnyway), 0);
    });
}

// Without memory a conversion raises an OutOfMemoryError and an output buffer leads to CKR_HOST_MEMORY.
// Either way the Cryptoki library is not called.
TEST_F(Frame, aFailedAllocationCallsNothingAndLeavesNothing)
{
    forEach(env, ALL, [this](const Native& native) {
        recorder::script().byteLimit = 0;
        answer(CKR_OK, 3);
        bool hasFailed = true;
        const auto work = [&] {
            recorder::takeCalls();
            const jobject returned = native.prepare(env, LARGE)(env);
            EXPECT_EQ(recorder::calls().empty(), hasFailed = allocationFailed());
            return returned == nullptr ? "" : std::to_string(rvOf(env, returned));
        };
        Lines outcomes = failEachAllocation(env, work);
        long inputs = 0, outputs = 0;
        for (const Kind& kind : native.kinds) {
            const bool isText = kind.form == Kind::Label && native.isUtility();
            outputs += kind.isOutput() || isText;
            inputs += !isText && kind.isInput();
        }
        EXPECT_GE(static_cast<long>(outcomes.size()), inputs + outputs);
        if (outputs != 0 && !outcomes.empty() && outcomes.back() == "2") outcomes.pop_back();
        EXPECT_EQ(outcomes, Lines(outcomes.size(), NO_MEMORY));
        EXPECT_EQ(work(), "0");
    });
}

// A locking callback that throws leads to such an exception.
TEST_F(Frame, anExceptionRaisedInTheLibraryStaysAndNothingIsWrittenBack)
{
    forEach(env, ALL, [this](const Native& native) {
        native.prepare(env)(env); // remembers every lookup, so that none can end the native
        initialiseWithCallbacks(env);
        const Call made = native.prepare(env);
        const std::string before = made.objects(env);
        answer(CKR_OK);
        recorder::script().onCall = [this, cls = find(env, "java/lang/IllegalStateException")] {
            if (!env->ExceptionCheck()) env->ThrowNew(cls, "from within");
        };
        const Watched watched = watch(env, {}, [&] { EXPECT_EQ(made(env), nullptr); });
        EXPECT_EQ(takeException(env), "java.lang.IllegalStateException: from within");
        EXPECT_EQ(made.objects(env), before);
        EXPECT_EQ(watched.violations, Lines{});
    });
}

TEST_F(Frame, successWritesBackEverythingAndAnErrorOnlyLengths)
{
    forEachArgument(
        env, CRYPTOKI, [this](const Native& native, const Kind& kind, std::size_t, std::size_t start) {
            for (const CK_RV rv : {CKR_OK, CKR_BUFFER_TOO_SMALL, CKR_DEVICE_REMOVED, 0xffffffffUL}) {
                const Call made = native.prepare(env);
                const auto texts = [&] {
                    Lines all;
                    for (std::size_t i = start; i < start + kind.javaCount(); ++i)
                        if (made.kinds[i] == 'o' || made.kinds[i] == 'b')
                            all.push_back(text(env, {made.arguments[i].l}));
                    return all;
                };
                const Lines before = texts();
                answer(rv);
                jobject returned = nullptr;
                {
                    const HeapWatch heap;
                    const Watched watched = watch(env, {}, [&] { returned = made(env); });
                    EXPECT_TRUE(heap.blocks.empty() && watched.globalRefs.empty() && watched.buffers.empty());
                }
                EXPECT_EQ(rvOf(env, returned), rv);
                const Lines after = texts();
                const bool hasLength = kind.form == Kind::Output || kind.form == Kind::Found;
                const bool hasNumber = hasLength || (kind.form == Kind::New && rv == CKR_OK);
                EXPECT_EQ(hasNumber, !after.empty() && after.back().find("2147483651") != std::string::npos);
                if (kind.form != Kind::New && (kind.isOutput() || kind.form == Kind::Record)) {
                    EXPECT_EQ(after.front() == before.front(), rv != CKR_OK);
                } else if (!hasNumber) {
                    EXPECT_EQ(after, before);
                }
            }
        });
}

TEST_F(Frame, requiredArgumentsAreCheckedBeforeAnyConversion)
{
    forEachArgument(env, ALL, [this](const Native& native, const Kind& kind, std::size_t, std::size_t start) {
        if (kind.refused != Kind::Null) return;
        std::string first = "none"; // the class that is looked up before anything else
        for (const Kind& other : native.kinds | std::views::reverse) {
            if (other.form == Kind::New) first = other.cls();
            if (other.form == Kind::Output || other.form == Kind::Found || other.form == Kind::Served)
                first = "halvorn/zerlin/LongRef";
        }
        Call made = native.prepare(env);
        const bool isOptional =
            kind.form == Kind::Output || kind.form == Kind::Found || kind.form == Kind::Served;
        made.arguments[start + (isOptional ? kind.javaCount() - 1 : 0)].l = nullptr;
        expectRefused(env, made);
        for (const Kind& looked : {kinds::NewLong, kinds::Session, kinds::Object, kinds::MechanismType}) {
            JNI_OnUnload(jvm(), nullptr);
            jobject returned = nullptr;
            watch(env, {.lookup = looked.cls()}, [&] { returned = made(env); });
            const bool isFirst = first == looked.cls();
            EXPECT_EQ(takeException(env), isFirst ? "java.lang.NoClassDefFoundError: " + first : "");
            EXPECT_EQ(returned == nullptr, isFirst);
        }
        EXPECT_EQ(recorder::calls(), Lines{});
    });
}

TEST_F(Frame, argumentsAreConvertedInTheirOrder)
{
    forEach(env, ALL, [this](const Native& native) {
        answer(CKR_OK, 3);
        Longs expected, last; // of each argument a number that is read
        for (std::size_t place = 0; place < native.kinds.size(); ++place) {
            const Kind& kind = native.kinds[place];
            const auto number = static_cast<jlong>(40 + place), length = static_cast<jlong>(5 + place);
            const bool isLast = native.name == "C_SetAttributeValue" && place == 1;
            if (kind.form == Kind::Held || kind.form == Kind::Mechanism)
                (isLast ? last : expected).push_back(number);
            if (kind.form == Kind::Bytes || kind.form == Kind::Template) expected.push_back(length);
            if (kind.form == Kind::Output) expected.push_back(4);
        }
        expected.insert(expected.end(), last.begin(), last.end());
        const Call made = native.prepare(env);
        Longs read = watch(env, {}, [&] { made(env); }).read;
        std::erase_if(read, [&](jlong one) { return std::ranges::find(expected, one) == expected.end(); });
        read.erase(std::unique(read.begin(), read.end()), read.end());
        EXPECT_EQ(read, expected);
    });
}

TEST_F(Frame, onlyTheLowHalfOfALongCounts)
{
    const jlong highHalf = 0x7'0000'0000;
    forEachArgument(
        env, CRYPTOKI, [&](const Native& native, const Kind& kind, std::size_t, std::size_t start) {
            Call made = native.prepare(env);
            for (std::size_t i = start; i < start + kind.javaCount(); ++i) {
                if (made.kinds[i] == 'j') made.arguments[i].j += highHalf;
                const jobject object = made.arguments[i].l;
                const char* const field = i > start ? "value" : kind.form == Kind::Held ? "m_value" : nullptr;
                if (made.kinds[i] == 'o' && field != nullptr)
                    setLong(env, object, field, getLong(env, object, field) + highHalf);
            }
            expectCall(env, made, native.line());
        });
}

TEST_F(Frame, nullOrForeignHandlesAndTypesAreLeftToTheLibrary)
{
    forEachArgument(
        env, CRYPTOKI, [&](const Native& native, const Kind& kind, std::size_t place, std::size_t start) {
            if (kind.form != Kind::Held) return;
            Call made = native.prepare(env);
            made.arguments[start].l = nullptr;
            expectCall(env, made, native.line(place, kind.ofNull));
            made.arguments[start].l = longRef(env, 9);
            const bool isType = kind.path.starts_with("constants");
            expectCall(env, made, native.line(place, isType ? "0xffffffff" : "0"));
        });
}

TEST_F(Frame, bytesAndTemplatesArePassedWithTheGivenLength)
{
    struct Row {
        bool isNull;
        jlong length;
        const char* shown;
        const char* shownTemplate;
    };
    const Row rows[] = {
        {false, 2, "[3132], 2", "{{3, [616263], 3}, {3, [616263], 3}}, 2"},
        {false, 1, "[31], 1", "{{3, [616263], 3}}, 1"},
        {false, 9, "[313233340000000000], 9", "{{3, [616263], 3}, {3, [616263], 3}, ..}, 9"},
        {false, 0, "[], 0", "{}, 0"},
        {false, -1, "[3132333400000000000000000000000000000000000000000000000000000000..], 0xffffffff",
            "{{3, [616263], 3}, {3, [616263], 3}, ..}, 0xffffffff"},
        {false, 0x1'0000'0000, "[], 0", "{}, 0"},
        {true, 4, "null, 4", "null, 4"},
        {true, 0, "null, 0", "null, 0"},
        {true, -1, "null, 0xffffffff", "null, 0xffffffff"},
        {true, 0x1'0000'0000, "null, 0", "null, 0"},
    };
    forEachArgument(
        env, CRYPTOKI, [&](const Native& native, const Kind& kind, std::size_t place, std::size_t start) {
            const bool isTemplate = kind.form == Kind::Template;
            if (kind.form != Kind::Bytes && !isTemplate) return;
            for (const Row& row : rows) {
                SCOPED_TRACE(row.shown);
                Call made = native.prepare(env);
                const jobject label = attribute(env, 3, bytes(env, "abc"), 3);
                made.arguments[start].l = bytes(env, "1234");
                if (isTemplate) made.arguments[start].l = attributes(env, {label, label});
                if (row.isNull) made.arguments[start].l = nullptr;
                made.arguments[start + 1].j = row.length;
                recorder::script().byteLimit = 32;
                recorder::script().attributeLimit = 2;
                const bool isRefused = kind.refused == Kind::NullWithLength   ? row.isNull && row.length > 0
                                       : kind.refused == Kind::Null           ? row.isNull
                                       : kind.refused == Kind::NullOrNoLength ? row.isNull || row.length == 0
                                                                              : false;
                if (isRefused) {
                    recorder::takeCalls();
                    jobject returned = nullptr;
                    EXPECT_EQ(watch(env, {}, [&] { returned = made(env); }).read, Longs{});
                    EXPECT_EQ(rvOf(env, returned), CKR_ARGUMENTS_BAD);
                    EXPECT_EQ(recorder::calls(), Lines{});
                } else {
                    expectCall(env, made, native.line(place, isTemplate ? row.shownTemplate : row.shown));
                }
            }
        });
}

// For natives whose last arguments are an output array and its LongRef.
TEST_F(Frame, outputGoesThroughABufferOfTheGivenCapacity)
{
    struct Row {
        bool isNull;
        jlong capacity;
        CK_ULONG reported;
        CK_RV rv;
        const char* shown;
        const char* after; // what becomes of an array of six 7, if it holds numbers
    };
    const Row rows[] = {
        {false, 6, 6, CKR_OK, "out(6)", "[[11, 12, 13, 14, 15, 16]]"},
        {false, 4, 2, CKR_OK, "out(4)", "[[11, 12, 7, 7, 7, 7]]"},
        {false, 8, 8, CKR_OK, "out(8)", "[[11, 12, 13, 14, 15, 16]]"},
        {false, 2, 2, CKR_OK, "out(2)", "[[11, 12, 7, 7, 7, 7]]"},
        {false, 0, 0, CKR_OK, "out(0)", "[[7, 7, 7, 7, 7, 7]]"},
        {true, 0, 4, CKR_OK, "null(0)", "[null]"},
        {true, -1, 0xffffffff, CKR_OK, "null(0xffffffff)", "[null]"},
        {false, 2, 4, CKR_BUFFER_TOO_SMALL, "out(2)", "[[7, 7, 7, 7, 7, 7]]"},
        // More is reported than there is room for: what the buffer has is copied, with its spare element.
        {false, 3, 6, CKR_OK, "out(3)", "[[11, 12, 13, 0, 7, 7]]"},
    };
    forEachArgument(
        env, CRYPTOKI, [&](const Native& native, const Kind& kind, std::size_t place, std::size_t start) {
            if (kind.form != Kind::Output) return;
            for (const Row& row : rows) {
                SCOPED_TRACE(std::string(row.shown) + " reports " + std::to_string(row.reported));
                Call made = native.prepare(env);
                jobject& array = made.arguments[start].l;
                const jobject length = made.arguments[start + 1].l;
                if (row.isNull) array = nullptr;
                setLong(env, length, "value", row.capacity);
                answer(row.rv, row.reported);
                EXPECT_EQ(rvOf(env, made(env)), row.rv);
                EXPECT_EQ(recorder::calls().back(), native.line(place, row.shown));
                EXPECT_EQ(getLong(env, length, "value"), static_cast<jlong>(row.reported));
                std::string after = row.after;
                if (const auto spare = after.find(" 0"); spare != after.npos && kind.spare == 0)
                    after[spare + 1] = '7';
                EXPECT_TRUE(kind.path == kinds::MechanismList.path || text(env, {array}) == after)
                    << text(env, {array});
            }
        });
}

TEST_F(Frame, aCapacityThatCannotBeAllocatedIsRefused)
{
    forEachArgument(
        env, CRYPTOKI, [this](const Native& native, const Kind& kind, std::size_t, std::size_t start) {
            if (kind.form != Kind::Output) return;
            const Call made = native.prepare(env);
            for (const jlong capacity :
                {jlong{-1}, jlong{kind.path.empty() ? -1 : 0x7fff'fff0}}) { // 2 GiB may be there
                setLong(env, made.arguments[start + 1].l, "value", capacity);
                expectRefused(env, made, CKR_HOST_MEMORY);
            }
        });
}

const CK_BYTE* pointer(const void* data)
{
    return static_cast<const CK_BYTE*>(data);
}

// Malloc's own rounding does not count. Outputs are zeroed up to their end, but for the one that is not.
TEST_F(Frame, buffersHaveTheirExactSizes)
{
    forEach(env, CRYPTOKI, [this](const Native& native) {
        for (const jsize size : {0, LARGE}) {
            const Call made = native.prepare(env, size);
            const HeapWatch heap;
            recorder::script().byteLimit = 0;
            recorder::script().answer = [&](std::span<const Argument> all) {
                EXPECT_EQ(all.size(), native.kinds.size() + (native.kinds.back().form == Kind::Found));
                for (std::size_t i = 0; i < native.kinds.size(); ++i) {
                    SCOPED_TRACE("argument " + std::to_string(i));
                    const Kind& kind = native.kinds[i];
                    const auto* data = static_cast<const CK_BYTE*>(all[i].data);
                    std::size_t bytes = LARGE;
                    if (kind.isOutput()) bytes = (all[i].number + kind.spare) * all[i].elementSize;
                    if (kind.isOutput() && kind.spare != 0) {
                        EXPECT_EQ(std::count(data, data + bytes, 0), static_cast<std::ptrdiff_t>(bytes));
                    }
                    if (kind.form == Kind::Template)
                        data = pointer(static_cast<CK_ATTRIBUTE*>(all[i].data)->pValue);
                    if (kind.form == Kind::Mechanism)
                        data = pointer(static_cast<CK_MECHANISM*>(all[i].data)->pParameter);
                    if (kind.form == Kind::Template || kind.form == Kind::Mechanism)
                        ++bytes; // values have a spare one
                    if (size != 0 && (kind.isOutput() || kind.isInput())) {
                        EXPECT_EQ(heap.sizeFrom(data), bytes);
                    }
                }
                return CKR_OK;
            };
            EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
        }
    });
}

} // namespace
