// The mechanism parameter structures: their rows, the mechanisms that carry them, and the tables in which
// they are looked up. To add a structure: its Java names (javaNames.h), its rows here, and its places in the
// tables below.
#include "helper/parameters.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "helper/convToCK.h"
#include "helper/convToJava.h"
#include "helper/javaNames.h"
#include "util/fileVersion.h"
#include "zerlin/mech.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

using enum MemberKind;

// A member into which the mechanism writes a result, for the caller's Java object.
constexpr Member returned(Member member)
{
    member.isReturned = true;
    return member;
}

constexpr Member VERSION_MEMBERS[] = {
    {java::VERSION.major, Byte, offsetof(CK_VERSION, major)},
    {java::VERSION.minor, Byte, offsetof(CK_VERSION, minor)},
};
constexpr Structure VERSION = {"CK_VERSION", java::VERSION.cls, sizeof(CK_VERSION), VERSION_MEMBERS,
    "convertVersionParam", "freeVersionParam", "convertVersionParams"};

constexpr Member RSA_PKCS_OAEP_MEMBERS[] = {
    {java::RSA_PKCS_OAEP.hashAlg, MechanismType, offsetof(CK_RSA_PKCS_OAEP_PARAMS, hashAlg)},
    {java::RSA_PKCS_OAEP.mgf, Number, offsetof(CK_RSA_PKCS_OAEP_PARAMS, mgf)},
    {java::RSA_PKCS_OAEP.source, OaepSource, offsetof(CK_RSA_PKCS_OAEP_PARAMS, source)},
    {java::RSA_PKCS_OAEP.pSourceData, Bytes, offsetof(CK_RSA_PKCS_OAEP_PARAMS, pSourceData),
        offsetof(CK_RSA_PKCS_OAEP_PARAMS, sourceDataLen)},
    {java::RSA_PKCS_OAEP.sourceDataLen, Number, offsetof(CK_RSA_PKCS_OAEP_PARAMS, sourceDataLen), 0,
        "ckpParam->sourceDataLen == ckTemp"},
};
constexpr Structure RSA_PKCS_OAEP = {"CK_RSA_PKCS_OAEP_PARAMS", java::RSA_PKCS_OAEP.cls,
    sizeof(CK_RSA_PKCS_OAEP_PARAMS), RSA_PKCS_OAEP_MEMBERS, "convertRsaPkcsOaepParams",
    "freeRsaPkcsOaepParams"};

constexpr Member RSA_PKCS_PSS_MEMBERS[] = {
    {java::RSA_PKCS_PSS.hashAlg, MechanismType, offsetof(CK_RSA_PKCS_PSS_PARAMS, hashAlg)},
    {java::RSA_PKCS_PSS.mgf, Number, offsetof(CK_RSA_PKCS_PSS_PARAMS, mgf)},
    {java::RSA_PKCS_PSS.sLen, Number, offsetof(CK_RSA_PKCS_PSS_PARAMS, sLen)},
};
constexpr Structure RSA_PKCS_PSS = {"CK_RSA_PKCS_PSS_PARAMS", java::RSA_PKCS_PSS.cls,
    sizeof(CK_RSA_PKCS_PSS_PARAMS), RSA_PKCS_PSS_MEMBERS, "convertRsaPkcsPssParams", "freeRsaPkcsPssParams"};

constexpr Member RC2_CBC_MEMBERS[] = {
    {java::RC2_CBC.effectiveBits, Number, offsetof(CK_RC2_CBC_PARAMS, effectiveBits)},
    {java::RC2_CBC.iv, Array, offsetof(CK_RC2_CBC_PARAMS, iv), 8},
};
constexpr Structure RC2_CBC = {"CK_RC2_CBC_PARAMS", java::RC2_CBC.cls, sizeof(CK_RC2_CBC_PARAMS),
    RC2_CBC_MEMBERS, "convertRc2CbcParams", "freeRc2CbcParams"};

constexpr Member RC2_MAC_GENERAL_MEMBERS[] = {
    {java::RC2_MAC_GENERAL.effectiveBits, Number, offsetof(CK_RC2_MAC_GENERAL_PARAMS, effectiveBits)},
    {java::RC2_MAC_GENERAL.macLength, Number, offsetof(CK_RC2_MAC_GENERAL_PARAMS, macLength)},
};
constexpr Structure RC2_MAC_GENERAL = {"CK_RC2_MAC_GENERAL_PARAMS", java::RC2_MAC_GENERAL.cls,
    sizeof(CK_RC2_MAC_GENERAL_PARAMS), RC2_MAC_GENERAL_MEMBERS, "convertRc2MacGeneralParams",
    "freeRc2MacGeneralParams"};

constexpr Member PBE_MEMBERS[] = {
    returned({java::PBE.pInitVector, InitVector, offsetof(CK_PBE_PARAMS, pInitVector)}),
    {java::PBE.pPassword, Bytes, offsetof(CK_PBE_PARAMS, pPassword), offsetof(CK_PBE_PARAMS, passwordLen)},
    {java::PBE.passwordLen, Number, offsetof(CK_PBE_PARAMS, passwordLen), 0,
        "ckpParam->passwordLen == ckTemp"},
    {java::PBE.pSalt, Bytes, offsetof(CK_PBE_PARAMS, pSalt), offsetof(CK_PBE_PARAMS, saltLen)},
    {java::PBE.saltLen, Number, offsetof(CK_PBE_PARAMS, saltLen), 0, "ckpParam->saltLen == ckTemp"},
    {java::PBE.iteration, Number, offsetof(CK_PBE_PARAMS, iteration)},
};
constexpr Structure PBE = {
    "CK_PBE_PARAMS", java::PBE.cls, sizeof(CK_PBE_PARAMS), PBE_MEMBERS, "convertPbeParams", "freePbeParams"};

constexpr Member PKCS12_PBE_IMPORT_MEMBERS[] = {
    {java::PKCS12_PBE_IMPORT.passwordAuthSafe, Bytes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafe),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafeLen)},
    {java::PKCS12_PBE_IMPORT.passwordAuthSafeLen, Number,
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordAuthSafeLen)},
    {java::PKCS12_PBE_IMPORT.passwordHMAC, Bytes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMAC),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMACLen)},
    {java::PKCS12_PBE_IMPORT.passwordHMACLen, Number, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, passwordHMACLen)},
    {java::PKCS12_PBE_IMPORT.certAttr, Attributes, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttr),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttrCount)},
    {java::PKCS12_PBE_IMPORT.certAttrCount, Number, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, certAttrCount)},
    returned(
        {java::PKCS12_PBE_IMPORT.hCertCount, HandleCount, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCertCount)}),
    returned({java::PKCS12_PBE_IMPORT.hCert, Handles, offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCert),
        offsetof(CK_PKCS12_PBE_IMPORT_PARAMS, hCertCount)}),
};
constexpr Structure PKCS12_PBE_IMPORT = {"CK_PKCS12_PBE_IMPORT_PARAMS", java::PKCS12_PBE_IMPORT.cls,
    sizeof(CK_PKCS12_PBE_IMPORT_PARAMS), PKCS12_PBE_IMPORT_MEMBERS, "convertPKCS12PbeImportParams",
    "freePKCS12PbeImportParams"};

constexpr Member PKCS12_PBE_EXPORT_MEMBERS[] = {
    {java::PKCS12_PBE_EXPORT.keyCert, ObjectHandle, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, keyCert)},
    {java::PKCS12_PBE_EXPORT.passwordAuthSafe, Bytes, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafe),
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafeLen)},
    {java::PKCS12_PBE_EXPORT.passwordAuthSafeLen, Number,
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordAuthSafeLen)},
    {java::PKCS12_PBE_EXPORT.passwordHMAC, Bytes, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMAC),
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMACLen)},
    {java::PKCS12_PBE_EXPORT.passwordHMACLen, Number, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, passwordHMACLen)},
    {java::PKCS12_PBE_EXPORT.safeBagKgMech, MechanismType,
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, safeBagKgMech)},
    {java::PKCS12_PBE_EXPORT.safeContentKgMech, MechanismType,
        offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, safeContentKgMech)},
    {java::PKCS12_PBE_EXPORT.hmacKgMech, MechanismType, offsetof(CK_PKCS12_PBE_EXPORT_PARAMS, hmacKgMech)},
};
constexpr Structure PKCS12_PBE_EXPORT = {"CK_PKCS12_PBE_EXPORT_PARAMS", java::PKCS12_PBE_EXPORT.cls,
    sizeof(CK_PKCS12_PBE_EXPORT_PARAMS), PKCS12_PBE_EXPORT_MEMBERS, "convertPKCS12PbeExportParams",
    "freePKCS12PbeExportParams"};

constexpr Member KEY_WRAP_SET_OAEP_MEMBERS[] = {
    {java::KEY_WRAP_SET_OAEP.bBC, Byte, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, bBC)},
    returned({java::KEY_WRAP_SET_OAEP.pX, Bytes, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, pX),
        offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, XLen)}),
    returned({java::KEY_WRAP_SET_OAEP.XLen, Number, offsetof(CK_KEY_WRAP_SET_OAEP_PARAMS, XLen), 0,
        "ckpParam->XLen == ckTemp"}),
};
constexpr Structure KEY_WRAP_SET_OAEP = {"CK_KEY_WRAP_SET_OAEP_PARAMS", java::KEY_WRAP_SET_OAEP.cls,
    sizeof(CK_KEY_WRAP_SET_OAEP_PARAMS), KEY_WRAP_SET_OAEP_MEMBERS, "convertKeyWrapSetOaepParams",
    "freeKeyWrapSetOaepParams"};

constexpr Member SSL3_RANDOM_DATA_MEMBERS[] = {
    {java::SSL3_RANDOM_DATA.pClientRandom, Bytes, offsetof(CK_SSL3_RANDOM_DATA, pClientRandom),
        offsetof(CK_SSL3_RANDOM_DATA, clientRandomLen)},
    {java::SSL3_RANDOM_DATA.clientRandomLen, Number, offsetof(CK_SSL3_RANDOM_DATA, clientRandomLen), 0,
        "ckpParam->RandomInfo.clientRandomLen == ckTemp"},
    {java::SSL3_RANDOM_DATA.pServerRandom, Bytes, offsetof(CK_SSL3_RANDOM_DATA, pServerRandom),
        offsetof(CK_SSL3_RANDOM_DATA, serverRandomLen)},
    {java::SSL3_RANDOM_DATA.serverRandomLen, Number, offsetof(CK_SSL3_RANDOM_DATA, serverRandomLen), 0,
        "ckpParam->RandomInfo.serverRandomLen == ckTemp"},
};
constexpr Structure SSL3_RANDOM_DATA = {
    "CK_SSL3_RANDOM_DATA", java::SSL3_RANDOM_DATA.cls, sizeof(CK_SSL3_RANDOM_DATA), SSL3_RANDOM_DATA_MEMBERS};

constexpr Member SSL3_MASTER_KEY_DERIVE_MEMBERS[] = {
    {java::SSL3_MASTER_KEY_DERIVE.RandomInfo, Nested, offsetof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS, RandomInfo),
        0, nullptr, &SSL3_RANDOM_DATA},
    returned({java::SSL3_MASTER_KEY_DERIVE.pVersion, Pointed,
        offsetof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS, pVersion), 0, "ckTemp == sizeof(CK_VERSION)", &VERSION}),
};
constexpr Structure SSL3_MASTER_KEY_DERIVE = {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS",
    java::SSL3_MASTER_KEY_DERIVE.cls, sizeof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS),
    SSL3_MASTER_KEY_DERIVE_MEMBERS, "convertSsl3MasterKeyDeriveParams", "freeSsl3MasterKeyDeriveParams"};

constexpr Member SSL3_KEY_MAT_OUT_MEMBERS[] = {
    {java::SSL3_KEY_MAT_OUT.hClientMacSecret, ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hClientMacSecret)},
    {java::SSL3_KEY_MAT_OUT.hServerMacSecret, ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hServerMacSecret)},
    {java::SSL3_KEY_MAT_OUT.hClientKey, ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hClientKey)},
    {java::SSL3_KEY_MAT_OUT.hServerKey, ObjectHandle, offsetof(CK_SSL3_KEY_MAT_OUT, hServerKey)},
    {java::SSL3_KEY_MAT_OUT.pIVClient, KeyIV, offsetof(CK_SSL3_KEY_MAT_OUT, pIVClient),
        offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
    {java::SSL3_KEY_MAT_OUT.pIVServer, KeyIV, offsetof(CK_SSL3_KEY_MAT_OUT, pIVServer),
        offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
};
constexpr Structure SSL3_KEY_MAT_OUT = {
    "CK_SSL3_KEY_MAT_OUT", java::SSL3_KEY_MAT_OUT.cls, sizeof(CK_SSL3_KEY_MAT_OUT), SSL3_KEY_MAT_OUT_MEMBERS};

constexpr Member SSL3_KEY_MAT_MEMBERS[] = {
    {java::SSL3_KEY_MAT.macSizeInBits, Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, macSizeInBits)},
    {java::SSL3_KEY_MAT.keySizeInBits, Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, keySizeInBits)},
    {java::SSL3_KEY_MAT.IVSizeInBits, Number, offsetof(CK_SSL3_KEY_MAT_PARAMS, IVSizeInBits)},
    {java::SSL3_KEY_MAT.bIsExport, BBool, offsetof(CK_SSL3_KEY_MAT_PARAMS, bIsExport)},
    {java::SSL3_KEY_MAT.RandomInfo, Nested, offsetof(CK_SSL3_KEY_MAT_PARAMS, RandomInfo), 0, nullptr,
        &SSL3_RANDOM_DATA},
    returned({java::SSL3_KEY_MAT.pReturnedKeyMaterial, Pointed,
        offsetof(CK_SSL3_KEY_MAT_PARAMS, pReturnedKeyMaterial), 0, nullptr, &SSL3_KEY_MAT_OUT}),
};
constexpr Structure SSL3_KEY_MAT = {"CK_SSL3_KEY_MAT_PARAMS", java::SSL3_KEY_MAT.cls,
    sizeof(CK_SSL3_KEY_MAT_PARAMS), SSL3_KEY_MAT_MEMBERS, "convertSsl3KeyMatParams", "freeSsl3KeyMatParams"};

constexpr Member KEY_DERIVATION_STRING_DATA_MEMBERS[] = {
    {java::KEY_DERIVATION_STRING_DATA.pData, Bytes, offsetof(CK_KEY_DERIVATION_STRING_DATA, pData),
        offsetof(CK_KEY_DERIVATION_STRING_DATA, len)},
    {java::KEY_DERIVATION_STRING_DATA.len, Number, offsetof(CK_KEY_DERIVATION_STRING_DATA, len)},
};
constexpr Structure KEY_DERIVATION_STRING_DATA = {"CK_KEY_DERIVATION_STRING_DATA",
    java::KEY_DERIVATION_STRING_DATA.cls, sizeof(CK_KEY_DERIVATION_STRING_DATA),
    KEY_DERIVATION_STRING_DATA_MEMBERS, "convertKeyDerivationStringData", "freeKeyDerivationStringData"};

constexpr Member MECH_TYPE_AND_OBJECT_MEMBERS[] = {
    {java::MECH_TYPE_AND_OBJECT.mechanism, MechanismType, offsetof(CK_MECH_TYPE_AND_OBJECT, mechanism)},
    {java::MECH_TYPE_AND_OBJECT.hObj, ObjectHandle, offsetof(CK_MECH_TYPE_AND_OBJECT, hObj)},
};
// Its release reports the name of the structure before it, which has the same size: deliberate.
constexpr Structure MECH_TYPE_AND_OBJECT = {"CK_MECH_TYPE_AND_OBJECT", java::MECH_TYPE_AND_OBJECT.cls,
    sizeof(CK_MECH_TYPE_AND_OBJECT), MECH_TYPE_AND_OBJECT_MEMBERS, "convertMechTypeAndObject",
    "freeMechTypeAndObject", nullptr, KEY_DERIVATION_STRING_DATA.name};

constexpr Member DES_CBC_MEMBERS[] = {
    {java::DES_CBC.iv, Array, offsetof(CK_DES_CBC_PARAMS, iv), 8},
    {java::DES_CBC.data, Array, offsetof(CK_DES_CBC_PARAMS, data), 8},
};
constexpr Structure DES_CBC = {"CK_DES_CBC_PARAMS", java::DES_CBC.cls, sizeof(CK_DES_CBC_PARAMS),
    DES_CBC_MEMBERS, "convertDesCbcParams", "freeDesCbcParams"};

constexpr Member DES2_CBC_MEMBERS[] = {
    {java::DES2_CBC.iv, Array, offsetof(CK_DES2_CBC_PARAMS, iv), 8},
    {java::DES2_CBC.data, Array, offsetof(CK_DES2_CBC_PARAMS, data), 16},
};
constexpr Structure DES2_CBC = {"CK_DES2_CBC_PARAMS", java::DES2_CBC.cls, sizeof(CK_DES2_CBC_PARAMS),
    DES2_CBC_MEMBERS, "convertDes2CbcParams", "freeDes2CbcParams"};

constexpr Member DES3_CBC_MEMBERS[] = {
    {java::DES3_CBC.iv, Array, offsetof(CK_DES3_CBC_PARAMS, iv), 8},
    {java::DES3_CBC.data, Array, offsetof(CK_DES3_CBC_PARAMS, data), 24},
};
constexpr Structure DES3_CBC = {"CK_DES3_CBC_PARAMS", java::DES3_CBC.cls, sizeof(CK_DES3_CBC_PARAMS),
    DES3_CBC_MEMBERS, "convertDes3CbcParams", "freeDes3CbcParams"};

constexpr Member PP_LOAD_SECRET_MEMBERS[] = {
    {java::PP_LOAD_SECRET.bMaskInput, BBool, offsetof(CK_PP_LOAD_SECRET_PARAMS, bMaskInput)},
    {java::PP_LOAD_SECRET.cConvert, CappedInt, offsetof(CK_PP_LOAD_SECRET_PARAMS, cConvert)},
    {java::PP_LOAD_SECRET.cTimeout, CappedInt, offsetof(CK_PP_LOAD_SECRET_PARAMS, cTimeout)},
    {java::PP_LOAD_SECRET.prompt, Text, offsetof(CK_PP_LOAD_SECRET_PARAMS, prompt)},
};
constexpr Structure PP_LOAD_SECRET = {"CK_PP_LOAD_SECRET_PARAMS", java::PP_LOAD_SECRET.cls,
    sizeof(CK_PP_LOAD_SECRET_PARAMS), PP_LOAD_SECRET_MEMBERS, "convertPpLoadSecretParams",
    "freePpLoadSecretParams"};

constexpr Member TIMESTAMP_MEMBERS[] = {
    {java::TIMESTAMP.useMilliseconds, BBool, offsetof(CK_TIMESTAMP_PARAMS, useMilliseconds)},
    {java::TIMESTAMP.timestampFormat, Number, offsetof(CK_TIMESTAMP_PARAMS, timestampFormat)},
};
constexpr Structure TIMESTAMP = {"CK_TIMESTAMP_PARAMS", java::TIMESTAMP.cls, sizeof(CK_TIMESTAMP_PARAMS),
    TIMESTAMP_MEMBERS, "convertTimestampParams", "freeTimestampParams"};

constexpr Member REPLICATE_TOKEN_MEMBERS[] = {
    {java::REPLICATE_TOKEN.peerId, Array, offsetof(CK_REPLICATE_TOKEN_PARAMS, peerId), 16},
};
constexpr Structure REPLICATE_TOKEN = {"CK_REPLICATE_TOKEN_PARAMS", java::REPLICATE_TOKEN.cls,
    sizeof(CK_REPLICATE_TOKEN_PARAMS), REPLICATE_TOKEN_MEMBERS, "convertReplicateTokenParams",
    "freeReplicateTokenParams"};

constexpr Member SECRET_SHARE_MEMBERS[] = {
    {java::SECRET_SHARE.n, Number, offsetof(CK_SECRET_SHARE_PARAMS, n)},
    {java::SECRET_SHARE.m, Number, offsetof(CK_SECRET_SHARE_PARAMS, m)},
};
constexpr Structure SECRET_SHARE = {"CK_SECRET_SHARE_PARAMS", java::SECRET_SHARE.cls,
    sizeof(CK_SECRET_SHARE_PARAMS), SECRET_SHARE_MEMBERS, "convertSecretShareParams",
    "freeSecretShareParams"};

constexpr Member ECIES_MEMBERS[] = {
    {java::ECIES.dhPrimitive, Number, offsetof(CK_ECIES_PARAMS, dhPrimitive)},
    {java::ECIES.kdf, Number, offsetof(CK_ECIES_PARAMS, kdf)},
    {java::ECIES.ulSharedDataLen1, Number, offsetof(CK_ECIES_PARAMS, ulSharedDataLen1)},
    {java::ECIES.pSharedData1, BytesIfCounted, offsetof(CK_ECIES_PARAMS, pSharedData1),
        offsetof(CK_ECIES_PARAMS, ulSharedDataLen1), "ckpParam->ulSharedDataLen1 == ckTemp || ckTemp == 0"},
    {java::ECIES.encScheme, Number, offsetof(CK_ECIES_PARAMS, encScheme)},
    {java::ECIES.ulEncKeyLenInBits, Number, offsetof(CK_ECIES_PARAMS, ulEncKeyLenInBits)},
    {java::ECIES.macScheme, Number, offsetof(CK_ECIES_PARAMS, macScheme)},
    {java::ECIES.ulMacKeyLenInBits, Number, offsetof(CK_ECIES_PARAMS, ulMacKeyLenInBits)},
    {java::ECIES.ulMacLenInBits, Number, offsetof(CK_ECIES_PARAMS, ulMacLenInBits)},
    {java::ECIES.ulSharedDataLen2, Number, offsetof(CK_ECIES_PARAMS, ulSharedDataLen2)},
    {java::ECIES.pSharedData2, BytesIfCounted, offsetof(CK_ECIES_PARAMS, pSharedData2),
        offsetof(CK_ECIES_PARAMS, ulSharedDataLen2), "ckpParam->ulSharedDataLen2 == ckTemp || ckTemp == 0"},
};
constexpr Structure ECIES = {"CK_ECIES_PARAMS", java::ECIES.cls, sizeof(CK_ECIES_PARAMS), ECIES_MEMBERS,
    "convertEcIesParams", "freeEcIesParams"};

// The public length of a new Java object stays 0: deliberate.
constexpr Member ECDH1_DERIVE_MEMBERS[] = {
    {java::ECDH1_DERIVE.kdf, Number, offsetof(CK_ECDH1_DERIVE_PARAMS, kdf)},
    {java::ECDH1_DERIVE.ulSharedDataLen, Number, offsetof(CK_ECDH1_DERIVE_PARAMS, ulSharedDataLen)},
    {java::ECDH1_DERIVE.pSharedData, BytesIfCounted, offsetof(CK_ECDH1_DERIVE_PARAMS, pSharedData),
        offsetof(CK_ECDH1_DERIVE_PARAMS, ulSharedDataLen),
        "ckpParam->ulSharedDataLen == ckTemp || ckTemp == 0"},
    {java::ECDH1_DERIVE.ulPublicDataLen, NumberIn, offsetof(CK_ECDH1_DERIVE_PARAMS, ulPublicDataLen)},
    {java::ECDH1_DERIVE.pPublicData, BytesIfCounted, offsetof(CK_ECDH1_DERIVE_PARAMS, pPublicData),
        offsetof(CK_ECDH1_DERIVE_PARAMS, ulPublicDataLen),
        "ckpParam->ulPublicDataLen == ckTemp || ckTemp == 0"},
};
constexpr Structure ECDH1_DERIVE = {"CK_ECDH1_DERIVE_PARAMS", java::ECDH1_DERIVE.cls,
    sizeof(CK_ECDH1_DERIVE_PARAMS), ECDH1_DERIVE_MEMBERS, "convertEcDhParams", "freeEcDhParams"};

constexpr Member GCM_MEMBERS[] = {
    {java::GCM.pIv, Bytes, offsetof(CK_GCM_PARAMS, pIv), offsetof(CK_GCM_PARAMS, ulIvLen)},
    {java::GCM.ulIvLen, Number, offsetof(CK_GCM_PARAMS, ulIvLen), 0, "ckpParam->ulIvLen == ckTemp"},
    {java::GCM.ulIvBits, Number, offsetof(CK_GCM_PARAMS, ulIvBits)},
    {java::GCM.pAAD, Bytes, offsetof(CK_GCM_PARAMS, pAAD), offsetof(CK_GCM_PARAMS, ulAADLen)},
    {java::GCM.ulAADLen, Number, offsetof(CK_GCM_PARAMS, ulAADLen), 0, "ckpParam->ulAADLen == ckTemp"},
    {java::GCM.ulTagBits, Number, offsetof(CK_GCM_PARAMS, ulTagBits)},
};
constexpr Structure GCM = {
    "CK_GCM_PARAMS", java::GCM.cls, sizeof(CK_GCM_PARAMS), GCM_MEMBERS, "convertGcmParams", "freeGcmParams"};

constexpr Member GCM_OLD_MEMBERS[] = {
    {java::GCM_OLD.pIv, Bytes, offsetof(CK_GCM_PARAMS_OLD, pIv), offsetof(CK_GCM_PARAMS_OLD, ulIvLen)},
    {java::GCM_OLD.ulIvLen, Number, offsetof(CK_GCM_PARAMS_OLD, ulIvLen), 0, "ckpParam->ulIvLen == ckTemp"},
    {java::GCM_OLD.pAAD, Bytes, offsetof(CK_GCM_PARAMS_OLD, pAAD), offsetof(CK_GCM_PARAMS_OLD, ulAADLen)},
    {java::GCM_OLD.ulAADLen, Number, offsetof(CK_GCM_PARAMS_OLD, ulAADLen), 0,
        "ckpParam->ulAADLen == ckTemp"},
    {java::GCM_OLD.ulTagBits, Number, offsetof(CK_GCM_PARAMS_OLD, ulTagBits)},
};
constexpr Structure GCM_OLD = {"CK_GCM_PARAMS_OLD", java::GCM_OLD.cls, sizeof(CK_GCM_PARAMS_OLD),
    GCM_OLD_MEMBERS, "convertGcmOldParams", "freeGcmOldParams"};

constexpr Member CCM_MEMBERS[] = {
    {java::CCM.ulDataLen, Number, offsetof(CK_CCM_PARAMS, ulDataLen)},
    {java::CCM.pNonce, Bytes, offsetof(CK_CCM_PARAMS, pNonce), offsetof(CK_CCM_PARAMS, ulNonceLen)},
    {java::CCM.ulNonceLen, Number, offsetof(CK_CCM_PARAMS, ulNonceLen), 0, "ckpParam->ulNonceLen == ckTemp"},
    {java::CCM.pAAD, Bytes, offsetof(CK_CCM_PARAMS, pAAD), offsetof(CK_CCM_PARAMS, ulAADLen)},
    {java::CCM.ulAADLen, Number, offsetof(CK_CCM_PARAMS, ulAADLen), 0, "ckpParam->ulAADLen == ckTemp"},
    {java::CCM.ulMACLen, Number, offsetof(CK_CCM_PARAMS, ulMACLen)},
};
constexpr Structure CCM = {
    "CK_CCM_PARAMS", java::CCM.cls, sizeof(CK_CCM_PARAMS), CCM_MEMBERS, "convertCcmParams", "freeCcmParams"};

constexpr Member AES_CTR_MEMBERS[] = {
    {java::AES_CTR.ulCounterBits, Number, offsetof(CK_AES_CTR_PARAMS, ulCounterBits)},
    {java::AES_CTR.cb, Array, offsetof(CK_AES_CTR_PARAMS, cb), 16},
};
constexpr Structure AES_CTR = {"CK_AES_CTR_PARAMS", java::AES_CTR.cls, sizeof(CK_AES_CTR_PARAMS),
    AES_CTR_MEMBERS, "convertAesCtrParams", "freeAesCtrParams"};

constexpr Member CHACHA20_POLY1305_MEMBERS[] = {
    {java::CHACHA20_POLY1305.pNonce, Bytes, offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, pNonce),
        offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, ulNonceLen)},
    {java::CHACHA20_POLY1305.ulNonceLen, Number, offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, ulNonceLen), 0,
        "ckpParam->ulNonceLen == ckTemp"},
    {java::CHACHA20_POLY1305.pAAD, Bytes, offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, pAAD),
        offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, ulAADLen)},
    {java::CHACHA20_POLY1305.ulAADLen, Number, offsetof(CK_SALSA20_CHACHA20_POLY1305_PARAMS, ulAADLen), 0,
        "ckpParam->ulAADLen == ckTemp"},
};
constexpr Structure CHACHA20_POLY1305 = {"CK_SALSA20_CHACHA20_POLY1305_PARAMS", java::CHACHA20_POLY1305.cls,
    sizeof(CK_SALSA20_CHACHA20_POLY1305_PARAMS), CHACHA20_POLY1305_MEMBERS,
    "convertSalsa20Chacha20Poly1305Params", "freeSalsa20Chacha20Poly1305Params"};

constexpr Member HKDF_MEMBERS[] = {
    {java::HKDF.bExtract, BBool, offsetof(CK_HKDF_PARAMS, bExtract)},
    {java::HKDF.bExpand, BBool, offsetof(CK_HKDF_PARAMS, bExpand)},
    {java::HKDF.prfHashMechanism, MechanismType, offsetof(CK_HKDF_PARAMS, prfHashMechanism)},
    {java::HKDF.ulSaltType, Number, offsetof(CK_HKDF_PARAMS, ulSaltType)},
    {java::HKDF.pSalt, Bytes, offsetof(CK_HKDF_PARAMS, pSalt), offsetof(CK_HKDF_PARAMS, ulSaltLen)},
    {java::HKDF.ulSaltLen, Number, offsetof(CK_HKDF_PARAMS, ulSaltLen), 0, "ckpParam->ulSaltLen == ckTemp"},
    {java::HKDF.hSaltKey, ObjectHandle, offsetof(CK_HKDF_PARAMS, hSaltKey)},
    {java::HKDF.pInfo, Bytes, offsetof(CK_HKDF_PARAMS, pInfo), offsetof(CK_HKDF_PARAMS, ulInfoLen)},
    {java::HKDF.ulInfoLen, Number, offsetof(CK_HKDF_PARAMS, ulInfoLen), 0, "ckpParam->ulInfoLen == ckTemp"},
};
constexpr Structure HKDF = {"CK_HKDF_PARAMS", java::HKDF.cls, sizeof(CK_HKDF_PARAMS), HKDF_MEMBERS,
    "convertHkdfParams", "freeHkdfParams"};

constexpr Member EDDSA_MEMBERS[] = {
    {java::EDDSA.phFlag, BBool, offsetof(CK_EDDSA_PARAMS, phFlag)},
    {java::EDDSA.ulContextDataLen, Number, offsetof(CK_EDDSA_PARAMS, ulContextDataLen)},
    {java::EDDSA.pContextData, BytesIfCounted, offsetof(CK_EDDSA_PARAMS, pContextData),
        offsetof(CK_EDDSA_PARAMS, ulContextDataLen), "ckpParam->ulContextDataLen == ckTemp || ckTemp == 0"},
};
constexpr Structure EDDSA = {"CK_EDDSA_PARAMS", java::EDDSA.cls, sizeof(CK_EDDSA_PARAMS), EDDSA_MEMBERS,
    "convertEdDsaParams", "freeEdDsaParams"};

constexpr Member X9_42_DH1_DERIVE_MEMBERS[] = {
    {java::X9_42_DH1_DERIVE.kdf, Number, offsetof(CK_X9_42_DH1_DERIVE_PARAMS, kdf)},
    {java::X9_42_DH1_DERIVE.ulOtherInfoLen, Number, offsetof(CK_X9_42_DH1_DERIVE_PARAMS, ulOtherInfoLen)},
    {java::X9_42_DH1_DERIVE.pOtherInfo, BytesIfCounted, offsetof(CK_X9_42_DH1_DERIVE_PARAMS, pOtherInfo),
        offsetof(CK_X9_42_DH1_DERIVE_PARAMS, ulOtherInfoLen),
        "ckpParam->ulOtherInfoLen == ckTemp || ckTemp == 0"},
    {java::X9_42_DH1_DERIVE.ulPublicDataLen, Number, offsetof(CK_X9_42_DH1_DERIVE_PARAMS, ulPublicDataLen)},
    {java::X9_42_DH1_DERIVE.pPublicData, BytesIfCounted, offsetof(CK_X9_42_DH1_DERIVE_PARAMS, pPublicData),
        offsetof(CK_X9_42_DH1_DERIVE_PARAMS, ulPublicDataLen),
        "ckpParam->ulPublicDataLen == ckTemp || ckTemp == 0"},
};
constexpr Structure X9_42_DH1_DERIVE = {"CK_X9_42_DH1_DERIVE_PARAMS", java::X9_42_DH1_DERIVE.cls,
    sizeof(CK_X9_42_DH1_DERIVE_PARAMS), X9_42_DH1_DERIVE_MEMBERS, "convertX942Dh1DeriveParams",
    "freeX942Dh1DeriveParams"};

constexpr Member RSA_AES_KEY_WRAP_MEMBERS[] = {
    {java::RSA_AES_KEY_WRAP.ulAESKeyBits, Number, offsetof(CK_RSA_AES_KEY_WRAP_PARAMS, ulAESKeyBits)},
    {java::RSA_AES_KEY_WRAP.pOAEPParams, Pointed, offsetof(CK_RSA_AES_KEY_WRAP_PARAMS, pOAEPParams), 0,
        nullptr, &RSA_PKCS_OAEP},
};
constexpr Structure RSA_AES_KEY_WRAP = {"CK_RSA_AES_KEY_WRAP_PARAMS", java::RSA_AES_KEY_WRAP.cls,
    sizeof(CK_RSA_AES_KEY_WRAP_PARAMS), RSA_AES_KEY_WRAP_MEMBERS, "convertRsaAesKeyWrapParams",
    "freeRsaAesKeyWrapParams"};

// The two parameters that are no structures: a Long, and an object handle, which is only ever created.
constexpr Structure LONG = {"CK_ULONG", java::LONG.cls, sizeof(CK_ULONG), {}, "convertLongParam",
    "freeLongParam", "convertLongParams"};
constexpr Structure OBJECT_HANDLE = {"CK_OBJECT_HANDLE", java::OBJECT_HANDLE.cls, sizeof(CK_OBJECT_HANDLE),
    {}, nullptr, nullptr, "convertObjectHandleParams"};

// From Java: the class of the parameter decides.
constexpr const Structure* s_converters[] = {
    &RSA_PKCS_OAEP,
    &RSA_PKCS_PSS,
    &LONG,
    &RC2_CBC,
    &RC2_MAC_GENERAL,
    &PBE,
    &PKCS12_PBE_IMPORT,
    &PKCS12_PBE_EXPORT,
    &KEY_WRAP_SET_OAEP,
    &SSL3_MASTER_KEY_DERIVE,
    &SSL3_KEY_MAT,
    &VERSION,
    &KEY_DERIVATION_STRING_DATA,
    &MECH_TYPE_AND_OBJECT,
    &DES_CBC,
    &DES2_CBC,
    &DES3_CBC,
    &PP_LOAD_SECRET,
    &TIMESTAMP,
    &REPLICATE_TOKEN,
    &SECRET_SHARE,
    &ECIES,
    &ECDH1_DERIVE,
};

// Their classes, and last the class that most parameters have, byte[], which has no row.
template <std::size_t... row>
constexpr auto parameterClasses(std::index_sequence<row...>)
{
    return std::array{&s_converters[row]->cls..., &java::BYTE_ARRAY};
}
constexpr auto PARAMETER_CLASSES = parameterClasses(std::make_index_sequence<std::size(s_converters)>());
constinit JavaClassGroup parameterClassGroup{PARAMETER_CLASSES};

// The parameters of modern mechanisms: tested last, so that nothing else depends on whether the jar has their
// classes.
constexpr const Structure* MODERN[] = {
    &GCM,
    &GCM_OLD,
    &CCM,
    &AES_CTR,
    &CHACHA20_POLY1305,
    &HKDF,
    &EDDSA,
    &X9_42_DH1_DERIVE,
    &RSA_AES_KEY_WRAP,
};

// To Java: the mechanism and the size of its native parameter decide.
struct MechanismParameter {
    CK_MECHANISM_TYPE mechanism;
    const Structure& structure;
};

constexpr MechanismParameter s_mechanisms[] = {
    {CKM_DES_DERIVE_CBC, DES_CBC},
    {CKM_DES3_DERIVE_CBC, DES2_CBC},
    {CKM_DES3_DERIVE_CBC, DES3_CBC},
    {CKM_CONCATENATE_BASE_AND_DATA, KEY_DERIVATION_STRING_DATA},
    {CKM_XOR_BASE_AND_DATA, KEY_DERIVATION_STRING_DATA},
    {CKM_KEY_WRAP_SET_OAEP, KEY_WRAP_SET_OAEP},
    {CKM_ENCODE_X_509_LOCAL_CERT, MECH_TYPE_AND_OBJECT},
    {CKM_CONCATENATE_BASE_AND_KEY, OBJECT_HANDLE},
    {CKM_XOR_BASE_AND_KEY, OBJECT_HANDLE},
    {CKM_PBE_MD2_DES_CBC, PBE},
    {CKM_PBE_MD5_CAST128_CBC, PBE},
    {CKM_PBE_MD5_DES_CBC, PBE},
    {CKM_PBE_SHA1_CAST128_CBC, PBE},
    {CKM_PBE_SHA1_DES2_EDE_CBC, PBE},
    {CKM_PBE_SHA1_DES3_EDE_CBC, PBE},
    {CKM_PBE_SHA1_RC4_40, PBE},
    {CKM_PBE_SHA1_RC4_128, PBE},
    {CKM_PBE_SHA1_RC2_40_CBC, PBE},
    {CKM_PBE_SHA1_RC2_128_CBC, PBE},
    {CKM_PBA_SHA1_WITH_SHA1_HMAC, PBE},
    {CKM_RC2_CBC, RC2_CBC},
    {CKM_RC2_CBC_PAD, RC2_CBC},
    {CKM_RC2_MAC_GENERAL, RC2_MAC_GENERAL},
    {CKM_RSA_PKCS_OAEP, RSA_PKCS_OAEP},
    {CKM_RSA_PKCS_PSS, RSA_PKCS_PSS},
    {CKM_SSL3_KEY_AND_MAC_DERIVE, SSL3_KEY_MAT},
    {CKM_SSL3_MASTER_KEY_DERIVE, SSL3_MASTER_KEY_DERIVE},
    {CKM_SSL3_PRE_MASTER_KEY_GEN, VERSION},
    {CKM_AES_MAC_GENERAL, LONG},
    {CKM_AES_CMAC_GENERAL, LONG},
    {CKM_CAST128_MAC_GENERAL, LONG},
    {CKM_DES_MAC, LONG},
    {CKM_DES_MAC_GENERAL, LONG},
    {CKM_DES3_MAC_GENERAL, LONG},
    {CKM_DES3_CMAC_GENERAL, LONG},
    {CKM_DES3_X919_MAC_GENERAL, LONG},
    {CKM_IDEA_MAC_GENERAL, LONG},
    {CKM_MD2_HMAC_GENERAL, LONG},
    {CKM_MD5_HMAC_GENERAL, LONG},
    {CKM_RIPEMD160_HMAC_GENERAL, LONG},
    {CKM_RIPEMD128_HMAC_GENERAL, LONG},
    {CKM_SHA_1_HMAC_GENERAL, LONG},
    {CKM_SSL3_MD5_MAC, LONG},
    {CKM_SSL3_SHA1_MAC, LONG},
    {CKM_EXTRACT_KEY_FROM_KEY, LONG},
    {CKM_RC2_ECB, LONG},
    {CKM_RC2_ECB_PAD, LONG},
    {CKM_RC2_MAC, LONG},
    {CKM_PP_LOAD_SECRET, PP_LOAD_SECRET},
    {CKM_SHA1_RSA_PKCS_TIMESTAMP, TIMESTAMP},
    {CKM_SEED_MAC_GENERAL, LONG},
    {CKM_REPLICATE_TOKEN_RSA_AES, REPLICATE_TOKEN},
    {CKM_SECRET_SHARE_WITH_ATTRIBUTES, SECRET_SHARE},
    {CKM_PKCS12_PBE_IMPORT, PKCS12_PBE_IMPORT},
    {CKM_PKCS12_PBE_EXPORT, PKCS12_PBE_EXPORT},
    {CKM_ECIES, ECIES},
    {CKM_ECDH1_DERIVE, ECDH1_DERIVE},
};
static_assert(std::size(s_mechanisms) == 57);

// The mechanisms that return results through their parameter; the PBE mechanisms, which return an
// initialisation vector, come before them.
constexpr MechanismParameter RETURNING_MECHANISMS[] = {
    {CKM_SSL3_KEY_AND_MAC_DERIVE, SSL3_KEY_MAT},
    {CKM_SSL3_MASTER_KEY_DERIVE, SSL3_MASTER_KEY_DERIVE},
    {CKM_KEY_WRAP_SET_OAEP, KEY_WRAP_SET_OAEP},
    {CKM_PKCS12_PBE_IMPORT, PKCS12_PBE_IMPORT},
};

// The size query: all of these are found first, in this order.
constexpr JavaClass* SIZE_CLASSES[] = {
    &java::RSA_PKCS_OAEP.cls,
    &java::RSA_PKCS_PSS.cls,
    &java::LONG.cls,
    &java::RC2_CBC.cls,
    &java::RC2_MAC_GENERAL.cls,
    &java::LONG.cls,
    &java::PBE.cls,
    &java::KEY_WRAP_SET_OAEP.cls,
    &java::SSL3_MASTER_KEY_DERIVE.cls,
    &java::SSL3_KEY_MAT.cls,
    &java::LONG.cls,
    &java::VERSION.cls,
    &java::KEY_DERIVATION_STRING_DATA.cls,
    &java::MECH_TYPE_AND_OBJECT.cls,
    &java::OBJECT_HANDLE.cls,
    &java::DES_CBC.cls,
    &java::DES2_CBC.cls,
    &java::DES3_CBC.cls,
    &java::PP_LOAD_SECRET.cls,
    &java::TIMESTAMP.cls,
    &java::REPLICATE_TOKEN.cls,
    &java::PKCS12_PBE_IMPORT.cls,
    &java::PKCS12_PBE_EXPORT.cls,
    &java::SECRET_SHARE.cls,
    &java::ECIES.cls,
    &java::ECDH1_DERIVE.cls,
    &java::BYTE_ARRAY,
    &java::STRING,
    &java::LONG.cls,
    &java::BOOLEAN.cls,
    &java::CHAR_ARRAY,
};
constinit JavaClassGroup sizeClassGroup{SIZE_CLASSES};

enum class SizeKind { Fixed, ArrayLength, StringLength };

struct SizeRow {
    const JavaClass& cls;
    SizeKind kind;
    CK_ULONG size = 0;
};

constexpr SizeRow sized(const Structure& structure)
{
    return {structure.cls, SizeKind::Fixed, structure.size};
}

// Then they are tested in this order. The later Longs never match, since the first one does: deliberate.
constexpr SizeRow SIZES[] = {
    sized(PKCS12_PBE_IMPORT),
    sized(PKCS12_PBE_EXPORT),
    sized(RSA_PKCS_OAEP),
    sized(RSA_PKCS_PSS),
    sized(LONG),
    sized(RC2_CBC),
    sized(RC2_MAC_GENERAL),
    sized(LONG),
    sized(PBE),
    sized(KEY_WRAP_SET_OAEP),
    sized(SSL3_MASTER_KEY_DERIVE),
    sized(SSL3_KEY_MAT),
    sized(LONG),
    sized(VERSION),
    sized(KEY_DERIVATION_STRING_DATA),
    sized(MECH_TYPE_AND_OBJECT),
    sized(OBJECT_HANDLE),
    sized(DES_CBC),
    sized(DES2_CBC),
    sized(DES3_CBC),
    sized(TIMESTAMP),
    sized(REPLICATE_TOKEN),
    sized(SECRET_SHARE),
    sized(ECIES),
    sized(ECDH1_DERIVE),
    {java::BYTE_ARRAY, SizeKind::ArrayLength},
    {java::STRING, SizeKind::StringLength},
    sized(LONG),
    {java::BOOLEAN.cls, SizeKind::Fixed, sizeof(CK_BBOOL)},
    {java::CHAR_ARRAY, SizeKind::ArrayLength},
    sized(PP_LOAD_SECRET),
};
static_assert(std::size(SIZES) == std::size(SIZE_CLASSES));

jlong sizeOf(JNIEnv* env, const SizeRow& row, jobject parameter)
{
    switch (row.kind) {
    case SizeKind::Fixed:
        return static_cast<jlong>(row.size);
    case SizeKind::ArrayLength:
        return env->GetArrayLength(static_cast<jarray>(parameter));
    case SizeKind::StringLength:
        return env->GetStringUTFLength(static_cast<jstring>(parameter));
    }
    return 0;
}

} // namespace

bool findParameterClasses(JNIEnv* env)
{
    return FindClasses(env, parameterClassGroup);
}

const Structure* structureOf(JNIEnv* env, jobject parameter)
{
    // No object is of two rows, so the order of the tests cannot change the answer: the parameter of
    // signatures comes first, for speed.
    if (IsInstanceOf(env, parameter, RSA_PKCS_PSS.cls)) return &RSA_PKCS_PSS;
    const auto* const row = std::ranges::find_if(s_converters,
        [&](const Structure* structure) { return IsInstanceOf(env, parameter, structure->cls); });
    return row == std::end(s_converters) ? nullptr : *row;
}

const Structure* modernStructureOf(JNIEnv* env, jobject parameter)
{
    for (const Structure* const structure : MODERN) {
        const bool isFound = FindClassIfPresent(env, structure->cls) != nullptr;
        if (isFound && IsInstanceOf(env, parameter, structure->cls)) return structure;
        if (!isFound && env->ExceptionCheck()) return nullptr;
    }
    throwUnsupportedClass(env, "No Conversion from %s to a CK type", parameter);
    return nullptr;
}

const Structure* knownModernStructureOf(JNIEnv* env, jobject parameter)
{
    const auto* const row = std::ranges::find_if(MODERN, [&](const Structure* structure) {
        return isKnown(structure->cls) && IsInstanceOf(env, parameter, structure->cls);
    });
    return row == std::end(MODERN) ? nullptr : *row;
}

const Structure* structureOf(CK_MECHANISM_TYPE mechanism, CK_ULONG size)
{
    const auto* const row = std::ranges::find_if(s_mechanisms, [&](const MechanismParameter& parameter) {
        return parameter.mechanism == mechanism && parameter.structure.size == size;
    });
    return row == std::end(s_mechanisms) ? nullptr : &row->structure;
}

const Structure* structureReturnedBy(CK_MECHANISM_TYPE mechanism)
{
    if (isPbeMech(mechanism)) return &PBE;
    const auto* const row =
        std::ranges::find(RETURNING_MECHANISMS, mechanism, &MechanismParameter::mechanism);
    return row == std::end(RETURNING_MECHANISMS) ? nullptr : &row->structure;
}

jlong parameterSize(JNIEnv* env, jobject parameter)
{
    if (!FindClasses(env, sizeClassGroup) || parameter == nullptr) return 0;
    const auto* const row = std::ranges::find_if(
        SIZES, [&](const SizeRow& size) { return IsInstanceOf(env, parameter, size.cls); });
    if (row != std::end(SIZES)) return sizeOf(env, *row, parameter);
    const Structure* const modern = modernStructureOf(env, parameter);
    return modern == nullptr ? 0 : static_cast<jlong>(modern->size);
}

} // namespace zerlin
