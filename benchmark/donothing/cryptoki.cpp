// A Cryptoki library that does nothing: every function returns CKR_OK at once, with fixed results where the
// caller needs one. So a call costs what the binding costs.
#include <algorithm>
#include <cstring>

#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

namespace {

constexpr CK_ULONG MECHANISMS = 40;
constexpr CK_ULONG FOUND = 10;
constexpr CK_ULONG DIGEST = 32;
constexpr CK_ULONG SIGNATURE = 256;
constexpr CK_ULONG HANDLE = 4711;

CK_RV report(CK_ULONG value, CK_ULONG_PTR target)
{
    *target = value;
    return CKR_OK;
}

// Reports a result as long as the input, and writes none.
CK_RV sameLength(CK_ULONG inputLen, CK_ULONG_PTR outputLen)
{
    return report(inputLen, outputLen);
}

template <typename Value>
void answer(CK_ATTRIBUTE& attribute, const Value& value)
{
    if (attribute.pValue != nullptr) {
        std::memcpy(attribute.pValue, &value, std::min<std::size_t>(sizeof value, attribute.ulValueLen));
    }
    attribute.ulValueLen = sizeof value;
}

void answer(CK_ATTRIBUTE& attribute)
{
    constexpr CK_ULONG objectClass = CKO_SECRET_KEY;
    constexpr CK_ULONG keyType = CKK_AES;
    constexpr CK_BBOOL token = CK_TRUE;
    constexpr CK_BYTE label[16] = {'b', 'e', 'n', 'c', 'h', 'm', 'a', 'r', 'k', ' ', 'k', 'e', 'y'};
    constexpr CK_BYTE id[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    switch (attribute.type) {
    case CKA_CLASS:
        return answer(attribute, objectClass);
    case CKA_KEY_TYPE:
        return answer(attribute, keyType);
    case CKA_TOKEN:
        return answer(attribute, token);
    case CKA_LABEL:
        return answer(attribute, label);
    case CKA_ID:
        return answer(attribute, id);
    default:
        attribute.ulValueLen = 0;
    }
}

template <std::size_t Size>
void pad(CK_UTF8CHAR (&field)[Size], const char* text)
{
    std::memset(field, ' ', Size);
    std::memcpy(field, text, std::strlen(text));
}

} // namespace

// clang-format off

CK_RV C_Initialize(CK_VOID_PTR) { return CKR_OK; }
CK_RV C_Finalize(CK_VOID_PTR) { return CKR_OK; }
CK_RV C_GetInfo(CK_INFO_PTR info) { *info = {}; info->cryptokiVersion = {2, 20}; return CKR_OK; }

CK_RV C_GetSlotList(CK_BBOOL, CK_SLOT_ID_PTR slots, CK_ULONG_PTR count)
{
    if (slots != nullptr) slots[0] = 0;
    return report(1, count);
}

CK_RV C_GetSlotInfo(CK_SLOT_ID, CK_SLOT_INFO_PTR info) { *info = {}; return CKR_OK; }

CK_RV C_GetTokenInfo(CK_SLOT_ID, CK_TOKEN_INFO_PTR info)
{
    *info = {};
    pad(info->label, "Benchmark");
    pad(info->manufacturerID, "Zerlin");
    pad(info->model, "Does nothing");
    pad(info->serialNumber, "1");
    info->flags = CKF_TOKEN_INITIALIZED;
    return CKR_OK;
}

CK_RV C_GetMechanismList(CK_SLOT_ID, CK_MECHANISM_TYPE_PTR list, CK_ULONG_PTR count)
{
    for (CK_ULONG i = 0; list != nullptr && i < MECHANISMS; ++i) list[i] = CKM_AES_KEY_GEN + i;
    return report(MECHANISMS, count);
}

CK_RV C_GetMechanismInfo(CK_SLOT_ID, CK_MECHANISM_TYPE, CK_MECHANISM_INFO_PTR info)
    { *info = {}; return CKR_OK; }
CK_RV C_InitToken(CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR) { return CKR_OK; }
CK_RV C_InitPIN(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_SetPIN(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG) { return CKR_OK; }

CK_RV C_OpenSession(CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR session)
    { return report(HANDLE, session); }
CK_RV C_CloseSession(CK_SESSION_HANDLE) { return CKR_OK; }
CK_RV C_CloseAllSessions(CK_SLOT_ID) { return CKR_OK; }
CK_RV C_GetSessionInfo(CK_SESSION_HANDLE, CK_SESSION_INFO_PTR info)
    { *info = {0, CKS_RW_USER_FUNCTIONS, CKF_SERIAL_SESSION | CKF_RW_SESSION, 0}; return CKR_OK; }
CK_RV C_GetOperationState(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR len) { return report(16, len); }
CK_RV C_SetOperationState(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_OBJECT_HANDLE, CK_OBJECT_HANDLE)
    { return CKR_OK; }
CK_RV C_Login(CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_Logout(CK_SESSION_HANDLE) { return CKR_OK; }

CK_RV C_CreateObject(CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR made)
    { return report(HANDLE, made); }
CK_RV C_CopyObject(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR copy)
    { return report(HANDLE, copy); }
CK_RV C_DestroyObject(CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_GetObjectSize(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG_PTR size) { return report(64, size); }

CK_RV C_GetAttributeValue(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR attributes, CK_ULONG count)
{
    for (CK_ULONG i = 0; i < count; ++i) answer(attributes[i]);
    return CKR_OK;
}

CK_RV C_SetAttributeValue(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_FindObjectsInit(CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG) { return CKR_OK; }

// Every call finds the same number, so that threads share no state.
CK_RV C_FindObjects(CK_SESSION_HANDLE, CK_OBJECT_HANDLE_PTR found, CK_ULONG max, CK_ULONG_PTR count)
{
    const CK_ULONG number = std::min(max, FOUND);
    for (CK_ULONG i = 0; i < number; ++i) found[i] = HANDLE + i;
    return report(number, count);
}

CK_RV C_FindObjectsFinal(CK_SESSION_HANDLE) { return CKR_OK; }

CK_RV C_EncryptInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_Encrypt(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_EncryptUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_EncryptFinal(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR out) { return report(0, out); }
CK_RV C_DecryptInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_Decrypt(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_DecryptUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_DecryptFinal(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR out) { return report(0, out); }

CK_RV C_DigestInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR) { return CKR_OK; }
CK_RV C_Digest(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return report(DIGEST, out); }
CK_RV C_DigestUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_DigestKey(CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_DigestFinal(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR out) { return report(DIGEST, out); }

CK_RV C_SignInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_Sign(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return report(SIGNATURE, out); }
CK_RV C_SignUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_SignFinal(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR out) { return report(SIGNATURE, out); }
CK_RV C_SignRecoverInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_SignRecover(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return report(SIGNATURE, out); }
CK_RV C_VerifyInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_Verify(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_VerifyUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_VerifyFinal(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV C_VerifyRecover(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return report(DIGEST, out); }

CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }
CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG len, CK_BYTE_PTR, CK_ULONG_PTR out)
    { return sameLength(len, out); }

CK_RV C_GenerateKey(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR key)
    { return report(HANDLE, key); }
CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG, CK_ATTRIBUTE_PTR,
    CK_ULONG, CK_OBJECT_HANDLE_PTR publicKey, CK_OBJECT_HANDLE_PTR privateKey)
    { *publicKey = HANDLE; return report(HANDLE + 1, privateKey); }
CK_RV C_WrapKey(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_OBJECT_HANDLE, CK_BYTE_PTR,
    CK_ULONG_PTR out)
    { return report(DIGEST, out); }
CK_RV C_UnwrapKey(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_BYTE_PTR, CK_ULONG,
    CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR key)
    { return report(HANDLE, key); }
CK_RV C_DeriveKey(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
    CK_OBJECT_HANDLE_PTR key)
    { return report(HANDLE, key); }

CK_RV C_SeedRandom(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_GenerateRandom(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG) { return CKR_OK; }
CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE) { return CKR_OK; }
CK_RV C_CancelFunction(CK_SESSION_HANDLE) { return CKR_OK; }
CK_RV C_WaitForSlotEvent(CK_FLAGS, CK_SLOT_ID_PTR slot, CK_VOID_PTR) { return report(0, slot); }

CK_RV CT_CopyObject(CK_SESSION_HANDLE, CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
    CK_OBJECT_HANDLE_PTR copy)
    { return report(HANDLE, copy); }
CK_RV CT_InitToken(CK_SESSION_HANDLE, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR) { return CKR_OK; }
CK_RV CT_ResetToken(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR) { return CKR_OK; }

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR list)
{
    static CK_FUNCTION_LIST functions = {{2, 20}, C_Initialize, C_Finalize, C_GetInfo, C_GetFunctionList,
        C_GetSlotList, C_GetSlotInfo, C_GetTokenInfo, C_GetMechanismList, C_GetMechanismInfo, C_InitToken,
        C_InitPIN, C_SetPIN, C_OpenSession, C_CloseSession, C_CloseAllSessions, C_GetSessionInfo,
        C_GetOperationState, C_SetOperationState, C_Login, C_Logout, C_CreateObject, C_CopyObject,
        C_DestroyObject, C_GetObjectSize, C_GetAttributeValue, C_SetAttributeValue, C_FindObjectsInit,
        C_FindObjects, C_FindObjectsFinal, C_EncryptInit, C_Encrypt, C_EncryptUpdate, C_EncryptFinal,
        C_DecryptInit, C_Decrypt, C_DecryptUpdate, C_DecryptFinal, C_DigestInit, C_Digest, C_DigestUpdate,
        C_DigestKey, C_DigestFinal, C_SignInit, C_Sign, C_SignUpdate, C_SignFinal, C_SignRecoverInit,
        C_SignRecover, C_VerifyInit, C_Verify, C_VerifyUpdate, C_VerifyFinal, C_VerifyRecoverInit,
        C_VerifyRecover, C_DigestEncryptUpdate, C_DecryptDigestUpdate, C_SignEncryptUpdate,
        C_DecryptVerifyUpdate, C_GenerateKey, C_GenerateKeyPair, C_WrapKey, C_UnwrapKey, C_DeriveKey,
        C_SeedRandom, C_GenerateRandom, C_GetFunctionStatus, C_CancelFunction, C_WaitForSlotEvent};
    *list = &functions;
    return CKR_OK;
}
