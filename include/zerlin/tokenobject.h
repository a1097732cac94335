/**
 * @file
 * Objects on a token as a store of named values: made, found by class and label, renamed, read and written.
 * Valid C99 and C++.
 *
 * The session must be open, with the login that the object needs. Labels are NUL-terminated UTF-8, never
 * null; the NUL does not become part of the object. Unless said otherwise each routine answers CKR_OK or what
 * the Cryptoki function that failed has answered.
 */
#ifndef ZERLIN_TOKENOBJECT_H
#define ZERLIN_TOKENOBJECT_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Makes a private object on the token (CKA_TOKEN and CKA_PRIVATE true), without a value yet.
 *
 * @param objectClass  its CKA_CLASS: CKO_DATA, usually
 * @param label        its CKA_LABEL
 * @param phObject     [out] the new object's handle
 */
ZERLIN_EXPORT CK_RV CT_CreateObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/** CT_CreateObject of a public object (CKA_PRIVATE false), which can be read without login. */
ZERLIN_EXPORT CK_RV CT_CreatePublicObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/**
 * Finds an object by class and label: of several, the first that the token tells. It uses the session's one
 * search; when C_FindObjects fails, that search is left open.
 *
 * @param phObject  [out] the handle
 * @return CKR_GENERAL_ERROR when there is no such object
 */
ZERLIN_EXPORT CK_RV CT_OpenObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/** Finds an object as CT_OpenObject does and gives it another label. */
ZERLIN_EXPORT CK_RV CT_RenameObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* oldLabel, const char* newLabel);

/**
 * Reads an object's CKA_VALUE.
 *
 * @param buffer     [out] the value; unused when bufferLen is 0
 * @param bufferLen  bytes in buffer; 0 asks for the length only
 * @param lengthOut  [out] the value's length, also when the buffer is too short; 0 when the token fails to
 * tell it; may be null
 * @return CKR_ATTRIBUTE_TYPE_INVALID when the buffer is too short
 */
ZERLIN_EXPORT CK_RV CT_ReadObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, void* buffer,
    CK_ULONG bufferLen, CK_ULONG* lengthOut);

/**
 * Writes an object's CKA_VALUE.
 *
 * @param value      valueLen bytes
 * @param lengthOut  [out] valueLen, whatever the result; may be null
 */
ZERLIN_EXPORT CK_RV CT_WriteObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, const void* value,
    CK_ULONG valueLen, CK_ULONG* lengthOut);

#ifdef __cplusplus
}
#endif

#endif
