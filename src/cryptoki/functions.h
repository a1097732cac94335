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

// Visits the name and the member of every standard function but C_GetFunctionList.
template <typename Visit>
constexpr void forEachStandardFunction(Visit visit)
{
    visit("C_Initialize", &CK_FUNCTION_LIST::C_Initialize);
    visit("C_Finalize", &CK_FUNCTION_LIST::C_Finalize);
    visit("C_GetInfo", &CK_FUNCTION_LIST::C_GetInfo);
    visit("C_GetSlotList", &CK_FUNCTION_LIST::C_GetSlotList);
    visit("C_GetSlotInfo", &CK_FUNCTION_LIST::C_GetSlotInfo);
    visit("C_GetTokenInfo", &CK_FUNCTION_LIST::C_GetTokenInfo);
    visit("C_GetMechanismList", &CK_FUNCTION_LIST::C_GetMechanismList);
    visit("C_GetMechanismInfo", &CK_FUNCTION_LIST::C_GetMechanismInfo);
    visit("C_InitToken", &CK_FUNCTION_LIST::C_InitToken);
    visit("C_InitPIN", &CK_FUNCTION_LIST::C_InitPIN);
    visit("C_SetPIN", &CK_FUNCTION_LIST::C_SetPIN);
    visit("C_OpenSession", &CK_FUNCTION_LIST::C_OpenSession);
    visit("C_CloseSession", &CK_FUNCTION_LIST::C_CloseSession);
    visit("C_CloseAllSessions", &CK_FUNCTION_LIST::C_CloseAllSessions);
    visit("C_GetSessionInfo", &CK_FUNCTION_LIST::C_GetSessionInfo);
    visit("C_GetOperationState", &CK_FUNCTION_LIST::C_GetOperationState);
    visit("C_SetOperationState", &CK_FUNCTION_LIST::C_SetOperationState);
    visit("C_Login", &CK_FUNCTION_LIST::C_Login);
    visit("C_Logout", &CK_FUNCTION_LIST::C_Logout);
    visit("C_CreateObject", &CK_FUNCTION_LIST::C_CreateObject);
    visit("C_CopyObject", &CK_FUNCTION_LIST::C_CopyObject);
    visit("C_DestroyObject", &CK_FUNCTION_LIST::C_DestroyObject);
    visit("C_GetObjectSize", &CK_FUNCTION_LIST::C_GetObjectSize);
    visit("C_GetAttributeValue", &CK_FUNCTION_LIST::C_GetAttributeValue);
    visit("C_SetAttributeValue", &CK_FUNCTION_LIST::C_SetAttributeValue);
    visit("C_FindObjectsInit", &CK_FUNCTION_LIST::C_FindObjectsInit);
    visit("C_FindObjects", &CK_FUNCTION_LIST::C_FindObjects);
    visit("C_FindObjectsFinal", &CK_FUNCTION_LIST::C_FindObjectsFinal);
    visit("C_EncryptInit", &CK_FUNCTION_LIST::C_EncryptInit);
    visit("C_Encrypt", &CK_FUNCTION_LIST::C_Encrypt);
    visit("C_EncryptUpdate", &CK_FUNCTION_LIST::C_EncryptUpdate);
    visit("C_EncryptFinal", &CK_FUNCTION_LIST::C_EncryptFinal);
    visit("C_DecryptInit", &CK_FUNCTION_LIST::C_DecryptInit);
    visit("C_Decrypt", &CK_FUNCTION_LIST::C_Decrypt);
    visit("C_DecryptUpdate", &CK_FUNCTION_LIST::C_DecryptUpdate);
    visit("C_DecryptFinal", &CK_FUNCTION_LIST::C_DecryptFinal);
    visit("C_DigestInit", &CK_FUNCTION_LIST::C_DigestInit);
    visit("C_Digest", &CK_FUNCTION_LIST::C_Digest);
    visit("C_DigestUpdate", &CK_FUNCTION_LIST::C_DigestUpdate);
    visit("C_DigestKey", &CK_FUNCTION_LIST::C_DigestKey);
    visit("C_DigestFinal", &CK_FUNCTION_LIST::C_DigestFinal);
    visit("C_SignInit", &CK_FUNCTION_LIST::C_SignInit);
    visit("C_Sign", &CK_FUNCTION_LIST::C_Sign);
    visit("C_SignUpdate", &CK_FUNCTION_LIST::C_SignUpdate);
    visit("C_SignFinal", &CK_FUNCTION_LIST::C_SignFinal);
    visit("C_SignRecoverInit", &CK_FUNCTION_LIST::C_SignRecoverInit);
    visit("C_SignRecover", &CK_FUNCTION_LIST::C_SignRecover);
    visit("C_VerifyInit", &CK_FUNCTION_LIST::C_VerifyInit);
    visit("C_Verify", &CK_FUNCTION_LIST::C_Verify);
    visit("C_VerifyUpdate", &CK_FUNCTION_LIST::C_VerifyUpdate);
    visit("C_VerifyFinal", &CK_FUNCTION_LIST::C_VerifyFinal);
    visit("C_VerifyRecoverInit", &CK_FUNCTION_LIST::C_VerifyRecoverInit);
    visit("C_VerifyRecover", &CK_FUNCTION_LIST::C_VerifyRecover);
    visit("C_DigestEncryptUpdate", &CK_FUNCTION_LIST::C_DigestEncryptUpdate);
    visit("C_DecryptDigestUpdate", &CK_FUNCTION_LIST::C_DecryptDigestUpdate);
    visit("C_SignEncryptUpdate", &CK_FUNCTION_LIST::C_SignEncryptUpdate);
    visit("C_DecryptVerifyUpdate", &CK_FUNCTION_LIST::C_DecryptVerifyUpdate);
    visit("C_GenerateKey", &CK_FUNCTION_LIST::C_GenerateKey);
    visit("C_GenerateKeyPair", &CK_FUNCTION_LIST::C_GenerateKeyPair);
    visit("C_WrapKey", &CK_FUNCTION_LIST::C_WrapKey);
    visit("C_UnwrapKey", &CK_FUNCTION_LIST::C_UnwrapKey);
    visit("C_DeriveKey", &CK_FUNCTION_LIST::C_DeriveKey);
    visit("C_SeedRandom", &CK_FUNCTION_LIST::C_SeedRandom);
    visit("C_GenerateRandom", &CK_FUNCTION_LIST::C_GenerateRandom);
    visit("C_GetFunctionStatus", &CK_FUNCTION_LIST::C_GetFunctionStatus);
    visit("C_CancelFunction", &CK_FUNCTION_LIST::C_CancelFunction);
    visit("C_WaitForSlotEvent", &CK_FUNCTION_LIST::C_WaitForSlotEvent);
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
