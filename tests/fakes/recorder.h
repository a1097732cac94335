// A Cryptoki library that only notes each call and returns what the test has scripted. It is
// called as a real one is, through forward.cpp.
//
// A call is noted as one line, C_Login(5, 1, [31323334], 4). It is written while the call runs, so it stays
// valid when the caller's memory changes:
// - numbers: decimal below 0x80000000, else hexadecimal: 5, 0xffffffff
// - input bytes: [31323334] or null, then the length; [3132..] where a limit cut them
// - templates: {{0, [03000000], 4}, {3, [6d79], 2}} or null, then the count; {{0, [03], 1}, ..} when cut
// - mechanisms: {4226, [00010203], 4} or null
// - arguments of C_Initialize: {set, set, null, null, 2, null} for mutex functions, flags, pReserved; or null
// - output buffers: out(16), or null(16) without a buffer, for the pointer and the capacity
// - other outputs: out or null
// - references that are passed on untouched: recorder::address
#pragma once

#include "zerlin/cryptoki.h"

#include <functional>
#include <limits>
#include <span>
#include <string>
#include <vector>

// clang-format off
#define STANDARD_FUNCTIONS(EACH) \
    EACH(C_Initialize) EACH(C_Finalize) EACH(C_GetInfo) EACH(C_GetSlotList) EACH(C_GetSlotInfo) EACH(C_GetTokenInfo) \
    EACH(C_GetMechanismList) EACH(C_GetMechanismInfo) EACH(C_InitToken) EACH(C_InitPIN) EACH(C_SetPIN) \
    EACH(C_OpenSession) EACH(C_CloseSession) EACH(C_CloseAllSessions) EACH(C_GetSessionInfo) \
    EACH(C_GetOperationState) EACH(C_SetOperationState) EACH(C_Login) EACH(C_Logout) EACH(C_CreateObject) \
    EACH(C_CopyObject) EACH(C_DestroyObject) EACH(C_GetObjectSize) EACH(C_GetAttributeValue) \
    EACH(C_SetAttributeValue) EACH(C_FindObjectsInit) EACH(C_FindObjects) EACH(C_FindObjectsFinal) \
    EACH(C_EncryptInit) EACH(C_Encrypt) EACH(C_EncryptUpdate) EACH(C_EncryptFinal) EACH(C_DecryptInit) \
    EACH(C_Decrypt) EACH(C_DecryptUpdate) EACH(C_DecryptFinal) EACH(C_DigestInit) EACH(C_Digest) \
    EACH(C_DigestUpdate) EACH(C_DigestKey) EACH(C_DigestFinal) EACH(C_SignInit) EACH(C_Sign) EACH(C_SignUpdate) \
    EACH(C_SignFinal) EACH(C_SignRecoverInit) EACH(C_SignRecover) EACH(C_VerifyInit) EACH(C_Verify) \
    EACH(C_VerifyUpdate) EACH(C_VerifyFinal) EACH(C_VerifyRecoverInit) EACH(C_VerifyRecover) \
    EACH(C_DigestEncryptUpdate) EACH(C_DecryptDigestUpdate) EACH(C_SignEncryptUpdate) EACH(C_DecryptVerifyUpdate) \
    EACH(C_GenerateKey) EACH(C_GenerateKeyPair) EACH(C_WrapKey) EACH(C_UnwrapKey) EACH(C_DeriveKey) \
    EACH(C_SeedRandom) EACH(C_GenerateRandom) EACH(C_GetFunctionStatus) EACH(C_CancelFunction) \
    EACH(C_WaitForSlotEvent)
#define VENDOR_FUNCTIONS(EACH) EACH(CT_CopyObject) EACH(CT_InitToken) EACH(CT_ResetToken)
// clang-format on

namespace recorder {

// An argument of a call. An array and its length, or its capacity, are one argument.
struct Argument {
    enum Form { Number, Reference, InitArgs, Mechanism, Template, Bytes, Label, Output, Outputs } form;
    void* data = nullptr;
    CK_ULONG number = 0;          // the value of a number; how many elements an array has
    CK_ULONG elementSize = 1;     // of an output
    CK_ULONG* reported = nullptr; // where the length of an output goes
};

// What the calls do. A handler runs after its call was noted, may write to the output pointers, and returns
// the value of the call. A function without a handler is answered by `answer`, or else returns `result` and
// writes nothing.
struct Script {
    CK_RV result = CKR_OK;
    std::function<CK_RV(std::span<const Argument>)> answer;
    std::function<void()> onCall; // before each call is noted

    // Calls are not noted: they use no memory and little of the stack.
    bool isQuiet = false;

    // How much is read of an input, because callers may declare more than there is.
    CK_ULONG labelLength = 32;
    CK_ULONG byteLimit = std::numeric_limits<CK_ULONG>::max();
    CK_ULONG attributeLimit = std::numeric_limits<CK_ULONG>::max();

#define HANDLER(name) std::function<decltype(::name)> name;
    STANDARD_FUNCTIONS(HANDLER)
    VENDOR_FUNCTIONS(HANDLER)
#undef HANDLER
};

// May be changed only while no call runs.
Script& script();

std::vector<std::string> calls();

// Returns the calls and forgets them; the script stays.
std::vector<std::string> takeCalls();

// The name of the last call, noted or not.
const char* lastCalled();

// Forgets the calls and the script.
void reset();

// The text of an untouched reference: "@f6c01234", or "null".
std::string address(const void* reference);

} // namespace recorder
