/**
 * @file
 * The PKCS#11 (Cryptoki) 2.x interface and the HSM's vendor extensions: types, constants, structures and
 * function prototypes. It declares all that Zerlin passes to libcryptoki.so or takes from it. Valid C99 and
 * C++.
 *
 * The names are those of the PKCS#11 standard: v2.20, with some values of v2.40. Section numbers are those of
 * v2.20. Structures have the platform's natural alignment; their sizes are checked at the end of the
 * file. "The library" is the Cryptoki library, libcryptoki.so.
 *
 * A program that uses another PKCS#11 header includes that first, and defines ZERLIN_OTHER_CRYPTOKI before it
 * includes any header of Zerlin: then only the vendor's functions are declared here.
 */
#ifndef ZERLIN_CRYPTOKI_H
#define ZERLIN_CRYPTOKI_H

#ifndef ZERLIN_OTHER_CRYPTOKI

#include <assert.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @name Basic types (PKCS#11 section 9)
 * A CK_ULONG is as wide as a pointer. Text in CK_UTF8CHAR and CK_CHAR arrays is padded with blanks, without a
 * terminating NUL unless a member says otherwise.
 * @{
 */
typedef unsigned char CK_BYTE;
typedef CK_BYTE CK_CHAR;
typedef CK_BYTE CK_UTF8CHAR;
typedef CK_BYTE CK_BBOOL;
typedef unsigned long CK_ULONG;
typedef long CK_LONG;
typedef CK_ULONG CK_FLAGS;

typedef void* CK_VOID_PTR;
typedef CK_VOID_PTR* CK_VOID_PTR_PTR;
typedef CK_BYTE* CK_BYTE_PTR;
typedef CK_CHAR* CK_CHAR_PTR;
typedef CK_UTF8CHAR* CK_UTF8CHAR_PTR;
typedef CK_BBOOL* CK_BBOOL_PTR;
typedef CK_ULONG* CK_ULONG_PTR;

typedef CK_ULONG CK_RV;
typedef CK_ULONG CK_SLOT_ID;
typedef CK_ULONG CK_SESSION_HANDLE;
typedef CK_ULONG CK_OBJECT_HANDLE;
typedef CK_ULONG CK_NOTIFICATION;
typedef CK_ULONG CK_STATE;
typedef CK_ULONG CK_USER_TYPE;
typedef CK_ULONG CK_OBJECT_CLASS;
typedef CK_ULONG CK_HW_FEATURE_TYPE;
typedef CK_ULONG CK_KEY_TYPE;
typedef CK_ULONG CK_CERTIFICATE_TYPE;
typedef CK_ULONG CK_ATTRIBUTE_TYPE;
typedef CK_ULONG CK_MECHANISM_TYPE;
typedef CK_ULONG CK_RSA_PKCS_MGF_TYPE;
typedef CK_ULONG CK_RSA_PKCS_OAEP_SOURCE_TYPE;
typedef CK_ULONG CK_EC_KDF_TYPE;
typedef CK_ULONG CK_X9_42_DH_KDF_TYPE;
typedef CK_ULONG CK_MAC_GENERAL_PARAMS;
typedef CK_ULONG CK_EXTRACT_PARAMS;
typedef CK_ULONG CK_RC2_PARAMS;

typedef CK_SLOT_ID* CK_SLOT_ID_PTR;
typedef CK_SESSION_HANDLE* CK_SESSION_HANDLE_PTR;
typedef CK_OBJECT_HANDLE* CK_OBJECT_HANDLE_PTR;
typedef CK_OBJECT_CLASS* CK_OBJECT_CLASS_PTR;
typedef CK_ATTRIBUTE_TYPE* CK_ATTRIBUTE_TYPE_PTR;
typedef CK_MECHANISM_TYPE* CK_MECHANISM_TYPE_PTR;
typedef CK_RSA_PKCS_MGF_TYPE* CK_RSA_PKCS_MGF_TYPE_PTR;
typedef CK_RSA_PKCS_OAEP_SOURCE_TYPE* CK_RSA_PKCS_OAEP_SOURCE_TYPE_PTR;
typedef CK_MAC_GENERAL_PARAMS* CK_MAC_GENERAL_PARAMS_PTR;
typedef CK_EXTRACT_PARAMS* CK_EXTRACT_PARAMS_PTR;
typedef CK_RC2_PARAMS* CK_RC2_PARAMS_PTR;

#define CK_TRUE 1
#define CK_FALSE 0
#define CK_INVALID_HANDLE 0UL
/** All ones: the library cannot or will not report this length or count. */
#define CK_UNAVAILABLE_INFORMATION (~0UL)
/** As a maximum of sessions: there is no practical limit. */
#define CK_EFFECTIVELY_INFINITE 0UL
#ifndef NULL_PTR
#define NULL_PTR 0
#endif
/** @} */

/* clang-format off */

/**
 * @name Object classes (PKCS#11 section 10, values of CKA_CLASS)
 * @{
 */
#define CKO_DATA                0x0UL
#define CKO_CERTIFICATE         0x1UL
#define CKO_PUBLIC_KEY          0x2UL
#define CKO_PRIVATE_KEY         0x3UL
#define CKO_SECRET_KEY          0x4UL
#define CKO_HW_FEATURE          0x5UL
#define CKO_DOMAIN_PARAMETERS   0x6UL

/* Standard, not in the name tables */
#define CKO_MECHANISM           0x7UL
#define CKO_OTP_KEY             0x8UL
#define CKO_VENDOR_DEFINED      0x80000000UL

/* Vendor */
#define CKO_CERTIFICATE_REQUEST 0x80000201UL
#define CKO_CRL                 0x80000202UL
#define CKO_ADAPTER             0x8000020AUL
#define CKO_SLOT                0x8000020BUL
#define CKO_FM                  0x8000020CUL
/** @} */

/**
 * @name Hardware features (values of CKA_HW_FEATURE_TYPE)
 * @{
 */
#define CKH_MONOTONIC_COUNTER 0x1UL
#define CKH_CLOCK             0x2UL
#define CKH_USER_INTERFACE    0x3UL
#define CKH_VENDOR_DEFINED    0x80000000UL
/** @} */

/**
 * @name Key types (values of CKA_KEY_TYPE)
 * @{
 */
#define CKK_RSA            0x0UL
#define CKK_DSA            0x1UL
#define CKK_DH             0x2UL
#define CKK_EC             0x3UL
#define CKK_GENERIC_SECRET 0x10UL
#define CKK_RC2            0x11UL
#define CKK_RC4            0x12UL
#define CKK_DES            0x13UL
#define CKK_DES2           0x14UL
#define CKK_DES3           0x15UL
#define CKK_IDEA           0x1AUL
#define CKK_CAST           0x16UL
#define CKK_CAST3          0x17UL
#define CKK_CAST128        0x18UL
#define CKK_CAST5          0x18UL /**< alias of CKK_CAST128 */
#define CKK_SKIPJACK       0x1BUL
#define CKK_BATON          0x1CUL
#define CKK_JUNIPER        0x1DUL
#define CKK_CDMF           0x1EUL
#define CKK_AES            0x1FUL
#define CKK_ARIA           0x26UL

/* Standard, not in the name tables */
#define CKK_X9_42_DH       0x4UL
#define CKK_KEA            0x5UL
#define CKK_RC5            0x19UL
#define CKK_BLOWFISH       0x20UL
#define CKK_TWOFISH        0x21UL
#define CKK_SECURID        0x22UL
#define CKK_HOTP           0x23UL
#define CKK_ACTI           0x24UL
#define CKK_CAMELLIA       0x25UL
#define CKK_MD5_HMAC       0x27UL
#define CKK_SHA_1_HMAC     0x28UL
#define CKK_RIPEMD128_HMAC 0x29UL
#define CKK_RIPEMD160_HMAC 0x2AUL
#define CKK_SHA256_HMAC    0x2BUL
#define CKK_SHA384_HMAC    0x2CUL
#define CKK_SHA512_HMAC    0x2DUL
#define CKK_SHA224_HMAC    0x2EUL
#define CKK_SEED_STD       0x2FUL /**< the standard's CKK_SEED */
#define CKK_VENDOR_DEFINED 0x80000000UL

/* Vendor */
#define CKK_RSA_DISCRETE   0x80000201UL
#define CKK_DSA_DISCRETE   0x80000202UL
#define CKK_SEED           0x80000203UL /**< the standard's: CKK_SEED_STD */
/** @} */

/**
 * @name Certificate types (values of CKA_CERTIFICATE_TYPE)
 * @{
 */
#define CKC_X_509           0x0UL
#define CKC_X_509_ATTR_CERT 0x1UL
#define CKC_WTLS            0x2UL
#define CKC_VENDOR_DEFINED  0x80000000UL
/** @} */

/**
 * @name Attribute types (PKCS#11 section 10)
 * @{
 */
#define CKA_CLASS                      0x0UL
#define CKA_TOKEN                      0x1UL
#define CKA_PRIVATE                    0x2UL
#define CKA_LABEL                      0x3UL
#define CKA_APPLICATION                0x10UL
#define CKA_VALUE                      0x11UL
#define CKA_OBJECT_ID                  0x12UL
#define CKA_CERTIFICATE_TYPE           0x80UL
#define CKA_ISSUER                     0x81UL
#define CKA_SERIAL_NUMBER              0x82UL
#define CKA_AC_ISSUER                  0x83UL
#define CKA_OWNER                      0x84UL
#define CKA_ATTR_TYPES                 0x85UL
#define CKA_TRUSTED                    0x86UL
#define CKA_KEY_TYPE                   0x100UL
#define CKA_SUBJECT                    0x101UL
#define CKA_ID                         0x102UL
#define CKA_SENSITIVE                  0x103UL
#define CKA_ENCRYPT                    0x104UL
#define CKA_DECRYPT                    0x105UL
#define CKA_WRAP                       0x106UL
#define CKA_UNWRAP                     0x107UL
#define CKA_SIGN                       0x108UL
#define CKA_SIGN_RECOVER               0x109UL
#define CKA_VERIFY                     0x10AUL
#define CKA_VERIFY_RECOVER             0x10BUL
#define CKA_DERIVE                     0x10CUL
#define CKA_START_DATE                 0x110UL
#define CKA_END_DATE                   0x111UL
#define CKA_MODULUS                    0x120UL
#define CKA_MODULUS_BITS               0x121UL
#define CKA_PUBLIC_EXPONENT            0x122UL
#define CKA_PRIVATE_EXPONENT           0x123UL
#define CKA_PRIME_1                    0x124UL
#define CKA_PRIME_2                    0x125UL
#define CKA_EXPONENT_1                 0x126UL
#define CKA_EXPONENT_2                 0x127UL
#define CKA_COEFFICIENT                0x128UL
#define CKA_PRIME_BITS                 0x133UL
#define CKA_SUB_PRIME_BITS             0x134UL
#define CKA_SUBPRIME_BITS              0x134UL /**< alias of CKA_SUB_PRIME_BITS */
#define CKA_PRIME                      0x130UL
#define CKA_SUBPRIME                   0x131UL
#define CKA_BASE                       0x132UL
#define CKA_VALUE_BITS                 0x160UL
#define CKA_VALUE_LEN                  0x161UL
#define CKA_EXTRACTABLE                0x162UL
#define CKA_LOCAL                      0x163UL
#define CKA_NEVER_EXTRACTABLE          0x164UL
#define CKA_ALWAYS_SENSITIVE           0x165UL
#define CKA_KEY_GEN_MECHANISM          0x166UL
#define CKA_MODIFIABLE                 0x170UL
#define CKA_EC_PARAMS                  0x180UL
#define CKA_EC_POINT                   0x181UL
#define CKA_SECONDARY_AUTH             0x200UL
#define CKA_AUTH_PIN_FLAGS             0x201UL
#define CKA_HW_FEATURE_TYPE            0x300UL
#define CKA_RESET_ON_INIT              0x301UL
#define CKA_HAS_RESET                  0x302UL

/* Standard, not in the name tables */
#define CKA_CERTIFICATE_CATEGORY       0x87UL
#define CKA_JAVA_MIDP_SECURITY_DOMAIN  0x88UL
#define CKA_URL                        0x89UL
#define CKA_HASH_OF_SUBJECT_PUBLIC_KEY 0x8AUL
#define CKA_HASH_OF_ISSUER_PUBLIC_KEY  0x8BUL
#define CKA_NAME_HASH_ALGORITHM        0x8CUL
#define CKA_CHECK_VALUE_STD            0x90UL /**< the standard's CKA_CHECK_VALUE */
#define CKA_PUBLIC_KEY_INFO            0x129UL
#define CKA_COPYABLE                   0x171UL
#define CKA_DESTROYABLE                0x172UL
#define CKA_ALWAYS_AUTHENTICATE        0x202UL
#define CKA_WRAP_WITH_TRUSTED          0x210UL
#define CKA_PIXEL_X                    0x400UL
#define CKA_PIXEL_Y                    0x401UL
#define CKA_RESOLUTION                 0x402UL
#define CKA_CHAR_ROWS                  0x403UL
#define CKA_CHAR_COLUMNS               0x404UL
#define CKA_COLOR                      0x405UL
#define CKA_BITS_PER_PIXEL             0x406UL
#define CKA_CHAR_SETS                  0x480UL
#define CKA_ENCODING_METHODS           0x481UL
#define CKA_MIME_TYPES                 0x482UL
#define CKA_MECHANISM_TYPE             0x500UL
#define CKA_REQUIRED_CMS_ATTRIBUTES    0x501UL
#define CKA_DEFAULT_CMS_ATTRIBUTES     0x502UL
#define CKA_SUPPORTED_CMS_ATTRIBUTES   0x503UL
#define CKA_WRAP_TEMPLATE              0x40000211UL /**< an array of attributes */
#define CKA_UNWRAP_TEMPLATE            0x40000212UL /**< an array of attributes */
#define CKA_DERIVE_TEMPLATE            0x40000213UL /**< an array of attributes */
#define CKA_ALLOWED_MECHANISMS         0x40000600UL /**< an array of mechanism types */
#define CKA_VENDOR_DEFINED             0x80000000UL

/* Vendor */
#define CKA_WILDCARD                   0xFFFFUL /**< matches any type */
#define CKA_EXPORTABLE                 0x80000129UL
#define CKA_EXPORT                     0x80000128UL
#define CKA_IMPORT                     0x8000012BUL
#define CKA_KEY_SIZE                   0x8000012CUL
#define CKA_USAGE_COUNT                0x80000101UL
#define CKA_USAGE_LIMIT                0x80000200UL
#define CKA_ADMIN_CERT                 0x80000201UL
#define CKA_TIME_STAMP                 0x80000102UL
#define CKA_CHECK_VALUE                0x80000103UL /**< the standard's: CKA_CHECK_VALUE_STD */
#define CKA_MECHANISM_LIST             0x80000104UL
#define CKA_ISSUER_STR                 0x80000130UL
#define CKA_SUBJECT_STR                0x80000131UL
#define CKA_SERIAL_NUMBER_INT          0x80000132UL
#define CKA_VERIFY_OS                  0x80000170UL
#define CKA_SECURITY_MODE              0x80000140UL
#define CKA_TRANSPORT_MODE             0x80000141UL
#define CKA_BATCH                      0x80000142UL
#define CKA_HW_STATUS                  0x80000143UL
#define CKA_FREE_MEM                   0x80000144UL
#define CKA_DATE_OF_MANUFACTURE        0x80000146UL
#define CKA_TAMPER_CMD                 0x80000145UL
#define CKA_HALT_CMD                   0x80000147UL
#define CKA_SIGN_LOCAL_CERT            0x80000127UL
#define CKA_PKI_ATTRIBUTE_BER_ENCODED  0x80000230UL
#define CKA_CERTIFICATE_START_TIME     0x80000190UL
#define CKA_CERTIFICATE_END_TIME       0x80000191UL
#define CKA_SLOT_ID                    0x80000151UL
#define CKA_MAX_SESSIONS               0x80000155UL
#define CKA_MIN_PIN_LEN                0x80000156UL
#define CKA_MAX_PIN_FAIL               0x80000158UL
#define CKA_FLAGS                      0x80000159UL
#define CKA_RECORD_COUNT               0x80000136UL
#define CKA_RECORD_NUMBER              0x80000137UL
#define CKA_PURGE                      0x80000139UL
#define CKA_EVENT_LOG_FULL             0x8000013AUL
#define CKA_DELETABLE                  0x8000012AUL
#define CKA_HIFACE_MASTER              0x80000250UL
#define CKA_VERSION                    0x80000181UL
#define CKA_MANUFACTURER               0x80000182UL
#define CKA_BUILD_DATE                 0x80000183UL
#define CKA_FINGERPRINT                0x80000184UL
#define CKA_ROM_SPACE                  0x80000185UL
#define CKA_RAM_SPACE                  0x80000186UL
#define CKA_FM_ID                      0x8000018AUL
#define CKA_FM_STATUS                  0x80000187UL
#define CKA_FM_STARTUP_STATUS          0x80000189UL
#define CKA_DELETE_FM                  0x80000188UL
#define CKA_APPLICATION_COUNT          0x80000148UL
#define CKA_FW_VERSION                 0x80000149UL
#define CKA_RESCAN_PERIPHERALS_CMD     0x8000014AUL
#define CKA_RTC_AAC_ENABLED            0x8000014BUL
#define CKA_RTC_AAC_GUARD_SECONDS      0x8000014CUL
#define CKA_RTC_AAC_GUARD_COUNT        0x8000014DUL
#define CKA_AAC_GUARD_DURATION         0x8000014EUL
#define CKA_HW_EXT_INFO_STR            0x8000014FUL
#define CKA_SEED                       0x80000260UL
#define CKA_COUNTER                    0x80000261UL
#define CKA_H_VALUE                    0x80000262UL
#define CKA_PINPAD_DESC                0x8000015AUL
#define CKA_TMP_PIN                    0x80000281UL
#define CKA_AUTH_CHALLENGE             0x80000280UL
/** @} */

/**
 * @name Mechanisms (PKCS#11 section 12)
 * The HSM uses some of the standard's names for values of its own. The standard's value then has the same
 * name with _STD. So 0x1043, 0x1089, 0x1090 and 0x1091 have two names of different meaning each; the token
 * decides which one holds.
 * @{
 */
#define CKM_RSA_PKCS_KEY_PAIR_GEN             0x0UL
#define CKM_RSA_PKCS                          0x1UL
#define CKM_RSA_9796                          0x2UL
#define CKM_RSA_X_509                         0x3UL
#define CKM_MD2_RSA_PKCS                      0x4UL
#define CKM_MD5_RSA_PKCS                      0x5UL
#define CKM_SHA1_RSA_PKCS                     0x6UL
#define CKM_RIPEMD128_RSA_PKCS                0x7UL
#define CKM_RIPEMD160_RSA_PKCS                0x8UL
#define CKM_RSA_PKCS_OAEP                     0x9UL
#define CKM_RSA_X9_31_KEY_PAIR_GEN            0xAUL
#define CKM_RSA_X9_31                         0xBUL
#define CKM_SHA1_RSA_X9_31                    0xCUL
#define CKM_SHA224_RSA_PKCS                   0x46UL
#define CKM_SHA256_RSA_PKCS                   0x40UL
#define CKM_SHA384_RSA_PKCS                   0x41UL
#define CKM_SHA512_RSA_PKCS                   0x42UL
#define CKM_RSA_PKCS_PSS                      0xDUL
#define CKM_SHA1_RSA_PKCS_PSS                 0xEUL
#define CKM_SHA224_RSA_PKCS_PSS               0x47UL
#define CKM_SHA256_RSA_PKCS_PSS               0x43UL
#define CKM_SHA384_RSA_PKCS_PSS               0x44UL
#define CKM_SHA512_RSA_PKCS_PSS               0x45UL
#define CKM_DSA_KEY_PAIR_GEN                  0x10UL
#define CKM_DSA                               0x11UL
#define CKM_DSA_SHA1                          0x12UL
#define CKM_DH_PKCS_KEY_PAIR_GEN              0x20UL
#define CKM_DH_PKCS_DERIVE                    0x21UL
#define CKM_X9_42_DH_KEY_PAIR_GEN             0x30UL
#define CKM_X9_42_DH_DERIVE                   0x31UL
#define CKM_X9_42_DH_HYBRID_DERIVE            0x32UL
#define CKM_X9_42_MQV_DERIVE                  0x33UL
#define CKM_EC_KEY_PAIR_GEN                   0x1040UL
#define CKM_ECDSA                             0x1041UL
#define CKM_ECDSA_SHA1                        0x1042UL
#define CKM_RC2_KEY_GEN                       0x100UL
#define CKM_RC2_ECB                           0x101UL
#define CKM_RC2_CBC                           0x102UL
#define CKM_RC2_CBC_PAD                       0x105UL
#define CKM_RC2_MAC                           0x103UL
#define CKM_RC2_MAC_GENERAL                   0x104UL
#define CKM_RC4_KEY_GEN                       0x110UL
#define CKM_RC4                               0x111UL
#define CKM_RC5_KEY_GEN                       0x330UL
#define CKM_RC5_ECB                           0x331UL
#define CKM_RC5_CBC                           0x332UL
#define CKM_RC5_CBC_PAD                       0x335UL
#define CKM_RC5_MAC                           0x333UL
#define CKM_DES_KEY_GEN                       0x120UL
#define CKM_DES_ECB                           0x121UL
#define CKM_DES_CBC                           0x122UL
#define CKM_DES_CBC_PAD                       0x125UL
#define CKM_DES_MAC                           0x123UL
#define CKM_DES_MAC_GENERAL                   0x124UL
#define CKM_DES2_KEY_GEN                      0x130UL
#define CKM_DES3_KEY_GEN                      0x131UL
#define CKM_DES3_ECB                          0x132UL
#define CKM_DES3_CBC                          0x133UL
#define CKM_DES3_CBC_PAD                      0x136UL
#define CKM_DES3_MAC                          0x134UL
#define CKM_DES3_CMAC                         0x138UL
#define CKM_DES3_MAC_GENERAL                  0x135UL
#define CKM_DES3_CMAC_GENERAL                 0x137UL
#define CKM_CAST_KEY_GEN                      0x300UL
#define CKM_CAST_ECB                          0x301UL
#define CKM_CAST_CBC                          0x302UL
#define CKM_CAST_CBC_PAD                      0x305UL
#define CKM_CAST_MAC                          0x303UL
#define CKM_CAST_MAC_GENERAL                  0x304UL
#define CKM_CAST3_KEY_GEN                     0x310UL
#define CKM_CAST3_ECB                         0x311UL
#define CKM_CAST3_CBC                         0x312UL
#define CKM_CAST3_CBC_PAD                     0x315UL
#define CKM_CAST3_MAC                         0x313UL
#define CKM_CAST128_KEY_GEN                   0x320UL
#define CKM_CAST128_ECB                       0x321UL
#define CKM_CAST128_CBC                       0x322UL
#define CKM_CAST128_CBC_PAD                   0x325UL
#define CKM_CAST128_MAC                       0x323UL
#define CKM_CAST128_MAC_GENERAL               0x324UL
#define CKM_IDEA_KEY_GEN                      0x340UL
#define CKM_IDEA_ECB                          0x341UL
#define CKM_IDEA_CBC                          0x342UL
#define CKM_IDEA_CBC_PAD                      0x345UL
#define CKM_IDEA_MAC                          0x343UL
#define CKM_IDEA_MAC_GENERAL                  0x344UL
#define CKM_GENERIC_SECRET_KEY_GEN            0x350UL
#define CKM_CONCATENATE_BASE_AND_KEY          0x360UL
#define CKM_CONCATENATE_BASE_AND_DATA         0x362UL
#define CKM_CONCATENATE_DATA_AND_BASE         0x363UL
#define CKM_XOR_BASE_AND_DATA                 0x364UL
#define CKM_EXTRACT_KEY_FROM_KEY              0x365UL
#define CKM_SSL3_PRE_MASTER_KEY_GEN           0x370UL
#define CKM_SSL3_MASTER_KEY_DERIVE            0x371UL
#define CKM_SSL3_KEY_AND_MAC_DERIVE           0x372UL
#define CKM_SSL3_MASTER_KEY_DERIVE_DH         0x373UL
#define CKM_TLS_PRE_MASTER_KEY_GEN            0x374UL
#define CKM_TLS_MASTER_KEY_DERIVE             0x375UL
#define CKM_TLS_KEY_AND_MAC_DERIVE            0x376UL
#define CKM_TLS_MASTER_KEY_DERIVE_DH          0x377UL
#define CKM_SSL3_MD5_MAC                      0x380UL
#define CKM_SSL3_SHA1_MAC                     0x381UL
#define CKM_MD2_KEY_DERIVATION                0x391UL
#define CKM_MD5_KEY_DERIVATION                0x390UL
#define CKM_SHA1_KEY_DERIVATION               0x392UL
#define CKM_SHA224_KEY_DERIVATION             0x396UL
#define CKM_SHA256_KEY_DERIVATION             0x393UL
#define CKM_SHA384_KEY_DERIVATION             0x394UL
#define CKM_SHA512_KEY_DERIVATION             0x395UL
#define CKM_PBE_MD2_DES_CBC                   0x3A0UL
#define CKM_PBE_MD5_DES_CBC                   0x3A1UL
#define CKM_PBE_MD5_CAST_CBC                  0x3A2UL
#define CKM_PBE_MD5_CAST3_CBC                 0x3A3UL
#define CKM_PBE_MD5_CAST128_CBC               0x3A4UL
#define CKM_PBE_MD5_CAST5_CBC                 0x3A4UL /**< alias of CKM_PBE_MD5_CAST128_CBC */
#define CKM_PBE_SHA1_CAST128_CBC              0x3A5UL
#define CKM_PBE_SHA1_CAST5_CBC                0x3A5UL /**< alias of CKM_PBE_SHA1_CAST128_CBC */
#define CKM_PBE_SHA1_RC4_128                  0x3A6UL
#define CKM_PBE_SHA1_RC4_40                   0x3A7UL
#define CKM_PBE_SHA1_DES3_EDE_CBC             0x3A8UL
#define CKM_PBE_SHA1_DES2_EDE_CBC             0x3A9UL
#define CKM_PBE_SHA1_RC2_128_CBC              0x3AAUL
#define CKM_PBE_SHA1_RC2_40_CBC               0x3ABUL
#define CKM_PBA_SHA1_WITH_SHA1_HMAC           0x3C0UL
#define CKM_KEY_WRAP_SET_OAEP                 0x401UL
#define CKM_MD2                               0x200UL
#define CKM_MD2_HMAC                          0x201UL
#define CKM_MD2_HMAC_GENERAL                  0x202UL
#define CKM_MD5                               0x210UL
#define CKM_MD5_HMAC                          0x211UL
#define CKM_MD5_HMAC_GENERAL                  0x212UL
#define CKM_SHA_1                             0x220UL
#define CKM_SHA_1_HMAC                        0x221UL
#define CKM_SHA_1_HMAC_GENERAL                0x222UL
#define CKM_SHA224                            0x255UL
#define CKM_SHA256                            0x250UL
#define CKM_SHA224_HMAC                       0x256UL
#define CKM_SHA256_HMAC                       0x251UL
#define CKM_SHA224_HMAC_GENERAL               0x257UL
#define CKM_SHA256_HMAC_GENERAL               0x252UL
#define CKM_SHA384                            0x260UL
#define CKM_SHA384_HMAC                       0x261UL
#define CKM_SHA384_HMAC_GENERAL               0x262UL
#define CKM_SHA512                            0x270UL
#define CKM_SHA512_HMAC                       0x271UL
#define CKM_SHA512_HMAC_GENERAL               0x272UL
#define CKM_RIPEMD128                         0x230UL
#define CKM_RIPEMD128_HMAC                    0x231UL
#define CKM_RIPEMD128_HMAC_GENERAL            0x232UL
#define CKM_RIPEMD160                         0x240UL
#define CKM_RIPEMD160_HMAC                    0x241UL
#define CKM_RIPEMD160_HMAC_GENERAL            0x242UL
#define CKM_CDMF_KEY_GEN                      0x140UL
#define CKM_CDMF_ECB                          0x141UL
#define CKM_CDMF_CBC                          0x142UL
#define CKM_CDMF_MAC                          0x143UL
#define CKM_CDMF_MAC_GENERAL                  0x144UL
#define CKM_CDMF_CBC_PAD                      0x145UL
#define CKM_DH_PKCS_PARAMETER_GEN             0x2001UL
#define CKM_DSA_PARAMETER_GEN                 0x2000UL
#define CKM_X9_42_DH_PARAMETER_GEN            0x2002UL
#define CKM_AES_KEY_GEN                       0x1080UL
#define CKM_AES_ECB                           0x1081UL
#define CKM_AES_CBC                           0x1082UL
#define CKM_AES_MAC                           0x1083UL
#define CKM_AES_CMAC                          0x108AUL
#define CKM_AES_MAC_GENERAL                   0x1084UL
#define CKM_AES_CMAC_GENERAL                  0x1089UL /**< the standard's: CKM_AES_CMAC_GENERAL_STD */
#define CKM_AES_CBC_PAD                       0x1085UL
#define CKM_AES_KEY_WRAP_PAD                  0x1091UL /**< the standard's: CKM_AES_KEY_WRAP_PAD_STD */
#define CKM_AES_KEY_WRAP                      0x1090UL /**< the standard's: CKM_AES_KEY_WRAP_STD */
#define CKM_ARIA_KEY_GEN                      0x560UL
#define CKM_ARIA_ECB                          0x561UL
#define CKM_ARIA_CBC                          0x562UL
#define CKM_ARIA_MAC                          0x563UL
#define CKM_ARIA_MAC_GENERAL                  0x564UL
#define CKM_ARIA_CBC_PAD                      0x565UL
#define CKM_ECDH1_DERIVE                      0x1043UL /**< the standard's: CKM_ECDH1_DERIVE_STD */

/* Standard, not in the name tables */
#define CKM_DSA_SHA224_STD                    0x13UL /**< the standard's CKM_DSA_SHA224 */
#define CKM_DSA_SHA256_STD                    0x14UL /**< the standard's CKM_DSA_SHA256 */
#define CKM_DSA_SHA384                        0x15UL
#define CKM_DSA_SHA512                        0x16UL
#define CKM_SHA512_224                        0x48UL
#define CKM_SHA512_224_HMAC                   0x49UL
#define CKM_SHA512_224_HMAC_GENERAL           0x4AUL
#define CKM_SHA512_224_KEY_DERIVATION         0x4BUL
#define CKM_SHA512_256                        0x4CUL
#define CKM_SHA512_256_HMAC                   0x4DUL
#define CKM_SHA512_256_HMAC_GENERAL           0x4EUL
#define CKM_SHA512_256_KEY_DERIVATION         0x4FUL
#define CKM_SHA512_T                          0x50UL
#define CKM_SHA512_T_HMAC                     0x51UL
#define CKM_SHA512_T_HMAC_GENERAL             0x52UL
#define CKM_SHA512_T_KEY_DERIVATION           0x53UL
#define CKM_DES_OFB64_STD                     0x150UL /**< the standard's CKM_DES_OFB64 */
#define CKM_DES_OFB8                          0x151UL
#define CKM_DES_CFB64                         0x152UL
#define CKM_DES_CFB8                          0x153UL
#define CKM_CAST3_MAC_GENERAL                 0x314UL
#define CKM_CAST5_KEY_GEN                     0x320UL /**< alias of CKM_CAST128_KEY_GEN */
#define CKM_CAST5_ECB                         0x321UL /**< alias of CKM_CAST128_ECB */
#define CKM_CAST5_CBC                         0x322UL /**< alias of CKM_CAST128_CBC */
#define CKM_CAST5_MAC                         0x323UL /**< alias of CKM_CAST128_MAC */
#define CKM_CAST5_MAC_GENERAL                 0x324UL /**< alias of CKM_CAST128_MAC_GENERAL */
#define CKM_CAST5_CBC_PAD                     0x325UL /**< alias of CKM_CAST128_CBC_PAD */
#define CKM_RC5_MAC_GENERAL                   0x334UL
#define CKM_TLS_PRF                           0x378UL
#define CKM_PKCS5_PBKD2                       0x3B0UL
#define CKM_WTLS_PRE_MASTER_KEY_GEN           0x3D0UL
#define CKM_WTLS_MASTER_KEY_DERIVE            0x3D1UL
#define CKM_WTLS_MASTER_KEY_DERIVE_DH_ECC     0x3D2UL
#define CKM_WTLS_PRF                          0x3D3UL
#define CKM_WTLS_SERVER_KEY_AND_MAC_DERIVE    0x3D4UL
#define CKM_WTLS_CLIENT_KEY_AND_MAC_DERIVE    0x3D5UL
#define CKM_TLS12_MAC                         0x3D8UL
#define CKM_TLS12_KDF                         0x3D9UL
#define CKM_TLS12_MASTER_KEY_DERIVE           0x3E0UL
#define CKM_TLS12_KEY_AND_MAC_DERIVE          0x3E1UL
#define CKM_TLS12_MASTER_KEY_DERIVE_DH        0x3E2UL
#define CKM_TLS12_KEY_SAFE_DERIVE             0x3E3UL
#define CKM_TLS_MAC                           0x3E4UL
#define CKM_TLS_KDF                           0x3E5UL
#define CKM_KEY_WRAP_LYNKS                    0x400UL
#define CKM_CMS_SIG                           0x500UL
#define CKM_CAMELLIA_KEY_GEN                  0x550UL
#define CKM_CAMELLIA_ECB                      0x551UL
#define CKM_CAMELLIA_CBC                      0x552UL
#define CKM_CAMELLIA_MAC                      0x553UL
#define CKM_CAMELLIA_MAC_GENERAL              0x554UL
#define CKM_CAMELLIA_CBC_PAD                  0x555UL
#define CKM_CAMELLIA_ECB_ENCRYPT_DATA         0x556UL
#define CKM_CAMELLIA_CBC_ENCRYPT_DATA         0x557UL
#define CKM_ARIA_ECB_ENCRYPT_DATA             0x566UL
#define CKM_ARIA_CBC_ENCRYPT_DATA             0x567UL
#define CKM_SEED_KEY_GEN_STD                  0x650UL /**< the standard's CKM_SEED_KEY_GEN */
#define CKM_SEED_ECB_STD                      0x651UL /**< the standard's CKM_SEED_ECB */
#define CKM_SEED_CBC_STD                      0x652UL /**< the standard's CKM_SEED_CBC */
#define CKM_SEED_MAC_STD                      0x653UL /**< the standard's CKM_SEED_MAC */
#define CKM_SEED_MAC_GENERAL_STD              0x654UL /**< the standard's CKM_SEED_MAC_GENERAL */
#define CKM_SEED_CBC_PAD_STD                  0x655UL /**< the standard's CKM_SEED_CBC_PAD */
#define CKM_SEED_ECB_ENCRYPT_DATA             0x656UL
#define CKM_SEED_CBC_ENCRYPT_DATA             0x657UL
#define CKM_SKIPJACK_KEY_GEN                  0x1000UL
#define CKM_SKIPJACK_ECB64                    0x1001UL
#define CKM_SKIPJACK_CBC64                    0x1002UL
#define CKM_SKIPJACK_OFB64                    0x1003UL
#define CKM_SKIPJACK_CFB64                    0x1004UL
#define CKM_SKIPJACK_CFB32                    0x1005UL
#define CKM_SKIPJACK_CFB16                    0x1006UL
#define CKM_SKIPJACK_CFB8                     0x1007UL
#define CKM_SKIPJACK_WRAP                     0x1008UL
#define CKM_SKIPJACK_PRIVATE_WRAP             0x1009UL
#define CKM_SKIPJACK_RELAYX                   0x100AUL
#define CKM_KEA_KEY_PAIR_GEN                  0x1010UL
#define CKM_KEA_KEY_DERIVE                    0x1011UL
#define CKM_FORTEZZA_TIMESTAMP                0x1020UL
#define CKM_BATON_KEY_GEN                     0x1030UL
#define CKM_BATON_ECB128                      0x1031UL
#define CKM_BATON_ECB96                       0x1032UL
#define CKM_BATON_CBC128                      0x1033UL
#define CKM_BATON_COUNTER                     0x1034UL
#define CKM_BATON_SHUFFLE                     0x1035UL
#define CKM_BATON_WRAP                        0x1036UL
#define CKM_ECDSA_SHA224_STD                  0x1043UL /**< the standard's CKM_ECDSA_SHA224 */
#define CKM_ECDSA_SHA256_STD                  0x1044UL /**< the standard's CKM_ECDSA_SHA256 */
#define CKM_ECDSA_SHA384_STD                  0x1045UL /**< the standard's CKM_ECDSA_SHA384 */
#define CKM_ECDSA_SHA512_STD                  0x1046UL /**< the standard's CKM_ECDSA_SHA512 */
#define CKM_ECDH1_DERIVE_STD                  0x1050UL /**< the standard's CKM_ECDH1_DERIVE */
#define CKM_ECDH1_COFACTOR_DERIVE             0x1051UL
#define CKM_ECMQV_DERIVE                      0x1052UL
#define CKM_JUNIPER_KEY_GEN                   0x1060UL
#define CKM_JUNIPER_ECB128                    0x1061UL
#define CKM_JUNIPER_CBC128                    0x1062UL
#define CKM_JUNIPER_COUNTER                   0x1063UL
#define CKM_JUNIPER_SHUFFLE                   0x1064UL
#define CKM_JUNIPER_WRAP                      0x1065UL
#define CKM_FASTHASH                          0x1070UL
#define CKM_AES_CTR                           0x1086UL
#define CKM_AES_GCM                           0x1087UL
#define CKM_AES_CCM                           0x1088UL
#define CKM_AES_CTS                           0x1089UL
#define CKM_AES_CMAC_GENERAL_STD              0x108BUL /**< the standard's CKM_AES_CMAC_GENERAL */
#define CKM_AES_XCBC_MAC                      0x108CUL
#define CKM_AES_XCBC_MAC_96                   0x108DUL
#define CKM_AES_GMAC                          0x108EUL
#define CKM_BLOWFISH_KEY_GEN                  0x1090UL
#define CKM_BLOWFISH_CBC                      0x1091UL
#define CKM_TWOFISH_KEY_GEN                   0x1092UL
#define CKM_TWOFISH_CBC                       0x1093UL
#define CKM_BLOWFISH_CBC_PAD                  0x1094UL
#define CKM_TWOFISH_CBC_PAD                   0x1095UL
#define CKM_DES_ECB_ENCRYPT_DATA              0x1100UL
#define CKM_DES_CBC_ENCRYPT_DATA              0x1101UL
#define CKM_DES3_ECB_ENCRYPT_DATA             0x1102UL
#define CKM_DES3_CBC_ENCRYPT_DATA             0x1103UL
#define CKM_AES_ECB_ENCRYPT_DATA              0x1104UL
#define CKM_AES_CBC_ENCRYPT_DATA              0x1105UL
#define CKM_AES_OFB                           0x2104UL
#define CKM_AES_CFB64                         0x2105UL
#define CKM_AES_CFB8                          0x2106UL
#define CKM_AES_CFB128                        0x2107UL
#define CKM_AES_CFB1                          0x2108UL
#define CKM_AES_KEY_WRAP_STD                  0x2109UL /**< the standard's CKM_AES_KEY_WRAP */
#define CKM_AES_KEY_WRAP_PAD_STD              0x210AUL /**< the standard's CKM_AES_KEY_WRAP_PAD */
#define CKM_RSA_PKCS_TPM_1_1                  0x4001UL
#define CKM_RSA_PKCS_OAEP_TPM_1_1             0x4002UL
#define CKM_VENDOR_DEFINED                    0x80000000UL

/* Vendor */
#define CKM_DSA_SHA224                        0x80000032UL /**< the standard's: CKM_DSA_SHA224_STD */
#define CKM_DSA_SHA1_PKCS                     0x80000013UL
#define CKM_DSA_SHA224_PKCS                   0x80000033UL
#define CKM_DSA_SHA256                        0x80000034UL /**< the standard's: CKM_DSA_SHA256_STD */
#define CKM_DSA_SHA256_PKCS                   0x80000035UL
#define CKM_RC2_ECB_PAD                       0x80000101UL
#define CKM_RC5_ECB_PAD                       0x80000331UL
#define CKM_DES_ECB_PAD                       0x80000121UL
#define CKM_DES_BCF                           0x8000038EUL
#define CKM_DES3_ECB_PAD                      0x80000132UL
#define CKM_DES3_DDD_CBC                      0x80000964UL
#define CKM_CAST_ECB_PAD                      0x80000301UL
#define CKM_DES3_BCF                          0x8000038FUL
#define CKM_CAST3_ECB_PAD                     0x80000311UL
#define CKM_CAST128_ECB_PAD                   0x80000321UL
#define CKM_IDEA_ECB_PAD                      0x80000341UL
#define CKM_DES3_X919_MAC                     0x80000134UL
#define CKM_DES3_X919_MAC_GENERAL             0x80000135UL
#define CKM_XOR_BASE_AND_KEY                  0x80000364UL
#define CKM_MD4                               0x80000201UL
#define CKM_SHA                               0x80000202UL
#define CKM_DES_MDC_2_PAD1                    0x80000200UL
#define CKM_RIPEMD                            0x80000203UL
#define CKM_ARDFP                             0x80000204UL
#define CKM_NVB                               0x80000205UL
#define CKM_ENCODE_ATTRIBUTES                 0x80000950UL
#define CKM_ENCODE_X_509                      0x80000951UL
#define CKM_ENCODE_PKCS_10                    0x80000952UL
#define CKM_DECODE_X_509                      0x80000953UL
#define CKM_ENCODE_PUBLIC_KEY                 0x80000954UL
#define CKM_WRAPKEY_DES3_ECB                  0x80000961UL
#define CKM_WRAPKEY_DES3_CBC                  0x80000962UL
#define CKM_WRAPKEY_AES_CBC                   0x80000963UL
#define CKM_WRAPKEYBLOB_DES3_CBC              0x80000971UL
#define CKM_WRAPKEYBLOB_AES_CBC               0x80000970UL
#define CKM_VERIFY_CERTIFICATE                0x80000980UL
#define CKM_ENCODE_PKCS_7                     0x80000934UL
#define CKM_DECODE_PKCS_7                     0x80000935UL
#define CKM_RSA_PKCS_7                        0x80000930UL
#define CKM_RSA_PKCS_7_ENC                    0x80000931UL
#define CKM_RSA_PKCS_7_SIGN                   0x80000932UL
#define CKM_RSA_PKCS_7_SIGN_ENC               0x80000933UL
#define CKM_ENCODE_X_509_LOCAL_CERT           0x80000955UL
#define CKM_KEY_TRANSLATION                   0x8000001BUL
#define CKM_OS_UPGRADE                        0x80000990UL
#define CKM_DES_OFB64                         0x80000940UL /**< the standard's: CKM_DES_OFB64_STD */
#define CKM_DES3_OFB64                        0x80000941UL
#define CKM_FM_DOWNLOAD                       0x80000991UL
#define CKM_OS_UPGRADE_2                      0x80000994UL
#define CKM_FM_DOWNLOAD_2                     0x80000995UL
#define CKM_RSA_FIPS_186_4_PRIME_KEY_PAIR_GEN 0x80000400UL
#define CKM_DES_DERIVE_ECB                    0x80000500UL
#define CKM_DES_DERIVE_CBC                    0x80000501UL
#define CKM_DES3_DERIVE_ECB                   0x80000502UL
#define CKM_DES3_DERIVE_CBC                   0x80000503UL
#define CKM_SHA1_RSA_PKCS_TIMESTAMP           0x80000600UL
#define CKM_DES3_RETAIL_CFB_MAC               0x80000510UL
#define CKM_PP_LOAD_SECRET                    0x800009A0UL
#define CKM_VISA_CVV                          0x800009B0UL
#define CKM_ZKA_MDC_2_KEY_DERIVATION          0x800009C0UL
#define CKM_SEED_KEY_GEN                      0x800009D0UL /**< the standard's: CKM_SEED_KEY_GEN_STD */
#define CKM_SEED_ECB                          0x800009D1UL /**< the standard's: CKM_SEED_ECB_STD */
#define CKM_SEED_CBC                          0x800009D2UL /**< the standard's: CKM_SEED_CBC_STD */
#define CKM_SEED_MAC                          0x800009D3UL /**< the standard's: CKM_SEED_MAC_STD */
#define CKM_SEED_MAC_GENERAL                  0x800009D4UL /**< the standard's: CKM_SEED_MAC_GENERAL_STD */
#define CKM_SEED_ECB_PAD                      0x800009D5UL
#define CKM_SEED_CBC_PAD                      0x800009D6UL /**< the standard's: CKM_SEED_CBC_PAD_STD */
#define CKM_REPLICATE_TOKEN_RSA_AES           0x800009E0UL
#define CKM_SECRET_SHARE_WITH_ATTRIBUTES      0x800009F0UL
#define CKM_SECRET_RECOVER_WITH_ATTRIBUTES    0x800009F1UL
#define CKM_PKCS12_PBE_EXPORT                 0x800009F2UL
#define CKM_PKCS12_PBE_IMPORT                 0x800009F3UL
#define CKM_ECIES                             0x80000A00UL
#define CKM_SET_ATTRIBUTES                    0x80000A10UL
#define CKM_ECDSA_SHA224                      0x80000122UL /**< the standard's: CKM_ECDSA_SHA224_STD */
#define CKM_ECDSA_SHA256                      0x80000123UL /**< the standard's: CKM_ECDSA_SHA256_STD */
#define CKM_ECDSA_SHA384                      0x80000124UL /**< the standard's: CKM_ECDSA_SHA384_STD */
#define CKM_ECDSA_SHA512                      0x80000125UL /**< the standard's: CKM_ECDSA_SHA512_STD */
/** @} */

/**
 * @name Mask generation functions of OAEP and PSS
 * @{
 */
#define CKG_MGF1_SHA1   0x1UL
#define CKG_MGF1_SHA256 0x2UL
#define CKG_MGF1_SHA384 0x3UL
#define CKG_MGF1_SHA512 0x4UL
#define CKG_MGF1_SHA224 0x5UL
/** @} */

/**
 * @name Sources of the OAEP encoding parameter, and of the PBKDF2 salt
 * @{
 */
#define CKZ_DATA_SPECIFIED 0x1UL
#define CKZ_SALT_SPECIFIED 0x1UL /**< for PKCS#5 PBKD2 */
/** @} */

/**
 * @name Key derivation functions of ECDH, X9.42 DH and ECIES
 * @{
 */
#define CKD_NULL                 0x1UL /**< the shared secret as it is */
#define CKD_SHA1_KDF             0x2UL
#define CKD_SHA1_KDF_ASN1        0x3UL
#define CKD_SHA1_KDF_CONCATENATE 0x4UL
#define CKD_SHA224_KDF           0x5UL
#define CKD_SHA256_KDF           0x6UL
#define CKD_SHA384_KDF           0x7UL
#define CKD_SHA512_KDF           0x8UL
/** @} */

/**
 * @name Session states (PKCS#11 section 9.3)
 * @{
 */
#define CKS_RO_PUBLIC_SESSION 0x0UL
#define CKS_RO_USER_FUNCTIONS 0x1UL
#define CKS_RW_PUBLIC_SESSION 0x2UL
#define CKS_RW_USER_FUNCTIONS 0x3UL
#define CKS_RW_SO_FUNCTIONS   0x4UL
/** @} */

/**
 * @name User types (PKCS#11 section 9.3)
 * @{
 */
#define CKU_SO               0x0UL
#define CKU_USER             0x1UL
#define CKU_CONTEXT_SPECIFIC 0x2UL /**< for keys with CKA_ALWAYS_AUTHENTICATE */
/** @} */

/**
 * @name Flags (PKCS#11 section 9)
 * One number means different things in different structures.
 * @{
 */
/* CK_SLOT_INFO */
#define CKF_TOKEN_PRESENT                  0x1UL
#define CKF_REMOVABLE_DEVICE               0x2UL
#define CKF_HW_SLOT                        0x4UL

/* CK_TOKEN_INFO */
#define CKF_RNG                            0x1UL
#define CKF_WRITE_PROTECTED                0x2UL
#define CKF_LOGIN_REQUIRED                 0x4UL
#define CKF_USER_PIN_INITIALIZED           0x8UL
#define CKF_RESTORE_KEY_NOT_NEEDED         0x20UL
#define CKF_CLOCK_ON_TOKEN                 0x40UL
#define CKF_PROTECTED_AUTHENTICATION_PATH  0x100UL
#define CKF_DUAL_CRYPTO_OPERATIONS         0x200UL
#define CKF_TOKEN_INITIALIZED              0x400UL
#define CKF_SECONDARY_AUTHENTICATION       0x800UL
#define CKF_USER_PIN_COUNT_LOW             0x10000UL
#define CKF_USER_PIN_FINAL_TRY             0x20000UL
#define CKF_USER_PIN_LOCKED                0x40000UL
#define CKF_USER_PIN_TO_BE_CHANGED         0x80000UL
#define CKF_SO_PIN_COUNT_LOW               0x100000UL
#define CKF_SO_PIN_FINAL_TRY               0x200000UL
#define CKF_SO_PIN_LOCKED                  0x400000UL
#define CKF_SO_PIN_TO_BE_CHANGED           0x800000UL
#define CKF_ERROR_STATE                    0x1000000UL

/* CK_SESSION_INFO and C_OpenSession */
#define CKF_RW_SESSION                     0x2UL
#define CKF_SERIAL_SESSION                 0x4UL /**< always set it */

/* CK_MECHANISM_INFO */
#define CKF_HW                             0x1UL
#define CKF_ENCRYPT                        0x100UL
#define CKF_DECRYPT                        0x200UL
#define CKF_DIGEST                         0x400UL
#define CKF_SIGN                           0x800UL
#define CKF_SIGN_RECOVER                   0x1000UL
#define CKF_VERIFY                         0x2000UL
#define CKF_VERIFY_RECOVER                 0x4000UL
#define CKF_GENERATE                       0x8000UL
#define CKF_GENERATE_KEY_PAIR              0x10000UL
#define CKF_WRAP                           0x20000UL
#define CKF_UNWRAP                         0x40000UL
#define CKF_DERIVE                         0x80000UL
#define CKF_EC_F_P                         0x100000UL
#define CKF_EC_F_2M                        0x200000UL
#define CKF_EC_ECPARAMETERS                0x400000UL
#define CKF_EC_NAMEDCURVE                  0x800000UL
#define CKF_EC_UNCOMPRESS                  0x1000000UL
#define CKF_EC_COMPRESS                    0x2000000UL
#define CKF_EXTENSION                      0x80000000UL

/* Attribute types */
#define CKF_ARRAY_ATTRIBUTE                0x40000000UL

/* CK_C_INITIALIZE_ARGS */
#define CKF_LIBRARY_CANT_CREATE_OS_THREADS 0x1UL
#define CKF_OS_LOCKING_OK                  0x2UL

/* C_WaitForSlotEvent */
#define CKF_DONT_BLOCK                     0x1UL
/** @} */

/**
 * @name Return values (PKCS#11 section 11.1)
 * @{
 */
#define CKR_OK                                  0x0UL
#define CKR_CANCEL                              0x1UL
#define CKR_HOST_MEMORY                         0x2UL
#define CKR_SLOT_ID_INVALID                     0x3UL
#define CKR_GENERAL_ERROR                       0x5UL
#define CKR_FUNCTION_FAILED                     0x6UL
#define CKR_ARGUMENTS_BAD                       0x7UL
#define CKR_NO_EVENT                            0x8UL
#define CKR_NEED_TO_CREATE_THREADS              0x9UL
#define CKR_CANT_LOCK                           0xAUL
#define CKR_ATTRIBUTE_READ_ONLY                 0x10UL
#define CKR_ATTRIBUTE_SENSITIVE                 0x11UL
#define CKR_ATTRIBUTE_TYPE_INVALID              0x12UL
#define CKR_ATTRIBUTE_VALUE_INVALID             0x13UL
#define CKR_DATA_INVALID                        0x20UL
#define CKR_DATA_LEN_RANGE                      0x21UL
#define CKR_DEVICE_ERROR                        0x30UL
#define CKR_DEVICE_REMOVED                      0x32UL
#define CKR_DEVICE_MEMORY                       0x31UL
#define CKR_ENCRYPTED_DATA_INVALID              0x40UL
#define CKR_ENCRYPTED_DATA_LEN_RANGE            0x41UL
#define CKR_FUNCTION_CANCELED                   0x50UL
#define CKR_FUNCTION_NOT_SUPPORTED              0x54UL
#define CKR_KEY_HANDLE_INVALID                  0x60UL
#define CKR_KEY_SIZE_RANGE                      0x62UL
#define CKR_KEY_TYPE_INCONSISTENT               0x63UL
#define CKR_KEY_CHANGED                         0x65UL
#define CKR_KEY_NOT_NEEDED                      0x64UL
#define CKR_KEY_NEEDED                          0x66UL
#define CKR_KEY_INDIGESTIBLE                    0x67UL
#define CKR_KEY_FUNCTION_NOT_PERMITTED          0x68UL
#define CKR_KEY_NOT_WRAPPABLE                   0x69UL
#define CKR_KEY_UNEXTRACTABLE                   0x6AUL
#define CKR_KEY_LENGTH_NOT_DIVISIBLE_BY_512     0x6CUL
#define CKR_MECHANISM_INVALID                   0x70UL
#define CKR_MECHANISM_PARAM_INVALID             0x71UL
#define CKR_OBJECT_HANDLE_INVALID               0x82UL
#define CKR_OPERATION_ACTIVE                    0x90UL
#define CKR_OPERATION_NOT_INITIALIZED           0x91UL
#define CKR_PIN_INCORRECT                       0xA0UL
#define CKR_PIN_INVALID                         0xA1UL
#define CKR_PIN_LEN_RANGE                       0xA2UL
#define CKR_PIN_EXPIRED                         0xA3UL
#define CKR_PIN_LOCKED                          0xA4UL
#define CKR_SESSION_CLOSED                      0xB0UL
#define CKR_SESSION_COUNT                       0xB1UL
#define CKR_SESSION_HANDLE_INVALID              0xB3UL
#define CKR_SESSION_PARALLEL_NOT_SUPPORTED      0xB4UL
#define CKR_SESSION_READ_ONLY                   0xB5UL
#define CKR_SESSION_EXISTS                      0xB6UL
#define CKR_SESSION_READ_ONLY_EXISTS            0xB7UL
#define CKR_SESSION_READ_WRITE_SO_EXISTS        0xB8UL
#define CKR_SIGNATURE_INVALID                   0xC0UL
#define CKR_SIGNATURE_LEN_RANGE                 0xC1UL
#define CKR_TEMPLATE_INCOMPLETE                 0xD0UL
#define CKR_TEMPLATE_INCONSISTENT               0xD1UL
#define CKR_TOKEN_NOT_PRESENT                   0xE0UL
#define CKR_TOKEN_NOT_RECOGNIZED                0xE1UL
#define CKR_TOKEN_WRITE_PROTECTED               0xE2UL
#define CKR_UNWRAPPING_KEY_HANDLE_INVALID       0xF0UL
#define CKR_UNWRAPPING_KEY_SIZE_RANGE           0xF1UL
#define CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT    0xF2UL
#define CKR_USER_ALREADY_LOGGED_IN              0x100UL
#define CKR_USER_NOT_LOGGED_IN                  0x101UL
#define CKR_USER_PIN_NOT_INITIALIZED            0x102UL
#define CKR_USER_TYPE_INVALID                   0x103UL
#define CKR_USER_ANOTHER_ALREADY_LOGGED_IN      0x104UL
#define CKR_USER_TOO_MANY_TYPES                 0x105UL
#define CKR_WRAPPED_KEY_INVALID                 0x110UL
#define CKR_WRAPPED_KEY_LEN_RANGE               0x112UL
#define CKR_WRAPPING_KEY_HANDLE_INVALID         0x113UL
#define CKR_WRAPPING_KEY_SIZE_RANGE             0x114UL
#define CKR_WRAPPING_KEY_TYPE_INCONSISTENT      0x115UL
#define CKR_RANDOM_SEED_NOT_SUPPORTED           0x120UL
#define CKR_RANDOM_NO_RNG                       0x121UL
#define CKR_DOMAIN_PARAMS_INVALID               0x130UL
#define CKR_BUFFER_TOO_SMALL                    0x150UL
#define CKR_SAVED_STATE_INVALID                 0x160UL
#define CKR_INFORMATION_SENSITIVE               0x170UL
#define CKR_STATE_UNSAVEABLE                    0x180UL
#define CKR_CRYPTOKI_NOT_INITIALIZED            0x190UL
#define CKR_CRYPTOKI_ALREADY_INITIALIZED        0x191UL
#define CKR_MUTEX_BAD                           0x1A0UL
#define CKR_MUTEX_NOT_LOCKED                    0x1A1UL

/* Standard, not in the name tables */
#define CKR_ACTION_PROHIBITED                   0x1BUL
#define CKR_FUNCTION_NOT_PARALLEL               0x51UL
#define CKR_CURVE_NOT_SUPPORTED                 0x140UL
#define CKR_NEW_PIN_MODE                        0x1B0UL
#define CKR_NEXT_OTP                            0x1B1UL
#define CKR_EXCEEDED_MAX_ITERATIONS             0x1B5UL
#define CKR_FIPS_SELF_TEST_FAILED               0x1B6UL
#define CKR_LIBRARY_LOAD_FAILED                 0x1B7UL
#define CKR_PIN_TOO_WEAK                        0x1B8UL
#define CKR_PUBLIC_KEY_INVALID                  0x1B9UL
#define CKR_FUNCTION_REJECTED                   0x200UL
#define CKR_VENDOR_DEFINED                      0x80000000UL

/* Vendor */
#define CKR_VALUE_NOT_ODD_PARITY                0x80000140UL
#define CKR_MIRTAL_ERROR                        0x80000100UL
#define CKR_TIME_STAMP                          0x80000101UL
#define CKR_ACCESS_DENIED                       0x80000102UL
#define CKR_CRYPTOKI_UNUSABLE                   0x80000103UL
#define CKR_ENCODE_ERROR                        0x80000104UL
#define CKR_V_CONFIG                            0x80000105UL
#define CKR_SO_NOT_LOGGED_IN                    0x80000106UL
#define CKR_CERTIFICATE_NOT_VALIDATED           0x80000107UL
#define CKR_PIN_ALREADY_INITIALIZED             0x80000108UL
#define CKR_REMOTE_SERVER_ERROR                 0x8000010AUL
#define CKR_CSA_HARDWARE_ERROR                  0x8000010BUL
#define CKR_NO_CHALLENGE                        0x80000110UL
#define CKR_RESPONSE_INVALID                    0x80000111UL
#define CKR_EVENT_LOG_NOT_FULL                  0x80000113UL
#define CKR_OBJECT_READ_ONLY                    0x80000114UL
#define CKR_TOKEN_READ_ONLY                     0x80000115UL
#define CKR_TOKEN_NOT_INITIALIZED               0x80000116UL
#define CKR_NOT_ADMIN_TOKEN                     0x80000117UL
#define CKR_AUTHENTICATION_REQUIRED             0x80000130UL
#define CKR_OPERATION_NOT_PERMITTED             0x80000131UL
#define CKR_PKCS12_DECODE_ERROR                 0x80000132UL
#define CKR_PKCS12_UNSUPPORTED_SAFEBAG_TYPE     0x80000133UL
#define CKR_PKCS12_UNSUPPORTED_PRIVACY_MODE     0x80000134UL
#define CKR_PKCS12_UNSUPPORTED_INTEGRITY_MODE   0x80000135UL
#define CKR_KEY_OR_CERT_EXPIRED                 0x80000136UL
#define CKR_HOST_ERROR                          0x80001000UL
#define CKR_BAD_REQUEST                         0x80001001UL
#define CKR_BAD_ATTRIBUTE_PACKING               0x80001002UL
#define CKR_BAD_ATTRIBUTE_COUNT                 0x80001003UL
#define CKR_BAD_PARAMETER_PACKING               0x80001004UL
#define CKR_HOST_ERROR_NO_DMA                   0x80001386UL
#define CKR_HOST_INTERFACE_MASTER_KEY_NOT_FOUND 0x80001400UL
#define CKR_MSG_ERROR                           0x80000300UL
#define CKR_MSG_ERROR_CANNOT_DERIVE_KEYS        0x80000381UL
#define CKR_MSG_ERROR_BAD_REQUEST_SIGNATURE     0x80000382UL
#define CKR_MSG_ERROR_BAD_REPLY_SIGNATURE       0x80000383UL
#define CKR_MSG_ERROR_GENERAL_ERROR             0x80000384UL
#define CKR_MSG_ERROR_BAD_PROTECTION            0x80000385UL
#define CKR_MSG_ERROR_DEVICE_RESET              0x80000386UL
#define CKR_MSG_ERROR_NO_SESSION_KEYS           0x80000387UL
#define CKR_BAD_REPLY_RESPONSE                  0x80000388UL
#define CKR_KEY_ROLLOVER                        0x80000389UL
#define CKR_MSG_ERROR_NEED_IV_UPDATE            0x80000310UL
#define CKR_MSG_ERROR_DUPLICATE_IV              0x80000311UL
#define CKR_WLD_ERROR                           0x80002000UL
#define CKR_WLD_ERROR_NO_CONFIGURATION          0x80002001UL
#define CKR_WLD_ERROR_ITEM_UNREADABLE           0x80002002UL
#define CKR_WLD_ERROR_NO_TOKEN_LABEL            0x80002003UL
#define CKR_WLD_ERROR_TOKEN_LABEL_TOO_LONG      0x80002004UL
#define CKR_WLD_ERROR_SERIAL_NUMBER_TOO_LONG    0x80002005UL
#define CKR_WLD_ERROR_SLOT_DESCRIPTION_TOO_LONG 0x80002006UL
#define CKR_WLD_ERROR_INVALID_FORMAT            0x80002007UL
#define CKR_WLD_ERROR_LOGIN_CACHE_INCONSISTENT  0x80002010UL
/** @} */

/**
 * @name Notifications
 * @{
 */
#define CKN_SURRENDER 0x0UL
/** @} */

/* clang-format on */

/**
 * @name General structures (PKCS#11 section 9)
 * @{
 */
typedef struct CK_VERSION {
    CK_BYTE major;
    CK_BYTE minor; /**< hundredths: version 2.20 is {2, 20} */
} CK_VERSION;
typedef CK_VERSION* CK_VERSION_PTR;

typedef struct CK_INFO {
    CK_VERSION cryptokiVersion; /**< of the interface */
    CK_UTF8CHAR manufacturerID[32];
    CK_FLAGS flags; /**< always zero */
    CK_UTF8CHAR libraryDescription[32];
    CK_VERSION libraryVersion;
} CK_INFO;
typedef CK_INFO* CK_INFO_PTR;

typedef struct CK_SLOT_INFO {
    CK_UTF8CHAR slotDescription[64];
    CK_UTF8CHAR manufacturerID[32];
    CK_FLAGS flags;
    CK_VERSION hardwareVersion;
    CK_VERSION firmwareVersion;
} CK_SLOT_INFO;
typedef CK_SLOT_INFO* CK_SLOT_INFO_PTR;

/**
 * Any count or memory size may be CK_UNAVAILABLE_INFORMATION. The two maxima of sessions may also be
 * CK_EFFECTIVELY_INFINITE. Memory is in bytes.
 */
typedef struct CK_TOKEN_INFO {
    CK_UTF8CHAR label[32];
    CK_UTF8CHAR manufacturerID[32];
    CK_UTF8CHAR model[16];
    CK_CHAR serialNumber[16];
    CK_FLAGS flags;
    CK_ULONG ulMaxSessionCount;
    CK_ULONG ulSessionCount;
    CK_ULONG ulMaxRwSessionCount;
    CK_ULONG ulRwSessionCount;
    CK_ULONG ulMaxPinLen; /**< bytes */
    CK_ULONG ulMinPinLen; /**< bytes */
    CK_ULONG ulTotalPublicMemory;
    CK_ULONG ulFreePublicMemory;
    CK_ULONG ulTotalPrivateMemory;
    CK_ULONG ulFreePrivateMemory;
    CK_VERSION hardwareVersion;
    CK_VERSION firmwareVersion;
    CK_CHAR utcTime[16]; /**< YYYYMMDDhhmmssxx; valid only if CKF_CLOCK_ON_TOKEN is set */
} CK_TOKEN_INFO;
typedef CK_TOKEN_INFO* CK_TOKEN_INFO_PTR;

typedef struct CK_SESSION_INFO {
    CK_SLOT_ID slotID;
    CK_STATE state;
    CK_FLAGS flags;
    CK_ULONG ulDeviceError; /**< the device's own code */
} CK_SESSION_INFO;
typedef CK_SESSION_INFO* CK_SESSION_INFO_PTR;

/** The unit of the key sizes, bits or bytes, depends on the mechanism. */
typedef struct CK_MECHANISM_INFO {
    CK_ULONG ulMinKeySize;
    CK_ULONG ulMaxKeySize;
    CK_FLAGS flags;
} CK_MECHANISM_INFO;
typedef CK_MECHANISM_INFO* CK_MECHANISM_INFO_PTR;

typedef struct CK_ATTRIBUTE {
    CK_ATTRIBUTE_TYPE type;
    CK_VOID_PTR pValue;  /**< owned by the caller; null asks C_GetAttributeValue for the length */
    CK_ULONG ulValueLen; /**< bytes */
} CK_ATTRIBUTE;
typedef CK_ATTRIBUTE* CK_ATTRIBUTE_PTR;

/** ASCII digits without a terminating NUL. */
typedef struct CK_DATE {
    CK_CHAR year[4];
    CK_CHAR month[2];
    CK_CHAR day[2];
} CK_DATE;
typedef CK_DATE* CK_DATE_PTR;

typedef struct CK_MECHANISM {
    CK_MECHANISM_TYPE mechanism;
    CK_VOID_PTR pParameter;  /**< owned by the caller; null if the mechanism takes no parameter */
    CK_ULONG ulParameterLen; /**< bytes; 0 for a null parameter */
} CK_MECHANISM;
typedef CK_MECHANISM* CK_MECHANISM_PTR;
/** @} */

/**
 * @name Callbacks and initialisation arguments (PKCS#11 sections 9.6 and 9.7)
 * @{
 */
typedef CK_RV (*CK_NOTIFY)(CK_SESSION_HANDLE hSession, CK_NOTIFICATION event, CK_VOID_PTR pApplication);
typedef CK_RV (*CK_CREATEMUTEX)(CK_VOID_PTR_PTR ppMutex);
typedef CK_RV (*CK_DESTROYMUTEX)(CK_VOID_PTR pMutex);
typedef CK_RV (*CK_LOCKMUTEX)(CK_VOID_PTR pMutex);
typedef CK_RV (*CK_UNLOCKMUTEX)(CK_VOID_PTR pMutex);

/**
 * The argument of C_Initialize. Either all four callbacks are set or all four are null. The library copies
 * what it needs, so the structure may be freed after the call; the callbacks are used until C_Finalize.
 */
typedef struct CK_C_INITIALIZE_ARGS {
    CK_CREATEMUTEX CreateMutex;
    CK_DESTROYMUTEX DestroyMutex;
    CK_LOCKMUTEX LockMutex;
    CK_UNLOCKMUTEX UnlockMutex;
    CK_FLAGS flags;
    CK_VOID_PTR pReserved; /**< must be null */
} CK_C_INITIALIZE_ARGS;
typedef CK_C_INITIALIZE_ARGS* CK_C_INITIALIZE_ARGS_PTR;
/** @} */

/**
 * @name Mechanism parameters (PKCS#11 section 12)
 * Every pointer points to memory that the caller owns and keeps valid during the call; the library never
 * frees it. Lengths are in bytes, except where the name or the comment says bits. Members that the library
 * writes are marked [out].
 * @{
 */
typedef struct CK_RSA_PKCS_OAEP_PARAMS {
    CK_MECHANISM_TYPE hashAlg;
    CK_RSA_PKCS_MGF_TYPE mgf;
    CK_RSA_PKCS_OAEP_SOURCE_TYPE source;
    CK_VOID_PTR pSourceData; /**< the encoding parameter */
    CK_ULONG sourceDataLen;
} CK_RSA_PKCS_OAEP_PARAMS;
typedef CK_RSA_PKCS_OAEP_PARAMS* CK_RSA_PKCS_OAEP_PARAMS_PTR;

typedef struct CK_RSA_PKCS_PSS_PARAMS {
    CK_MECHANISM_TYPE hashAlg;
    CK_RSA_PKCS_MGF_TYPE mgf;
    CK_ULONG sLen; /**< length of the salt */
} CK_RSA_PKCS_PSS_PARAMS;
typedef CK_RSA_PKCS_PSS_PARAMS* CK_RSA_PKCS_PSS_PARAMS_PTR;

typedef struct CK_RC2_CBC_PARAMS {
    CK_ULONG effectiveBits; /**< bits */
    CK_BYTE iv[8];
} CK_RC2_CBC_PARAMS;
typedef CK_RC2_CBC_PARAMS* CK_RC2_CBC_PARAMS_PTR;

typedef struct CK_RC2_MAC_GENERAL_PARAMS {
    CK_ULONG effectiveBits; /**< bits */
    CK_ULONG macLength;
} CK_RC2_MAC_GENERAL_PARAMS;
typedef CK_RC2_MAC_GENERAL_PARAMS* CK_RC2_MAC_GENERAL_PARAMS_PTR;

typedef struct CK_PBE_PARAMS {
    CK_BYTE_PTR pInitVector; /**< [out] 8 bytes, if the mechanism generates an IV */
    CK_UTF8CHAR_PTR pPassword;
    CK_ULONG passwordLen;
    CK_BYTE_PTR pSalt;
    CK_ULONG saltLen;
    CK_ULONG iteration;
} CK_PBE_PARAMS;
typedef CK_PBE_PARAMS* CK_PBE_PARAMS_PTR;

/** Vendor: CKM_PKCS12_PBE_IMPORT. The passwords of a PKCS#12 file, and room for its certificates' handles. */
typedef struct CK_PKCS12_PBE_IMPORT_PARAMS {
    CK_UTF8CHAR_PTR passwordAuthSafe;
    CK_ULONG passwordAuthSafeLen;
    CK_UTF8CHAR_PTR passwordHMAC;
    CK_ULONG passwordHMACLen;
    CK_ATTRIBUTE_PTR certAttr;  /**< template of the imported certificates */
    CK_ULONG certAttrCount;     /**< attributes */
    CK_OBJECT_HANDLE_PTR hCert; /**< [out] the certificates' handles; null asks for their number */
    CK_ULONG_PTR hCertCount;    /**< in: capacity of hCert in handles; out: number of handles */
} CK_PKCS12_PBE_IMPORT_PARAMS;
typedef CK_PKCS12_PBE_IMPORT_PARAMS* CK_PKCS12_PBE_IMPORT_PARAMS_PTR;

/** Vendor: CKM_PKCS12_PBE_EXPORT. How the PKCS#12 file is protected. */
typedef struct CK_PKCS12_PBE_EXPORT_PARAMS {
    CK_OBJECT_HANDLE keyCert; /**< the certificate of the exported key */
    CK_UTF8CHAR_PTR passwordAuthSafe;
    CK_ULONG passwordAuthSafeLen;
    CK_UTF8CHAR_PTR passwordHMAC;
    CK_ULONG passwordHMACLen;
    CK_MECHANISM_TYPE safeBagKgMech;
    CK_MECHANISM_TYPE safeContentKgMech;
    CK_MECHANISM_TYPE hmacKgMech;
} CK_PKCS12_PBE_EXPORT_PARAMS;
typedef CK_PKCS12_PBE_EXPORT_PARAMS* CK_PKCS12_PBE_EXPORT_PARAMS_PTR;

typedef struct CK_KEY_WRAP_SET_OAEP_PARAMS {
    CK_BYTE bBC;    /**< the block contents byte */
    CK_BYTE_PTR pX; /**< hash of the plaintext and extra data; [out] when unwrapping */
    CK_ULONG XLen;
} CK_KEY_WRAP_SET_OAEP_PARAMS;
typedef CK_KEY_WRAP_SET_OAEP_PARAMS* CK_KEY_WRAP_SET_OAEP_PARAMS_PTR;

typedef struct CK_SSL3_RANDOM_DATA {
    CK_BYTE_PTR pClientRandom;
    CK_ULONG clientRandomLen;
    CK_BYTE_PTR pServerRandom;
    CK_ULONG serverRandomLen;
} CK_SSL3_RANDOM_DATA;
typedef CK_SSL3_RANDOM_DATA* CK_SSL3_RANDOM_DATA_PTR;

typedef struct CK_SSL3_MASTER_KEY_DERIVE_PARAMS {
    CK_SSL3_RANDOM_DATA RandomInfo;
    CK_VERSION_PTR pVersion; /**< [out] the protocol version of the pre-master key */
} CK_SSL3_MASTER_KEY_DERIVE_PARAMS;
typedef CK_SSL3_MASTER_KEY_DERIVE_PARAMS* CK_SSL3_MASTER_KEY_DERIVE_PARAMS_PTR;

typedef struct CK_SSL3_KEY_MAT_OUT {
    CK_OBJECT_HANDLE hClientMacSecret; /**< [out] */
    CK_OBJECT_HANDLE hServerMacSecret; /**< [out] */
    CK_OBJECT_HANDLE hClientKey;       /**< [out] */
    CK_OBJECT_HANDLE hServerKey;       /**< [out] */
    CK_BYTE_PTR pIVClient;             /**< [out] IVSizeInBits, rounded up to bytes */
    CK_BYTE_PTR pIVServer;             /**< [out] IVSizeInBits, rounded up to bytes */
} CK_SSL3_KEY_MAT_OUT;
typedef CK_SSL3_KEY_MAT_OUT* CK_SSL3_KEY_MAT_OUT_PTR;

typedef struct CK_SSL3_KEY_MAT_PARAMS {
    CK_ULONG macSizeInBits;
    CK_ULONG keySizeInBits;
    CK_ULONG IVSizeInBits;
    CK_BBOOL bIsExport;
    CK_SSL3_RANDOM_DATA RandomInfo;
    CK_SSL3_KEY_MAT_OUT_PTR pReturnedKeyMaterial; /**< [out] */
} CK_SSL3_KEY_MAT_PARAMS;
typedef CK_SSL3_KEY_MAT_PARAMS* CK_SSL3_KEY_MAT_PARAMS_PTR;

typedef struct CK_KEY_DERIVATION_STRING_DATA {
    CK_BYTE_PTR pData;
    CK_ULONG len;
} CK_KEY_DERIVATION_STRING_DATA;
typedef CK_KEY_DERIVATION_STRING_DATA* CK_KEY_DERIVATION_STRING_DATA_PTR;

/** Vendor: a mechanism and the object that it works with, for example for CKM_ENCODE_X_509_LOCAL_CERT. */
typedef struct CK_MECH_TYPE_AND_OBJECT {
    CK_MECHANISM_TYPE mechanism;
    CK_OBJECT_HANDLE hObj;
} CK_MECH_TYPE_AND_OBJECT;
typedef CK_MECH_TYPE_AND_OBJECT* CK_MECH_TYPE_AND_OBJECT_PTR;

/** Vendor: CKM_DES_DERIVE_CBC. */
typedef struct CK_DES_CBC_PARAMS {
    CK_BYTE iv[8];
    CK_BYTE data[8];
} CK_DES_CBC_PARAMS;
typedef CK_DES_CBC_PARAMS* CK_DES_CBC_PARAMS_PTR;

/** Vendor: CKM_DES3_DERIVE_CBC, to derive a double-length key. */
typedef struct CK_DES2_CBC_PARAMS {
    CK_BYTE iv[8];
    CK_BYTE data[16];
} CK_DES2_CBC_PARAMS;
typedef CK_DES2_CBC_PARAMS* CK_DES2_CBC_PARAMS_PTR;

/** Vendor: CKM_DES3_DERIVE_CBC, to derive a triple-length key. */
typedef struct CK_DES3_CBC_PARAMS {
    CK_BYTE iv[8];
    CK_BYTE data[24];
} CK_DES3_CBC_PARAMS;
typedef CK_DES3_CBC_PARAMS* CK_DES3_CBC_PARAMS_PTR;

/** Vendor: CKM_PP_LOAD_SECRET. How the PIN pad asks for a secret. */
typedef struct CK_PP_LOAD_SECRET_PARAMS {
    CK_BBOOL bMaskInput; /**< true: the display hides what is typed */
    CK_CHAR cConvert;    /**< how the digits are converted into the value */
    CK_CHAR cTimeout;    /**< how long the PIN pad waits; the vendor defines the unit */
    CK_CHAR_PTR prompt;  /**< NUL-terminated */
} CK_PP_LOAD_SECRET_PARAMS;
typedef CK_PP_LOAD_SECRET_PARAMS* CK_PP_LOAD_SECRET_PARAMS_PTR;

/** Vendor: CKM_SHA1_RSA_PKCS_TIMESTAMP. */
typedef struct CK_TIMESTAMP_PARAMS {
    CK_BBOOL useMilliseconds;
    CK_ULONG timestampFormat;
} CK_TIMESTAMP_PARAMS;
typedef CK_TIMESTAMP_PARAMS* CK_TIMESTAMP_PARAMS_PTR;

/** Vendor: CKM_REPLICATE_TOKEN_RSA_AES. */
typedef struct CK_REPLICATE_TOKEN_PARAMS {
    CK_CHAR peerId[16];
} CK_REPLICATE_TOKEN_PARAMS;
typedef CK_REPLICATE_TOKEN_PARAMS* CK_REPLICATE_TOKEN_PARAMS_PTR;

/** Vendor: CKM_SECRET_SHARE_WITH_ATTRIBUTES. The two numbers of the threshold scheme. */
typedef struct CK_SECRET_SHARE_PARAMS {
    CK_ULONG n;
    CK_ULONG m;
} CK_SECRET_SHARE_PARAMS;
typedef CK_SECRET_SHARE_PARAMS* CK_SECRET_SHARE_PARAMS_PTR;

/** Vendor: CKM_ECIES. */
typedef struct CK_ECIES_PARAMS {
    CK_ULONG dhPrimitive;
    CK_EC_KDF_TYPE kdf;
    CK_ULONG ulSharedDataLen1;
    CK_BYTE_PTR pSharedData1; /**< for the key derivation */
    CK_ULONG encScheme;
    CK_ULONG ulEncKeyLenInBits;
    CK_ULONG macScheme;
    CK_ULONG ulMacKeyLenInBits;
    CK_ULONG ulMacLenInBits;
    CK_ULONG ulSharedDataLen2;
    CK_BYTE_PTR pSharedData2; /**< for the MAC */
} CK_ECIES_PARAMS;
typedef CK_ECIES_PARAMS* CK_ECIES_PARAMS_PTR;

typedef struct CK_ECDH1_DERIVE_PARAMS {
    CK_EC_KDF_TYPE kdf;
    CK_ULONG ulSharedDataLen;
    CK_BYTE_PTR pSharedData;
    CK_ULONG ulPublicDataLen;
    CK_BYTE_PTR pPublicData; /**< the other party's public point */
} CK_ECDH1_DERIVE_PARAMS;
typedef CK_ECDH1_DERIVE_PARAMS* CK_ECDH1_DERIVE_PARAMS_PTR;

/** CKM_AES_GCM, PKCS#11 v2.40 with errata and later. */
typedef struct CK_GCM_PARAMS {
    CK_BYTE_PTR pIv;
    CK_ULONG ulIvLen;
    CK_ULONG ulIvBits; /**< bits */
    CK_BYTE_PTR pAAD;
    CK_ULONG ulAADLen;
    CK_ULONG ulTagBits; /**< bits */
} CK_GCM_PARAMS;
typedef CK_GCM_PARAMS* CK_GCM_PARAMS_PTR;

/** CKM_AES_GCM as the header of PKCS#11 v2.40 has it, for modules that were built with it. */
typedef struct CK_GCM_PARAMS_OLD {
    CK_BYTE_PTR pIv;
    CK_ULONG ulIvLen;
    CK_BYTE_PTR pAAD;
    CK_ULONG ulAADLen;
    CK_ULONG ulTagBits; /**< bits */
} CK_GCM_PARAMS_OLD;
typedef CK_GCM_PARAMS_OLD* CK_GCM_PARAMS_OLD_PTR;

typedef struct CK_CCM_PARAMS {
    CK_ULONG ulDataLen; /**< length of the clear text */
    CK_BYTE_PTR pNonce;
    CK_ULONG ulNonceLen;
    CK_BYTE_PTR pAAD;
    CK_ULONG ulAADLen;
    CK_ULONG ulMACLen;
} CK_CCM_PARAMS;
typedef CK_CCM_PARAMS* CK_CCM_PARAMS_PTR;

typedef struct CK_AES_CTR_PARAMS {
    CK_ULONG ulCounterBits; /**< bits */
    CK_BYTE cb[16];         /**< the first counter block */
} CK_AES_CTR_PARAMS;
typedef CK_AES_CTR_PARAMS* CK_AES_CTR_PARAMS_PTR;

typedef struct CK_SALSA20_CHACHA20_POLY1305_PARAMS {
    CK_BYTE_PTR pNonce;
    CK_ULONG ulNonceLen;
    CK_BYTE_PTR pAAD;
    CK_ULONG ulAADLen;
} CK_SALSA20_CHACHA20_POLY1305_PARAMS;
typedef CK_SALSA20_CHACHA20_POLY1305_PARAMS* CK_SALSA20_CHACHA20_POLY1305_PARAMS_PTR;

typedef struct CK_HKDF_PARAMS {
    CK_BBOOL bExtract;
    CK_BBOOL bExpand;
    CK_MECHANISM_TYPE prfHashMechanism;
    CK_ULONG ulSaltType;
    CK_BYTE_PTR pSalt;
    CK_ULONG ulSaltLen;
    CK_OBJECT_HANDLE hSaltKey;
    CK_BYTE_PTR pInfo;
    CK_ULONG ulInfoLen;
} CK_HKDF_PARAMS;
typedef CK_HKDF_PARAMS* CK_HKDF_PARAMS_PTR;

typedef struct CK_EDDSA_PARAMS {
    CK_BBOOL phFlag; /**< true: the input is hashed first */
    CK_ULONG ulContextDataLen;
    CK_BYTE_PTR pContextData;
} CK_EDDSA_PARAMS;
typedef CK_EDDSA_PARAMS* CK_EDDSA_PARAMS_PTR;

typedef struct CK_X9_42_DH1_DERIVE_PARAMS {
    CK_X9_42_DH_KDF_TYPE kdf;
    CK_ULONG ulOtherInfoLen;
    CK_BYTE_PTR pOtherInfo;
    CK_ULONG ulPublicDataLen;
    CK_BYTE_PTR pPublicData; /**< the other party's public value */
} CK_X9_42_DH1_DERIVE_PARAMS;
typedef CK_X9_42_DH1_DERIVE_PARAMS* CK_X9_42_DH1_DERIVE_PARAMS_PTR;

typedef struct CK_RSA_AES_KEY_WRAP_PARAMS {
    CK_ULONG ulAESKeyBits; /**< bits */
    CK_RSA_PKCS_OAEP_PARAMS_PTR pOAEPParams;
} CK_RSA_AES_KEY_WRAP_PARAMS;
typedef CK_RSA_AES_KEY_WRAP_PARAMS* CK_RSA_AES_KEY_WRAP_PARAMS_PTR;
/** @} */

/**
 * @name The function list (PKCS#11 section 9.6)
 * The order of the members is fixed by the standard. Their parameters are those of the prototypes below.
 * @{
 */
typedef struct CK_FUNCTION_LIST CK_FUNCTION_LIST;
typedef CK_FUNCTION_LIST* CK_FUNCTION_LIST_PTR;
typedef CK_FUNCTION_LIST_PTR* CK_FUNCTION_LIST_PTR_PTR;
typedef CK_RV (*CK_C_GetFunctionList)(CK_FUNCTION_LIST_PTR_PTR ppFunctionList);

/* clang-format off */
struct CK_FUNCTION_LIST {
    CK_VERSION version; /**< of the interface */
    CK_RV (*C_Initialize)(CK_VOID_PTR);
    CK_RV (*C_Finalize)(CK_VOID_PTR);
    CK_RV (*C_GetInfo)(CK_INFO_PTR);
    CK_RV (*C_GetFunctionList)(CK_FUNCTION_LIST_PTR_PTR);
    CK_RV (*C_GetSlotList)(CK_BBOOL, CK_SLOT_ID_PTR, CK_ULONG_PTR);
    CK_RV (*C_GetSlotInfo)(CK_SLOT_ID, CK_SLOT_INFO_PTR);
    CK_RV (*C_GetTokenInfo)(CK_SLOT_ID, CK_TOKEN_INFO_PTR);
    CK_RV (*C_GetMechanismList)(CK_SLOT_ID, CK_MECHANISM_TYPE_PTR, CK_ULONG_PTR);
    CK_RV (*C_GetMechanismInfo)(CK_SLOT_ID, CK_MECHANISM_TYPE, CK_MECHANISM_INFO_PTR);
    CK_RV (*C_InitToken)(CK_SLOT_ID, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR);
    CK_RV (*C_InitPIN)(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG);
    CK_RV (*C_SetPIN)(CK_SESSION_HANDLE, CK_UTF8CHAR_PTR, CK_ULONG, CK_UTF8CHAR_PTR, CK_ULONG);
    CK_RV (*C_OpenSession)(CK_SLOT_ID, CK_FLAGS, CK_VOID_PTR, CK_NOTIFY, CK_SESSION_HANDLE_PTR);
    CK_RV (*C_CloseSession)(CK_SESSION_HANDLE);
    CK_RV (*C_CloseAllSessions)(CK_SLOT_ID);
    CK_RV (*C_GetSessionInfo)(CK_SESSION_HANDLE, CK_SESSION_INFO_PTR);
    CK_RV (*C_GetOperationState)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_SetOperationState)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_OBJECT_HANDLE,
        CK_OBJECT_HANDLE);
    CK_RV (*C_Login)(CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR_PTR, CK_ULONG);
    CK_RV (*C_Logout)(CK_SESSION_HANDLE);
    CK_RV (*C_CreateObject)(CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_CopyObject)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
        CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_DestroyObject)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE);
    CK_RV (*C_GetObjectSize)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG_PTR);
    CK_RV (*C_GetAttributeValue)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG);
    CK_RV (*C_SetAttributeValue)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG);
    CK_RV (*C_FindObjectsInit)(CK_SESSION_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG);
    CK_RV (*C_FindObjects)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE_PTR, CK_ULONG, CK_ULONG_PTR);
    CK_RV (*C_FindObjectsFinal)(CK_SESSION_HANDLE);
    CK_RV (*C_EncryptInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_Encrypt)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_EncryptUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_EncryptFinal)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DecryptInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_Decrypt)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DecryptUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DecryptFinal)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DigestInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR);
    CK_RV (*C_Digest)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DigestUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_DigestKey)(CK_SESSION_HANDLE, CK_OBJECT_HANDLE);
    CK_RV (*C_DigestFinal)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_SignInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_Sign)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_SignUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_SignFinal)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_SignRecoverInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_SignRecover)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_VerifyInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_Verify)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_VerifyUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_VerifyFinal)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_VerifyRecoverInit)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE);
    CK_RV (*C_VerifyRecover)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DigestEncryptUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DecryptDigestUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_SignEncryptUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_DecryptVerifyUpdate)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);
    CK_RV (*C_GenerateKey)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
        CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_GenerateKeyPair)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_ATTRIBUTE_PTR, CK_ULONG,
        CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR, CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_WrapKey)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_OBJECT_HANDLE, CK_BYTE_PTR,
        CK_ULONG_PTR);
    CK_RV (*C_UnwrapKey)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_BYTE_PTR, CK_ULONG,
        CK_ATTRIBUTE_PTR, CK_ULONG, CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_DeriveKey)(CK_SESSION_HANDLE, CK_MECHANISM_PTR, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR, CK_ULONG,
        CK_OBJECT_HANDLE_PTR);
    CK_RV (*C_SeedRandom)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_GenerateRandom)(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG);
    CK_RV (*C_GetFunctionStatus)(CK_SESSION_HANDLE);
    CK_RV (*C_CancelFunction)(CK_SESSION_HANDLE);
    CK_RV (*C_WaitForSlotEvent)(CK_FLAGS, CK_SLOT_ID_PTR, CK_VOID_PTR);
};
/* clang-format on */
/** @} */

/*
 * Rules for all functions below
 *
 * Memory: the caller owns every buffer, structure and template. The library frees none of them and keeps none
 * after the call, except pApplication of C_OpenSession, which is kept until the session is closed.
 *
 * Lengths are in bytes, counts in elements.
 *
 * Null: a pointer must not be null unless its function says otherwise; the library then returns
 * CKR_ARGUMENTS_BAD. Input data and its length may be null and 0.
 *
 * Return value: CKR_OK, or an error (section 11.1). Output is valid after CKR_OK only, except for the length
 * that comes with CKR_BUFFER_TOO_SMALL, and for templates in C_GetAttributeValue.
 *
 * Arguments that recur:
 * - slotID: the slot, as C_GetSlotList reports it.
 * - hSession, hObject, hKey: the handle of a session, of an object, of a key.
 * - phObject, phKey, phNewObject, ...: [out] the new handle.
 * - pMechanism: the mechanism and its parameter.
 * - pTemplate, ulCount: the attributes and their number. Null with 0 is an empty template.
 * - pData, ulDataLen and the like: input and its length.
 * - pPin, ulPinLen: the PIN in UTF-8 without a terminating NUL. Null with 0: the PIN is entered at the
 *   token's own keypad (CKF_PROTECTED_AUTHENTICATION_PATH).
 *
 * Output of variable length (section 11.2) has a buffer and a pointer to its length, such as pDigest and
 * pulDigestLen. In: the capacity of the buffer. Out: the length of the output. A null buffer asks for the
 * length: the function returns CKR_OK. If the capacity is too small, it returns CKR_BUFFER_TOO_SMALL and the
 * needed length. Both leave the operation active, so the caller can repeat the call with a longer buffer.
 *
 * Operations: an Init function starts an operation in the session; there is at most one of each kind at a
 * time. A one-part function (C_Sign) does all and ends the operation; Update and Final functions do the same
 * in parts. An error other than CKR_BUFFER_TOO_SMALL ends the operation too, but not a search.
 */

/**
 * @name General-purpose functions (PKCS#11 section 11.4)
 * @{
 */
/**
 * Initialises the library. Call it once, before every other function but C_GetFunctionList.
 *
 * @param pInitArgs  a CK_C_INITIALIZE_ARGS; null if only one thread calls the library
 * @return CKR_OK; for example CKR_CRYPTOKI_ALREADY_INITIALIZED, CKR_CANT_LOCK
 */
CK_RV C_Initialize(CK_VOID_PTR pInitArgs);
/**
 * Ends the use of the library. No other function may be running.
 *
 * @param pReserved  must be null
 */
CK_RV C_Finalize(CK_VOID_PTR pReserved);
/** Reads the description of the library into *pInfo. */
CK_RV C_GetInfo(CK_INFO_PTR pInfo);
/**
 * Returns the addresses of all functions. May be called before C_Initialize.
 *
 * @param ppFunctionList  [out] the list, which the library owns: neither change nor free it
 */
CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList);
/** @} */

/**
 * @name Slot and token management (PKCS#11 section 11.5)
 * @{
 */
/**
 * Lists the slots.
 *
 * @param tokenPresent  CK_TRUE: only slots that contain a token
 * @param pSlotList     [out] the slots; null asks for their number
 * @param pulCount      in: capacity of pSlotList in slots; out: number of slots
 */
CK_RV C_GetSlotList(CK_BBOOL tokenPresent, CK_SLOT_ID_PTR pSlotList, CK_ULONG_PTR pulCount);
/** Reads the description of a slot into *pInfo. */
CK_RV C_GetSlotInfo(CK_SLOT_ID slotID, CK_SLOT_INFO_PTR pInfo);
/** Reads the description of the token in a slot into *pInfo. */
CK_RV C_GetTokenInfo(CK_SLOT_ID slotID, CK_TOKEN_INFO_PTR pInfo);
/**
 * Lists the mechanisms of the token in a slot.
 *
 * @param pMechanismList  [out] the mechanisms; null asks for their number
 * @param pulCount        in: capacity of pMechanismList in mechanisms; out: number of mechanisms
 */
CK_RV C_GetMechanismList(CK_SLOT_ID slotID, CK_MECHANISM_TYPE_PTR pMechanismList, CK_ULONG_PTR pulCount);
/** Reads into *pInfo how the token in a slot supports a mechanism. */
CK_RV C_GetMechanismInfo(CK_SLOT_ID slotID, CK_MECHANISM_TYPE type, CK_MECHANISM_INFO_PTR pInfo);
/**
 * Initialises the token in a slot: all objects that can be destroyed are destroyed.
 *
 * @param pPin    PIN of the security officer
 * @param pLabel  32 bytes in UTF-8, padded with blanks, without a terminating NUL
 * @return CKR_OK; for example CKR_PIN_INCORRECT, CKR_SESSION_EXISTS while a session is open on the token
 */
CK_RV C_InitToken(CK_SLOT_ID slotID, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel);
/** Sets the user's PIN. The security officer must be logged in. */
CK_RV C_InitPIN(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen);
/**
 * Changes the PIN of whoever is logged in; the user's PIN if nobody is.
 *
 * @param ulOldLen  bytes in pOldPin
 * @param ulNewLen  bytes in pNewPin
 */
CK_RV C_SetPIN(CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pOldPin, CK_ULONG ulOldLen,
    CK_UTF8CHAR_PTR pNewPin, CK_ULONG ulNewLen);
/** @} */

/**
 * @name Session management (PKCS#11 section 11.6)
 * @{
 */
/**
 * Opens a session with the token in a slot.
 *
 * @param flags         CKF_SERIAL_SESSION, and CKF_RW_SESSION as well for a session that may write
 * @param pApplication  passed to Notify unchanged; may be null
 * @param Notify        called on events of the session; null for none
 * @param phSession     [out] the session's handle
 */
CK_RV C_OpenSession(CK_SLOT_ID slotID, CK_FLAGS flags, CK_VOID_PTR pApplication, CK_NOTIFY Notify,
    CK_SESSION_HANDLE_PTR phSession);
/** Closes a session and destroys its session objects. */
CK_RV C_CloseSession(CK_SESSION_HANDLE hSession);
/** Closes all sessions of this application with the token in a slot. */
CK_RV C_CloseAllSessions(CK_SLOT_ID slotID);
/** Reads the description of a session into *pInfo. */
CK_RV C_GetSessionInfo(CK_SESSION_HANDLE hSession, CK_SESSION_INFO_PTR pInfo);
/** Saves the state of the session's active operation, as output of variable length. */
CK_RV C_GetOperationState(
    CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState, CK_ULONG_PTR pulOperationStateLen);
/**
 * Restores a saved state.
 *
 * @param ulOperationStateLen  bytes in pOperationState
 * @param hEncryptionKey       key of a saved encryption or decryption; CK_INVALID_HANDLE for none
 * @param hAuthenticationKey   key of a saved signature or verification; CK_INVALID_HANDLE for none
 */
CK_RV C_SetOperationState(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pOperationState,
    CK_ULONG ulOperationStateLen, CK_OBJECT_HANDLE hEncryptionKey, CK_OBJECT_HANDLE hAuthenticationKey);
/**
 * Logs a user in, for all sessions of this application with the token.
 *
 * @param userType  CKU_USER, CKU_SO or CKU_CONTEXT_SPECIFIC
 */
CK_RV C_Login(CK_SESSION_HANDLE hSession, CK_USER_TYPE userType, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen);
/** Logs the user out, for all sessions of this application with the token. */
CK_RV C_Logout(CK_SESSION_HANDLE hSession);
/** @} */

/**
 * @name Object management (PKCS#11 section 11.7)
 * @{
 */
/** Creates an object with the attributes of the template. */
CK_RV C_CreateObject(
    CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phObject);
/** Copies an object. The template holds the attributes in which the copy differs. */
CK_RV C_CopyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate,
    CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject);
/** Destroys an object. */
CK_RV C_DestroyObject(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject);
/**
 * Reports how many bytes an object occupies on the token.
 *
 * @param pulSize  [out] bytes
 */
CK_RV C_GetObjectSize(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ULONG_PTR pulSize);
/**
 * Reads attributes of an object into the template.
 *
 * For each attribute, ulValueLen is the capacity of pValue in bytes on entry and the value's length
 * afterwards. A null pValue asks for the length. If an attribute is sensitive or missing, or its capacity too
 * small, its ulValueLen becomes CK_UNAVAILABLE_INFORMATION, and the others are read all the same.
 *
 * @return CKR_OK; CKR_ATTRIBUTE_SENSITIVE, CKR_ATTRIBUTE_TYPE_INVALID or CKR_BUFFER_TOO_SMALL if any
 *         attribute was not read
 */
CK_RV C_GetAttributeValue(
    CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount);
/** Changes attributes of an object to the values in the template. */
CK_RV C_SetAttributeValue(
    CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hObject, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount);
/** Starts a search for objects that have all attributes of the template; an empty one matches all. */
CK_RV C_FindObjectsInit(CK_SESSION_HANDLE hSession, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount);
/**
 * Continues a search. Call it until it reports 0 objects.
 *
 * @param phObject          [out] the handles; room for ulMaxObjectCount of them
 * @param ulMaxObjectCount  capacity of phObject in handles
 * @param pulObjectCount    [out] number of handles written; 0 when the search has no more
 */
CK_RV C_FindObjects(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE_PTR phObject, CK_ULONG ulMaxObjectCount,
    CK_ULONG_PTR pulObjectCount);
/** Ends a search. */
CK_RV C_FindObjectsFinal(CK_SESSION_HANDLE hSession);
/** @} */

/**
 * @name Encryption (PKCS#11 section 11.8)
 * @{
 */
/** Starts an encryption. */
CK_RV C_EncryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/** Encrypts all data in one part and ends the encryption. */
CK_RV C_Encrypt(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pEncryptedData,
    CK_ULONG_PTR pulEncryptedDataLen);
/** Encrypts the next part of the data. */
CK_RV C_EncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen);
/** Returns the rest of the encrypted data and ends the encryption. */
CK_RV C_EncryptFinal(
    CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLastEncryptedPart, CK_ULONG_PTR pulLastEncryptedPartLen);
/** @} */

/**
 * @name Decryption (PKCS#11 section 11.9)
 * @{
 */
/** Starts a decryption. */
CK_RV C_DecryptInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/** Decrypts all data in one part and ends the decryption. */
CK_RV C_Decrypt(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedData, CK_ULONG ulEncryptedDataLen,
    CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen);
/** Decrypts the next part of the data. */
CK_RV C_DecryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart, CK_ULONG ulEncryptedPartLen,
    CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen);
/** Returns the rest of the decrypted data and ends the decryption. */
CK_RV C_DecryptFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pLastPart, CK_ULONG_PTR pulLastPartLen);
/** @} */

/**
 * @name Message digesting (PKCS#11 section 11.10)
 * @{
 */
/** Starts a digest. */
CK_RV C_DigestInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism);
/** Digests all data in one part and ends the digest. */
CK_RV C_Digest(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pDigest,
    CK_ULONG_PTR pulDigestLen);
/** Digests the next part of the data. */
CK_RV C_DigestUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen);
/** Digests the value of a secret key as the next part of the data. */
CK_RV C_DigestKey(CK_SESSION_HANDLE hSession, CK_OBJECT_HANDLE hKey);
/** Returns the digest and ends it. */
CK_RV C_DigestFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pDigest, CK_ULONG_PTR pulDigestLen);
/** @} */

/**
 * @name Signing and MACing (PKCS#11 section 11.11)
 * @{
 */
/** Starts a signature or MAC. */
CK_RV C_SignInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/** Signs all data in one part and ends the operation. */
CK_RV C_Sign(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG_PTR pulSignatureLen);
/** Signs the next part of the data. */
CK_RV C_SignUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen);
/** Returns the signature or MAC and ends the operation. */
CK_RV C_SignFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG_PTR pulSignatureLen);
/** Starts a signature from which the data can be recovered. */
CK_RV C_SignRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/** Signs all data in one part, as C_Sign does; the data can be recovered from the signature. */
CK_RV C_SignRecover(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG_PTR pulSignatureLen);
/** @} */

/**
 * @name Verifying signatures and MACs (PKCS#11 section 11.12)
 * @{
 */
/** Starts a verification of a signature or MAC. */
CK_RV C_VerifyInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/**
 * Verifies the signature of all data in one part and ends the operation.
 *
 * @return CKR_OK if the signature is valid; CKR_SIGNATURE_INVALID or CKR_SIGNATURE_LEN_RANGE if it is not
 */
CK_RV C_Verify(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pData, CK_ULONG ulDataLen, CK_BYTE_PTR pSignature,
    CK_ULONG ulSignatureLen);
/** Passes the next part of the signed data. */
CK_RV C_VerifyUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen);
/** Verifies the signature and ends the operation. Returns as C_Verify does. */
CK_RV C_VerifyFinal(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen);
/** Starts a verification that recovers the data from the signature. */
CK_RV C_VerifyRecoverInit(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hKey);
/** Verifies a signature and returns the recovered data in pData. Returns as C_Verify does. */
CK_RV C_VerifyRecover(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSignature, CK_ULONG ulSignatureLen,
    CK_BYTE_PTR pData, CK_ULONG_PTR pulDataLen);
/** @} */

/**
 * @name Dual-function operations (PKCS#11 section 11.13)
 * @{
 */
/** Digests and encrypts the next part of the data. */
CK_RV C_DigestEncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen);
/** Decrypts the next part, and digests the decrypted data. */
CK_RV C_DecryptDigestUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
    CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen);
/** Signs and encrypts the next part of the data. */
CK_RV C_SignEncryptUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pPart, CK_ULONG ulPartLen,
    CK_BYTE_PTR pEncryptedPart, CK_ULONG_PTR pulEncryptedPartLen);
/** Decrypts the next part, and verifies the decrypted data. */
CK_RV C_DecryptVerifyUpdate(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pEncryptedPart,
    CK_ULONG ulEncryptedPartLen, CK_BYTE_PTR pPart, CK_ULONG_PTR pulPartLen);
/** @} */

/**
 * @name Key management (PKCS#11 section 11.14)
 * @{
 */
/** Generates a secret key, or domain parameters. */
CK_RV C_GenerateKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_ATTRIBUTE_PTR pTemplate,
    CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phKey);
/**
 * Generates a key pair. Each key has a template of its own.
 *
 * @param ulPublicKeyAttributeCount   attributes in pPublicKeyTemplate
 * @param ulPrivateKeyAttributeCount  attributes in pPrivateKeyTemplate
 * @param phPublicKey                 [out] the public key's handle
 * @param phPrivateKey                [out] the private key's handle
 */
CK_RV C_GenerateKeyPair(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism,
    CK_ATTRIBUTE_PTR pPublicKeyTemplate, CK_ULONG ulPublicKeyAttributeCount,
    CK_ATTRIBUTE_PTR pPrivateKeyTemplate, CK_ULONG ulPrivateKeyAttributeCount,
    CK_OBJECT_HANDLE_PTR phPublicKey, CK_OBJECT_HANDLE_PTR phPrivateKey);
/**
 * Wraps (encrypts) a key with another.
 *
 * @param hWrappingKey      the key to wrap with
 * @param hKey              the key to be wrapped
 * @param pWrappedKey       [out] the wrapped key, as output of variable length
 * @param pulWrappedKeyLen  in: capacity of pWrappedKey in bytes; out: bytes of the wrapped key
 */
CK_RV C_WrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hWrappingKey,
    CK_OBJECT_HANDLE hKey, CK_BYTE_PTR pWrappedKey, CK_ULONG_PTR pulWrappedKeyLen);
/**
 * Unwraps (decrypts) a key and creates it with the attributes of the template.
 *
 * @param hUnwrappingKey    the key to unwrap with
 * @param ulWrappedKeyLen   bytes in pWrappedKey
 * @param ulAttributeCount  attributes in pTemplate
 */
CK_RV C_UnwrapKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hUnwrappingKey,
    CK_BYTE_PTR pWrappedKey, CK_ULONG ulWrappedKeyLen, CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount,
    CK_OBJECT_HANDLE_PTR phKey);
/**
 * Derives a key from a base key and creates it with the attributes of the template.
 *
 * @param ulAttributeCount  attributes in pTemplate
 * @param phKey             [out] the new key; may be null if the mechanism returns its keys in its parameter
 */
CK_RV C_DeriveKey(CK_SESSION_HANDLE hSession, CK_MECHANISM_PTR pMechanism, CK_OBJECT_HANDLE hBaseKey,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulAttributeCount, CK_OBJECT_HANDLE_PTR phKey);
/** @} */

/**
 * @name Random numbers (PKCS#11 section 11.15)
 * @{
 */
/** Mixes seed data into the token's random number generator. */
CK_RV C_SeedRandom(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pSeed, CK_ULONG ulSeedLen);
/**
 * Generates random bytes.
 *
 * @param pRandomData  [out] ulRandomLen bytes
 */
CK_RV C_GenerateRandom(CK_SESSION_HANDLE hSession, CK_BYTE_PTR pRandomData, CK_ULONG ulRandomLen);
/** @} */

/**
 * @name Parallel function management, obsolete (PKCS#11 section 11.16), and slot events (section 11.5)
 * @{
 */
/** Obsolete. Returns CKR_FUNCTION_NOT_PARALLEL. */
CK_RV C_GetFunctionStatus(CK_SESSION_HANDLE hSession);
/** Obsolete. Returns CKR_FUNCTION_NOT_PARALLEL. */
CK_RV C_CancelFunction(CK_SESSION_HANDLE hSession);
/**
 * Waits until a token is inserted or removed.
 *
 * @param flags      0 waits; CKF_DONT_BLOCK returns at once, with CKR_NO_EVENT if nothing has happened
 * @param pSlot      [out] the slot
 * @param pReserved  must be null
 */
CK_RV C_WaitForSlotEvent(CK_FLAGS flags, CK_SLOT_ID_PTR pSlot, CK_VOID_PTR pReserved);
/** @} */

#ifdef __cplusplus
}
#endif

/* The layout in bytes, with pointers of 32 and of 64 bits. Not checked in C99 and C++98, which
 * have no static assertions. */
#if __cplusplus >= 201103L || (!defined __cplusplus && __STDC_VERSION__ >= 201112L)
#define ZERLIN_LAYOUT(what, bytes32, bytes64)                                                                \
    static_assert(sizeof(void*) != 4 || (what) == (bytes32), #what);                                         \
    static_assert(sizeof(void*) != 8 || (what) == (bytes64), #what)
ZERLIN_LAYOUT(sizeof(CK_ULONG), 4, 8);
ZERLIN_LAYOUT(sizeof(CK_VERSION), 2, 2);
ZERLIN_LAYOUT(sizeof(CK_INFO), 76, 88);
ZERLIN_LAYOUT(sizeof(CK_SLOT_INFO), 104, 112);
ZERLIN_LAYOUT(sizeof(CK_TOKEN_INFO), 160, 208);
ZERLIN_LAYOUT(sizeof(CK_SESSION_INFO), 16, 32);
ZERLIN_LAYOUT(sizeof(CK_MECHANISM_INFO), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_ATTRIBUTE), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_DATE), 8, 8);
ZERLIN_LAYOUT(sizeof(CK_MECHANISM), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_C_INITIALIZE_ARGS), 24, 48);
ZERLIN_LAYOUT(sizeof(CK_FUNCTION_LIST), 276, 552);
ZERLIN_LAYOUT(sizeof(CK_RSA_PKCS_OAEP_PARAMS), 20, 40);
ZERLIN_LAYOUT(sizeof(CK_RSA_PKCS_PSS_PARAMS), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_RC2_CBC_PARAMS), 12, 16);
ZERLIN_LAYOUT(sizeof(CK_RC2_MAC_GENERAL_PARAMS), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_PBE_PARAMS), 24, 48);
ZERLIN_LAYOUT(sizeof(CK_PKCS12_PBE_IMPORT_PARAMS), 32, 64);
ZERLIN_LAYOUT(sizeof(CK_PKCS12_PBE_EXPORT_PARAMS), 32, 64);
ZERLIN_LAYOUT(sizeof(CK_KEY_WRAP_SET_OAEP_PARAMS), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_SSL3_RANDOM_DATA), 16, 32);
ZERLIN_LAYOUT(sizeof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS), 20, 40);
ZERLIN_LAYOUT(sizeof(CK_SSL3_KEY_MAT_OUT), 24, 48);
ZERLIN_LAYOUT(sizeof(CK_SSL3_KEY_MAT_PARAMS), 36, 72);
ZERLIN_LAYOUT(sizeof(CK_KEY_DERIVATION_STRING_DATA), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_MECH_TYPE_AND_OBJECT), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_DES_CBC_PARAMS), 16, 16);
ZERLIN_LAYOUT(sizeof(CK_DES2_CBC_PARAMS), 24, 24);
ZERLIN_LAYOUT(sizeof(CK_DES3_CBC_PARAMS), 32, 32);
ZERLIN_LAYOUT(sizeof(CK_PP_LOAD_SECRET_PARAMS), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_TIMESTAMP_PARAMS), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_REPLICATE_TOKEN_PARAMS), 16, 16);
ZERLIN_LAYOUT(sizeof(CK_SECRET_SHARE_PARAMS), 8, 16);
ZERLIN_LAYOUT(sizeof(CK_ECIES_PARAMS), 44, 88);
ZERLIN_LAYOUT(sizeof(CK_ECDH1_DERIVE_PARAMS), 20, 40);
ZERLIN_LAYOUT(sizeof(CK_GCM_PARAMS), 24, 48);
ZERLIN_LAYOUT(sizeof(CK_GCM_PARAMS_OLD), 20, 40);
ZERLIN_LAYOUT(sizeof(CK_CCM_PARAMS), 24, 48);
ZERLIN_LAYOUT(sizeof(CK_AES_CTR_PARAMS), 20, 24);
ZERLIN_LAYOUT(sizeof(CK_SALSA20_CHACHA20_POLY1305_PARAMS), 16, 32);
ZERLIN_LAYOUT(sizeof(CK_HKDF_PARAMS), 32, 64);
ZERLIN_LAYOUT(sizeof(CK_EDDSA_PARAMS), 12, 24);
ZERLIN_LAYOUT(sizeof(CK_X9_42_DH1_DERIVE_PARAMS), 20, 40);
ZERLIN_LAYOUT(sizeof(CK_RSA_AES_KEY_WRAP_PARAMS), 8, 16);
ZERLIN_LAYOUT(offsetof(CK_INFO, flags), 36, 40);
ZERLIN_LAYOUT(offsetof(CK_INFO, libraryVersion), 72, 80);
ZERLIN_LAYOUT(offsetof(CK_SLOT_INFO, hardwareVersion), 100, 104);
ZERLIN_LAYOUT(offsetof(CK_TOKEN_INFO, hardwareVersion), 140, 184);
ZERLIN_LAYOUT(offsetof(CK_TOKEN_INFO, utcTime), 144, 188);
ZERLIN_LAYOUT(offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, pX), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_SSL3_KEY_MAT_PARAMS, RandomInfo), 16, 32);
ZERLIN_LAYOUT(offsetof(CK_SSL3_KEY_MAT_PARAMS, pReturnedKeyMaterial), 32, 64);
ZERLIN_LAYOUT(offsetof(CK_PP_LOAD_SECRET_PARAMS, cConvert), 1, 1);
ZERLIN_LAYOUT(offsetof(CK_PP_LOAD_SECRET_PARAMS, cTimeout), 2, 2);
ZERLIN_LAYOUT(offsetof(CK_PP_LOAD_SECRET_PARAMS, prompt), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_TIMESTAMP_PARAMS, timestampFormat), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_GCM_PARAMS, ulIvBits), 8, 16);
ZERLIN_LAYOUT(offsetof(CK_HKDF_PARAMS, prfHashMechanism), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_EDDSA_PARAMS, ulContextDataLen), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_FUNCTION_LIST, C_Initialize), 4, 8);
ZERLIN_LAYOUT(offsetof(CK_FUNCTION_LIST, C_WaitForSlotEvent), 272, 544);
#undef ZERLIN_LAYOUT
#endif

#endif /* ZERLIN_OTHER_CRYPTOKI */

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @name Vendor functions
 * Text and PINs are UTF-8 without a terminating NUL; a label is 32 bytes, padded with blanks. The vendor's
 * library defines the return values. The remarks on the embedded libcryptoki.so hold if its module has no
 * function of that name.
 * @{
 */
/**
 * Copies an object between two sessions, which may be on different tokens.
 *
 * The vendor's library defines which of the two sessions the object is read from. In the embedded
 * libcryptoki.so it is hSession2, and the copy is created in hSession1.
 *
 * @param hSession1    one session
 * @param hSession2    the other session
 * @param hObject      the object to copy
 * @param pTemplate    the attributes in which the copy differs; null if ulCount is 0
 * @param ulCount      attributes in pTemplate
 * @param phNewObject  [out] the copy's handle
 */
CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject);
/**
 * Initialises a token from a session instead of from a slot.
 *
 * @param hSession  the session
 * @param ulValue   the vendor's library defines its meaning; in the embedded libcryptoki.so, the slot
 * @param pPin      PIN of the new token's security officer
 * @param ulPinLen  bytes in pPin
 * @param pLabel    label of the new token
 */
CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel);
/**
 * Erases the token of a session and initialises it again.
 *
 * @param hSession  the session; the embedded libcryptoki.so closes it
 * @param pPin      PIN of the security officer
 * @param ulPinLen  bytes in pPin
 * @param pLabel    the token's label; in the embedded libcryptoki.so, null keeps the present one
 */
CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
