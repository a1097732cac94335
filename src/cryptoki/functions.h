// The functions of another Cryptoki library, to which forward.cpp passes on every call of a standard
// function: libzerlin.so calls libcryptoki.so in this way, and the embedded libcryptoki.so its PKCS#11
// module. Each finds them in its own way, once.
#pragma once

#include <atomic>

#include "zerlin/cryptoki.h"

namespace zerlin {

struct Functions {
    CK_FUNCTION_LIST standard; // all can be called but C_GetFunctionList, which nobody calls
    decltype(&CT_CopyObject) copyObject;
    decltype(&CT_InitToken) initToken;
    decltype(&CT_ResetToken) resetToken;
};

// Null until the functions are found.
extern std::atomic<const Functions*> foundFunctions;

// Finds them, for the first caller. Where they cannot be found it prints the reason on standard error, and
// all functions return CKR_GENERAL_ERROR.
const Functions& findFunctions();

inline const Functions& allFunctions()
{
    const Functions* const found = foundFunctions.load(std::memory_order_acquire);
    return found != nullptr ? *found : findFunctions();
}

inline const CK_FUNCTION_LIST& functions()
{
    return allFunctions().standard;
}

template <typename... Args>
void setFunction(CK_RV (*&function)(Args...), void* symbol)
{
    function = reinterpret_cast<CK_RV (*)(Args...)>(symbol);
}

template <typename... Args>
CK_RV generalError(Args...)
{
    return CKR_GENERAL_ERROR;
}

template <typename... Args>
constexpr void setFailing(CK_RV (*&function)(Args...))
{
    function = generalError<Args...>;
}

// Every standard function but C_GetFunctionList.
// clang-format off
#define ZERLIN_STANDARD_FUNCTIONS(X)                                                                        \
    X(C_Initialize) X(C_Finalize) X(C_GetInfo) X(C_GetSlotList) X(C_GetSlotInfo) X(C_GetTokenInfo)          \
    X(C_GetMechanismList) X(C_GetMechanismInfo) X(C_InitToken) X(C_InitPIN) X(C_SetPIN) X(C_OpenSession)    \
    X(C_CloseSession) X(C_CloseAllSessions) X(C_GetSessionInfo) X(C_GetOperationState)                      \
    X(C_SetOperationState) X(C_Login) X(C_Logout) X(C_CreateObject) X(C_CopyObject) X(C_DestroyObject)      \
    X(C_GetObjectSize) X(C_GetAttributeValue) X(C_SetAttributeValue) X(C_FindObjectsInit)                   \
    X(C_FindObjects) X(C_FindObjectsFinal) X(C_EncryptInit) X(C_Encrypt) X(C_EncryptUpdate)                 \
    X(C_EncryptFinal) X(C_DecryptInit) X(C_Decrypt) X(C_DecryptUpdate) X(C_DecryptFinal) X(C_DigestInit)    \
    X(C_Digest) X(C_DigestUpdate) X(C_DigestKey) X(C_DigestFinal) X(C_SignInit) X(C_Sign)                   \
    X(C_SignUpdate) X(C_SignFinal) X(C_SignRecoverInit) X(C_SignRecover) X(C_VerifyInit) X(C_Verify)        \
    X(C_VerifyUpdate) X(C_VerifyFinal) X(C_VerifyRecoverInit) X(C_VerifyRecover)                            \
    X(C_DigestEncryptUpdate) X(C_DecryptDigestUpdate) X(C_SignEncryptUpdate) X(C_DecryptVerifyUpdate)       \
    X(C_GenerateKey) X(C_GenerateKeyPair) X(C_WrapKey) X(C_UnwrapKey) X(C_DeriveKey) X(C_SeedRandom)        \
    X(C_GenerateRandom) X(C_GetFunctionStatus) X(C_CancelFunction) X(C_WaitForSlotEvent)
// clang-format on

// Visits their names and members.
template <typename Visit>
constexpr void forEachStandardFunction(Visit visit)
{
#define ZERLIN_VISIT(name) visit(#name, &CK_FUNCTION_LIST::name);
    ZERLIN_STANDARD_FUNCTIONS(ZERLIN_VISIT)
#undef ZERLIN_VISIT
}

// Visits the vendor's functions.
template <typename Visit>
constexpr void forEachVendorFunction(Visit visit)
{
    visit("CT_CopyObject", &Functions::copyObject);
    visit("CT_InitToken", &Functions::initToken);
    visit("CT_ResetToken", &Functions::resetToken);
}

// Functions that all return CKR_GENERAL_ERROR.
constexpr Functions failingFunctions()
{
    Functions failing{};
    forEachStandardFunction([&](const char*, auto member) { setFailing(failing.standard.*member); });
    forEachVendorFunction([&](const char*, auto member) { setFailing(failing.*member); });
    return failing;
}

} // namespace zerlin
