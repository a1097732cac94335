// The standard functions: each passes its arguments on unchanged.
// s is the session, m the mechanism, t and n a template and its number of attributes.
#include "cryptoki/functions.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.1");

using zerlin::functions;

// clang-format off

// General
CK_RV C_Initialize(CK_VOID_PTR args) { return functions().C_Initialize(args); }
CK_RV C_Finalize(CK_VOID_PTR reserved) { return functions().C_Finalize(reserved); }
CK_RV C_GetInfo(CK_INFO_PTR info) { return functions().C_GetInfo(info); }

// Slots and tokens
CK_RV C_GetSlotList(CK_BBOOL present, CK_SLOT_ID_PTR slots, CK_ULONG_PTR count)
    { return functions().C_GetSlotList(present, slots, count); }
CK_RV C_GetSlotInfo(CK_SLOT_ID slot, CK_SLOT_INFO_PTR info) { return functions().C_GetSlotInfo(slot, info); }
CK_RV C_GetTokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO_PTR info)
    { return functions().C_GetTokenInfo(slot, info); }
CK_RV C_GetMechanismList(CK_SLOT_ID slot, CK_MECHANISM_TYPE_PTR list, CK_ULONG_PTR count)
    { return functions().C_GetMechanismList(slot, list, count); }
CK_RV C_GetMechanismInfo(CK_SLOT_ID slot, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO_PTR info)
    { return functions().C_GetMechanismInfo(slot, type, info); }
CK_RV C_InitToken(CK_SLOT_ID slot, CK_UTF8CHAR_PTR pin, CK_ULONG pinLen, CK_UTF8CHAR_PTR label)
    { return functions().C_InitToken(slot, pin, pinLen, label); }
CK_RV C_InitPIN(CK_SESSION_HANDLE s, CK_UTF8CHAR_PTR pin, CK_ULONG pinLen)
    { return functions().C_InitPIN(s, pin, pinLen); }
CK_RV C_SetPIN(CK_SESSION_HANDLE s, CK_UTF8CHAR_PTR oldPin, CK_ULONG oldLen, CK_UTF8CHAR_PTR newPin,
    CK_ULONG newLen)
    { return functions().C_SetPIN(s, oldPin, oldLen, newPin, newLen); }

// Sessions
CK_RV C_OpenSession(CK_SLOT_ID slot, CK_FLAGS flags, CK_VOID_PTR data, CK_NOTIFY notify,
    CK_SESSION_HANDLE_PTR session)
    { return functions().C_OpenSession(slot, flags, data, notify, session); }
CK_RV C_CloseSession(CK_SESSION_HANDLE s) { return functions().C_CloseSession(s); }
CK_RV C_CloseAllSessions(CK_SLOT_ID slot) { return functions().C_CloseAllSessions(slot); }
CK_RV C_GetSessionInfo(CK_SESSION_HANDLE s, CK_SESSION_INFO_PTR info)
    { return functions().C_GetSessionInfo(s, info); }
CK_RV C_GetOperationState(CK_SESSION_HANDLE s, CK_BYTE_PTR state, CK_ULONG_PTR len)
    { return functions().C_GetOperationState(s, state, len); }
CK_RV C_SetOperationState(CK_SESSION_HANDLE s, CK_BYTE_PTR state, CK_ULONG len, CK_OBJECT_HANDLE cipher,
    CK_OBJECT_HANDLE mac)
    { return functions().C_SetOperationState(s, state, len, cipher, mac); }
CK_RV C_Login(CK_SESSION_HANDLE s, CK_USER_TYPE user, CK_UTF8CHAR_PTR pin, CK_ULONG pinLen)
    { return functions().C_Login(s, user, pin, pinLen); }
CK_RV C_Logout(CK_SESSION_HANDLE s) { return functions().C_Logout(s); }

// Objects
CK_RV C_CreateObject(CK_SESSION_HANDLE s, CK_ATTRIBUTE_PTR t, CK_ULONG n, CK_OBJECT_HANDLE_PTR object)
    { return functions().C_CreateObject(s, t, n, object); }
CK_RV C_CopyObject(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_PTR t, CK_ULONG n,
    CK_OBJECT_HANDLE_PTR copy)
    { return functions().C_CopyObject(s, object, t, n, copy); }
CK_RV C_DestroyObject(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE object)
    { return functions().C_DestroyObject(s, object); }
CK_RV C_GetObjectSize(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE object, CK_ULONG_PTR size)
    { return functions().C_GetObjectSize(s, object, size); }
CK_RV C_GetAttributeValue(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_PTR t, CK_ULONG n)
    { return functions().C_GetAttributeValue(s, object, t, n); }
CK_RV C_SetAttributeValue(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_PTR t, CK_ULONG n)
    { return functions().C_SetAttributeValue(s, object, t, n); }
CK_RV C_FindObjectsInit(CK_SESSION_HANDLE s, CK_ATTRIBUTE_PTR t, CK_ULONG n)
    { return functions().C_FindObjectsInit(s, t, n); }
CK_RV C_FindObjects(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE_PTR found, CK_ULONG max, CK_ULONG_PTR count)
    { return functions().C_FindObjects(s, found, max, count); }
CK_RV C_FindObjectsFinal(CK_SESSION_HANDLE s) { return functions().C_FindObjectsFinal(s); }

// Encryption
CK_RV C_EncryptInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_EncryptInit(s, m, key); }
CK_RV C_Encrypt(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_Encrypt(s, in, inLen, out, outLen); }
CK_RV C_EncryptUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_EncryptUpdate(s, in, inLen, out, outLen); }
CK_RV C_EncryptFinal(CK_SESSION_HANDLE s, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_EncryptFinal(s, out, outLen); }

// Decryption
CK_RV C_DecryptInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_DecryptInit(s, m, key); }
CK_RV C_Decrypt(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_Decrypt(s, in, inLen, out, outLen); }
CK_RV C_DecryptUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_DecryptUpdate(s, in, inLen, out, outLen); }
CK_RV C_DecryptFinal(CK_SESSION_HANDLE s, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_DecryptFinal(s, out, outLen); }

// Digests
CK_RV C_DigestInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m) { return functions().C_DigestInit(s, m); }
CK_RV C_Digest(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_Digest(s, in, inLen, out, outLen); }
CK_RV C_DigestUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen)
    { return functions().C_DigestUpdate(s, in, inLen); }
CK_RV C_DigestKey(CK_SESSION_HANDLE s, CK_OBJECT_HANDLE key) { return functions().C_DigestKey(s, key); }
CK_RV C_DigestFinal(CK_SESSION_HANDLE s, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_DigestFinal(s, out, outLen); }

// Signatures and MACs
CK_RV C_SignInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_SignInit(s, m, key); }
CK_RV C_Sign(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_Sign(s, in, inLen, out, outLen); }
CK_RV C_SignUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen)
    { return functions().C_SignUpdate(s, in, inLen); }
CK_RV C_SignFinal(CK_SESSION_HANDLE s, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_SignFinal(s, out, outLen); }
CK_RV C_SignRecoverInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_SignRecoverInit(s, m, key); }
CK_RV C_SignRecover(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out, CK_ULONG_PTR outLen)
    { return functions().C_SignRecover(s, in, inLen, out, outLen); }

// Verification
CK_RV C_VerifyInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_VerifyInit(s, m, key); }
CK_RV C_Verify(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR sig, CK_ULONG sigLen)
    { return functions().C_Verify(s, in, inLen, sig, sigLen); }
CK_RV C_VerifyUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen)
    { return functions().C_VerifyUpdate(s, in, inLen); }
CK_RV C_VerifyFinal(CK_SESSION_HANDLE s, CK_BYTE_PTR sig, CK_ULONG sigLen)
    { return functions().C_VerifyFinal(s, sig, sigLen); }
CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE key)
    { return functions().C_VerifyRecoverInit(s, m, key); }
CK_RV C_VerifyRecover(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_VerifyRecover(s, in, inLen, out, outLen); }

// Two operations at once
CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_DigestEncryptUpdate(s, in, inLen, out, outLen); }
CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_DecryptDigestUpdate(s, in, inLen, out, outLen); }
CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_SignEncryptUpdate(s, in, inLen, out, outLen); }
CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE s, CK_BYTE_PTR in, CK_ULONG inLen, CK_BYTE_PTR out,
    CK_ULONG_PTR outLen)
    { return functions().C_DecryptVerifyUpdate(s, in, inLen, out, outLen); }

// Keys
CK_RV C_GenerateKey(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_ATTRIBUTE_PTR t, CK_ULONG n,
    CK_OBJECT_HANDLE_PTR key)
    { return functions().C_GenerateKey(s, m, t, n, key); }
CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_ATTRIBUTE_PTR pubT, CK_ULONG pubN,
    CK_ATTRIBUTE_PTR privT, CK_ULONG privN, CK_OBJECT_HANDLE_PTR pub, CK_OBJECT_HANDLE_PTR priv)
    { return functions().C_GenerateKeyPair(s, m, pubT, pubN, privT, privN, pub, priv); }
CK_RV C_WrapKey(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE wrapping, CK_OBJECT_HANDLE key,
    CK_BYTE_PTR wrapped, CK_ULONG_PTR len)
    { return functions().C_WrapKey(s, m, wrapping, key, wrapped, len); }
CK_RV C_UnwrapKey(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE wrapping, CK_BYTE_PTR wrapped,
    CK_ULONG len, CK_ATTRIBUTE_PTR t, CK_ULONG n, CK_OBJECT_HANDLE_PTR key)
    { return functions().C_UnwrapKey(s, m, wrapping, wrapped, len, t, n, key); }
CK_RV C_DeriveKey(CK_SESSION_HANDLE s, CK_MECHANISM_PTR m, CK_OBJECT_HANDLE base, CK_ATTRIBUTE_PTR t,
    CK_ULONG n, CK_OBJECT_HANDLE_PTR key)
    { return functions().C_DeriveKey(s, m, base, t, n, key); }

// Random numbers
CK_RV C_SeedRandom(CK_SESSION_HANDLE s, CK_BYTE_PTR seed, CK_ULONG len)
    { return functions().C_SeedRandom(s, seed, len); }
CK_RV C_GenerateRandom(CK_SESSION_HANDLE s, CK_BYTE_PTR random, CK_ULONG len)
    { return functions().C_GenerateRandom(s, random, len); }

// Parallel functions, and slot events
CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE s) { return functions().C_GetFunctionStatus(s); }
CK_RV C_CancelFunction(CK_SESSION_HANDLE s) { return functions().C_CancelFunction(s); }
CK_RV C_WaitForSlotEvent(CK_FLAGS flags, CK_SLOT_ID_PTR slot, CK_VOID_PTR reserved)
    { return functions().C_WaitForSlotEvent(flags, slot, reserved); }

// clang-format on
