// A Cryptoki library that does nothing but write down each call and answer as the test has scripted.
//
// A call is one line, C_Login(5, 1, [31323334], 4), made while the call runs, so that it holds whatever
// becomes of the caller's memory:
// - numbers: decimal below 0x80000000, else hexadecimal: 5, 0xffffffff
// - input bytes: [31323334] or null, then the length; [3132..] where a limit cut them
// - templates: {{0, [03000000], 4}, {3, [6d79], 2}} or null, then the count; {{0, [03], 1}, ..} when cut
// - mechanisms: {4226, [00010203], 4} or null
// - arguments of C_Initialize: {set, set, null, null, 2, null} for mutex functions, flags, pReserved; or null
// - output buffers: out(16), or null(16) without a buffer; it stands for the pointer and the capacity
// - other outputs: out or null
// - references that are passed on untouched: recorder::address
#pragma once

#include "zerlin/cryptoki.h"

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace recorder {

// What to answer. A handler runs after its call was noted, may write to the output pointers, and gives the
// return value; a function without one answers `result` and writes nothing.
struct Script {
    CK_RV result = CKR_OK;

    // How much is read of what the caller declares: callers may declare more than there is.
    CK_ULONG labelLength = 32;
    CK_ULONG byteLimit = std::numeric_limits<CK_ULONG>::max();
    CK_ULONG attributeLimit = std::numeric_limits<CK_ULONG>::max();

    std::function<decltype(::C_Initialize)> C_Initialize;
    std::function<decltype(::C_Finalize)> C_Finalize;
    std::function<decltype(::C_GetInfo)> C_GetInfo;
    std::function<decltype(::C_GetSlotList)> C_GetSlotList;
    std::function<decltype(::C_GetSlotInfo)> C_GetSlotInfo;
    std::function<decltype(::C_GetTokenInfo)> C_GetTokenInfo;
    std::function<decltype(::C_GetMechanismList)> C_GetMechanismList;
    std::function<decltype(::C_GetMechanismInfo)> C_GetMechanismInfo;
    std::function<decltype(::C_InitToken)> C_InitToken;
    std::function<decltype(::C_InitPIN)> C_InitPIN;
    std::function<decltype(::C_SetPIN)> C_SetPIN;
    std::function<decltype(::C_OpenSession)> C_OpenSession;
    std::function<decltype(::C_CloseSession)> C_CloseSession;
    std::function<decltype(::C_CloseAllSessions)> C_CloseAllSessions;
    std::function<decltype(::C_GetSessionInfo)> C_GetSessionInfo;
    std::function<decltype(::C_GetOperationState)> C_GetOperationState;
    std::function<decltype(::C_SetOperationState)> C_SetOperationState;
    std::function<decltype(::C_Login)> C_Login;
    std::function<decltype(::C_Logout)> C_Logout;
    std::function<decltype(::C_CreateObject)> C_CreateObject;
    std::function<decltype(::C_CopyObject)> C_CopyObject;
    std::function<decltype(::C_DestroyObject)> C_DestroyObject;
    std::function<decltype(::C_GetObjectSize)> C_GetObjectSize;
    std::function<decltype(::C_GetAttributeValue)> C_GetAttributeValue;
    std::function<decltype(::C_SetAttributeValue)> C_SetAttributeValue;
    std::function<decltype(::C_FindObjectsInit)> C_FindObjectsInit;
    std::function<decltype(::C_FindObjects)> C_FindObjects;
    std::function<decltype(::C_FindObjectsFinal)> C_FindObjectsFinal;
    std::function<decltype(::C_EncryptInit)> C_EncryptInit;
    std::function<decltype(::C_Encrypt)> C_Encrypt;
    std::function<decltype(::C_EncryptUpdate)> C_EncryptUpdate;
    std::function<decltype(::C_EncryptFinal)> C_EncryptFinal;
    std::function<decltype(::C_DecryptInit)> C_DecryptInit;
    std::function<decltype(::C_Decrypt)> C_Decrypt;
    std::function<decltype(::C_DecryptUpdate)> C_DecryptUpdate;
    std::function<decltype(::C_DecryptFinal)> C_DecryptFinal;
    std::function<decltype(::C_DigestInit)> C_DigestInit;
    std::function<decltype(::C_Digest)> C_Digest;
    std::function<decltype(::C_DigestUpdate)> C_DigestUpdate;
    std::function<decltype(::C_DigestKey)> C_DigestKey;
    std::function<decltype(::C_DigestFinal)> C_DigestFinal;
    std::function<decltype(::C_SignInit)> C_SignInit;
    std::function<decltype(::C_Sign)> C_Sign;
    std::function<decltype(::C_SignUpdate)> C_SignUpdate;
    std::function<decltype(::C_SignFinal)> C_SignFinal;
    std::function<decltype(::C_SignRecoverInit)> C_SignRecoverInit;
    std::function<decltype(::C_SignRecover)> C_SignRecover;
    std::function<decltype(::C_VerifyInit)> C_VerifyInit;
    std::function<decltype(::C_Verify)> C_Verify;
    std::function<decltype(::C_VerifyUpdate)> C_VerifyUpdate;
    std::function<decltype(::C_VerifyFinal)> C_VerifyFinal;
    std::function<decltype(::C_VerifyRecoverInit)> C_VerifyRecoverInit;
    std::function<decltype(::C_VerifyRecover)> C_VerifyRecover;
    std::function<decltype(::C_DigestEncryptUpdate)> C_DigestEncryptUpdate;
    std::function<decltype(::C_DecryptDigestUpdate)> C_DecryptDigestUpdate;
    std::function<decltype(::C_SignEncryptUpdate)> C_SignEncryptUpdate;
    std::function<decltype(::C_DecryptVerifyUpdate)> C_DecryptVerifyUpdate;
    std::function<decltype(::C_GenerateKey)> C_GenerateKey;
    std::function<decltype(::C_GenerateKeyPair)> C_GenerateKeyPair;
    std::function<decltype(::C_WrapKey)> C_WrapKey;
    std::function<decltype(::C_UnwrapKey)> C_UnwrapKey;
    std::function<decltype(::C_DeriveKey)> C_DeriveKey;
    std::function<decltype(::C_SeedRandom)> C_SeedRandom;
    std::function<decltype(::C_GenerateRandom)> C_GenerateRandom;
    std::function<decltype(::C_GetFunctionStatus)> C_GetFunctionStatus;
    std::function<decltype(::C_CancelFunction)> C_CancelFunction;
    std::function<decltype(::C_WaitForSlotEvent)> C_WaitForSlotEvent;
    std::function<decltype(::CT_CopyObject)> CT_CopyObject;
    std::function<decltype(::CT_InitToken)> CT_InitToken;
    std::function<decltype(::CT_ResetToken)> CT_ResetToken;
};

// To be changed only while no call runs.
Script& script();

std::vector<std::string> calls();

// Forgets the calls and the script.
void reset();

// The text of an untouched reference: "@f6c01234", or "null".
std::string address(const void* reference);

} // namespace recorder
