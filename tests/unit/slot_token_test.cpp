// The natives for the library, its slots and tokens: what is particular to them.
#include "jvm.h"
#include "natives.h"

#include <algorithm>
#include <cstring>
#include <malloc.h>

namespace {

using namespace jni;

struct SlotToken : JniTest {};

// Fills a field of blank-padded text.
template <std::size_t size>
void pad(CK_BYTE (&field)[size], const char* text)
{
    std::memset(field, ' ', size);
    std::memcpy(field, text, std::min(size, std::strlen(text)));
}

TEST_F(SlotToken, argumentsAreHandedOn)
{
    const jobject any = string(env, "any object");
    const std::string reference = recorder::address(any);
    recorder::script().labelLength = 40;
    const jbyteArray longLabel = bytes(env, std::string(40, 'l')); // neither cut nor refused
    std::string shownLabel;
    for (int i = 0; i < 40; ++i)
        shownLabel += "6c";

    expectCall(env, call(NATIVE(C_1Initialize), nullptr), "C_Initialize(null)");
    expectCall(env, call(NATIVE(C_1Finalize), any), "C_Finalize(" + reference + ")");
    expectCall(env, call(NATIVE(C_1GetSlotList), 0, nullptr, longRef(env, 6)), "C_GetSlotList(0, null(6))");
    expectCall(env, call(NATIVE(C_1GetSlotList), 2, nullptr, longRef(env, 6)), "C_GetSlotList(0, null(6))");
    expectCall(env, call(NATIVE(C_1WaitForSlotEvent), -1, longRef(env, 0), any),
        "C_WaitForSlotEvent(0xffffffff, out, " + reference + ")");
    expectCall(env, call(NATIVE(C_1InitToken), -1, nullptr, 0, longLabel),
        "C_InitToken(0xffffffff, null, 0, [" + shownLabel + "])");
    expectCall(env, call(NATIVE(C_1InitToken), 1, nullptr, 0, nullptr), "C_InitToken(1, null, 0, null)");
    expectCall(env, call(NATIVE(CT_1InitToken), session(env), -1, nullptr, 0, nullptr),
        "CT_InitToken(41, 0xffffffff, null, 0, null)");
    expectCall(env, call(NATIVE(CT_1ResetToken), session(env), nullptr, 0, nullptr),
        "CT_ResetToken(41, null, 0, null)");
}

TEST_F(SlotToken, listsHaveZeroBuffersWithASpareElement)
{
    const auto expectZeros = [](const CK_ULONG* list) {
        EXPECT_EQ(std::count(list, list + 4, 0), 4);
        EXPECT_GE(malloc_usable_size(const_cast<CK_ULONG*>(list)), 4 * sizeof *list);
        return CKR_OK;
    };
    recorder::script().C_GetSlotList = [=](auto, CK_SLOT_ID_PTR list, auto) { return expectZeros(list); };
    recorder::script().C_GetMechanismList = [=](auto, CK_MECHANISM_TYPE_PTR list, auto) {
        return expectZeros(list);
    };
    const jobjectArray types = objects(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE", {});
    call(NATIVE(C_1GetSlotList), 0, longs(env, {}), longRef(env, 3))(env);
    call(NATIVE(C_1GetMechanismList), 1, types, longRef(env, 3))(env);
    EXPECT_EQ(recorder::calls(), (Lines{"C_GetSlotList(0, out(3))", "C_GetMechanismList(1, out(3))"}));
}

TEST_F(SlotToken, theLibraryVersionIsTheBindingsOwn)
{
    recorder::script().C_GetInfo = [](CK_INFO_PTR info) {
        info->cryptokiVersion = {2, 20};
        pad(info->manufacturerID, "maker");
        info->flags = 0x80000000;
        pad(info->libraryDescription, "description");
        info->libraryVersion = {7, 8};
        return CKR_OK;
    };
    const jobject info = make(env, "halvorn/zerlin/CK_INFO");
    EXPECT_EQ(rvOf(env, call(NATIVE(C_1GetInfo), info)(env)), CKR_OK);
    EXPECT_EQ(text(env, {info}), "[CK_INFO[cryptokiVersion=2.20, manufacturerID=maker, flags=0x80000000, "
                                 "libraryDescription=description, libraryVersion=3.10]]");
}

TEST_F(SlotToken, informationIsWrittenBack)
{
    recorder::script().C_GetSlotInfo = [](CK_SLOT_ID, CK_SLOT_INFO_PTR info) {
        pad(info->slotDescription, "slot");
        pad(info->manufacturerID, "maker");
        info->flags = CKF_TOKEN_PRESENT;
        info->hardwareVersion = {1, 2};
        info->firmwareVersion = {3, 255};
        return CKR_OK;
    };
    recorder::script().C_GetTokenInfo = [](CK_SLOT_ID, CK_TOKEN_INFO_PTR info) {
        pad(info->label, "label");
        info->ulMaxSessionCount = 0xffffffff;
        return CKR_OK;
    };
    recorder::script().C_GetMechanismInfo = [](CK_SLOT_ID, CK_MECHANISM_TYPE, CK_MECHANISM_INFO_PTR info) {
        *info = {.ulMinKeySize = 1, .ulMaxKeySize = 0xffffffff, .flags = 0x80000000};
        return CKR_OK;
    };
    recorder::script().C_WaitForSlotEvent = [](CK_FLAGS, CK_SLOT_ID_PTR slot, CK_VOID_PTR) {
        *slot = 0xffffffff;
        return CKR_OK;
    };
    const jobject slotInfo = make(env, "halvorn/zerlin/CK_SLOT_INFO");
    const jobject tokenInfo = make(env, "halvorn/zerlin/CK_TOKEN_INFO");
    const jobject mechanismInfo = make(env, "halvorn/zerlin/CK_MECHANISM_INFO");
    const jobject slot = longRef(env, 4);
    for (const Call& made :
        {call(NATIVE(C_1GetSlotInfo), 1, slotInfo), call(NATIVE(C_1GetTokenInfo), 1, tokenInfo),
            call(NATIVE(C_1GetMechanismInfo), 1, mechanismType(env, 1), mechanismInfo),
            call(NATIVE(C_1WaitForSlotEvent), 0, slot, nullptr)})
        EXPECT_EQ(rvOf(env, made(env)), CKR_OK);
    EXPECT_EQ(text(env, {slotInfo}), "[CK_SLOT_INFO[slotDescription=slot, manufacturerID=maker, flags=0x1, "
                                     "hardwareVersion=1.2, firmwareVersion=3.255]]");
    const auto label = static_cast<jbyteArray>(getObject(env, tokenInfo, "label", "[B"));
    EXPECT_EQ(toVector(env, label), toVector(env, bytes(env, "label" + std::string(27, ' '))));
    EXPECT_EQ(getLong(env, tokenInfo, "maxSessionCount"), 4294967295);
    EXPECT_EQ(text(env, {mechanismInfo, slot}),
        "[CK_MECHANISM_INFO[minKeySize=1, maxKeySize=4294967295, flags=0x80000000], 4294967295]");
}

} // namespace
