// Every Java class, field and method that the library knows: what must not be renamed in Java stands here.
// The names are those of Java, one structure a class, in the order of the folders: halvorn/zerlin, its
// constants, its params, and the JDK's own.
#pragma once

#include "helper/jutil.h"

namespace zerlin::java {

// The signatures of fields that hold an object.
namespace type {
inline constexpr char OBJECT[] = "Ljava/lang/Object;";
inline constexpr char BYTES[] = "[B";
inline constexpr char LONG_REF[] = "Lhalvorn/zerlin/LongRef;";
inline constexpr char BBOOL[] = "Lhalvorn/zerlin/CK_BBOOL;";
inline constexpr char VERSION[] = "Lhalvorn/zerlin/CK_VERSION;";
inline constexpr char OBJECT_HANDLE[] = "Lhalvorn/zerlin/CK_OBJECT_HANDLE;";
inline constexpr char OBJECT_HANDLE_ARRAY[] = "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;";
inline constexpr char ATTRIBUTE_ARRAY[] = "[Lhalvorn/zerlin/CK_ATTRIBUTE;";
inline constexpr char ATTRIBUTE_TYPE[] = "Lhalvorn/zerlin/constants/CK_ATTRIBUTE_TYPE;";
inline constexpr char MECHANISM_TYPE[] = "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;";
inline constexpr char MECHANISM_TYPE_ARRAY[] = "[Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;";
inline constexpr char OAEP_SOURCE_TYPE[] = "Lhalvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE;";
inline constexpr char STATE[] = "Lhalvorn/zerlin/constants/CK_STATE;";
inline constexpr char RSA_PKCS_OAEP_PARAMS[] = "Lhalvorn/zerlin/params/CK_RSA_PKCS_OAEP_PARAMS;";
inline constexpr char SSL3_RANDOM_DATA[] = "Lhalvorn/zerlin/params/CK_SSL3_RANDOM_DATA;";
inline constexpr char SSL3_KEY_MAT_OUT[] = "Lhalvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT;";
} // namespace type

// halvorn/zerlin

struct LongRef {
    JavaClass cls{"halvorn/zerlin/LongRef"};
    JavaField value{cls, "value", "J"};
};
inline constinit LongRef LONG_REF;

// CK_OBJECT_HANDLE and CK_SESSION_HANDLE.
struct Handle {
    JavaClass cls;
    JavaField m_value{cls, "m_value", "J"};
};
inline constinit Handle OBJECT_HANDLE{{"halvorn/zerlin/CK_OBJECT_HANDLE"}};
inline constinit Handle SESSION_HANDLE{{"halvorn/zerlin/CK_SESSION_HANDLE"}};
inline constinit JavaClass OBJECT_HANDLE_ARRAY{type::OBJECT_HANDLE_ARRAY};

struct CK_BBOOL {
    JavaClass cls{"halvorn/zerlin/CK_BBOOL"};
    JavaField m_value{cls, "m_value", "Z"};
    JavaMethod setValue{cls, "setValue", "(Z)V"};
};
inline constinit CK_BBOOL BBOOL;

struct CK_DATE {
    JavaClass cls{"halvorn/zerlin/CK_DATE"};
    JavaField year{cls, "year", type::BYTES};
    JavaField month{cls, "month", type::BYTES};
    JavaField day{cls, "day", type::BYTES};
};
inline constinit CK_DATE DATE;

struct CK_VERSION {
    JavaClass cls{"halvorn/zerlin/CK_VERSION"};
    JavaField major{cls, "major", "B"};
    JavaField minor{cls, "minor", "B"};
};
inline constinit CK_VERSION VERSION;

struct CK_ATTRIBUTE {
    JavaClass cls{"halvorn/zerlin/CK_ATTRIBUTE"};
    JavaField type{cls, "type", type::ATTRIBUTE_TYPE};
    JavaField pValue{cls, "pValue", type::OBJECT};
    JavaField valueLen{cls, "valueLen", "J"};
};
inline constinit CK_ATTRIBUTE ATTRIBUTE;
inline constinit JavaClass ATTRIBUTE_ARRAY{type::ATTRIBUTE_ARRAY};

struct CK_MECHANISM {
    JavaClass cls{"halvorn/zerlin/CK_MECHANISM"};
    JavaField mechanism{cls, "mechanism", type::MECHANISM_TYPE};
    JavaField pParameter{cls, "pParameter", type::OBJECT};
    JavaField parameterLen{cls, "parameterLen", "J"};
};
inline constinit CK_MECHANISM MECHANISM;

struct CK_INFO {
    JavaClass cls{"halvorn/zerlin/CK_INFO"};
    JavaField cryptokiVersion{cls, "cryptokiVersion", type::VERSION};
    JavaField manufacturerID{cls, "manufacturerID", type::BYTES};
    JavaField flags{cls, "flags", "J"};
    JavaField libraryDescription{cls, "libraryDescription", type::BYTES};
    JavaField libraryVersion{cls, "libraryVersion", type::VERSION};
};
inline constinit CK_INFO INFO;

struct CK_SLOT_INFO {
    JavaClass cls{"halvorn/zerlin/CK_SLOT_INFO"};
    JavaField slotDescription{cls, "slotDescription", type::BYTES};
    JavaField manufacturerID{cls, "manufacturerID", type::BYTES};
    JavaField flags{cls, "flags", "J"};
    JavaField hardwareVersion{cls, "hardwareVersion", type::VERSION};
    JavaField firmwareVersion{cls, "firmwareVersion", type::VERSION};
};
inline constinit CK_SLOT_INFO SLOT_INFO;

struct CK_TOKEN_INFO {
    JavaClass cls{"halvorn/zerlin/CK_TOKEN_INFO"};
    JavaField label{cls, "label", type::BYTES};
    JavaField manufacturerID{cls, "manufacturerID", type::BYTES};
    JavaField model{cls, "model", type::BYTES};
    JavaField serialNumber{cls, "serialNumber", type::BYTES};
    JavaField flags{cls, "flags", "J"};
    JavaField maxSessionCount{cls, "maxSessionCount", "J"};
    JavaField sessionCount{cls, "sessionCount", "J"};
    JavaField maxRwSessionCount{cls, "maxRwSessionCount", "J"};
    JavaField rwSessionCount{cls, "rwSessionCount", "J"};
    JavaField maxPinLen{cls, "maxPinLen", "J"};
    JavaField minPinLen{cls, "minPinLen", "J"};
    JavaField totalPublicMemory{cls, "totalPublicMemory", "J"};
    JavaField freePublicMemory{cls, "freePublicMemory", "J"};
    JavaField totalPrivateMemory{cls, "totalPrivateMemory", "J"};
    JavaField freePrivateMemory{cls, "freePrivateMemory", "J"};
    JavaField hardwareVersion{cls, "hardwareVersion", type::VERSION};
    JavaField firmwareVersion{cls, "firmwareVersion", type::VERSION};
    JavaField utcTime{cls, "utcTime", type::BYTES};
};
inline constinit CK_TOKEN_INFO TOKEN_INFO;

struct CK_SESSION_INFO {
    JavaClass cls{"halvorn/zerlin/CK_SESSION_INFO"};
    JavaField slotID{cls, "slotID", "J"};
    JavaField state{cls, "state", type::STATE};
    JavaField flags{cls, "flags", "J"};
    JavaField deviceError{cls, "deviceError", "J"};
};
inline constinit CK_SESSION_INFO SESSION_INFO;

struct CK_MECHANISM_INFO {
    JavaClass cls{"halvorn/zerlin/CK_MECHANISM_INFO"};
    JavaField minKeySize{cls, "minKeySize", "J"};
    JavaField maxKeySize{cls, "maxKeySize", "J"};
    JavaField flags{cls, "flags", "J"};
};
inline constinit CK_MECHANISM_INFO MECHANISM_INFO;

struct CK_C_INITIALIZE_ARGS {
    JavaClass cls{"halvorn/zerlin/CK_C_INITIALIZE_ARGS"};
    JavaField createMutex{cls, "createMutex", "Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_CREATEMUTEX;"};
    JavaField destroyMutex{cls, "destroyMutex", "Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_DESTROYMUTEX;"};
    JavaField lockMutex{cls, "lockMutex", "Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_LOCKMUTEX;"};
    JavaField unlockMutex{cls, "unlockMutex", "Lhalvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_UNLOCKMUTEX;"};
    JavaField flags{cls, "flags", "J"};
    JavaField reserved{cls, "reserved", type::OBJECT};
};
inline constinit CK_C_INITIALIZE_ARGS INITIALIZE_ARGS;

// The four interfaces of the locking callbacks, each with its only method.
struct Callback {
    JavaClass cls;
    JavaMethod call;

    constexpr Callback(const char* path, const char* method, const char* signature) noexcept
        : cls(path), call(cls, method, signature)
    {
    }
};
inline constinit Callback CREATE_MUTEX{
    "halvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_CREATEMUTEX", "CreateMutex", "()Ljava/lang/Object;"};
inline constinit Callback DESTROY_MUTEX{
    "halvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_DESTROYMUTEX", "DestroyMutex", "(Ljava/lang/Object;)J"};
inline constinit Callback LOCK_MUTEX{
    "halvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_LOCKMUTEX", "LockMutex", "(Ljava/lang/Object;)J"};
inline constinit Callback UNLOCK_MUTEX{
    "halvorn/zerlin/CK_C_INITIALIZE_ARGS$CK_UNLOCKMUTEX", "UnlockMutex", "(Ljava/lang/Object;)J"};

// halvorn/zerlin/constants

struct TypedConstant {
    JavaClass cls;
    JavaField m_value{cls, "m_value", "J"};
    JavaMethod setValue{cls, "setValue", "(J)V"};
};
inline constinit TypedConstant ATTRIBUTE_TYPE{{"halvorn/zerlin/constants/CK_ATTRIBUTE_TYPE"}};
inline constinit TypedConstant CERTIFICATE_TYPE{{"halvorn/zerlin/constants/CK_CERTIFICATE_TYPE"}};
inline constinit TypedConstant HW_FEATURE_TYPE{{"halvorn/zerlin/constants/CK_HW_FEATURE_TYPE"}};
inline constinit TypedConstant KEY_TYPE{{"halvorn/zerlin/constants/CK_KEY_TYPE"}};
inline constinit TypedConstant MECHANISM_TYPE{{"halvorn/zerlin/constants/CK_MECHANISM_TYPE"}};
inline constinit TypedConstant OBJECT_CLASS{{"halvorn/zerlin/constants/CK_OBJECT_CLASS"}};
inline constinit TypedConstant RSA_PKCS_OAEP_SOURCE_TYPE{
    {"halvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE"}};
inline constinit TypedConstant RV{{"halvorn/zerlin/constants/CK_RV"}};
inline constinit TypedConstant STATE{{"halvorn/zerlin/constants/CK_STATE"}};
inline constinit TypedConstant USER_TYPE{{"halvorn/zerlin/constants/CK_USER_TYPE"}};
inline constinit JavaClass MECHANISM_TYPE_ARRAY{type::MECHANISM_TYPE_ARRAY};

// halvorn/zerlin/params

struct CK_RSA_PKCS_OAEP_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_RSA_PKCS_OAEP_PARAMS"};
    JavaField hashAlg{cls, "hashAlg", type::MECHANISM_TYPE};
    JavaField mgf{cls, "mgf", "J"};
    JavaField source{cls, "source", type::OAEP_SOURCE_TYPE};
    JavaField pSourceData{cls, "pSourceData", type::BYTES};
    JavaField sourceDataLen{cls, "sourceDataLen", "J"};
};
inline constinit CK_RSA_PKCS_OAEP_PARAMS RSA_PKCS_OAEP;

struct CK_RSA_PKCS_PSS_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_RSA_PKCS_PSS_PARAMS"};
    JavaField hashAlg{cls, "hashAlg", type::MECHANISM_TYPE};
    JavaField mgf{cls, "mgf", "J"};
    JavaField sLen{cls, "sLen", "J"};
};
inline constinit CK_RSA_PKCS_PSS_PARAMS RSA_PKCS_PSS;

struct CK_RC2_CBC_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_RC2_CBC_PARAMS"};
    JavaField effectiveBits{cls, "effectiveBits", "J"};
    JavaField iv{cls, "iv", type::BYTES};
};
inline constinit CK_RC2_CBC_PARAMS RC2_CBC;

struct CK_RC2_MAC_GENERAL_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_RC2_MAC_GENERAL_PARAMS"};
    JavaField effectiveBits{cls, "effectiveBits", "J"};
    JavaField macLength{cls, "macLength", "J"};
};
inline constinit CK_RC2_MAC_GENERAL_PARAMS RC2_MAC_GENERAL;

struct CK_PBE_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_PBE_PARAMS"};
    JavaField pInitVector{cls, "pInitVector", type::BYTES};
    JavaField pPassword{cls, "pPassword", type::BYTES};
    JavaField passwordLen{cls, "passwordLen", "J"};
    JavaField pSalt{cls, "pSalt", type::BYTES};
    JavaField saltLen{cls, "saltLen", "J"};
    JavaField iteration{cls, "iteration", "J"};
};
inline constinit CK_PBE_PARAMS PBE;

struct CK_PKCS12_PBE_IMPORT_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_PKCS12_PBE_IMPORT_PARAMS"};
    JavaField passwordAuthSafe{cls, "passwordAuthSafe", type::BYTES};
    JavaField passwordAuthSafeLen{cls, "passwordAuthSafeLen", "J"};
    JavaField passwordHMAC{cls, "passwordHMAC", type::BYTES};
    JavaField passwordHMACLen{cls, "passwordHMACLen", "J"};
    JavaField certAttr{cls, "certAttr", type::ATTRIBUTE_ARRAY};
    JavaField certAttrCount{cls, "certAttrCount", "J"};
    JavaField hCertCount{cls, "hCertCount", type::LONG_REF};
    JavaField hCert{cls, "hCert", type::OBJECT_HANDLE_ARRAY};
};
inline constinit CK_PKCS12_PBE_IMPORT_PARAMS PKCS12_PBE_IMPORT;

struct CK_PKCS12_PBE_EXPORT_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_PKCS12_PBE_EXPORT_PARAMS"};
    JavaField keyCert{cls, "keyCert", type::OBJECT_HANDLE};
    JavaField passwordAuthSafe{cls, "passwordAuthSafe", type::BYTES};
    JavaField passwordAuthSafeLen{cls, "passwordAuthSafeLen", "J"};
    JavaField passwordHMAC{cls, "passwordHMAC", type::BYTES};
    JavaField passwordHMACLen{cls, "passwordHMACLen", "J"};
    JavaField safeBagKgMech{cls, "safeBagKgMech", type::MECHANISM_TYPE};
    JavaField safeContentKgMech{cls, "safeContentKgMech", type::MECHANISM_TYPE};
    JavaField hmacKgMech{cls, "hmacKgMech", type::MECHANISM_TYPE};
};
inline constinit CK_PKCS12_PBE_EXPORT_PARAMS PKCS12_PBE_EXPORT;

struct CK_KEY_WRAP_SET_OAEP_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_KEY_WRAP_SET_OAEP_PARAMS"};
    JavaField bBC{cls, "bBC", "B"};
    JavaField pX{cls, "pX", type::BYTES};
    JavaField XLen{cls, "XLen", "J"};
};
inline constinit CK_KEY_WRAP_SET_OAEP_PARAMS KEY_WRAP_SET_OAEP;

struct CK_SSL3_RANDOM_DATA {
    JavaClass cls{"halvorn/zerlin/params/CK_SSL3_RANDOM_DATA"};
    JavaField pClientRandom{cls, "pClientRandom", type::BYTES};
    JavaField clientRandomLen{cls, "clientRandomLen", "J"};
    JavaField pServerRandom{cls, "pServerRandom", type::BYTES};
    JavaField serverRandomLen{cls, "serverRandomLen", "J"};
};
inline constinit CK_SSL3_RANDOM_DATA SSL3_RANDOM_DATA;

struct CK_SSL3_MASTER_KEY_DERIVE_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_SSL3_MASTER_KEY_DERIVE_PARAMS"};
    JavaField RandomInfo{cls, "RandomInfo", type::SSL3_RANDOM_DATA};
    JavaField pVersion{cls, "pVersion", type::VERSION};
};
inline constinit CK_SSL3_MASTER_KEY_DERIVE_PARAMS SSL3_MASTER_KEY_DERIVE;

struct CK_SSL3_KEY_MAT_OUT {
    JavaClass cls{"halvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT"};
    JavaField hClientMacSecret{cls, "hClientMacSecret", type::OBJECT_HANDLE};
    JavaField hServerMacSecret{cls, "hServerMacSecret", type::OBJECT_HANDLE};
    JavaField hClientKey{cls, "hClientKey", type::OBJECT_HANDLE};
    JavaField hServerKey{cls, "hServerKey", type::OBJECT_HANDLE};
    JavaField pIVClient{cls, "pIVClient", type::BYTES};
    JavaField pIVServer{cls, "pIVServer", type::BYTES};
};
inline constinit CK_SSL3_KEY_MAT_OUT SSL3_KEY_MAT_OUT;

struct CK_SSL3_KEY_MAT_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_SSL3_KEY_MAT_PARAMS"};
    JavaField macSizeInBits{cls, "macSizeInBits", "J"};
    JavaField keySizeInBits{cls, "keySizeInBits", "J"};
    JavaField IVSizeInBits{cls, "IVSizeInBits", "J"};
    JavaField bIsExport{cls, "bIsExport", type::BBOOL};
    JavaField RandomInfo{cls, "RandomInfo", type::SSL3_RANDOM_DATA};
    JavaField pReturnedKeyMaterial{cls, "pReturnedKeyMaterial", type::SSL3_KEY_MAT_OUT};
};
inline constinit CK_SSL3_KEY_MAT_PARAMS SSL3_KEY_MAT;

struct CK_KEY_DERIVATION_STRING_DATA {
    JavaClass cls{"halvorn/zerlin/params/CK_KEY_DERIVATION_STRING_DATA"};
    JavaField pData{cls, "pData", type::BYTES};
    JavaField len{cls, "len", "J"};
};
inline constinit CK_KEY_DERIVATION_STRING_DATA KEY_DERIVATION_STRING_DATA;

struct CK_MECH_TYPE_AND_OBJECT {
    JavaClass cls{"halvorn/zerlin/params/CK_MECH_TYPE_AND_OBJECT"};
    JavaField mechanism{cls, "mechanism", type::MECHANISM_TYPE};
    JavaField hObj{cls, "hObj", type::OBJECT_HANDLE};
};
inline constinit CK_MECH_TYPE_AND_OBJECT MECH_TYPE_AND_OBJECT;

// CK_DES_CBC_PARAMS, CK_DES2_CBC_PARAMS and CK_DES3_CBC_PARAMS.
struct DesCbcParams {
    JavaClass cls;
    JavaField iv{cls, "iv", type::BYTES};
    JavaField data{cls, "data", type::BYTES};
};
inline constinit DesCbcParams DES_CBC{{"halvorn/zerlin/params/CK_DES_CBC_PARAMS"}};
inline constinit DesCbcParams DES2_CBC{{"halvorn/zerlin/params/CK_DES2_CBC_PARAMS"}};
inline constinit DesCbcParams DES3_CBC{{"halvorn/zerlin/params/CK_DES3_CBC_PARAMS"}};

struct CK_PP_LOAD_SECRET_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_PP_LOAD_SECRET_PARAMS"};
    JavaField bMaskInput{cls, "bMaskInput", type::BBOOL};
    JavaField cConvert{cls, "cConvert", "I"};
    JavaField cTimeout{cls, "cTimeout", "I"};
    JavaField prompt{cls, "prompt", type::BYTES};
};
inline constinit CK_PP_LOAD_SECRET_PARAMS PP_LOAD_SECRET;

struct CK_TIMESTAMP_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_TIMESTAMP_PARAMS"};
    JavaField useMilliseconds{cls, "useMilliseconds", type::BBOOL};
    JavaField timestampFormat{cls, "timestampFormat", "J"};
};
inline constinit CK_TIMESTAMP_PARAMS TIMESTAMP;

struct CK_REPLICATE_TOKEN_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_REPLICATE_TOKEN_PARAMS"};
    JavaField peerId{cls, "peerId", type::BYTES};
};
inline constinit CK_REPLICATE_TOKEN_PARAMS REPLICATE_TOKEN;

struct CK_SECRET_SHARE_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_SECRET_SHARE_PARAMS"};
    JavaField n{cls, "n", "J"};
    JavaField m{cls, "m", "J"};
};
inline constinit CK_SECRET_SHARE_PARAMS SECRET_SHARE;

struct CK_ECIES_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_ECIES_PARAMS"};
    JavaField dhPrimitive{cls, "dhPrimitive", "J"};
    JavaField kdf{cls, "kdf", "J"};
    JavaField ulSharedDataLen1{cls, "ulSharedDataLen1", "J"};
    JavaField pSharedData1{cls, "pSharedData1", type::BYTES};
    JavaField encScheme{cls, "encScheme", "J"};
    JavaField ulEncKeyLenInBits{cls, "ulEncKeyLenInBits", "J"};
    JavaField macScheme{cls, "macScheme", "J"};
    JavaField ulMacKeyLenInBits{cls, "ulMacKeyLenInBits", "J"};
    JavaField ulMacLenInBits{cls, "ulMacLenInBits", "J"};
    JavaField ulSharedDataLen2{cls, "ulSharedDataLen2", "J"};
    JavaField pSharedData2{cls, "pSharedData2", type::BYTES};
};
inline constinit CK_ECIES_PARAMS ECIES;

struct CK_ECDH1_DERIVE_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_ECDH1_DERIVE_PARAMS"};
    JavaField kdf{cls, "kdf", "J"};
    JavaField ulSharedDataLen{cls, "ulSharedDataLen", "J"};
    JavaField pSharedData{cls, "pSharedData", type::BYTES};
    JavaField ulPublicDataLen{cls, "ulPublicDataLen", "J"};
    JavaField pPublicData{cls, "pPublicData", type::BYTES};
};
inline constinit CK_ECDH1_DERIVE_PARAMS ECDH1_DERIVE;

struct CK_GCM_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_GCM_PARAMS"};
    JavaField pIv{cls, "pIv", type::BYTES};
    JavaField ulIvLen{cls, "ulIvLen", "J"};
    JavaField ulIvBits{cls, "ulIvBits", "J"};
    JavaField pAAD{cls, "pAAD", type::BYTES};
    JavaField ulAADLen{cls, "ulAADLen", "J"};
    JavaField ulTagBits{cls, "ulTagBits", "J"};
};
inline constinit CK_GCM_PARAMS GCM;

struct CK_GCM_PARAMS_OLD {
    JavaClass cls{"halvorn/zerlin/params/CK_GCM_PARAMS_OLD"};
    JavaField pIv{cls, "pIv", type::BYTES};
    JavaField ulIvLen{cls, "ulIvLen", "J"};
    JavaField pAAD{cls, "pAAD", type::BYTES};
    JavaField ulAADLen{cls, "ulAADLen", "J"};
    JavaField ulTagBits{cls, "ulTagBits", "J"};
};
inline constinit CK_GCM_PARAMS_OLD GCM_OLD;

struct CK_CCM_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_CCM_PARAMS"};
    JavaField ulDataLen{cls, "ulDataLen", "J"};
    JavaField pNonce{cls, "pNonce", type::BYTES};
    JavaField ulNonceLen{cls, "ulNonceLen", "J"};
    JavaField pAAD{cls, "pAAD", type::BYTES};
    JavaField ulAADLen{cls, "ulAADLen", "J"};
    JavaField ulMACLen{cls, "ulMACLen", "J"};
};
inline constinit CK_CCM_PARAMS CCM;

struct CK_AES_CTR_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_AES_CTR_PARAMS"};
    JavaField ulCounterBits{cls, "ulCounterBits", "J"};
    JavaField cb{cls, "cb", type::BYTES};
};
inline constinit CK_AES_CTR_PARAMS AES_CTR;

struct CK_SALSA20_CHACHA20_POLY1305_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_SALSA20_CHACHA20_POLY1305_PARAMS"};
    JavaField pNonce{cls, "pNonce", type::BYTES};
    JavaField ulNonceLen{cls, "ulNonceLen", "J"};
    JavaField pAAD{cls, "pAAD", type::BYTES};
    JavaField ulAADLen{cls, "ulAADLen", "J"};
};
inline constinit CK_SALSA20_CHACHA20_POLY1305_PARAMS CHACHA20_POLY1305;

struct CK_HKDF_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_HKDF_PARAMS"};
    JavaField bExtract{cls, "bExtract", type::BBOOL};
    JavaField bExpand{cls, "bExpand", type::BBOOL};
    JavaField prfHashMechanism{cls, "prfHashMechanism", type::MECHANISM_TYPE};
    JavaField ulSaltType{cls, "ulSaltType", "J"};
    JavaField pSalt{cls, "pSalt", type::BYTES};
    JavaField ulSaltLen{cls, "ulSaltLen", "J"};
    JavaField hSaltKey{cls, "hSaltKey", type::OBJECT_HANDLE};
    JavaField pInfo{cls, "pInfo", type::BYTES};
    JavaField ulInfoLen{cls, "ulInfoLen", "J"};
};
inline constinit CK_HKDF_PARAMS HKDF;

struct CK_EDDSA_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_EDDSA_PARAMS"};
    JavaField phFlag{cls, "phFlag", type::BBOOL};
    JavaField ulContextDataLen{cls, "ulContextDataLen", "J"};
    JavaField pContextData{cls, "pContextData", type::BYTES};
};
inline constinit CK_EDDSA_PARAMS EDDSA;

struct CK_X9_42_DH1_DERIVE_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_X9_42_DH1_DERIVE_PARAMS"};
    JavaField kdf{cls, "kdf", "J"};
    JavaField ulOtherInfoLen{cls, "ulOtherInfoLen", "J"};
    JavaField pOtherInfo{cls, "pOtherInfo", type::BYTES};
    JavaField ulPublicDataLen{cls, "ulPublicDataLen", "J"};
    JavaField pPublicData{cls, "pPublicData", type::BYTES};
};
inline constinit CK_X9_42_DH1_DERIVE_PARAMS X9_42_DH1_DERIVE;

struct CK_RSA_AES_KEY_WRAP_PARAMS {
    JavaClass cls{"halvorn/zerlin/params/CK_RSA_AES_KEY_WRAP_PARAMS"};
    JavaField ulAESKeyBits{cls, "ulAESKeyBits", "J"};
    JavaField pOAEPParams{cls, "pOAEPParams", type::RSA_PKCS_OAEP_PARAMS};
};
inline constinit CK_RSA_AES_KEY_WRAP_PARAMS RSA_AES_KEY_WRAP;

// java/lang

struct Object {
    JavaClass cls{"java/lang/Object"};
    JavaMethod getClass{cls, "getClass", "()Ljava/lang/Class;"};
};
inline constinit Object OBJECT;

struct Class {
    JavaClass cls{"java/lang/Class"};
    JavaMethod getName{cls, "getName", "()Ljava/lang/String;"};
};
inline constinit Class CLASS;

struct Long {
    JavaClass cls{"java/lang/Long"};
    JavaField value{cls, "value", "J"};
    JavaMethod longValue{cls, "longValue", "()J"};
    JavaMethod constructor{cls, "<init>", "(J)V"};
};
inline constinit Long LONG;

struct Boolean {
    JavaClass cls{"java/lang/Boolean"};
    JavaField value{cls, "value", "Z"};
    JavaMethod booleanValue{cls, "booleanValue", "()Z"};
};
inline constinit Boolean BOOLEAN;

struct Integer {
    JavaClass cls{"java/lang/Integer"};
    JavaMethod intValue{cls, "intValue", "()I"};
};
inline constinit Integer INTEGER;

struct Byte {
    JavaClass cls{"java/lang/Byte"};
    JavaMethod byteValue{cls, "byteValue", "()B"};
};
inline constinit Byte BYTE;

// java/lang/Character; and java/lang/Char, which no JVM has: the lookup that always fails is deliberate.
struct BoxedChar {
    JavaClass cls;
    JavaMethod charValue{cls, "charValue", "()C"};
};
inline constinit BoxedChar CHARACTER{{"java/lang/Character"}};
inline constinit BoxedChar CHAR{{"java/lang/Char"}};

inline constinit JavaClass STRING{"java/lang/String"};
inline constinit JavaClass BYTE_ARRAY{type::BYTES};
inline constinit JavaClass BOOLEAN_ARRAY{"[Z"};
inline constinit JavaClass CHAR_ARRAY{"[C"};
inline constinit JavaClass INT_ARRAY{"[I"};
inline constinit JavaClass LONG_ARRAY{"[J"};

inline constinit JavaClass LINKAGE_ERROR{"java/lang/LinkageError"};
inline constinit JavaClass NULL_POINTER_EXCEPTION{"java/lang/NullPointerException"};
inline constinit JavaClass OUT_OF_MEMORY_ERROR{"java/lang/OutOfMemoryError"};
inline constinit JavaClass UNSATISFIED_LINK_ERROR{"java/lang/UnsatisfiedLinkError"};
inline constinit JavaClass UNSUPPORTED_OPERATION_EXCEPTION{"java/lang/UnsupportedOperationException"};

} // namespace zerlin::java
