// The natives that create, copy, read, write and find objects: what is particular to them.
#include "failures.h"
#include "values.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <span>

namespace {

using namespace jni;

const CK_ULONG UNAVAILABLE = 0xffffffff;

// The natives that take a template. A recorded call is the template between two texts.
struct TemplateNative {
    const char* before;
    const char* after;
    Call (*prepare)(JNIEnv* e, jobjectArray pTemplate, jlong ulCount);
    Longs read; // of the session, objects, and an attribute of type 17 and length 3
};
const TemplateNative NATIVES[] = {
    {"C_CreateObject(41, ", ", out)",
        [](JNIEnv* e, jobjectArray t, jlong n) {
            return call(NATIVE(C_1CreateObject), session(e), t, n, object(e, 99));
        },
        {41, 17, 3}},
    {"C_CopyObject(41, 42, ", ", out)",
        [](JNIEnv* e, jobjectArray t, jlong n) {
            return call(NATIVE(C_1CopyObject), session(e), object(e, 42), t, n, object(e, 99));
        },
        {41, 42, 17, 3}},
    {"CT_CopyObject(41, 43, 42, ", ", out)",
        [](JNIEnv* e, jobjectArray t, jlong n) {
            return call(
                NATIVE(CT_1CopyObject), session(e), session(e, 43), object(e, 42), t, n, object(e, 99));
        },
        {41, 43, 42, 17, 3}},
    {"C_GetAttributeValue(41, 42, ", ")",
        [](JNIEnv* e, jobjectArray t, jlong n) {
            return call(NATIVE(C_1GetAttributeValue), session(e), object(e, 42), t, n);
        },
        {41, 42, 17, 3, 17}}, // the type once more when it is written back
    {"C_SetAttributeValue(41, 42, ", ")",
        [](JNIEnv* e, jobjectArray t, jlong n) {
            return call(NATIVE(C_1SetAttributeValue), session(e), object(e, 42), t, n);
        },
        {41, 17, 3, 42}}, // the object last: wanted
    {"C_FindObjectsInit(41, ", ")",
        [](JNIEnv* e, jobjectArray t, jlong n) { return call(NATIVE(C_1FindObjectsInit), session(e), t, n); },
        {41, 17, 3}},
};

struct Object : JniTest {
    jobjectArray oneAttribute() { return attributes(env, {attribute(env, 17, bytes(env, "abc"), 3)}); }
};

TEST_F(Object, argumentsAreReadInTheirOrderAndOutputsNotAtAll)
{
    for (const TemplateNative& native : NATIVES)
        EXPECT_EQ(readBy(env, native.prepare(env, oneAttribute(), 1)), native.read) << native.before;
    const jobjectArray found = objects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", {object(env, 99)});
    const std::pair<Call, Longs> others[] = {
        {call(NATIVE(C_1DestroyObject), session(env), object(env, 42)), {41, 42}},
        {call(NATIVE(C_1GetObjectSize), session(env), object(env, 42), longRef(env, 99)), {41, 42}},
        {call(NATIVE(C_1FindObjects), session(env), found, 1, longRef(env, 99)), {41}},
        {call(NATIVE(C_1FindObjectsFinal), session(env)), {41}},
    };
    for (const auto& [made, read] : others)
        EXPECT_EQ(readBy(env, made), read);
}

TEST_F(Object, templatesGoWithTheCountThatIsGiven)
{
    struct Row {
        bool isNull;
        jlong count;
        const char* shown; // null: refused
    };
    const Row rows[] = {
        {false, 2, "{{17, [616263], 3}, {3, [616263..], 9}}, 2"},
        {false, 1, "{{17, [616263], 3}}, 1"},
        {false, 3, "{{17, [616263], 3}, {3, [616263..], 9}, ..}, 3"},
        {false, 0, "{}, 0"},
        {false, -1, "{{17, [616263], 3}, {3, [616263..], 9}, ..}, 0xffffffff"},
        {false, 0x1'00000001, "{{17, [616263], 3}}, 1"},
        {true, 0, "null, 0"},
        {true, -1, "null, 0xffffffff"},
        {true, 1, nullptr},
        {true, 0x1'00000000, nullptr},
    };
    for (const TemplateNative& native : NATIVES) {
        for (const Row& row : rows) {
            const LocalFrame frame(env);
            recorder::reset();
            recorder::script().attributeLimit = 2;
            recorder::script().byteLimit = 3;
            const jobjectArray array = attributes(
                env, {attribute(env, 17, bytes(env, "abc"), 3), attribute(env, 3, bytes(env, "abc"), 9)});
            const Call made = native.prepare(env, row.isNull ? nullptr : array, row.count);
            if (row.shown != nullptr) {
                expectCall(env, made, std::string(native.before) + row.shown + native.after);
            } else {
                JNI_OnUnload(jvm(), nullptr);
                watch(env, {.lookup = "halvorn/zerlin/CK_SESSION_HANDLE"},
                    [&] { EXPECT_EQ(rvOf(env, made(env)), CKR_ARGUMENTS_BAD); });
                EXPECT_EQ(recorder::calls(), Lines{});
            }
        }
    }
}

TEST_F(Object, aBadValueComesBeforeTheCall)
{
    for (const TemplateNative& native : NATIVES) {
        const jobject bad = attribute(env, 17, make(env, "java/lang/Double", "(D)V", 1.5), 8);
        const Call made = native.prepare(env, attributes(env, {attribute(env, 3, nullptr, 0), bad}), 2);
        const std::string before = made.objects(env);
        EXPECT_EQ(made(env), nullptr);
        EXPECT_EQ(takeException(env), "java.lang.UnsupportedOperationException: "
                                      "No Conversion from java.lang.Double to a CK type");
        EXPECT_EQ(made.objects(env), before);
    }
    EXPECT_EQ(recorder::calls(), Lines{});
}

TEST_F(Object, withoutMemoryThereIsNoCallAndSecretsAreWiped)
{
    recorder::script().C_GetAttributeValue = [](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
        std::memcpy(pTemplate->pValue, "secret", 6);
        return CKR_OK;
    };
    for (const TemplateNative& native : NATIVES) {
        SCOPED_TRACE(native.before);
        const std::size_t known = recorder::calls().size();
        const jobject value = attribute(env, 17, bytes(env, "secret"), 6);
        const Call made =
            native.prepare(env, attributes(env, {value, attribute(env, 0, boxedLong(env, 3), 4)}), 2);
        const auto work = [&] { return std::to_string(rvOf(env, made(env))); };
        const auto caught = [&] { return made(env) == nullptr ? std::string() : "returned"; };
        EXPECT_EQ(failEachAllocation(env, caught), Lines(3, NO_MEMORY));
        EXPECT_EQ(recorder::calls().size(), known + 1) << "only the last one, when none failed";
        const HeapWatch heap;
        EXPECT_EQ(work(), "0");
        EXPECT_EQ(heap.freed.size(), 3U);
        for (const std::string& freed : heap.freed)
            EXPECT_EQ(freed.find("secr"), std::string::npos);
    }
}

TEST_F(Object, newHandlesAndSizesAreWrittenBack)
{
    recorder::Script& script = recorder::script();
    const auto answer = [](auto output) {
        *output = UNAVAILABLE;
        return CKR_OK;
    };
    script.C_CreateObject = [=](auto, auto, auto, auto output) { return answer(output); };
    script.C_CopyObject = [=](auto, auto, auto, auto, auto output) { return answer(output); };
    script.CT_CopyObject = [=](auto, auto, auto, auto, auto, auto output) { return answer(output); };
    script.C_GetObjectSize = [=](auto, auto, auto output) { return answer(output); };
    for (const TemplateNative& native : std::span(NATIVES).first(3)) {
        const Call made = native.prepare(env, nullptr, 0);
        EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
        EXPECT_EQ(text(env, {made.arguments.back().l}), "[object 4294967295]");
    }
    const jobject size = longRef(env, 99);
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetObjectSize), session(env), object(env, 42), size)(env)), CKR_OK);
    EXPECT_EQ(text(env, {size}), "[4294967295]");
}

TEST_F(Object, attributesAreReadBackWhateverTheResult)
{
    recorder::script().attributeLimit = 0;
    const Lines before = {"[CKA_LABEL (0x3), [7, 7, 7]] 3", "[CKA_SENSITIVE (0x103), CK_TRUE] 1",
        "[CKA_MODULUS_BITS (0x121), 5] 4", "[CKA_WILDCARD (0xffff), null] 0"};
    const Lines after = {"[CKA_LABEL (0x3), [1, 2, 7]] 2", "[CKA_SENSITIVE (0x103), CK_TRUE] 4294967295",
        "[CKA_MODULUS_BITS (0x121), 2048] 4", "[CKA_ID (0x102), null] 9"};
    for (const CK_RV rv : {CKR_OK, CKR_ATTRIBUTE_SENSITIVE, CKR_ATTRIBUTE_TYPE_INVALID, CKR_BUFFER_TOO_SMALL,
             CKR_DEVICE_ERROR}) {
        recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            const CK_ULONG bits = 2048;
            std::memcpy(pTemplate[0].pValue, "\1\2", 2);
            pTemplate[0].ulValueLen = 2;
            pTemplate[1].ulValueLen = UNAVAILABLE;
            std::memcpy(pTemplate[2].pValue, &bits, sizeof bits);
            pTemplate[3] = {CKA_ID, nullptr, 9};
            return rv;
        };
        for (const jlong count : {4, 2, 9, 0, -1}) {
            const std::vector<jobject> all = {attribute(env, 3, bytes(env, {7, 7, 7}), 3),
                attribute(env, 0x103, bbool(env, true), 1), attribute(env, 0x121, boxedLong(env, 5), 4),
                attribute(env, 65535, nullptr, 0)};
            const Call made = NATIVES[3].prepare(env, attributes(env, all), count);
            EXPECT_EQ(rvOf(env, made(env)), rv);
            for (std::size_t i = 0; i < all.size(); ++i)
                EXPECT_EQ(told(env, all[i]), i < static_cast<CK_ULONG>(count) ? after[i] : before[i]);
        }
    }
}

TEST_F(Object, anAttributeThatCannotBeReadBackHidesThoseBehindIt)
{
    const std::vector<jobject> all = {attribute(env, 3, bytes(env, "abc"), 2),
        attribute(env, 3, string(env, "abc"), 2), attribute(env, 3, bytes(env, "abc"), 2)};
    recorder::script().C_GetAttributeValue = [](auto, auto, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount) {
        for (CK_ULONG i = 0; i < ulCount; ++i) {
            std::memset(pTemplate[i].pValue, 9, 1);
            pTemplate[i].ulValueLen = 1;
        }
        return CKR_OK;
    };
    EXPECT_EQ(NATIVES[3].prepare(env, attributes(env, all), 3)(env), nullptr);
    EXPECT_EQ(takeException(env),
        "java.lang.UnsupportedOperationException: Can not copy from CK type to java.lang.String");
    EXPECT_EQ(told(env, all[0]), "[CKA_LABEL (0x3), [9, 98, 99]] 1");
    EXPECT_EQ(told(env, all[1]), "[CKA_LABEL (0x3), abc] 2");
    EXPECT_EQ(told(env, all[2]), "[CKA_LABEL (0x3), [97, 98, 99]] 2");
}

TEST_F(Object, anObjectThatCannotBeConvertedDoesNotStopTheWriting)
{
    const Call made = NATIVES[4].prepare(env, nullptr, 0);
    std::set<std::string> lines;
    const auto work = [&] {
        recorder::reset();
        const jobject returned = made(env);
        if (recorder::calls().empty()) return;
        const std::string line = recorder::calls()[0];
        if (line != "C_SetAttributeValue(41, 42, null, 0)") {
            EXPECT_EQ(returned, nullptr);
        }
        lines.insert(line);
    };
    failEachJniCall(env, [&] { return work; });
    EXPECT_EQ(
        lines, (std::set<std::string>{"C_SetAttributeValue(41, 0, null, 0)",
                   "C_SetAttributeValue(41, 42, null, 0)", "C_SetAttributeValue(41, 0xffffffff, null, 0)"}));
}

TEST_F(Object, foundObjectsGoThroughABufferOfTheGivenCapacity)
{
    struct Row {
        int elements; // of the Java array; -1 for none
        jlong maximum;
        CK_ULONG reported;
        CK_RV rv;
        const char* shown; // null: refused with that result
        CK_ULONG written;
    };
    const Row rows[] = {
        {3, 3, 3, CKR_OK, "out(3)", 3},
        {3, 3, 2, CKR_OK, "out(3)", 2},
        {2, 3, 3, CKR_OK, "out(3)", 2},
        {3, 2, 2, CKR_OK, "out(2)", 2},
        {2, 0, 0, CKR_OK, "out(0)", 0},
        {2, 0x1'00000002, 2, CKR_OK, "out(2)", 2},
        {3, 3, 3, CKR_DEVICE_ERROR, "out(3)", 0},
        {-1, 0, 5, CKR_OK, "null(0)", 0},
        {-1, -1, UNAVAILABLE, CKR_OK, "null(0xffffffff)", 0},
        // More than the capacity is reported, but not read.
        {60, 2, 50, CKR_OK, "out(2)", 2},
        {60, 2, UNAVAILABLE, CKR_OK, "out(2)", 2},
        {-1, 1, 0, CKR_ARGUMENTS_BAD, nullptr, 0},
        {-1, 0x1'00000000, 0, CKR_ARGUMENTS_BAD, nullptr, 0},
        {2, -1, 0, CKR_HOST_MEMORY, nullptr, 0},
        {2, 0x7ffffff0, 0, CKR_HOST_MEMORY, nullptr, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.elements) + " of " + std::to_string(row.maximum));
        const LocalFrame frame(env);
        recorder::reset();
        recorder::script().C_FindObjects = [&](auto, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG ulMax,
                                               auto count) {
            for (CK_ULONG i = 0; phObject != nullptr && i < std::min(ulMax, row.reported); ++i)
                phObject[i] = 0x80000010 + i;
            *count = row.reported;
            return row.rv;
        };
        const auto elements = static_cast<std::size_t>(std::max(row.elements, 0));
        std::vector<jobject> handles(elements);
        std::generate(handles.begin(), handles.end(), [&] { return object(env, 7); });
        const jobjectArray array = env->NewObjectArray(
            static_cast<jsize>(elements), find(env, "halvorn/zerlin/CK_OBJECT_HANDLE"), nullptr);
        for (std::size_t i = 0; i < elements; ++i)
            env->SetObjectArrayElement(array, static_cast<jsize>(i), handles[i]);
        const jobject count = longRef(env, 2);
        const Call made = call(
            NATIVE(C_1FindObjects), session(env), row.elements < 0 ? nullptr : array, row.maximum, count);
        if (row.shown == nullptr) {
            expectRefused(env, made, row.rv);
            continue;
        }
        EXPECT_EQ(rvOf(env, made(env)), row.rv);
        EXPECT_EQ(recorder::calls(), Lines{"C_FindObjects(41, " + std::string(row.shown) + ", out)"});
        EXPECT_EQ(getLong(env, count, "value"), static_cast<jlong>(row.reported));
        for (CK_ULONG i = 0; i < elements; ++i) {
            const jlong held = getLong(env, handles[i], "m_value");
            const bool isSpare = i == row.written && row.reported > i && row.rv == CKR_OK && held == 0;
            if (isSpare) continue;
            EXPECT_EQ(held, i < row.written ? 0x80000010LL + i : 7) << i;
        }
    }
    const auto refuse = [&] {
        const jobjectArray one = objects(env, "halvorn/zerlin/CK_OBJECT_HANDLE", {object(env, 7)});
        return std::to_string(
            rvOf(env, call(NATIVE(C_1FindObjects), session(env), one, 1, longRef(env, 2))(env)));
    };
    EXPECT_EQ(failEachAllocation(env, refuse), Lines{"2"});
}

} // namespace
