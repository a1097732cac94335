// Mechanism parameters as text, on both sides. Java objects are written as Fields reads them. Native memory
// is written as words of hex digits, [..] for bytes behind a pointer, (..) for a structure behind one, and
// null.
#pragma once

#include "harness/natives.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>

namespace jni {

inline jobject read(JNIEnv* env, const std::string& javaText)
{
    return callStatic(
        env, "Fields", "read", "(Ljava/lang/String;)Ljava/lang/Object;", string(env, javaText.c_str()));
}
inline std::string show(JNIEnv* env, jobject shown)
{
    const char* const signature = "(Ljava/lang/Object;)Ljava/lang/String;";
    return toString(env, static_cast<jstring>(callStatic(env, "Fields", "show", signature, shown)));
}
inline jobject mechanism(JNIEnv* env, jlong type, jobject parameter, jlong parameterLen)
{
    const jobject made = alloc(env, "halvorn/zerlin/CK_MECHANISM");
    setObject(
        env, made, "mechanism", "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", mechanismType(env, type));
    setObject(env, made, "pParameter", "Ljava/lang/Object;", parameter);
    setLong(env, made, "parameterLen", parameterLen);
    return made;
}

// The text of the memory. The expected text gives its layout, so the two are equal if the memory is as
// expected.
inline std::string nativeText(const void* memory, std::string_view expected)
{
    if (memory == nullptr) return "null";
    std::string text;
    for (auto* data = static_cast<const CK_BYTE*>(memory); !expected.empty();) {
        const char first = expected.front();
        const std::size_t end = expected.find_first_of(first == '[' ? "]" : first == '(' ? ")" : " ");
        const std::string_view piece = expected.substr(0, end);
        if (first == '[' || first == '(' || first == 'n') {
            const void* pointer = nullptr;
            std::memcpy(&pointer, data, sizeof pointer);
            const std::string behind = nativeText(pointer, first == 'n' ? "" : piece.substr(1));
            text += pointer == nullptr ? behind : first + behind;
            data += sizeof pointer;
        } else {
            for (std::size_t i = 0; i < piece.size() / 2; ++i, ++data) {
                text += "0123456789abcdef"[*data / 16];
                text += "0123456789abcdef"[*data % 16];
            }
        }
        expected.remove_prefix(piece.size());
        const std::size_t between = expected.find_first_not_of(" )]");
        text += expected.substr(0, between);
        expected.remove_prefix(std::min(between, expected.size()));
    }
    return text;
}

// The parameter as the Cryptoki library receives it from a native.
inline std::string given(JNIEnv* env, jobject parameter, jlong size, const char* expected)
{
    std::string text = "not called";
    recorder::script().byteLimit = 0;
    recorder::script().C_EncryptInit = [&](auto, CK_MECHANISM_PTR made, auto) {
        text = nativeText(made->pParameter, expected);
        return CKR_OK;
    };
    const jobject jMechanism = mechanism(env, 4225, parameter, size);
    NATIVE(C_1EncryptInit)(env, nullptr, session(env), jMechanism, object(env, 7));
    recorder::script().C_EncryptInit = {}; // it refers to local variables
    return text;
}

struct ParamRow {
    std::string java;
    jlong size;
    const char* native;
    const char* function = nullptr;    // the converter's name without its verb
    std::vector<CK_ULONG> makers = {}; // the mechanisms whose parameter becomes such an object
};

// One parameter of each class.
inline const ParamRow PARAMS[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS 544 1 2 [616263] 3", 20, "20020000 01000000 02000000 [616263] 03000000",
        "RsaPkcsOaepParams", {0x9}},
    {"CK_RSA_PKCS_PSS_PARAMS 544 4294967295 20", 12, "20020000 ffffffff 14000000", "RsaPkcsPssParams", {0xd}},
    {"5", 4, "05000000", "LongParam",
        {0x1084, 0x1089, 0x324, 0x123, 0x124, 0x135, 0x137, 0x80000135, 0x344, 0x202, 0x212, 0x242, 0x232,
            0x222, 0x380, 0x381, 0x365, 0x101, 0x80000101, 0x103, 0x800009d4}},
    {"CK_RC2_CBC_PARAMS 128 [0102030405060708]", 12, "80000000 0102030405060708", "Rc2CbcParams",
        {0x102, 0x105}},
    {"CK_RC2_MAC_GENERAL_PARAMS 128 4", 8, "80000000 04000000", "Rc2MacGeneralParams", {0x104}},
    {"CK_PBE_PARAMS [0102030405060708] [70617373] 4 [73616c] 3 1000", 24,
        "[0102030405060708] [70617373] 04000000 [73616c] 03000000 e8030000", "PbeParams",
        {0x3a0, 0x3a4, 0x3a1, 0x3a5, 0x3a9, 0x3a8, 0x3a7, 0x3a6, 0x3ab, 0x3aa, 0x3c0}},
    {"CK_PKCS12_PBE_IMPORT_PARAMS [6175] 2 [686d61] 3 ( CK_ATTRIBUTE 3 [6d79] 2 CK_ATTRIBUTE 258 [07] 1 ) 2 "
     "( 7 8 9 ) 3",
        32,
        "[6175] 02000000 [686d61] 03000000 (03000000 [6d79] 02000000 02010000 [07] 01000000) 02000000 "
        "[070000000800000009000000] [03000000]",
        "PKCS12PbeImportParams", {0x800009f3}},
    {"CK_PKCS12_PBE_EXPORT_PARAMS 5 [6175] 2 [686d61] 3 936 937 960", 32,
        "05000000 [6175] 02000000 [686d61] 03000000 a8030000 a9030000 c0030000", "PKCS12PbeExportParams",
        {0x800009f2}},
    {"CK_KEY_WRAP_SET_OAEP_PARAMS 200 [0102] 2", 12, "c8000000 [0102] 02000000", "KeyWrapSetOaepParams",
        {0x401}},
    {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_VERSION 3 254", 20,
        "[0102] 02000000 [030405] 03000000 [03fe]", "Ssl3MasterKeyDeriveParams", {0x371}},
    {"CK_SSL3_KEY_MAT_PARAMS 128 56 17 1 CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
     "[a1a2a3] [b1b2b3]",
        36,
        "80000000 38000000 11000000 01000000 [0102] 02000000 [030405] 03000000 (01000000 02000000 03000000 "
        "04000000 [a1a2a3] [b1b2b3])",
        "Ssl3KeyMatParams", {0x372}},
    {"CK_VERSION 3 1", 2, "0301", "VersionParam", {0x370}},
    {"CK_KEY_DERIVATION_STRING_DATA [0102] 2", 8, "[0102] 02000000", "KeyDerivationStringData",
        {0x362, 0x364}},
    {"CK_MECH_TYPE_AND_OBJECT 544 7", 8, "20020000 07000000", "MechTypeAndObject", {0x80000955}},
    {"CK_DES_CBC_PARAMS [0102030405060708] [1112131415161718]", 16, "0102030405060708 1112131415161718",
        "DesCbcParams", {0x80000501}},
    {"CK_DES2_CBC_PARAMS [0102030405060708] [11121314151617181112131415161718]", 24,
        "0102030405060708 11121314151617181112131415161718", "Des2CbcParams", {0x80000503}},
    {"CK_DES3_CBC_PARAMS [0102030405060708] [111213141516171811121314151617181112131415161718]", 32,
        "0102030405060708 111213141516171811121314151617181112131415161718", "Des3CbcParams", {0x80000503}},
    {"CK_PP_LOAD_SECRET_PARAMS 1 2 30 [50494e3f]", 8, "01021e00 [50494e3f00]", "PpLoadSecretParams",
        {0x800009a0}},
    {"CK_TIMESTAMP_PARAMS 1 2", 8, "01000000 02000000", "TimestampParams", {0x80000600}},
    {"CK_REPLICATE_TOKEN_PARAMS [0102030405060708090a0b0c0d0e0f10]", 16, "0102030405060708090a0b0c0d0e0f10",
        "ReplicateTokenParams", {0x800009e0}},
    {"CK_SECRET_SHARE_PARAMS 5 3", 8, "05000000 03000000", "SecretShareParams", {0x800009f0}},
    {"CK_ECIES_PARAMS 1 2 2 [0102] 3 4 5 6 7 1 [03]", 44,
        "01000000 02000000 02000000 [0102] 03000000 04000000 05000000 06000000 07000000 01000000 [03]",
        "EcIesParams", {0x80000a00}},
    {"CK_ECDH1_DERIVE_PARAMS 1 2 [0102] 3 [030405]", 20, "01000000 02000000 [0102] 03000000 [030405]",
        "EcDhParams", {0x1043}},
};

// The row's parameter, with that many equal bytes in each of its arrays.
inline std::string filled(const std::string& java, std::size_t length, const char* digits)
{
    std::istringstream words(java);
    std::vector<std::string> all{std::istream_iterator<std::string>(words), {}};
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i][0] != '[') continue;
        const std::string count = std::to_string(all[i].size() / 2 - 1);
        const std::size_t place = i + 1 < all.size() && all[i + 1] == count ? i + 1 : i - 1;
        if (all[place] == count) all[place] = std::to_string(length);
        all[i] = "[";
        for (std::size_t j = 0; j < length; ++j)
            all[i] += digits;
        all[i] += ']';
    }
    std::string text;
    for (const std::string& word : all)
        text += word + ' ';
    return text;
}

} // namespace jni
