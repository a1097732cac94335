// Mechanisms and their parameter structures from native to new Java objects.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "helper/convToJava.h"
#include "helper/elements.h"
#include "helper/jutil.h"
#include "helper/parameters.h"
#include "util/assertion.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToJava_params $\" \"$Revision: 1.1.1.2 $\"";

constexpr CK_ULONG PBE_IV_LENGTH = 8;

// The Java object that is being made of a structure; root is the outermost structure.
struct Writing {
    JNIEnv* env;
    jclass cls;
    jobject object;
    const CK_BYTE* data;
    const CK_BYTE* root;
};

const CK_BYTE* pointerAt(const CK_BYTE* place)
{
    const CK_BYTE* pointer;
    std::memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

// Stores a new object in a field and lets go of it.
void store(const Writing& writing, const Member& member, Literal signature, jobject value)
{
    const LocalRef<jobject> local(writing.env, value);
    if (writing.env->ExceptionCheck()) return;
    SetObjectField(writing.env, writing.cls, writing.object, member.field, signature, local);
}

void storeBytes(const Writing& writing, const Member& member, const CK_BYTE* bytes, CK_ULONG length)
{
    store(writing, member, "[B", ckByteArrayToJByteArray(writing.env, bytes, length));
}

jobject newObject(JNIEnv* env, const Structure& structure, const CK_BYTE* data, const CK_BYTE* root);

void writeMember(const Writing& writing, const Member& member)
{
    JNIEnv* const env = writing.env;
    const CK_BYTE* const place = writing.data + member.offset;
    switch (member.kind) {
    case MemberKind::Number:
        SetLongField(env, writing.cls, writing.object, member.field, numberAt(place));
        return;
    case MemberKind::Unread:
        return;
    case MemberKind::MechanismType:
        return store(writing, member, "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;",
            ckMechanismTypeToJMechanismType(env, numberAt(place)));
    case MemberKind::OaepSource:
        return store(writing, member, "Lhalvorn/zerlin/constants/CK_RSA_PKCS_OAEP_SOURCE_TYPE;",
            ckRsaPkcsOaepSourceTypeToJRsaPkcsOaepSourceType(env, numberAt(place)));
    case MemberKind::ObjectHandle:
        return store(writing, member, "Lhalvorn/zerlin/CK_OBJECT_HANDLE;",
            ckObjectHandleToJObjectHandle(env, numberAt(place)));
    case MemberKind::BBool:
        return store(writing, member, "Lhalvorn/zerlin/CK_BBOOL;", ckBBoolToJBBool(env, *place));
    case MemberKind::Byte:
        SetByteField(env, writing.cls, writing.object, member.field, static_cast<jbyte>(*place));
        return;
    case MemberKind::CappedInt:
        SetIntField(env, writing.cls, writing.object, member.field, *place);
        return;
    case MemberKind::Array:
        return storeBytes(writing, member, place, member.detail);
    case MemberKind::Bytes:
    case MemberKind::BytesIfCounted:
        return storeBytes(writing, member, pointerAt(place), numberAt(writing.data + member.detail));
    case MemberKind::InitVector:
        return storeBytes(writing, member, pointerAt(place), PBE_IV_LENGTH);
    case MemberKind::KeyIV:
        return storeBytes(
            writing, member, pointerAt(place), bytesOfBits(numberAt(writing.root + member.detail)));
    case MemberKind::Text: {
        const auto* const text = reinterpret_cast<const char*>(pointerAt(place));
        return storeBytes(writing, member, pointerAt(place), text == nullptr ? 0 : std::strlen(text) + 1);
    }
    case MemberKind::Nested:
        return store(writing, member, member.structure->signature,
            newObject(env, *member.structure, place, writing.root));
    case MemberKind::Pointed:
        return store(writing, member, member.structure->signature,
            newObject(env, *member.structure, pointerAt(place), writing.root));
    case MemberKind::Attributes:
        return store(writing, member, "[Lhalvorn/zerlin/CK_ATTRIBUTE;",
            ckAttributeArrayToJAttributeArray(env, reinterpret_cast<const CK_ATTRIBUTE*>(pointerAt(place)),
                numberAt(writing.data + member.detail)));
    case MemberKind::HandleCount:
        if (pointerAt(place) == nullptr) return;
        return store(
            writing, member, "Lhalvorn/zerlin/LongRef;", LongRefObj(env, numberAt(pointerAt(place))));
    case MemberKind::Handles: {
        const CK_BYTE* const count = pointerAt(writing.data + member.detail);
        if (count == nullptr) return;
        return store(writing, member, "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;",
            ckObjHandleArrayToJObjHandleArray(
                env, reinterpret_cast<const CK_OBJECT_HANDLE*>(pointerAt(place)), numberAt(count)));
    }
    }
}

jobject newObject(JNIEnv* env, const Structure& structure, const CK_BYTE* data, const CK_BYTE* root)
{
    if (data == nullptr) return nullptr;
    const jclass cls = FindClass(env, structure.path);
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const Writing writing{env, cls, object, data, root};
    for (const Member& member : structure.members) {
        writeMember(writing, member);
        if (env->ExceptionCheck()) {
            env->DeleteLocalRef(object);
            return nullptr;
        }
    }
    return object;
}

struct Converter {
    CK_MECHANISM_TYPE mechanism;
    CK_ULONG size;
    const Structure* structure; // null for the two that become a single object
    const char* name;           // under which the converter tells its assertion
    const char* nativeName;     // of what has that size
    jobject (*make)(JNIEnv*, CK_ULONG) = nullptr;
};

jobject newLong(JNIEnv* env, CK_ULONG value)
{
    return ckULongPtrToJLongObject(env, &value);
}

constexpr Converter row(CK_MECHANISM_TYPE mechanism, const Structure& structure, const char* name)
{
    return {mechanism, structure.size, &structure, name, structure.name};
}

constexpr Converter longRow(CK_MECHANISM_TYPE mechanism)
{
    return {mechanism, sizeof(CK_ULONG), nullptr, "convertLongParams", "CK_ULONG", newLong};
}

constexpr Converter handleRow(CK_MECHANISM_TYPE mechanism)
{
    return {mechanism, sizeof(CK_OBJECT_HANDLE), nullptr, "convertObjectHandleParams", "CK_OBJECT_HANDLE",
        ckObjectHandleToJObjectHandle};
}

constexpr Converter pbeRow(CK_MECHANISM_TYPE mechanism)
{
    return row(mechanism, PBE, "convertPbeParams");
}

constexpr Converter s_converters[] = {
    row(CKM_DES_DERIVE_CBC, DES_CBC, "convertDesCbcParams"),
    row(CKM_DES3_DERIVE_CBC, DES2_CBC, "convertDes2CbcParams"),
    row(CKM_DES3_DERIVE_CBC, DES3_CBC, "convertDes3CbcParams"),
    row(CKM_CONCATENATE_BASE_AND_DATA, KEY_DERIVATION_STRING_DATA, "convertKeyDerivationStringData"),
    row(CKM_XOR_BASE_AND_DATA, KEY_DERIVATION_STRING_DATA, "convertKeyDerivationStringData"),
    row(CKM_KEY_WRAP_SET_OAEP, KEY_WRAP_SET_OAEP, "convertKeyWrapSetOaepParams"),
    row(CKM_ENCODE_X_509_LOCAL_CERT, MECH_TYPE_AND_OBJECT, "convertMechTypeAndObject"),
    handleRow(CKM_CONCATENATE_BASE_AND_KEY),
    handleRow(CKM_XOR_BASE_AND_KEY),
    pbeRow(CKM_PBE_MD2_DES_CBC),
    pbeRow(CKM_PBE_MD5_CAST128_CBC),
    pbeRow(CKM_PBE_MD5_DES_CBC),
    pbeRow(CKM_PBE_SHA1_CAST128_CBC),
    pbeRow(CKM_PBE_SHA1_DES2_EDE_CBC),
    pbeRow(CKM_PBE_SHA1_DES3_EDE_CBC),
    pbeRow(CKM_PBE_SHA1_RC4_40),
    pbeRow(CKM_PBE_SHA1_RC4_128),
    pbeRow(CKM_PBE_SHA1_RC2_40_CBC),
    pbeRow(CKM_PBE_SHA1_RC2_128_CBC),
    pbeRow(CKM_PBA_SHA1_WITH_SHA1_HMAC),
    row(CKM_RC2_CBC, RC2_CBC, "convertRc2CbcParams"),
    row(CKM_RC2_CBC_PAD, RC2_CBC, "convertRc2CbcParams"),
    row(CKM_RC2_MAC_GENERAL, RC2_MAC_GENERAL, "convertRc2MacGeneralParams"),
    row(CKM_RSA_PKCS_OAEP, RSA_PKCS_OAEP, "convertRsaPkcsOaepParams"),
    row(CKM_RSA_PKCS_PSS, RSA_PKCS_PSS, "convertRsaPkcsPssParams"),
    row(CKM_SSL3_KEY_AND_MAC_DERIVE, SSL3_KEY_MAT, "convertSsl3KeyMatParams"),
    row(CKM_SSL3_MASTER_KEY_DERIVE, SSL3_MASTER_KEY_DERIVE, "convertSsl3MasterKeyDeriveParams"),
    row(CKM_SSL3_PRE_MASTER_KEY_GEN, VERSION, "convertVersionParams"),
    longRow(CKM_AES_MAC_GENERAL),
    longRow(CKM_AES_CMAC_GENERAL),
    longRow(CKM_CAST128_MAC_GENERAL),
    longRow(CKM_DES_MAC),
    longRow(CKM_DES_MAC_GENERAL),
    longRow(CKM_DES3_MAC_GENERAL),
    longRow(CKM_DES3_CMAC_GENERAL),
    longRow(CKM_DES3_X919_MAC_GENERAL),
    longRow(CKM_IDEA_MAC_GENERAL),
    longRow(CKM_MD2_HMAC_GENERAL),
    longRow(CKM_MD5_HMAC_GENERAL),
    longRow(CKM_RIPEMD160_HMAC_GENERAL),
    longRow(CKM_RIPEMD128_HMAC_GENERAL),
    longRow(CKM_SHA_1_HMAC_GENERAL),
    longRow(CKM_SSL3_MD5_MAC),
    longRow(CKM_SSL3_SHA1_MAC),
    longRow(CKM_EXTRACT_KEY_FROM_KEY),
    longRow(CKM_RC2_ECB),
    longRow(CKM_RC2_ECB_PAD),
    longRow(CKM_RC2_MAC),
    row(CKM_PP_LOAD_SECRET, PP_LOAD_SECRET, "convertPpLoadSecretParams"),
    row(CKM_SHA1_RSA_PKCS_TIMESTAMP, TIMESTAMP, "convertTimestampParams"),
    longRow(CKM_SEED_MAC_GENERAL),
    row(CKM_REPLICATE_TOKEN_RSA_AES, REPLICATE_TOKEN, "convertReplicateTokenParams"),
    row(CKM_SECRET_SHARE_WITH_ATTRIBUTES, SECRET_SHARE, "convertSecretShareParams"),
    row(CKM_PKCS12_PBE_IMPORT, PKCS12_PBE_IMPORT, "convertPKCS12PbeImportParams"),
    row(CKM_PKCS12_PBE_EXPORT, PKCS12_PBE_EXPORT, "convertPKCS12PbeExportParams"),
    row(CKM_ECIES, ECIES, "convertEcIesParams"),
    row(CKM_ECDH1_DERIVE, ECDH1_DERIVE, "convertEcDhParams"),
};
static_assert(std::size(s_converters) == 57);

jobject convert(JNIEnv* env, const Converter& converter, const CK_BYTE* data, CK_ULONG parameterLen)
{
    if (parameterLen != converter.size) {
        char expression[80];
        std::snprintf(expression, sizeof expression, "parameterLen == sizeof(%s)", converter.nativeName);
        assertThat(false, expression, "convToJava", converter.name);
    }
    if (converter.structure != nullptr) return newObject(env, *converter.structure, data, data);
    return converter.make(env, numberAt(data));
}

} // namespace

jobject ckMechanismParameterToJMechanismParameter(JNIEnv* env, const CK_MECHANISM* mechanism)
{
    if (mechanism == nullptr || mechanism->pParameter == nullptr) return nullptr;
    const auto* const data = static_cast<const CK_BYTE*>(mechanism->pParameter);
    for (const Converter& converter : s_converters) {
        if (converter.mechanism != mechanism->mechanism || converter.size != mechanism->ulParameterLen)
            continue;
        const jobject parameter = convert(env, converter, data, mechanism->ulParameterLen);
        if (parameter != nullptr || env->ExceptionCheck()) return parameter;
        break;
    }
    return ckByteArrayToJByteArray(env, data, mechanism->ulParameterLen);
}

jobject ckMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* mechanism)
{
    if (mechanism == nullptr) return nullptr;
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_MECHANISM");
    if (cls == nullptr) return nullptr;
    const jobject object = env->AllocObject(cls);
    if (object == nullptr) return nullptr;
    const LocalRef<jobject> type(env, ckMechanismTypeToJMechanismType(env, mechanism->mechanism));
    if (env->ExceptionCheck()) return nullptr;
    SetObjectField(env, cls, object, "mechanism", "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;", type);
    if (env->ExceptionCheck()) return nullptr;
    const LocalRef<jobject> parameter(env, ckMechanismParameterToJMechanismParameter(env, mechanism));
    if (env->ExceptionCheck()) return nullptr;
    SetObjectField(env, cls, object, "pParameter", "Ljava/lang/Object;", parameter);
    if (env->ExceptionCheck()) return nullptr;
    SetLongField(env, cls, object, "parameterLen", mechanism->ulParameterLen);
    return env->ExceptionCheck() ? nullptr : object;
}

} // namespace zerlin
