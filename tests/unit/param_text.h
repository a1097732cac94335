// Mechanism parameters as text, on both sides. Java objects are written as Fields reads them. Native memory
// is written as numbers, . and hex digits for bytes, [..] for bytes behind a pointer, (..) for a structure
// behind one, and null.
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
    const jobject made = make(env, "halvorn/zerlin/CK_MECHANISM", "(J)V", type);
    setObject(env, made, "pParameter", "Ljava/lang/Object;", parameter);
    setLong(env, made, "parameterLen", parameterLen);
    return made;
}

// The first piece of such a text.
inline std::string firstPiece(std::string_view text)
{
    const std::string_view digits = text[0] == '.' ? ".0123456789abcdef" : "0123456789";
    const std::size_t length = text[0] == ' '   ? 1
                               : text[0] == 'n' ? 4
                               : text[0] == '[' ? text.find(']') + 1
                               : text[0] == '(' ? text.find(')') + 1
                                                : text.find_first_not_of(digits);
    return std::string(text.substr(0, length));
}

// The text of the memory. The expected text gives its layout, so the two are equal if the memory is as
// expected.
inline std::string nativeText(const void* memory, const std::string& expected)
{
    std::string text;
    const auto* data = static_cast<const CK_BYTE*>(memory);
    const auto take = [&](auto value) {
        data += -reinterpret_cast<std::uintptr_t>(data) % sizeof value; // it is aligned
        std::memcpy(&value, data, sizeof value);
        data += sizeof value;
        return value;
    };
    std::string piece;
    for (std::size_t at = 0; at < expected.size(); at += piece.size()) {
        piece = firstPiece(std::string_view(expected).substr(at));
        if (piece == " ") {
            text += piece;
        } else if (piece[0] == '.') {
            text += piece.substr(0, piece.size() % 2);
            for (std::size_t j = 0; j < piece.size() / 2; ++j, ++data)
                text += {"0123456789abcdef"[*data / 16], "0123456789abcdef"[*data % 16]};
        } else if (std::isdigit(piece[0])) {
            text += std::to_string(take(CK_ULONG{}));
        } else if (const void* const pointer = take(memory); pointer == nullptr) {
            text += "null";
        } else {
            const bool areBytes = piece[0] == '[';
            const std::string layout = (areBytes ? "." : "") + piece.substr(1, piece.size() - 2);
            text += piece[0] + nativeText(pointer, layout).substr(areBytes) + piece.back();
        }
    }
    return text;
}

// The parameter as the Cryptoki library receives it from a native.
inline std::string given(JNIEnv* env, jobject parameter, jlong size, const std::string& expected)
{
    std::string text = "not called";
    recorder::script().byteLimit = 0;
    recorder::script().C_EncryptInit = [&](auto, CK_MECHANISM_PTR made, auto) {
        text = made->pParameter == nullptr ? "null" : nativeText(made->pParameter, expected);
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
    std::string native = java.substr(java.find(' ') + 1);
};

// One parameter of each class.
inline const ParamRow PARAMS[] = {
    {"5", sizeof(CK_ULONG)},
    {"CK_RSA_PKCS_OAEP_PARAMS 544 1 2 [616263] 3", sizeof(CK_RSA_PKCS_OAEP_PARAMS)},
    {"CK_RSA_PKCS_PSS_PARAMS 544 4294967295 20", sizeof(CK_RSA_PKCS_PSS_PARAMS)},
    {"CK_RC2_CBC_PARAMS 128 [0102030405060708]", sizeof(CK_RC2_CBC_PARAMS), "128 .0102030405060708"},
    {"CK_RC2_MAC_GENERAL_PARAMS 128 4", sizeof(CK_RC2_MAC_GENERAL_PARAMS)},
    {"CK_PBE_PARAMS [0102030405060708] [70617373] 4 [73616c] 3 1000", sizeof(CK_PBE_PARAMS)},
    {"CK_PKCS12_PBE_IMPORT_PARAMS [6175] 2 [686d61] 3 ( CK_ATTRIBUTE 3 [6d79] 2 CK_ATTRIBUTE 258 [07] 1 ) 2 "
     "( 7 8 9 ) 3",
        sizeof(CK_PKCS12_PBE_IMPORT_PARAMS), "[6175] 2 [686d61] 3 (3 [6d79] 2 258 [07] 1) 2 (7 8 9) (3)"},
    {"CK_PKCS12_PBE_EXPORT_PARAMS 5 [6175] 2 [686d61] 3 936 937 960", sizeof(CK_PKCS12_PBE_EXPORT_PARAMS)},
    {"CK_KEY_WRAP_SET_OAEP_PARAMS 200 [0102] 2", sizeof(CK_KEY_WRAP_SET_OAEP_PARAMS)},
    {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_VERSION 3 254",
        sizeof(CK_SSL3_MASTER_KEY_DERIVE_PARAMS), "[0102] 2 [030405] 3 [03fe]"},
    {"CK_SSL3_KEY_MAT_PARAMS 128 56 17 1 CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_SSL3_KEY_MAT_OUT 1 2 3 4 "
     "[a1a2a3] [b1b2b3]",
        sizeof(CK_SSL3_KEY_MAT_PARAMS), "128 56 17 1 [0102] 2 [030405] 3 (1 2 3 4 [a1a2a3] [b1b2b3])"},
    {"CK_VERSION 3 1", sizeof(CK_VERSION), ".0301"},
    {"CK_KEY_DERIVATION_STRING_DATA [0102] 2", sizeof(CK_KEY_DERIVATION_STRING_DATA)},
    {"CK_MECH_TYPE_AND_OBJECT 544 7", sizeof(CK_MECH_TYPE_AND_OBJECT)},
    {"CK_DES_CBC_PARAMS [0102030405060708] [1112131415161718]", sizeof(CK_DES_CBC_PARAMS),
        ".0102030405060708 .1112131415161718"},
    {"CK_DES2_CBC_PARAMS [0102030405060708] [11121314151617181112131415161718]", sizeof(CK_DES2_CBC_PARAMS),
        ".0102030405060708 .11121314151617181112131415161718"},
    {"CK_DES3_CBC_PARAMS [0102030405060708] [111213141516171811121314151617181112131415161718]",
        sizeof(CK_DES3_CBC_PARAMS), ".0102030405060708 .111213141516171811121314151617181112131415161718"},
    {"CK_PP_LOAD_SECRET_PARAMS 1 2 30 [50494e3f]", sizeof(CK_PP_LOAD_SECRET_PARAMS), ".01021e [50494e3f00]"},
    {"CK_TIMESTAMP_PARAMS 1 2", sizeof(CK_TIMESTAMP_PARAMS)},
    {"CK_REPLICATE_TOKEN_PARAMS [0102030405060708090a0b0c0d0e0f10]", sizeof(CK_REPLICATE_TOKEN_PARAMS),
        ".0102030405060708090a0b0c0d0e0f10"},
    {"CK_SECRET_SHARE_PARAMS 5 3", sizeof(CK_SECRET_SHARE_PARAMS)},
    {"CK_ECIES_PARAMS 1 2 2 [0102] 3 4 5 6 7 1 [03]", sizeof(CK_ECIES_PARAMS)},
    {"CK_ECDH1_DERIVE_PARAMS 1 2 [0102] 3 [030405]", sizeof(CK_ECDH1_DERIVE_PARAMS)},
};

// The row of the parameter's class.
inline const ParamRow& rowOf(const std::string& java)
{
    return *std::ranges::find_if(PARAMS,
        [&](const ParamRow& row) { return java.starts_with(row.java.substr(0, row.java.find(' '))); });
}

// The row's parameter, with that many equal bytes in each of its arrays.
inline std::string filled(const std::string& java, std::size_t length, const char* digits)
{
    std::istringstream words(java);
    std::vector<std::string> all{std::istream_iterator<std::string>(words), {}};
    all.emplace_back();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!all[i].starts_with('[')) continue;
        const std::string count = std::to_string(all[i].size() / 2 - 1);
        std::string& given = all[all[i + 1] == count ? i + 1 : i - 1];
        if (given == count) given = std::to_string(length);
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
