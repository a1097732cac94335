/**
 * @file
 * Names of PKCS#11 constants for people: the name of a value and the value of a name, for object classes,
 * key types, attribute types, mechanisms, session states and return values, the HSM's own among them.
 * Valid C99 and C++.
 *
 * All lookups are linear and allocate nothing; nothing that they return is ever freed. No argument that is a
 * pointer may be null.
 */
#ifndef ZERLIN_NAMETABLES_H
#define ZERLIN_NAMETABLES_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** One row of a name table. */
typedef struct NameTableRow {
    CK_ULONG value;
    const char* name; /**< NUL-terminated ASCII, without the prefix of the constant (CKA_, CKM_, ...) */
} NameTableRow;

/**
 * @name Tables of any kind
 * @{
 */

/**
 * The name of a value.
 *
 * Where rows share a value the first one counts. For a value that no row has, the text is
 * "Vendor defined (0x80001234)" from 0x80000000 on and "UNKNOWN (0x9999)" below. That text stands in the one
 * static buffer of the library: copy it before the next lookup that misses, in whatever table. Threads that
 * miss at the same time write over each other: what is read is always terminated, always exact where they
 * all look up the same value, and may else be another thread's text or a mixture.
 *
 * @param value what to look for
 * @param table the rows; only read during the call, but the name returned is the row's own pointer
 * @param count how many rows to search; a closing row is not one of them. 0 or less: none
 * @return the name, never null; never to be freed
 */
ZERLIN_EXPORT const char* strTab(CK_ULONG value, const NameTableRow* table, int count);

/**
 * The value of a name.
 *
 * @param name NUL-terminated; compared exactly, upper and lower case told apart
 * @param table the rows
 * @param count how many rows to search, none of them with a null name. 0 or less: none
 * @return the value, or CK_UNAVAILABLE_INFORMATION (all ones) when no row has the name
 */
ZERLIN_EXPORT CK_ULONG valTab(const char* name, const NameTableRow* table, int count);

/** @} */

/**
 * @name Value to name
 * As strTab() over the table of that kind, whose names live as long as the library.
 * @{
 */

/**
 * @param value a CKO_ constant
 * @return "DATA", "SECRET_KEY", ...
 */
ZERLIN_EXPORT const char* strObjClass(CK_OBJECT_CLASS value);

/**
 * @param value a CKK_ constant
 * @return "RSA", "AES", ...; "CAST128" for 0x18
 */
ZERLIN_EXPORT const char* strKeyType(CK_KEY_TYPE value);

/**
 * @param value a CKA_ constant
 * @return "CLASS", "MODULUS_BITS", ...
 */
ZERLIN_EXPORT const char* strAttribute(CK_ATTRIBUTE_TYPE value);

/**
 * @param value a CKM_ constant
 * @return "RSA_PKCS", "AES_CBC_PAD", ...; the CAST128 name where a CAST5 name has the same value
 */
ZERLIN_EXPORT const char* strMechanism(CK_MECHANISM_TYPE value);

/**
 * @param value a CKS_ constant
 * @return a phrase: "Read Only Public Session", ...
 */
ZERLIN_EXPORT const char* strSesState(CK_STATE value);

/**
 * @param value a CKR_ constant
 * @return a message: "success", "host memory", ...
 */
ZERLIN_EXPORT const char* strError(CK_RV value);

/** @} */

/**
 * @name Name to value
 * As valTab() over the table of that kind. When the first four characters are the prefix that is given for
 * the routine they are skipped, so that "CKA_LABEL" and "LABEL" are the same.
 * @{
 */

/**
 * @param name with or without "CKO_"
 * @return the object class, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_OBJECT_CLASS valObjClass(const char* name);

/**
 * @param name with or without "CKK_"
 * @return the key type, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_KEY_TYPE valKeyType(const char* name);

/**
 * @param name with or without "CKA_"
 * @return the attribute type, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_ATTRIBUTE_TYPE valAttribute(const char* name);

/**
 * @param name with or without "CKM_"
 * @return the mechanism, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE valMechanism(const char* name);

/**
 * @param name a phrase of strSesState(), with or without "CKM_" (not "CKS_")
 * @return the state, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_STATE valSesState(const char* name);

/**
 * @param name a message of strError(), not the constant's name, with or without "CKR_"
 * @return the value, or CK_UNAVAILABLE_INFORMATION
 */
ZERLIN_EXPORT CK_RV valError(const char* name);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
