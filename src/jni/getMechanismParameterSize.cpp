// getMechanismParameterSize of the class CK_MECHANISM: what parameterLen must be for a parameter object.
#include <iterator>

#include "halvorn_zerlin_CK_MECHANISM.h"
#include "helper/parameters.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/getMechanismParameterSize $\" \"$Revision: 1.1.1.3 $\"";

enum class SizeKind { Fixed, ArrayLength, StringLength };

struct SizeRow {
    Literal path;
    SizeKind kind;
    CK_ULONG size;
};

constexpr SizeRow fixed(Literal path, CK_ULONG size)
{
    return {path, SizeKind::Fixed, size};
}

constexpr SizeRow fixed(const Structure& structure)
{
    return fixed(structure.path, structure.size);
}

// In the order of the tests. The later Longs can never match: the first one is met before them, wanted.
constexpr SizeRow SIZES[] = {
    fixed(PKCS12_PBE_IMPORT),
    fixed(PKCS12_PBE_EXPORT),
    fixed(RSA_PKCS_OAEP),
    fixed(RSA_PKCS_PSS),
    fixed("java/lang/Long", sizeof(CK_ULONG)),
    fixed(RC2_CBC),
    fixed(RC2_MAC_GENERAL),
    fixed("java/lang/Long", sizeof(CK_ULONG)),
    fixed(PBE),
    fixed(KEY_WRAP_SET_OAEP),
    fixed(SSL3_MASTER_KEY_DERIVE),
    fixed(SSL3_KEY_MAT),
    fixed("java/lang/Long", sizeof(CK_ULONG)),
    fixed(VERSION),
    fixed(KEY_DERIVATION_STRING_DATA),
    fixed(MECH_TYPE_AND_OBJECT),
    fixed("halvorn/zerlin/CK_OBJECT_HANDLE", sizeof(CK_OBJECT_HANDLE)),
    fixed(DES_CBC),
    fixed(DES2_CBC),
    fixed(DES3_CBC),
    fixed(TIMESTAMP),
    fixed(REPLICATE_TOKEN),
    fixed(SECRET_SHARE),
    fixed(ECIES),
    fixed(ECDH1_DERIVE),
    {"[B", SizeKind::ArrayLength, 0},
    {"java/lang/String", SizeKind::StringLength, 0},
    fixed("java/lang/Long", sizeof(CK_ULONG)),
    fixed("java/lang/Boolean", sizeof(CK_BBOOL)),
    {"[C", SizeKind::ArrayLength, 0},
    fixed(PP_LOAD_SECRET),
};

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

JNIEXPORT jlong JNICALL Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(
    JNIEnv* env, jclass, jobject parameter)
{
    jclass classes[std::size(SIZES)];
    for (std::size_t i = 0; i < std::size(SIZES); ++i) {
        classes[i] = FindClass(env, SIZES[i].path);
    }
    if (env->ExceptionCheck() || parameter == nullptr) return 0;
    for (std::size_t i = 0; i < std::size(SIZES); ++i) {
        if (!env->IsInstanceOf(parameter, classes[i])) continue;
        return env->ExceptionCheck() ? 0 : sizeOf(env, SIZES[i], parameter);
    }
    throwUnsupportedClass(env, "No Conversion from %s to a CK type", parameter);
    return 0;
}
