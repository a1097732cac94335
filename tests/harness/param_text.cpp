#include "harness/param_text.h"

namespace jni {

jobject read(JNIEnv* env, const std::string& javaText)
{
    return callStatic(
        env, "Fields", "read", "(Ljava/lang/String;)Ljava/lang/Object;", string(env, javaText.c_str()));
}

std::string show(JNIEnv* env, jobject shown)
{
    const char* const signature = "(Ljava/lang/Object;)Ljava/lang/String;";
    return toString(env, static_cast<jstring>(callStatic(env, "Fields", "show", signature, shown)));
}

jobject mechanism(JNIEnv* env, jlong type, jobject parameter, jlong parameterLen)
{
    const jobject made = make(env, "halvorn/zerlin/CK_MECHANISM", "(J)V", type);
    setObject(env, made, "pParameter", "Ljava/lang/Object;", parameter);
    setLong(env, made, "parameterLen", parameterLen);
    return made;
}

std::string nativeText(const void* memory, std::istream& layout)
{
    std::string text;
    const auto* data = static_cast<const CK_BYTE*>(memory);
    const auto take = [&](auto value) {
        data += -reinterpret_cast<std::uintptr_t>(data) % sizeof value; // it is aligned
        std::memcpy(&value, data, sizeof value);
        data += sizeof value;
        return value;
    };
    for (std::string word; layout >> word && word != ")";) {
        const std::size_t size = word.size() / 2; // of bytes
        text += text.empty() ? "" : " ";
        if (word[0] == '.') {
            text += '.' + recorder::hex(data, size);
            data += size;
        } else if (std::isdigit(word[0])) {
            text += std::to_string(take(CK_ULONG{}));
        } else if (const void* const pointer = take(memory); word == "(") {
            text += "( " + nativeText(pointer, layout) + " )";
        } else {
            text += pointer == nullptr ? "null" : "[" + recorder::hex(pointer, size - 1) + "]";
        }
    }
    return text;
}

std::string nativeText(const void* memory, const std::string& expected)
{
    std::istringstream layout(expected);
    return nativeText(memory, layout);
}

std::string given(JNIEnv* env, jobject parameter, jlong size, const std::string& expected)
{
    std::string text = "not called";
    script().byteLimit = 0;
    script().C_EncryptInit = [&](auto, CK_MECHANISM_PTR made, auto) {
        text = made->pParameter == nullptr ? "null" : nativeText(made->pParameter, expected);
        return CKR_OK;
    };
    const jobject jMechanism = mechanism(env, 4225, parameter, size);
    NATIVE(C_1EncryptInit)(env, nullptr, session(env), jMechanism, object(env, 7));
    script().C_EncryptInit = {}; // it refers to local variables
    return text;
}

std::string classOf(const std::string& java)
{
    return java.substr(0, java.find(' '));
}

const ParamRow& rowOf(const std::string& java)
{
    return *std::ranges::find(PARAMS, classOf(java), [](const ParamRow& row) { return classOf(row.java); });
}

std::string filled(const std::string& java, std::size_t length, char byte)
{
    std::istringstream words(java);
    std::vector<std::string> all{std::istream_iterator<std::string>(words), {}};
    all.emplace_back();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!all[i].starts_with('[')) continue;
        const std::string count = std::to_string(all[i].size() / 2 - 1);
        std::string& given = all[all[i + 1] == count ? i + 1 : i - 1];
        if (given == count) given = std::to_string(length);
        all[i] = "[" + recorder::hex(std::string(length, byte).data(), length) + "]";
    }
    std::string text;
    for (const std::string& word : all)
        text += word + ' ';
    return text;
}

#define ROW(name, ...)                                                                                       \
    ParamRow                                                                                                 \
    {                                                                                                        \
        sizeof(name), #name " " __VA_ARGS__                                                                  \
    }
static const ParamRow ROWS[] = {
    {sizeof(CK_ULONG), "5"},
    ROW(CK_RSA_PKCS_OAEP_PARAMS, "544 1 2 [616263] 3"),
    ROW(CK_RSA_PKCS_PSS_PARAMS, "544 4294967295 20"),
    ROW(CK_RC2_CBC_PARAMS, "128 [0102030405060708]", "128 .0102030405060708"),
    ROW(CK_RC2_MAC_GENERAL_PARAMS, "128 4"),
    ROW(CK_PBE_PARAMS, "[0102030405060708] [70617373] 4 [73616c] 3 1000"),
    ROW(CK_PKCS12_PBE_IMPORT_PARAMS,
        "[6175] 2 [686d61] 3 ( CK_ATTRIBUTE 3 [6d79] 2 CK_ATTRIBUTE 258 [07] 1 ) 2 ( 7 8 9 ) 3",
        "[6175] 2 [686d61] 3 ( 3 [6d79] 2 258 [07] 1 ) 2 ( 7 8 9 ) ( 3 )"),
    ROW(CK_PKCS12_PBE_EXPORT_PARAMS, "5 [6175] 2 [686d61] 3 936 937 960"),
    ROW(CK_KEY_WRAP_SET_OAEP_PARAMS, "200 [0102] 2"),
    ROW(CK_SSL3_MASTER_KEY_DERIVE_PARAMS, "CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_VERSION 3 254",
        "[0102] 2 [030405] 3 [03fe]"),
    ROW(CK_SSL3_KEY_MAT_PARAMS,
        "128 56 17 1 CK_SSL3_RANDOM_DATA [0102] 2 [030405] 3 CK_SSL3_KEY_MAT_OUT 1 2 3 4 [a1a2a3] [b1b2b3]",
        "128 56 17 1 [0102] 2 [030405] 3 ( 1 2 3 4 [a1a2a3] [b1b2b3] )"),
    ROW(CK_VERSION, "3 1", ".0301"),
    ROW(CK_KEY_DERIVATION_STRING_DATA, "[0102] 2"),
    ROW(CK_MECH_TYPE_AND_OBJECT, "544 7"),
    ROW(CK_DES_CBC_PARAMS, "[0102030405060708] [1112131415161718]", ".0102030405060708 .1112131415161718"),
    ROW(CK_DES2_CBC_PARAMS, "[0102030405060708] [11121314151617181112131415161718]",
        ".0102030405060708 .11121314151617181112131415161718"),
    ROW(CK_DES3_CBC_PARAMS, "[0102030405060708] [111213141516171811121314151617181112131415161718]",
        ".0102030405060708 .111213141516171811121314151617181112131415161718"),
    ROW(CK_PP_LOAD_SECRET_PARAMS, "1 2 30 [50494e3f]", ".01021e [50494e3f00]"),
    ROW(CK_TIMESTAMP_PARAMS, "1 2"),
    ROW(CK_REPLICATE_TOKEN_PARAMS, "[0102030405060708090a0b0c0d0e0f10]", ".0102030405060708090a0b0c0d0e0f10"),
    ROW(CK_SECRET_SHARE_PARAMS, "5 3"),
    ROW(CK_ECIES_PARAMS, "1 2 2 [0102] 3 4 5 6 7 1 [03]"),
    ROW(CK_ECDH1_DERIVE_PARAMS, "1 2 [0102] 3 [030405]"),
    // Those of modern mechanisms.
    ROW(CK_GCM_PARAMS, "[010203] 3 24 [0405] 2 128"),
    ROW(CK_GCM_PARAMS_OLD, "[010203] 3 [0405] 2 128"),
    ROW(CK_CCM_PARAMS, "7 [010203] 3 [0405] 2 16"),
    ROW(CK_AES_CTR_PARAMS, "32 [0102030405060708090a0b0c0d0e0f10]", "32 .0102030405060708090a0b0c0d0e0f10"),
    ROW(CK_SALSA20_CHACHA20_POLY1305_PARAMS, "[010203] 3 [0405] 2"),
    ROW(CK_HKDF_PARAMS, "0 1 592 2 [010203] 3 9 [0405] 2", ".0001 592 2 [010203] 3 9 [0405] 2"),
    ROW(CK_EDDSA_PARAMS, "1 2 [0102]"),
    ROW(CK_X9_42_DH1_DERIVE_PARAMS, "1 2 [0102] 3 [030405]"),
    ROW(CK_RSA_AES_KEY_WRAP_PARAMS, "256 CK_RSA_PKCS_OAEP_PARAMS 544 1 2 [616263] 3",
        "256 ( 544 1 2 [616263] 3 )"),
};
#undef ROW
const std::span<const ParamRow> PARAMS = ROWS, MODERN = PARAMS.last(9);

} // namespace jni
