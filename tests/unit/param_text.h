// Mechanism parameters as text, on both sides: Java objects as Fields tells them, native memory as words of
// hex digits for the bytes in place, [..] for bytes behind a pointer, (..) for a structure behind one, and
// null.
#pragma once

#include "natives.h"

#include <cstdlib>
#include <cstring>
#include <deque>

namespace jni {

inline jobject read(JNIEnv* env, const std::string& javaText)
{
    return callStatic(
        env, "Fields", "read", "(Ljava/lang/String;)Ljava/lang/Object;", string(env, javaText.c_str()));
}
inline std::string tell(JNIEnv* env, jobject object)
{
    const jobject told = callStatic(env, "Fields", "tell", "(Ljava/lang/Object;)Ljava/lang/String;", object);
    return toString(env, static_cast<jstring>(told));
}
inline std::string identities(JNIEnv* env, jobject object)
{
    const jobject told =
        callStatic(env, "Fields", "identities", "(Ljava/lang/Object;)Ljava/lang/String;", object);
    return toString(env, static_cast<jstring>(told));
}
inline jobject mechanism(JNIEnv* env, jobject type, jobject parameter, jlong parameterLen)
{
    const jobject made = alloc(env, "halvorn/zerlin/CK_MECHANISM");
    setObject(env, made, "mechanism", "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", type);
    setObject(env, made, "pParameter", "Ljava/lang/Object;", parameter);
    setLong(env, made, "parameterLen", parameterLen);
    return made;
}
inline jobject mechanism(JNIEnv* env, jlong type, jobject parameter, jlong parameterLen)
{
    return mechanism(env, mechanismType(env, type), parameter, parameterLen);
}

inline std::string hex(const void* bytes, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned byte = static_cast<const CK_BYTE*>(bytes)[i];
        text += "0123456789abcdef"[byte / 16];
        text += "0123456789abcdef"[byte % 16];
    }
    return text;
}

// The next piece of a native text: a word, a bracket with what is in it, or a blank.
inline std::string_view takePiece(std::string_view& text)
{
    std::size_t end = text.find_first_of(" [(", 1);
    if (text.front() == ' ') end = 1;
    if (text.front() == '[') end = text.find(']') + 1;
    if (text.front() == '(') end = text.find(')') + 1;
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(piece.size());
    return piece;
}

// The memory, read as the expected text says it is made up, so that the two are equal when it is as expected.
inline std::string tellNative(const void* memory, std::string_view expected)
{
    if (memory == nullptr) return "null";
    std::string told;
    for (auto* data = static_cast<const CK_BYTE*>(memory); !expected.empty();) {
        const std::string_view piece = takePiece(expected);
        if (piece == " ") {
            told += piece;
            continue;
        }
        const bool isPointer = piece.front() == '[' || piece.front() == '(' || piece == "null";
        const std::size_t size = isPointer ? sizeof data : piece.size() / 2;
        const CK_BYTE* pointer = nullptr;
        if (isPointer) std::memcpy(&pointer, data, sizeof pointer);
        if (!isPointer)
            told += hex(data, size);
        else if (pointer == nullptr || piece == "null")
            told += pointer == nullptr ? "null" : "set";
        else if (piece.front() == '[')
            told += "[" + hex(pointer, piece.size() / 2 - 1) + "]";
        else
            told += "(" + tellNative(pointer, piece.substr(1, piece.size() - 2)) + ")";
        data += size;
    }
    return told;
}

// Memory that is as the text says. What is behind pointers lives as long as this does.
struct Native {
    std::deque<std::vector<CK_BYTE>> blocks = {};

    CK_BYTE* build(std::string_view text)
    {
        std::vector<CK_BYTE> bytes;
        while (!text.empty()) {
            const std::string_view piece = takePiece(text);
            const std::string_view inner = piece.substr(1, piece.size() - 2);
            if (piece == " ") continue;
            if (piece.front() == '[' || piece.front() == '(' || piece == "null") {
                const CK_BYTE* const pointer = piece == "null" ? nullptr : build(inner);
                const auto* const begin = reinterpret_cast<const CK_BYTE*>(&pointer);
                bytes.insert(bytes.end(), begin, begin + sizeof pointer);
                continue;
            }
            for (std::size_t i = 0; i < piece.size(); i += 2)
                bytes.push_back(
                    static_cast<CK_BYTE>(std::stoul(std::string(piece.substr(i, 2)), nullptr, 16)));
        }
        bytes.reserve(bytes.size() + 1); // so that there is memory even for none
        blocks.push_back(std::move(bytes));
        return blocks.back().data();
    }
};

inline CK_ULONG sizeOfNative(std::string_view text)
{
    Native native;
    native.build(text);
    return native.blocks.back().size();
}

struct ParamRow {
    std::string java;
    std::string native;
};

// One parameter of each class.
inline const ParamRow PARAMS[] = {
    {"CK_RSA_PKCS_OAEP_PARAMS{hashAlg=544 mgf=1 source=2 pSourceData=[616263] sourceDataLen=3}",
        "20020000 01000000 02000000 [616263] 03000000"},
    {"CK_RSA_PKCS_PSS_PARAMS{hashAlg=544 mgf=4294967295 sLen=20}", "20020000 ffffffff 14000000"},
    {"5L", "05000000"},
    {"CK_RC2_CBC_PARAMS{effectiveBits=128 iv=[0102030405060708]}", "80000000 0102030405060708"},
    {"CK_RC2_MAC_GENERAL_PARAMS{effectiveBits=128 macLength=4}", "80000000 04000000"},
    {"CK_PBE_PARAMS{pInitVector=[0102030405060708] pPassword=[70617373] passwordLen=4 pSalt=[73616c] "
     "saltLen=3 "
     "iteration=1000}",
        "[0102030405060708] [70617373] 04000000 [73616c] 03000000 e8030000"},
    {"CK_PKCS12_PBE_IMPORT_PARAMS{passwordAuthSafe=[6175] passwordAuthSafeLen=2 passwordHMAC=[686d61] "
     "passwordHMACLen=3 certAttr=(CK_ATTRIBUTE{type=3 pValue=[6d79] valueLen=2} CK_ATTRIBUTE{type=258 "
     "pValue=[07] valueLen=1}) certAttrCount=2 hCert=(7 8 9) hCertCount=3}",
        "[6175] 02000000 [686d61] 03000000 (03000000 [6d79] 02000000 02010000 [07] 01000000) 02000000 "
        "[070000000800000009000000] [03000000]"},
    {"CK_PKCS12_PBE_EXPORT_PARAMS{keyCert=5 passwordAuthSafe=[6175] passwordAuthSafeLen=2 "
     "passwordHMAC=[686d61] passwordHMACLen=3 safeBagKgMech=936 safeContentKgMech=937 hmacKgMech=960}",
        "05000000 [6175] 02000000 [686d61] 03000000 a8030000 a9030000 c0030000"},
    {"CK_KEY_WRAP_SET_OAEP_PARAMS{bBC=200 pX=[0102] XLen=2}", "c8000000 [0102] 02000000"},
    {"CK_SSL3_MASTER_KEY_DERIVE_PARAMS{RandomInfo=CK_SSL3_RANDOM_DATA{pClientRandom=[0102] clientRandomLen=2 "
     "pServerRandom=[030405] serverRandomLen=3} pVersion=CK_VERSION{major=3 minor=254}}",
        "[0102] 02000000 [030405] 03000000 [03fe]"},
    {"CK_SSL3_KEY_MAT_PARAMS{macSizeInBits=128 keySizeInBits=56 IVSizeInBits=17 bIsExport=1 "
     "RandomInfo=CK_SSL3_RANDOM_DATA{pClientRandom=[0102] clientRandomLen=2 pServerRandom=[030405] "
     "serverRandomLen=3} pReturnedKeyMaterial=CK_SSL3_KEY_MAT_OUT{hClientMacSecret=1 hServerMacSecret=2 "
     "hClientKey=3 hServerKey=4 pIVClient=[a1a2a3] pIVServer=[b1b2b3]}}",
        "80000000 38000000 11000000 01000000 [0102] 02000000 [030405] 03000000 "
        "(01000000 02000000 03000000 04000000 [a1a2a3] [b1b2b3])"},
    {"CK_VERSION{major=3 minor=1}", "0301"},
    {"CK_KEY_DERIVATION_STRING_DATA{pData=[0102] len=2}", "[0102] 02000000"},
    {"CK_MECH_TYPE_AND_OBJECT{mechanism=544 hObj=7}", "20020000 07000000"},
    {"CK_DES_CBC_PARAMS{iv=[0102030405060708] data=[1112131415161718]}", "0102030405060708 1112131415161718"},
    {"CK_DES2_CBC_PARAMS{iv=[0102030405060708] data=[11121314151617181112131415161718]}",
        "0102030405060708 11121314151617181112131415161718"},
    {"CK_DES3_CBC_PARAMS{iv=[0102030405060708] data=[111213141516171811121314151617181112131415161718]}",
        "0102030405060708 111213141516171811121314151617181112131415161718"},
    {"CK_PP_LOAD_SECRET_PARAMS{bMaskInput=1 cConvert=2 cTimeout=30 prompt=[50494e3f]}",
        "01021e00 [50494e3f00]"},
    {"CK_TIMESTAMP_PARAMS{useMilliseconds=1 timestampFormat=2}", "01000000 02000000"},
    {"CK_REPLICATE_TOKEN_PARAMS{peerId=[0102030405060708090a0b0c0d0e0f10]}",
        "0102030405060708090a0b0c0d0e0f10"},
    {"CK_SECRET_SHARE_PARAMS{n=5 m=3}", "05000000 03000000"},
    {"CK_ECIES_PARAMS{dhPrimitive=1 kdf=2 ulSharedDataLen1=2 pSharedData1=[0102] encScheme=3 "
     "ulEncKeyLenInBits=4 macScheme=5 ulMacKeyLenInBits=6 ulMacLenInBits=7 ulSharedDataLen2=1 "
     "pSharedData2=[03]}",
        "01000000 02000000 02000000 [0102] 03000000 04000000 05000000 06000000 07000000 01000000 [03]"},
    {"CK_ECDH1_DERIVE_PARAMS{kdf=1 ulSharedDataLen=2 pSharedData=[0102] ulPublicDataLen=3 "
     "pPublicData=[030405]}",
        "01000000 02000000 [0102] 03000000 [030405]"},
};

} // namespace jni
