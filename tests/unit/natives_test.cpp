// What is special about single natives; frame_test.cpp has what all have in common.
#include "halvorn_zerlin_CTUtil.h"
#include "harness/failures.h"
#include "helper/memory.h"
#include "param_text.h"
#include "values.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace {

using namespace jni;

struct Natives : JniTest {};

TEST_F(Natives, unusualArgumentsReachTheLibrary)
{
    const jobject any = string(env, "any object");
    const jobject other = string(env, "another one");
    const jobject cipher = mechanism(env, jlong{44}, bytes(env, {1, 2}), 2);
    recorder::script().labelLength = 40;
    std::string label;
    for (int i = 0; i < 40; ++i)
        label += "6c";
    const jbyteArray longLabel = bytes(env, std::string(40, 'l')); // must be neither cut nor refused
    const std::string address = recorder::address(any);
    const std::pair<Call, std::string> rows[] = {
        {call(NATIVE(C_1Initialize), nullptr), "C_Initialize(null)"},
        {call(NATIVE(C_1Finalize), any), "C_Finalize(" + address + ")"},
        {call(NATIVE(C_1GetSlotList), 2, nullptr, longRef(env, 6)), "C_GetSlotList(0, null(6))"},
        {call(NATIVE(C_1WaitForSlotEvent), -1, longRef(env, 0), any),
            "C_WaitForSlotEvent(0xffffffff, out, " + address + ")"},
        {call(NATIVE(C_1InitToken), 1, nullptr, 0, longLabel), "C_InitToken(1, null, 0, [" + label + "])"},
        {call(NATIVE(C_1InitToken), 1, nullptr, 0, nullptr), "C_InitToken(1, null, 0, null)"},
        {call(NATIVE(C_1OpenSession), -1, 4, any, other, session(env)),
            "C_OpenSession(0xffffffff, 4, " + address + ", " + recorder::address(other) + ", out)"},
        {call(NATIVE(C_1WrapKey), session(env), cipher, object(env, 42), nullptr, nullptr, longRef(env, 9)),
            "C_WrapKey(41, {44, [0102], 2}, 42, 0xffffffff, null(9))"},
        {call(NATIVE(C_1WrapKey), session(env), cipher, any, object(env, 43), nullptr, longRef(env, 9)),
            "C_WrapKey(41, {44, [0102], 2}, 0, 43, null(9))"},
        {call(NATIVE(C_1DeriveKey), session(env), cipher, object(env, 42), nullptr, 0, nullptr),
            "C_DeriveKey(41, {44, [0102], 2}, 42, null, 0, out)"},
    };
    for (const auto& [made, line] : rows)
        expectCall(env, made, line);
    expectRefused(env,
        call(NATIVE(C_1UnwrapKey), session(env), cipher, nullptr, nullptr, 0, nullptr, 0, object(env, 1)));
    expectRefused(env, call(NATIVE(C_1GenerateRandom), session(env), nullptr, 1));
}

TEST_F(Natives, theLibraryVersionIsTheBindingsOwn)
{
    recorder::script().C_GetInfo = [](CK_INFO_PTR info) {
        info->libraryVersion = {7, 8};
        return CKR_OK;
    };
    const jobject info = make(env, "halvorn/zerlin/CK_INFO");
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetInfo), info)(env)), CKR_OK);
    EXPECT_NE(text(env, {info}).find("libraryVersion=3.10]]"), std::string::npos);
}

// On the stack, in chunks, from malloc and in mappings: every value is whole and none overlaps another.
TEST_F(Natives, valuesOfAllSizesArriveWholeInOneTemplate)
{
    std::vector<jobject> values;
    for (const jsize size : {3, 1000, 1000, 1000, 1023, 1024, 2000, 524287, 524288, 700001, 700001, 1500000})
        for (int twice = 0; twice < 2; ++twice)
            values.push_back(attribute(env, 17, bytes(env, Bytes(size, CK_BYTE(values.size() + 64))), size));
    const HeapWatch heap;
    std::set<std::string> places;
    recorder::script().attributeLimit = 0;
    recorder::script().C_CreateObject = [&](auto, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, auto) {
        EXPECT_EQ(ulCount, values.size());
        for (CK_ULONG i = 0; i < ulCount; ++i) {
            const auto* const data = static_cast<const CK_BYTE*>(pTemplate[i].pValue);
            const CK_ULONG length = pTemplate[i].ulValueLen;
            EXPECT_EQ(std::count(data, data + length, CK_BYTE(i + 64)), static_cast<long>(length)) << i;
            const std::size_t size = heap.sizeFrom(data); // there is a spare byte
            places.insert(size == length + 1       ? "malloc"
                          : size != 0              ? "chunk"
                          : length < (1 << 19) - 1 ? "stack"
                                                   : "mapping");
        }
        return CKR_OK;
    };
    const auto count = static_cast<jlong>(values.size());
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1CreateObject), session(env), attributes(env, values), count,
                            object(env, 0))(env)),
        CKR_OK);
    const bool hasStack = zerlin::STACK_SIZE != 0; // not with the sanitizers
    EXPECT_EQ(places.size(), hasStack ? 4U : 2U);
    EXPECT_EQ(heap.blocks.size(), 0U);
}

// A second buffer takes all that the mapping has left but a byte; the third has no room there.
TEST_F(Natives, noBufferLiesBeyondTheMapping)
{
    using zerlin::Content;
    zerlin::CallMemory memory;
    std::memset(memory.take(600001, Content::Secret), 1, 600001);
    const std::size_t left = memory.mappings->size - memory.mappings->used - 1;
    std::memset(memory.take(left, Content::Secret), 2, left);
    std::memset(memory.take(600000, Content::Secret), 3, 600000);
    for (const auto* mapping = memory.mappings; mapping != nullptr; mapping = mapping->next)
        EXPECT_LE(mapping->used, mapping->size);
}

TEST_F(Natives, attributesAreReadBackWhateverTheReturnValue)
{
    for (const CK_RV rv : {CKR_OK, CKR_ATTRIBUTE_SENSITIVE, CKR_DEVICE_ERROR}) {
        recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            std::memcpy(pTemplate[0].pValue, "\1\2", 2);
            pTemplate[0].ulValueLen = 2;
            pTemplate[1].ulValueLen = 0xffffffff;
            return rv;
        };
        const jobject label = attribute(env, 3, bytes(env, {7, 7, 7}), 3);
        const jobject sensitive = attribute(env, 0x103, bbool(env, true), 1);
        const jobjectArray both = attributes(env, {label, sensitive});
        EXPECT_EQ(
            rvOf(env, call(NATIVE(C_1GetAttributeValue), session(env), object(env, 2), both, 2)(env)), rv);
        EXPECT_EQ(describe(env, label), "[CKA_LABEL (0x3), [1, 2, 7]] 2");
        EXPECT_EQ(describe(env, sensitive), "[CKA_SENSITIVE (0x103), CK_TRUE] 4294967295");
    }
}

TEST_F(Natives, foundObjectsAndRandomBytesGoThroughBuffersOfTheGivenCapacity)
{
    recorder::script().C_FindObjects = [&](auto, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG ulMax, auto count) {
        std::fill_n(phObject, ulMax, 0x80000010);
        *count = ulMax;
        return CKR_OK;
    };
    recorder::script().C_GenerateRandom = [](auto, CK_BYTE_PTR buffer, CK_ULONG length) {
        std::fill_n(buffer, length, CK_BYTE{5});
        return CKR_OK;
    };
    const std::tuple<jlong, const char*, const char*> rows[] = {
        {0, "[[object 7, object 7, object 7], 0]", "[[7, 7, 7]]"},
        {1, "[[object 2147483664, object 7, object 7], 1]", "[[5, 7, 7]]"},
        {4, "[[object 2147483664, object 2147483664, object 2147483664], 4]", "[[5, 5, 5]]"},
    };
    const auto handles = [this] {
        return objects(
            env, "halvorn/zerlin/CK_OBJECT_HANDLE", {object(env, 7), object(env, 7), object(env, 7)});
    };
    for (const auto& [capacity, found, bytesAfter] : rows) {
        const jobjectArray array = handles();
        const jobject count = longRef(env, 2);
        EXPECT_EQ(rvOf(env, call(NATIVE(C_1FindObjects), session(env), array, capacity, count)(env)), CKR_OK);
        EXPECT_EQ(text(env, {array, count}), found);
        const jbyteArray output = bytes(env, {7, 7, 7});
        EXPECT_EQ(rvOf(env, call(NATIVE(C_1GenerateRandom), session(env), output, capacity)(env)), CKR_OK);
        EXPECT_EQ(text(env, {output}), bytesAfter);
    }
    expectRefused(env, call(NATIVE(C_1FindObjects), session(env), nullptr, 1, longRef(env, 2)));
    for (const jlong capacity : {-1, 0x7ffffff0})
        expectRefused(env, call(NATIVE(C_1FindObjects), session(env), handles(), capacity, longRef(env, 2)),
            CKR_HOST_MEMORY);
}

TEST_F(Natives, objectsAreFoundByTheirLabels)
{
    const Lines search = {"C_FindObjectsInit(41, {{0, [04000000], 4}, {3, [6d], 1}}, 2)",
        "C_FindObjects(41, out(1), out)", "C_FindObjectsFinal(41)"};
    const jobject secretKey = make(env, "halvorn/zerlin/constants/CK_OBJECT_CLASS", "(J)V", jlong{4});
    const jbyteArray label = bytes(env, {'m', 0, 'y'}); // the label ends at its first zero
    // How many objects are found, what C_FindObjectsFinal returns, what the native returns, the handle
    // afterwards.
    const std::tuple<CK_ULONG, CK_RV, CK_RV, jlong> rows[] = {{1, CKR_OK, CKR_OK, 0xfffffff9},
        {0, CKR_OK, CKR_GENERAL_ERROR, 7}, {1, CKR_DEVICE_ERROR, CKR_DEVICE_ERROR, 7}};
    for (const auto& [count, end, rv, held] : rows) {
        recorder::reset();
        recorder::script().C_FindObjects = [&](auto, auto phObject, auto, auto pulCount) {
            *phObject = 0xfffffff9;
            *pulCount = count;
            return CKR_OK;
        };
        recorder::script().C_FindObjectsFinal = [&](auto) { return end; };
        const jobject found = object(env, 7);
        const auto native = Java_halvorn_zerlin_CTUtil_CTU_1FindObject;
        EXPECT_EQ(rvOf(env, native(env, nullptr, session(env), secretKey, label, found)), rv);
        EXPECT_EQ(recorder::calls(), search);
        EXPECT_EQ(getLong(env, found, "m_value"), held);
    }
}

// The native ends with the first call that reports the loss, and writes nothing.
TEST_F(Natives, aLostTokenEndsNativesThatMakeSeveralCalls)
{
    for (std::size_t lost = 1; lost <= 3; ++lost) {
        const auto step = [&](auto...) {
            return recorder::calls().size() < lost ? CKR_OK : CKR_DEVICE_REMOVED;
        };
        const auto expectLost = [&](const Call& made) {
            recorder::reset();
            recorder::script().C_FindObjectsInit = step;
            recorder::script().C_FindObjects = [&](auto, auto phObject, auto, auto pulCount) {
                *phObject = *pulCount = 1;
                return step();
            };
            recorder::script().C_FindObjectsFinal = step;
            recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
                if (pTemplate->pValue != nullptr) std::memcpy(pTemplate->pValue, "new", 3);
                pTemplate->ulValueLen = 3;
                return step();
            };
            const std::string before = made.objects(env);
            EXPECT_EQ(rvOf(env, made(env)), CKR_DEVICE_REMOVED);
            EXPECT_EQ(recorder::calls().size(), lost);
            EXPECT_EQ(made.objects(env), before);
        };
        expectLost(call(Java_halvorn_zerlin_CTUtil_CTU_1FindObject, session(env), nullptr, bytes(env, "m"),
            object(env, 7)));
        if (lost == 3) continue;
        expectLost(call(Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue, session(env), object(env, 42),
            nullptr, bytes(env, "abcd"), 4, longRef(env, 77)));
    }
}

TEST_F(Natives, oneAttributeIsReadIfItFitsAndWritten)
{
    const jobject type = make(env, "halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE", "(J)V", jlong{17});
    const std::tuple<jlong, CK_ULONG, CK_RV, const char*> rows[] = {
        {2, 3, CKR_ATTRIBUTE_TYPE_INVALID, "[[97, 98, 99, 100], 77]"},
        {0, 3, CKR_OK, "[[97, 98, 99, 100], 3]"},
        {4, 3, CKR_OK, "[[110, 101, 119, 100], 3]"},
    };
    for (const auto& [given, reported, rv, after] : rows) {
        recorder::script().C_GetAttributeValue = [&](auto, auto, CK_ATTRIBUTE_PTR pTemplate, auto) {
            if (pTemplate->pValue != nullptr) std::memcpy(pTemplate->pValue, "new", 3);
            pTemplate->ulValueLen = reported;
            return CKR_OK;
        };
        const jobject value = bytes(env, "abcd");
        const jobject length = longRef(env, 77);
        const auto native = Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue;
        EXPECT_EQ(
            rvOf(env, native(env, nullptr, session(env), object(env, 42), type, value, given, length)), rv);
        EXPECT_EQ(text(env, {value, length}), after);
    }
    expectCall(env,
        call(Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue, session(env), object(env, 42), type,
            bytes(env, "abc"), 2),
        "C_SetAttributeValue(41, 42, {{17, [6162], 2}}, 1)");
}

} // namespace
