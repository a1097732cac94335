/**
 * @file
 * Which mechanisms and key types belong together: the key types that a mechanism works on, the mechanisms
 * that generate its keys, and the mechanisms that a key type can be used with. Valid C99 and C++.
 *
 * The lists are fixed and not complete: what is missing, or there twice, is deliberate. No function asks a
 * token; mechFromTokKt() takes the token's list as an argument.
 *
 * A function returns either a static list, which is valid as long as the library is loaded and must not be
 * freed, or a heap copy, which the caller frees with free(). The number of its entries is written to *pCount.
 * Pointer arguments must not be null unless their description says what null means. Any thread may call any
 * function.
 */
#ifndef ZERLIN_MECH_H
#define ZERLIN_MECH_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A list of mechanisms, for example those of a token. The caller owns it. */
typedef struct MechData {
    CK_MECHANISM_TYPE* array; /**< null if empty; must be from malloc() for FreeMechData() */
    CK_ULONG count;           /**< entries in array */
} MechData;

/**
 * @name Lists of mechanisms
 * @{
 */

/**
 * Is a mechanism in a list?
 *
 * @param pMech      the list; null ends the process with an assertion
 * @param mechanism  the mechanism to search for
 * @return 1 if it is, otherwise 0
 */
ZERLIN_EXPORT int LookupMech(const MechData* pMech, CK_MECHANISM_TYPE mechanism);

/**
 * Frees a list: its array and the structure itself, both from malloc().
 *
 * @param pMech  the list; null does nothing
 */
ZERLIN_EXPORT void FreeMechData(MechData* pMech);

/** @} */

/**
 * @name What a mechanism is and needs
 * @{
 */

/**
 * Is it a password-based mechanism?
 *
 * @param mechanism  any value
 * @return 1 for the CKM_PBE_ mechanisms and CKM_PBA_SHA1_WITH_SHA1_HMAC, otherwise 0
 */
ZERLIN_EXPORT int isPbeMech(CK_MECHANISM_TYPE mechanism);

/**
 * Is it a cipher or MAC of RC2?
 *
 * @param mechanism  any value
 * @return 1 for the RC2 ciphers and MACs, including CKM_RC2_ECB_PAD, otherwise 0; 0 for CKM_RC2_KEY_GEN
 */
ZERLIN_EXPORT int isRc2Mech(CK_MECHANISM_TYPE mechanism);

/**
 * Returns the key types that a mechanism works on or generates.
 *
 * @param mechanism  any value; CKM_RSA_PKCS_OAEP and some other known mechanisms are treated as unknown
 * @param pCount     [out] number of entries, 1 or more
 * @return a static list, not null; {CKK_GENERIC_SECRET} for an unknown mechanism
 */
ZERLIN_EXPORT const CK_KEY_TYPE* ktFromMech(CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * Returns the mechanisms that generate a secret key, or domain parameters, for a mechanism.
 *
 * @param mechanism  any value
 * @param pCount     [out] number of entries; 0 if there is none
 * @return a static list; null if there is none
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* genkMechanismFromMechanism(
    CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * Returns the mechanisms that generate a key pair for a mechanism.
 *
 * @param mechanism  any value
 * @param pCount     [out] number of entries; 0 if there is none
 * @return a static list; null if there is none
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* genkpMechanismFromMechanism(
    CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * Returns the mechanisms that generate keys for a list of mechanisms. Each is returned once; they are in the
 * order of the list.
 *
 * It stops as soon as there are as many results as the list has entries; the rest of the list is ignored:
 * deliberate. The last mechanism can add two results, so there can be one more than the list has entries:
 * {CKM_DES3_CBC} returns CKM_DES2_KEY_GEN and CKM_DES3_KEY_GEN.
 *
 * @param pMech   the list
 * @param pCount  [out] number of entries, at most the list's count plus 1; unchanged if the result is null
 * @param pair    0 uses genkMechanismFromMechanism(), any other value genkpMechanismFromMechanism()
 * @return a heap copy; null if there is none or memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genMechanismTabFromMechanismTab(
    const MechData* pMech, CK_ULONG* pCount, int pair);

/** Calls genMechanismTabFromMechanismTab() with pair 0: for secret keys. */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genkMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount);

/** Calls genMechanismTabFromMechanismTab() with pair 1: for key pairs. */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genkpMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount);

/** @} */

/**
 * @name What a key type can be used with
 * A key type without a list of its own gets a general list of mechanisms of all kinds of keys.
 * @{
 */

/**
 * Returns the mechanisms that encrypt, wrap and the like with a key of a type.
 *
 * @param keyType  any value
 * @param pCount   [out] number of entries; unchanged if the result is null
 * @return a heap copy; null if memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * Returns the mechanisms of mechFromKt() that a token has, in the order of mechFromKt(). A mechanism that is
 * in the token's list more than once is returned as often.
 *
 * The number of entries, m, counts all matches, but only the first m mechanisms of mechFromKt() are searched
 * for: deliberate. For each match beyond them there is an entry CK_UNAVAILABLE_INFORMATION at the end, which
 * is no mechanism: skip it.
 *
 * @param pTokMech  the token's mechanisms
 * @param keyType   any value
 * @param pCount    [out] number of entries, m; unchanged if the result is null
 * @return a heap copy; null if the token has none of them or memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechFromTokKt(
    const MechData* pTokMech, CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * Returns the mechanisms that derive from a key of a type.
 *
 * @param keyType  any value
 * @param pCount   [out] number of entries; unchanged if the result is null
 * @return a heap copy; null if memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechDeriveFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * Returns the mechanisms that sign with a key of a type.
 *
 * @param keyType  any value
 * @param pCount   [out] number of entries; unchanged if the result is null
 * @return a heap copy; null if memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechSignFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * Returns the mechanisms that sign with message recovery with a key of a type.
 *
 * @param keyType  any value
 * @param pCount   [out] number of entries; unchanged if the result is null
 * @return a heap copy; null if memory cannot be allocated
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechSignRecFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/** @} */

/**
 * @name Fixed lists
 * @{
 */

/**
 * Returns the digest mechanisms.
 *
 * @param pCount  [out] number of entries
 * @return a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* hashMech(CK_ULONG* pCount);

/**
 * Returns the mechanisms that generate secret keys.
 *
 * @param pCount  [out] number of entries
 * @return a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* kgMech(CK_ULONG* pCount);

/**
 * Returns the mechanisms that generate key pairs.
 *
 * @param pCount  [out] number of entries
 * @return a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* kpgMech(CK_ULONG* pCount);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
