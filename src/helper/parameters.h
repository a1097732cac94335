// The mechanism parameter structures as data: which Java field belongs to which native member. One routine
// per direction, one that frees, and the size query walk these rows.
#pragma once

#include <cstddef>
#include <span>

#include "helper/jutil.h"
#include "zerlin/cryptoki.h"

namespace zerlin {

enum class MemberKind {
    Number,        // long
    MechanismType, // an object that holds a CK_ULONG, as the next two
    OaepSource,
    ObjectHandle,
    BBool,          // a CK_BBOOL object
    Byte,           // byte
    CappedInt,      // int, as a byte: above 255 it is 255, a negative one keeps its low 8 bits
    Array,          // byte[], in place
    Bytes,          // byte[], behind a pointer
    BytesIfCounted, // the same, but only where the length that comes before it is not 0
    InitVector,     // the same, 8 bytes whose length no member tells
    KeyIV,          // the same, as long as the parameter object's IVSizeInBits says
    Text,           // the same, with a closing NUL
    Nested,         // a structure in place
    Pointed,        // a structure behind a pointer
    Attributes,     // CK_ATTRIBUTE[], behind a pointer
    HandleCount,    // a LongRef, behind a pointer
    Handles,        // CK_OBJECT_HANDLE[], behind a pointer, only where the HandleCount before it is not 0
    Unread,         // a Number that never goes to Java
};

struct Structure;

struct Member {
    Literal field;
    MemberKind kind;
    std::size_t offset;
    std::size_t detail = 0;          // an Array's width; where the length or count of what is pointed to lies
    const char* assertion = nullptr; // what ties a length to what was copied before it
    const Structure* structure = nullptr;
};

struct Structure {
    const char* name; // as assertions tell it
    Literal path;
    Literal signature; // of a field that holds one
    std::size_t size;
    std::span<const Member> members;
};

inline constexpr Member VERSION_MEMBERS[] = {
    {"major", MemberKind::Byte, offsetof(CK_VERSION, major)},
    {"minor", MemberKind::Byte, offsetof(CK_VERSION, minor)},
};
inline constexpr Structure VERSION = {"CK_VERSION", "halvorn/zerlin/CK_VERSION",
    "Lhalvorn/zerlin/CK_VERSION;", sizeof(CK_VERSION), VERSION_MEMBERS};

inline constexpr Member RSA_PKCS_OAEP_MEMBERS[] = {
    {"hashAlg", MemberKind::MechanismType, offsetof(CK_RSA_PKCS_OAEP_PARAMS, hashAlg)},
    {"mgf", MemberKind::Number, offsetof(CK_RSA_PKCS_OAEP_PARAMS, mgf)},
    {"source", MemberKind::OaepSource, offsetof(CK_RSA_PKCS_OAEP_PARAMS, source)},
    {"pSourceData", MemberKind::Bytes, offsetof(CK_RSA_PKCS_OAEP_PARAMS, pSourceData),
        offsetof(CK_RSA_PKCS_OAEP_PARAMS, sourceDataLen)},
    {"sourceDataLen", MemberKind::Number, offsetof(CK_RSA_PKCS_OAEP_PARAMS, sourceDataLen), 0,
        "ckpParam->sourceDataLen == ckTemp"},
};
inline constexpr Structure RSA_PKCS_OAEP = {"CK_RSA_PKCS_OAEP_PARAMS",
    "halvorn/zerlin/params/CK_RSA_PKCS_OAEP_PARAMS", "Lhalvorn/zerlin/params/CK_RSA_PKCS_OAEP_PARAMS;",
    sizeof(CK_RSA_PKCS_OAEP_PARAMS), RSA_PKCS_OAEP_MEMBERS};

inline constexpr Member RSA_PKCS_PSS_MEMBERS[] = {
    {"hashAlg", MemberKind::MechanismType, offsetof(CK_RSA_PKCS_PSS_PARAMS, hashAlg)},
    {"mgf", MemberKind::Number, offsetof(CK_RSA_PKCS_PSS_PARAMS, mgf)},
    {"sLen", MemberKind::Number, offsetof(CK_RSA_PKCS_PSS_PARAMS, sLen)},
};
inline constexpr Structure RSA_PKCS_PSS = {"CK_RSA_PKCS_PSS_PARAMS",
    "halvorn/zerlin/params/CK_RSA_PKCS_PSS_PARAMS", "Lhalvorn/zerlin/params/CK_RSA_PKCS_PSS_PARAMS;",
    sizeof(CK_RSA_PKCS_PSS_PARAMS), RSA_PKCS_PSS_MEMBERS};

inline constexpr Member RC2_CBC_MEMBERS[] = {
    {"effectiveBits", MemberKind::Number, offsetof(CK_RC2_CBC_PARAMS, effectiveBits)},
    {"iv", MemberKind::Array, offsetof(CK_RC2_CBC_PARAMS, iv), 8},
};
inline constexpr Structure RC2_CBC = {"CK_RC2_CBC_PARAMS", "halvorn/zerlin/params/CK_RC2_CBC_PARAMS",
    "Lhalvorn/zerlin/params/CK_RC2_CBC_PARAMS;", sizeof(CK_RC2_CBC_PARAMS), RC2_CBC_MEMBERS};

inline constexpr Member RC2_MAC_GENERAL_MEMBERS[] = {
    {"effectiveBits", MemberKind::Number, offsetof(CK_RC2_MAC_GENERAL_PARAMS, effectiveBits)},
    {"macLength", MemberKind::Number, offsetof(CK_RC2_MAC_GENERAL_PARAMS, macLength)},
};
inline constexpr Structure RC2_MAC_GENERAL = {"CK_RC2_MAC_GENERAL_PARAMS",
    "halvorn/zerlin/params/CK_RC2_MAC_GENERAL_PARAMS", "Lhalvorn/zerlin/params/CK_RC2_MAC_GENERAL_PARAMS;",
    sizeof(CK_RC2_MAC_GENERAL_PARAMS), RC2_MAC_GENERAL_MEMBERS};

inline constexpr Member PBE_MEMBERS[] = {
    {"pInitVector", MemberKind::InitVector, offsetof(CK_PBE_PARAMS, pInitVector)},
    {"pPassword", MemberKind::Bytes, offsetof(CK_PBE_PARAMS, pPassword),
        offsetof(CK_PBE_PARAMS, passwordLen)},
    {"passwordLen", MemberKind::Number, offsetof(CK_PBE_PARAMS, passwordLen), 0,
        "ckpParam->passwordLen == ckTemp"},
    {"pSalt", MemberKind::Bytes, offsetof(CK_PBE_PARAMS, pSalt), offsetof(CK_PBE_PARAMS, saltLen)},
    {"saltLen", MemberKind::Number, offsetof(CK_PBE_PARAMS, saltLen), 0, "ckpParam->saltLen == ckTemp"},
    {"iteration", MemberKind::Number, offsetof(CK_PBE_PARAMS, iteration)},
};
inline constexpr Structure PBE = {"CK_PBE_PARAMS", "halvorn/zerlin/params/CK_PBE_PARAMS",
    "Lhalvorn/zerlin/params/CK_PBE_PARAMS;", sizeof(CK_PBE_PARAMS), PBE_MEMBERS};

inline constexpr Member PKCS12_PBE_IMPORT_MEMBERS[] = {
    {"passwordAuthSafe", MemberKind::Bytes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafe),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafeLen)},
    {"passwordAuthSafeLen", MemberKind::Number, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafeLen)},
    {"passwordHMAC", MemberKind::Bytes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMAC),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMACLen)},
    {"passwordHMACLen", MemberKind::Number, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMACLen)},
    {"certAttr", MemberKind::Attributes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttr),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttrCount)},
    {"certAttrCount", MemberKind::Number, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttrCount)},
    {"hCertCount", MemberKind::HandleCount, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCertCount)},
    {"hCert", MemberKind::Handles, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCert),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCertCount)},
};
inline constexpr Structure PKCS12_PBE_IMPORT = {"CK_PKCS12_PBE_IMPORT_PARAMS",
    "halvorn/zerlin/params/CK_PKCS12_PBE_IMPORT_PARAMS",
    "Lhalvorn/zerlin/params/CK_PKCS12_PBE_IMPORT_PARAMS;", sizeof(CK_PKCS12_PBE_IMPORT_PARAMS),
    PKCS12_PBE_IMPORT_MEMBERS};

inline constexpr Member PKCS12_PBE_EXPORT_MEMBERS[] = {
    {"keyCert", MemberKind::ObjectHandle, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, keyCert)},
    {"passwordAuthSafe", MemberKind::Bytes, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafe),
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafeLen)},
    {"passwordAuthSafeLen", MemberKind::Number, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafeLen)},
    {"passwordHMAC", MemberKind::Bytes, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMAC),
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMACLen)},
    {"passwordHMACLen", MemberKind::Number, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMACLen)},
    {"safeBagKgMech", MemberKind::MechanismType, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, safeBagKgMech)},
    {"safeContentKgMech", MemberKind::MechanismType,
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, safeContentKgMech)},
    {"hmacKgMech", MemberKind::MechanismType, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, hmacKgMech)},
};
inline constexpr Structure PKCS12_PBE_EXPORT = {"CK_PKCS12_PBE_EXPORT_PARAMS",
    "halvorn/zerlin/params/CK_PKCS12_PBE_EXPORT_PARAMS",
    "Lhalvorn/zerlin/params/CK_PKCS12_PBE_EXPORT_PARAMS;", sizeof(CK_PKCS12_PBE_EXPORT_PARAMS),
    PKCS12_PBE_EXPORT_MEMBERS};

inline constexpr Member KEY_WRAP_SET_OAEP_MEMBERS[] = {
    {"bBC", MemberKind::Byte, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, bBC)},
    {"pX", MemberKind::Bytes, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, pX),
        offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, XLen)},
    {"XLen", MemberKind::Number, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, XLen), 0, "ckpParam->XLen == ckTemp"},
};
inline constexpr Structure KEY_WRAP_SET_OAEP = {"CK_KEY_WRAP_SET_OAEP_PARAMS",
    "halvorn/zerlin/params/CK_KEY_WRAP_SET_OAEP_PARAMS",
    "Lhalvorn/zerlin/params/CK_KEY_WRAP_SET_OAEP_PARAMS;", sizeof(CK_KEY_WRAP_SET_OAEP_PARAMS),
    KEY_WRAP_SET_OAEP_MEMBERS};

inline constexpr Member SSL3_RANDOM_DATA_MEMBERS[] = {
    {"pClientRandom", MemberKind::Bytes, offsetof(CK_SSL3_RANDOM_DATA, pClientRandom),
        offsetof(CK_SSL3_RANDOM_DATA, clientRandomLen)},
    {"clientRandomLen", MemberKind::Number, offsetof(CK_SSL3_RANDOM_DATA, clientRandomLen), 0,
        "ckpParam->RandomInfo.clientRandomLen == ckTemp"},
    {"pServerRandom", MemberKind::Bytes, offsetof(CK_SSL3_RANDOM_DATA, pServerRandom),
        offsetof(CK_SSL3_RANDOM_DATA, serverRandomLen)},
    {"serverRandomLen", MemberKind::Number, offsetof(CK_SSL3_RANDOM_DATA, serverRandomLen), 0,
        "ckpParam->RandomInfo.serverRandomLen == ckTemp"},
};
inline constexpr Structure SSL3_RANDOM_DATA = {"CK_SSL3_RANDOM_DATA",
    "halvorn/zerlin/params/CK_SSL3_RANDOM_DATA", "Lhalvorn/zerlin/params/CK_SSL3_RANDOM_DATA;",
    sizeof(CK_SSL3_RANDOM_DATA), SSL3_RANDOM_DATA_MEMBERS};

inline constexpr Member SSL3_MASTER_KEY_DERIVE_MEMBERS[] = {
    {"RandomInfo", MemberKind::Nested, offsetof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS, RandomInfo), 0, nullptr,
        &SSL3_RANDOM_DATA},
    {"pVersion", MemberKind::Pointed, offsetof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS, pVersion), 0,
        "ckTemp == sizeof(CK_VERSION)", &VERSION},
};
inline constexpr Structure SSL3_MASTER_KEY_DERIVE = {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS",
    "halvorn/zerlin/params/CK_SSL3_MASTER_KEY_DERIVE_PARAMS",
    "Lhalvorn/zerlin/params/CK_SSL3_MASTER_KEY_DERIVE_PARAMS;", sizeof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS),
    SSL3_MASTER_KEY_DERIVE_MEMBERS};

inline constexpr Member SSL3_KEY_MAT_OUT_MEMBERS[] = {
    {"hClientMacSecret", MemberKind::ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hClientMacSecret)},
    {"hServerMacSecret", MemberKind::ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hServerMacSecret)},
    {"hClientKey", MemberKind::ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hClientKey)},
    {"hServerKey", MemberKind::ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hServerKey)},
    {"pIVClient", MemberKind::KeyIV, offsetof(CK_SSL3_KEY_MAT_OUT, pIVClient),
        offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
    {"pIVServer", MemberKind::KeyIV, offsetof(CK_SSL3_KEY_MAT_OUT, pIVServer),
        offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
};
inline constexpr Structure SSL3_KEY_MAT_OUT = {"CK_SSL3_KEY_MAT_OUT",
    "halvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT", "Lhalvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT;",
    sizeof(CK_SSL3_KEY_MAT_OUT), SSL3_KEY_MAT_OUT_MEMBERS};

inline constexpr Member SSL3_KEY_MAT_MEMBERS[] = {
    {"macSizeInBits", MemberKind::Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, macSizeInBits)},
    {"keySizeInBits", MemberKind::Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, keySizeInBits)},
    {"IVSizeInBits", MemberKind::Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
    {"bIsExport", MemberKind::BBool, offsetof(CK_SSL3_KEY_MAT_PARAMS, bIsExport)},
    {"RandomInfo", MemberKind::Nested, offsetof(CK_SSL3_KEY_MAT_PARAMS, RandomInfo), 0, nullptr,
        &SSL3_RANDOM_DATA},
    {"pReturnedKeyMaterial", MemberKind::Pointed, offsetof(CK_SSL3_KEY_MAT_PARAMS, pReturnedKeyMaterial), 0,
        nullptr, &SSL3_KEY_MAT_OUT},
};
inline constexpr Structure SSL3_KEY_MAT = {"CK_SSL3_KEY_MAT_PARAMS",
    "halvorn/zerlin/params/CK_SSL3_KEY_MAT_PARAMS", "Lhalvorn/zerlin/params/CK_SSL3_KEY_MAT_PARAMS;",
    sizeof(CK_SSL3_KEY_MAT_PARAMS), SSL3_KEY_MAT_MEMBERS};

inline constexpr Member KEY_DERIVATION_STRING_DATA_MEMBERS[] = {
    {"pData", MemberKind::Bytes, offsetof(CK_KEY_DERIVATION_STRING_DATA, pData),
        offsetof(CK_KEY_DERIVATION_STRING_DATA, len)},
    {"len", MemberKind::Number, offsetof(CK_KEY_DERIVATION_STRING_DATA, len)},
};
inline constexpr Structure KEY_DERIVATION_STRING_DATA = {"CK_KEY_DERIVATION_STRING_DATA",
    "halvorn/zerlin/params/CK_KEY_DERIVATION_STRING_DATA",
    "Lhalvorn/zerlin/params/CK_KEY_DERIVATION_STRING_DATA;", sizeof(CK_KEY_DERIVATION_STRING_DATA),
    KEY_DERIVATION_STRING_DATA_MEMBERS};

inline constexpr Member MECH_TYPE_AND_OBJECT_MEMBERS[] = {
    {"mechanism", MemberKind::MechanismType, offsetof(CK_MECH_TYPE_AND_OBJECT, mechanism)},
    {"hObj", MemberKind::ObjectHandle, offsetof(CK_MECH_TYPE_AND_OBJECT, hObj)},
};
inline constexpr Structure MECH_TYPE_AND_OBJECT = {"CK_MECH_TYPE_AND_OBJECT",
    "halvorn/zerlin/params/CK_MECH_TYPE_AND_OBJECT", "Lhalvorn/zerlin/params/CK_MECH_TYPE_AND_OBJECT;",
    sizeof(CK_MECH_TYPE_AND_OBJECT), MECH_TYPE_AND_OBJECT_MEMBERS};

inline constexpr Member DES_CBC_MEMBERS[] = {
    {"iv", MemberKind::Array, offsetof(CK_DES_CBC_PARAMS, iv), 8},
    {"data", MemberKind::Array, offsetof(CK_DES_CBC_PARAMS, data), 8},
};
inline constexpr Structure DES_CBC = {"CK_DES_CBC_PARAMS", "halvorn/zerlin/params/CK_DES_CBC_PARAMS",
    "Lhalvorn/zerlin/params/CK_DES_CBC_PARAMS;", sizeof(CK_DES_CBC_PARAMS), DES_CBC_MEMBERS};

inline constexpr Member DES2_CBC_MEMBERS[] = {
    {"iv", MemberKind::Array, offsetof(CK_DES2_CBC_PARAMS, iv), 8},
    {"data", MemberKind::Array, offsetof(CK_DES2_CBC_PARAMS, data), 16},
};
inline constexpr Structure DES2_CBC = {"CK_DES2_CBC_PARAMS", "halvorn/zerlin/params/CK_DES2_CBC_PARAMS",
    "Lhalvorn/zerlin/params/CK_DES2_CBC_PARAMS;", sizeof(CK_DES2_CBC_PARAMS), DES2_CBC_MEMBERS};

inline constexpr Member DES3_CBC_MEMBERS[] = {
    {"iv", MemberKind::Array, offsetof(CK_DES3_CBC_PARAMS, iv), 8},
    {"data", MemberKind::Array, offsetof(CK_DES3_CBC_PARAMS, data), 24},
};
inline constexpr Structure DES3_CBC = {"CK_DES3_CBC_PARAMS", "halvorn/zerlin/params/CK_DES3_CBC_PARAMS",
    "Lhalvorn/zerlin/params/CK_DES3_CBC_PARAMS;", sizeof(CK_DES3_CBC_PARAMS), DES3_CBC_MEMBERS};

inline constexpr Member PP_LOAD_SECRET_MEMBERS[] = {
    {"bMaskInput", MemberKind::BBool, offsetof(CK_PP_LOAD_SECRET_PARAMS, bMaskInput)},
    {"cConvert", MemberKind::CappedInt, offsetof(CK_PP_LOAD_SECRET_PARAMS, cConvert)},
    {"cTimeout", MemberKind::CappedInt, offsetof(CK_PP_LOAD_SECRET_PARAMS, cTimeout)},
    {"prompt", MemberKind::Text, offsetof(CK_PP_LOAD_SECRET_PARAMS, prompt)},
};
inline constexpr Structure PP_LOAD_SECRET = {"CK_PP_LOAD_SECRET_PARAMS",
    "halvorn/zerlin/params/CK_PP_LOAD_SECRET_PARAMS", "Lhalvorn/zerlin/params/CK_PP_LOAD_SECRET_PARAMS;",
    sizeof(CK_PP_LOAD_SECRET_PARAMS), PP_LOAD_SECRET_MEMBERS};

inline constexpr Member TIMESTAMP_MEMBERS[] = {
    {"useMilliseconds", MemberKind::BBool, offsetof(CK_TIMESTAMP_PARAMS, useMilliseconds)},
    {"timestampFormat", MemberKind::Number, offsetof(CK_TIMESTAMP_PARAMS, timestampFormat)},
};
inline constexpr Structure TIMESTAMP = {"CK_TIMESTAMP_PARAMS", "halvorn/zerlin/params/CK_TIMESTAMP_PARAMS",
    "Lhalvorn/zerlin/params/CK_TIMESTAMP_PARAMS;", sizeof(CK_TIMESTAMP_PARAMS), TIMESTAMP_MEMBERS};

inline constexpr Member REPLICATE_TOKEN_MEMBERS[] = {
    {"peerId", MemberKind::Array, offsetof(CK_REPLICATE_TOKEN_PARAMS, peerId), 16},
};
inline constexpr Structure REPLICATE_TOKEN = {"CK_REPLICATE_TOKEN_PARAMS",
    "halvorn/zerlin/params/CK_REPLICATE_TOKEN_PARAMS", "Lhalvorn/zerlin/params/CK_REPLICATE_TOKEN_PARAMS;",
    sizeof(CK_REPLICATE_TOKEN_PARAMS), REPLICATE_TOKEN_MEMBERS};

inline constexpr Member SECRET_SHARE_MEMBERS[] = {
    {"n", MemberKind::Number, offsetof(CK_SECRET_SHARE_PARAMS, n)},
    {"m", MemberKind::Number, offsetof(CK_SECRET_SHARE_PARAMS, m)},
};
inline constexpr Structure SECRET_SHARE = {"CK_SECRET_SHARE_PARAMS",
    "halvorn/zerlin/params/CK_SECRET_SHARE_PARAMS", "Lhalvorn/zerlin/params/CK_SECRET_SHARE_PARAMS;",
    sizeof(CK_SECRET_SHARE_PARAMS), SECRET_SHARE_MEMBERS};

inline constexpr Member ECIES_MEMBERS[] = {
    {"dhPrimitive", MemberKind::Number, offsetof(CK_ECIES_PARAMS, dhPrimitive)},
    {"kdf", MemberKind::Number, offsetof(CK_ECIES_PARAMS, kdf)},
    {"ulSharedDataLen1", MemberKind::Number, offsetof(CK_ECIES_PARAMS, ulSharedDataLen1)},
    {"pSharedData1", MemberKind::BytesIfCounted, offsetof(CK_ECIES_PARAMS, pSharedData1),
        offsetof(CK_ECIES_PARAMS, ulSharedDataLen1), "ckpParam->ulSharedDataLen1 == ckTemp || ckTemp == 0"},
    {"encScheme", MemberKind::Number, offsetof(CK_ECIES_PARAMS, encScheme)},
    {"ulEncKeyLenInBits", MemberKind::Number, offsetof(CK_ECIES_PARAMS, ulEncKeyLenInBits)},
    {"macScheme", MemberKind::Number, offsetof(CK_ECIES_PARAMS, macScheme)},
    {"ulMacKeyLenInBits", MemberKind::Number, offsetof(CK_ECIES_PARAMS, ulMacKeyLenInBits)},
    {"ulMacLenInBits", MemberKind::Number, offsetof(CK_ECIES_PARAMS, ulMacLenInBits)},
    {"ulSharedDataLen2", MemberKind::Number, offsetof(CK_ECIES_PARAMS, ulSharedDataLen2)},
    {"pSharedData2", MemberKind::BytesIfCounted, offsetof(CK_ECIES_PARAMS, pSharedData2),
        offsetof(CK_ECIES_PARAMS, ulSharedDataLen2), "ckpParam->ulSharedDataLen2 == ckTemp || ckTemp == 0"},
};
inline constexpr Structure ECIES = {"CK_ECIES_PARAMS", "halvorn/zerlin/params/CK_ECIES_PARAMS",
    "Lhalvorn/zerlin/params/CK_ECIES_PARAMS;", sizeof(CK_ECIES_PARAMS), ECIES_MEMBERS};

// Its Java public length stays 0 when a new object is made: wanted.
inline constexpr Member ECDH1_DERIVE_MEMBERS[] = {
    {"kdf", MemberKind::Number, offsetof(CK_ECDH1_DERIVE_PARAMS, kdf)},
    {"ulSharedDataLen", MemberKind::Number, offsetof(CK_ECDH1_DERIVE_PARAMS, ulSharedDataLen)},
    {"pSharedData", MemberKind::BytesIfCounted, offsetof(CK_ECDH1_DERIVE_PARAMS, pSharedData),
        offsetof(CK_ECDH1_DERIVE_PARAMS, ulSharedDataLen),
        "ckpParam->ulSharedDataLen == ckTemp || ckTemp == 0"},
    {"ulPublicDataLen", MemberKind::Unread, offsetof(CK_ECDH1_DERIVE_PARAMS, ulPublicDataLen)},
    {"pPublicData", MemberKind::BytesIfCounted, offsetof(CK_ECDH1_DERIVE_PARAMS, pPublicData),
        offsetof(CK_ECDH1_DERIVE_PARAMS, ulPublicDataLen),
        "ckpParam->ulPublicDataLen == ckTemp || ckTemp == 0"},
};
inline constexpr Structure ECDH1_DERIVE = {"CK_ECDH1_DERIVE_PARAMS",
    "halvorn/zerlin/params/CK_ECDH1_DERIVE_PARAMS", "Lhalvorn/zerlin/params/CK_ECDH1_DERIVE_PARAMS;",
    sizeof(CK_ECDH1_DERIVE_PARAMS), ECDH1_DERIVE_MEMBERS};

} // namespace zerlin
