/**
 * @file
 * Readable names of PKCS#11 constants: the name of a value and the value of a name, for object classes, key
 * types, attribute types, mechanisms, session states and return values, including those of the HSM's vendor.
 * Valid C99 and C++.
 *
 * A lookup searches its table from the first row to the last and allocates no memory. Never free what it
 * returns. Pointer arguments must not be null.
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
 * @name Any table
 * @{
 */

/**
 * Returns the name of a value. If several rows have the value, the first one's name is returned.
 *
 * A value without a row becomes a text with its number: "Vendor defined (0x80001234)" from 0x80000000 on,
 * "UNKNOWN (0x9999)" below. All tables share one static buffer for this text, so copy it before the next
 * lookup of an unknown value. If several threads look up unknown values at the same time, they overwrite each
 * other's text: what a thread reads is always terminated; it is exact if all of them look up the same value,
 * and may otherwise be another thread's text or a mixture.
 *
 * @param value  the value to look up
 * @param table  the rows; the caller keeps them as long as it uses the returned name
 * @param count  number of rows to search, without a closing row; 0 or less: none
 * @return the name of the row that was found, or the text in the static buffer; do not free either
 */
ZERLIN_EXPORT const char* strTab(CK_ULONG value, const NameTableRow* table, int count);

/**
 * Returns the value of a name.
 *
 * @param name   the name with a terminating NUL; upper and lower case are different
 * @param table  the rows; they must have no null name
 * @param count  number of rows to search; 0 or less: none
 * @return the value of the first row with that name; CK_UNAVAILABLE_INFORMATION (all ones) if there is none
 */
ZERLIN_EXPORT CK_ULONG valTab(const char* name, const NameTableRow* table, int count);

/** @} */

/**
 * @name Value to name
 * strTab() with the library's own table of each kind. A name that is found is static: it stays valid as long
 * as the library is loaded.
 * @{
 */

/**
 * @param value  a CKO_ constant
 * @return the name of an object class: "DATA", "SECRET_KEY", ...
 */
ZERLIN_EXPORT const char* strObjClass(CK_OBJECT_CLASS value);

/**
 * @param value  a CKK_ constant
 * @return the name of a key type: "RSA", "AES", ...; "CAST128" for 0x18, which has two names
 */
ZERLIN_EXPORT const char* strKeyType(CK_KEY_TYPE value);

/**
 * @param value  a CKA_ constant
 * @return the name of an attribute type: "CLASS", "MODULUS_BITS", ...
 */
ZERLIN_EXPORT const char* strAttribute(CK_ATTRIBUTE_TYPE value);

/**
 * @param value  a CKM_ constant
 * @return the name of a mechanism: "RSA_PKCS", "AES_CBC_PAD", ...; the CAST128 name if a CAST5 name has the
 *         same value
 */
ZERLIN_EXPORT const char* strMechanism(CK_MECHANISM_TYPE value);

/**
 * @param value  a CKS_ constant
 * @return a phrase for a session state: "Read Only Public Session", ...
 */
ZERLIN_EXPORT const char* strSesState(CK_STATE value);

/**
 * @param value  a CKR_ constant
 * @return a message for a return value: "success", "host memory", ...
 */
ZERLIN_EXPORT const char* strError(CK_RV value);

/** @} */

/**
 * @name Name to value
 * valTab() with the library's own table of each kind. If the name begins with the prefix of the function, the
 * prefix is skipped: "CKA_LABEL" and "LABEL" have the same value.
 * @{
 */

/**
 * @param name  with or without "CKO_"
 * @return the object class; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_OBJECT_CLASS valObjClass(const char* name);

/**
 * @param name  with or without "CKK_"
 * @return the key type; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_KEY_TYPE valKeyType(const char* name);

/**
 * @param name  with or without "CKA_"
 * @return the attribute type; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_ATTRIBUTE_TYPE valAttribute(const char* name);

/**
 * @param name  with or without "CKM_"
 * @return the mechanism; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE valMechanism(const char* name);

/**
 * @param name  a phrase of strSesState(), with or without "CKM_" (not "CKS_": deliberate)
 * @return the state; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_STATE valSesState(const char* name);

/**
 * @param name  a message of strError() (not the constant's name), with or without "CKR_"
 * @return the value; CK_UNAVAILABLE_INFORMATION if the name is unknown
 */
ZERLIN_EXPORT CK_RV valError(const char* name);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
