/**
 * @file
 * How mechanisms and key types belong together: the key types that a mechanism works on, the mechanisms
 * that generate its key, and the mechanisms that a key type can be used with. Valid C99 and C++.
 *
 * The lists are fixed and not complete; none of them asks a token, save mechFromTokKt(). A routine returns
 * either a static list, which lives as long as the library, or a heap copy, which the caller frees with
 * free(). How many entries it has goes to the count argument. Pointer arguments must not be null unless a
 * routine says otherwise. All routines may be called from any thread.
 */
#ifndef ZERLIN_MECH_H
#define ZERLIN_MECH_H

#include "zerlin/cryptoki.h"
#include "zerlin/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** A list of mechanisms, for example those of a token. */
typedef struct MechData {
    CK_MECHANISM_TYPE* array; /**< from malloc() when the record goes to FreeMechData(); null when empty */
    CK_ULONG count;
} MechData;

/**
 * @name Lists of mechanisms
 * @{
 */

/**
 * @param pMech a list; a null pointer ends the process with an assertion
 * @param mechanism the mechanism to look for
 * @return 1 when the mechanism is in the list, else 0
 */
ZERLIN_EXPORT int LookupMech(const MechData* pMech, CK_MECHANISM_TYPE mechanism);

/**
 * Frees the array and the record, both from malloc().
 *
 * @param pMech the list, or null: nothing happens
 */
ZERLIN_EXPORT void FreeMechData(MechData* pMech);

/** @} */

/**
 * @name What a mechanism is and needs
 * @{
 */

/**
 * @param mechanism any value
 * @return 1 for the password based mechanisms, the CKM_PBE_ family and CKM_PBA_SHA1_WITH_SHA1_HMAC, else 0
 */
ZERLIN_EXPORT int isPbeMech(CK_MECHANISM_TYPE mechanism);

/**
 * @param mechanism any value
 * @return 1 for the RC2 ciphers and MACs, CKM_RC2_ECB_PAD among them, else 0; CKM_RC2_KEY_GEN is
 *     none of them
 */
ZERLIN_EXPORT int isRc2Mech(CK_MECHANISM_TYPE mechanism);

/**
 * The key types that a mechanism works on or generates.
 *
 * @param mechanism any value; CKM_RSA_PKCS_OAEP and some others that have a key type of their own are taken
 *     for unknown
 * @param pCount receives the number of entries, 1 or more
 * @return a static list, never null; {CKK_GENERIC_SECRET} for a mechanism that is not known
 */
ZERLIN_EXPORT const CK_KEY_TYPE* ktFromMech(CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * The mechanisms that generate a secret key (or the domain parameters) for a mechanism.
 *
 * @param mechanism any value
 * @param pCount receives the number of entries; 0 when there is none
 * @return a static list, or null when there is none
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* genkMechanismFromMechanism(
    CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * The mechanisms that generate a key pair for a mechanism.
 *
 * @param mechanism any value
 * @param pCount receives the number of entries; 0 when there is none
 * @return a static list, or null when there is none
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* genkpMechanismFromMechanism(
    CK_MECHANISM_TYPE mechanism, CK_ULONG* pCount);

/**
 * The mechanisms that generate keys for any of a list of mechanisms, each of them once, in the order in
 * which the list asks for them.
 *
 * No further mechanism of the list is looked at once there are as many results as the list has entries. One
 * mechanism can bring two, so there can be one result more than that: {CKM_DES3_CBC} gives CKM_DES2_KEY_GEN
 * and CKM_DES3_KEY_GEN.
 *
 * @param pMech the list
 * @param pCount receives the number of entries, at most the list's count and one; untouched when the result
 *     is null
 * @param pair 0 for the mechanisms of genkMechanismFromMechanism(), else those of
 *     genkpMechanismFromMechanism()
 * @return a heap copy; null when there is none, or no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genMechanismTabFromMechanismTab(
    const MechData* pMech, CK_ULONG* pCount, int pair);

/** genMechanismTabFromMechanismTab() for secret keys. */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genkMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount);

/** genMechanismTabFromMechanismTab() for key pairs. */
ZERLIN_EXPORT CK_MECHANISM_TYPE* genkpMechanismTabFromMechanismTab(const MechData* pMech, CK_ULONG* pCount);

/** @} */

/**
 * @name What a key type can be used with
 * A key type that has no list of its own gets the list of what is there for all of them.
 * @{
 */

/**
 * The mechanisms that encrypt, wrap and the like with a key of that type.
 *
 * @param keyType any value
 * @param pCount receives the number of entries; untouched when the result is null
 * @return a heap copy; null when there is no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * Those of mechFromKt() that a token has, in the order of mechFromKt(); as often as the token's list has
 * them.
 *
 * The number of entries, m, is that of all matches, but only the first m mechanisms of mechFromKt() are
 * looked at. The slots of matches that come later stand at the end and hold CK_UNAVAILABLE_INFORMATION,
 * which is no mechanism: pass over them.
 *
 * @param pTokMech the token's mechanisms
 * @param keyType any value
 * @param pCount receives the number of entries, m; untouched when the result is null
 * @return a heap copy; null when the token has none of them, or there is no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechFromTokKt(
    const MechData* pTokMech, CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * The mechanisms that derive from a key of that type.
 *
 * @param keyType any value
 * @param pCount receives the number of entries; untouched when the result is null
 * @return a heap copy; null when there is no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechDeriveFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * The mechanisms that sign with a key of that type.
 *
 * @param keyType any value
 * @param pCount receives the number of entries; untouched when the result is null
 * @return a heap copy; null when there is no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechSignFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/**
 * The mechanisms that sign with message recovery with a key of that type.
 *
 * @param keyType any value
 * @param pCount receives the number of entries; untouched when the result is null
 * @return a heap copy; null when there is no memory
 */
ZERLIN_EXPORT CK_MECHANISM_TYPE* mechSignRecFromKt(CK_KEY_TYPE keyType, CK_ULONG* pCount);

/** @} */

/**
 * @name Fixed lists
 * @{
 */

/**
 * @param pCount receives the number of entries
 * @return the digest mechanisms, a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* hashMech(CK_ULONG* pCount);

/**
 * @param pCount receives the number of entries
 * @return the mechanisms that generate secret keys, a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* kgMech(CK_ULONG* pCount);

/**
 * @param pCount receives the number of entries
 * @return the mechanisms that generate key pairs, a static list
 */
ZERLIN_EXPORT const CK_MECHANISM_TYPE* kpgMech(CK_ULONG* pCount);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
