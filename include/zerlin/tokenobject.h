/**
 * @file
 * Objects on a token as a store of named values: create, find by class and label, rename, read and write.
 * Valid C99 and C++.
 *
 * The session must be open, with the login that the object needs. Labels are UTF-8 with a terminating NUL and
 * must not be null; the NUL does not become part of the object. A returned handle belongs to the token:
 * nothing is to be freed.
 *
 * Each function returns CKR_OK, or else the return value of the Cryptoki function that failed. Return values
 * beyond these are named below.
 */
#ifndef ZERLIN_TOKENOBJECT_H
#define ZERLIN_TOKENOBJECT_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Creates a private object on the token (CKA_TOKEN and CKA_PRIVATE true), without a value, by C_CreateObject
 * (PKCS#11 section 11.7).
 *
 * @param session      a session that may write
 * @param objectClass  its CKA_CLASS, usually CKO_DATA
 * @param label        its CKA_LABEL
 * @param phObject     [out] the new object's handle; must not be null
 */
ZERLIN_EXPORT CK_RV CT_CreateObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/**
 * Creates a public object (CKA_PRIVATE false), which can be read without login. Arguments and return value
 * are those of CT_CreateObject.
 */
ZERLIN_EXPORT CK_RV CT_CreatePublicObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/**
 * Finds an object by class and label. If several match, it returns the first that the token reports.
 *
 * A session has only one search at a time (C_FindObjectsInit, PKCS#11 section 11.7), and this uses it. If
 * C_FindObjects fails, the search stays open: deliberate. End it with C_FindObjectsFinal.
 *
 * @param session      the session
 * @param objectClass  the object's CKA_CLASS
 * @param label        the object's CKA_LABEL
 * @param phObject     [out] the handle; must not be null
 * @return also CKR_GENERAL_ERROR, if there is no such object
 */
ZERLIN_EXPORT CK_RV CT_OpenObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* label, CK_OBJECT_HANDLE* phObject);

/**
 * Finds an object as CT_OpenObject does, and changes its label by C_SetAttributeValue.
 *
 * @param session      a session that may write
 * @param objectClass  the object's CKA_CLASS
 * @param oldLabel     the present label
 * @param newLabel     the new label
 * @return as CT_OpenObject, or what C_SetAttributeValue returned
 */
ZERLIN_EXPORT CK_RV CT_RenameObject(
    CK_SESSION_HANDLE session, CK_OBJECT_CLASS objectClass, const char* oldLabel, const char* newLabel);

/**
 * Reads an object's CKA_VALUE by C_GetAttributeValue (PKCS#11 section 11.7).
 *
 * @param session    the session
 * @param object     the object
 * @param buffer     [out] the value; may be null if bufferLen is 0
 * @param bufferLen  capacity of buffer in bytes; 0 asks for the length only
 * @param lengthOut  [out] the value's length in bytes, also if the buffer is too short; 0 if the token does
 *                   not report it; may be null
 * @return also CKR_ATTRIBUTE_TYPE_INVALID, if the buffer is too short; the buffer is then unchanged
 */
ZERLIN_EXPORT CK_RV CT_ReadObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, void* buffer,
    CK_ULONG bufferLen, CK_ULONG* lengthOut);

/**
 * Writes an object's CKA_VALUE by C_SetAttributeValue (PKCS#11 section 11.7).
 *
 * @param session    a session that may write
 * @param object     the object
 * @param value      the new value; passed on as it is
 * @param valueLen   bytes in value
 * @param lengthOut  [out] valueLen, whatever the return value; may be null
 */
ZERLIN_EXPORT CK_RV CT_WriteObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, const void* value,
    CK_ULONG valueLen, CK_ULONG* lengthOut);

#ifdef __cplusplus
}
#endif

#endif
