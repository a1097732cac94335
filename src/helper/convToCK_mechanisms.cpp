// Mechanisms from Java to native: the parameter by its Java class, and its release after the call.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "helper/convToCK.h"
#include "helper/convToCK_params.h"
#include "helper/jutil.h"
#include "helper/memory.h"
#include "helper/parameters.h"
#include "util/assertion.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToCK_mechanisms $\" \"$Revision: 1.1.1.2 $\"";

// A parameter class and the names under which its converter and its release tell their assertions.
struct Converter {
    Literal path;
    const Structure* structure; // null for the Long, which becomes a CK_ULONG
    const char* convert;
    const char* free;
    const char* freedName; // the native structure as the release names it
};

constexpr Converter converter(const Structure& structure, const char* convert, const char* free)
{
    return {structure.path, &structure, convert, free, structure.name};
}

constexpr Converter s_converters[] = {
    converter(RSA_PKCS_OAEP, "convertRsaPkcsOaepParams", "freeRsaPkcsOaepParams"),
    converter(RSA_PKCS_PSS, "convertRsaPkcsPssParams", "freeRsaPkcsPssParams"),
    {"java/lang/Long", nullptr, "convertLongParam", "freeLongParam", "CK_ULONG"},
    converter(RC2_CBC, "convertRc2CbcParams", "freeRc2CbcParams"),
    converter(RC2_MAC_GENERAL, "convertRc2MacGeneralParams", "freeRc2MacGeneralParams"),
    converter(PBE, "convertPbeParams", "freePbeParams"),
    converter(PKCS12_PBE_IMPORT, "convertPKCS12PbeImportParams", "freePKCS12PbeImportParams"),
    converter(PKCS12_PBE_EXPORT, "convertPKCS12PbeExportParams", "freePKCS12PbeExportParams"),
    converter(KEY_WRAP_SET_OAEP, "convertKeyWrapSetOaepParams", "freeKeyWrapSetOaepParams"),
    converter(SSL3_MASTER_KEY_DERIVE, "convertSsl3MasterKeyDeriveParams", "freeSsl3MasterKeyDeriveParams"),
    converter(SSL3_KEY_MAT, "convertSsl3KeyMatParams", "freeSsl3KeyMatParams"),
    converter(VERSION, "convertVersionParam", "freeVersionParam"),
    converter(KEY_DERIVATION_STRING_DATA, "convertKeyDerivationStringData", "freeKeyDerivationStringData"),
    // Its release names the structure before it, which has the same size: wanted.
    {MECH_TYPE_AND_OBJECT.path, &MECH_TYPE_AND_OBJECT, "convertMechTypeAndObject", "freeMechTypeAndObject",
        KEY_DERIVATION_STRING_DATA.name},
    converter(DES_CBC, "convertDesCbcParams", "freeDesCbcParams"),
    converter(DES2_CBC, "convertDes2CbcParams", "freeDes2CbcParams"),
    converter(DES3_CBC, "convertDes3CbcParams", "freeDes3CbcParams"),
    converter(PP_LOAD_SECRET, "convertPpLoadSecretParams", "freePpLoadSecretParams"),
    converter(TIMESTAMP, "convertTimestampParams", "freeTimestampParams"),
    converter(REPLICATE_TOKEN, "convertReplicateTokenParams", "freeReplicateTokenParams"),
    converter(SECRET_SHARE, "convertSecretShareParams", "freeSecretShareParams"),
    converter(ECIES, "convertEcIesParams", "freeEcIesParams"),
    converter(ECDH1_DERIVE, "convertEcDhParams", "freeEcDhParams"),
};

constexpr std::size_t ROWS = std::size(s_converters);

// The classes of the rows, and last the class that most parameters have, which no row is for.
constexpr auto PARAMETER_CLASS_PATHS = []<std::size_t... row>(std::index_sequence<row...>)
{
    return std::array{s_converters[row].path..., Literal("[B")};
}
(std::make_index_sequence<ROWS>());

// The row of whose class the object is, or null, with an exception pending when a lookup raised.
const Converter* converterOf(JNIEnv* env, jobject object)
{
    jclass classes[ROWS + 1];
    if (!FindClasses(env, PARAMETER_CLASS_PATHS, classes)) return nullptr;
    if (env->IsInstanceOf(object, classes[ROWS])) return nullptr;
    for (std::size_t row = 0; row < ROWS; ++row) {
        if (env->IsInstanceOf(object, classes[row])) return &s_converters[row];
    }
    return nullptr;
}

void freeParameter(const Converter& row, CK_VOID_PTR parameter, CK_ULONG paramLen)
{
    const CK_ULONG size = row.structure != nullptr ? row.structure->size : sizeof(CK_ULONG);
    if (paramLen != size) {
        char expression[80];
        std::snprintf(expression, sizeof expression, "paramLen == sizeof(%s)", row.freedName);
        assertThat(false, expression, "convToCK", row.free);
    }
    if (row.structure != nullptr) return freeStructure(*row.structure, parameter);
    wipeAndFree(parameter);
}

// An exception that is set aside while something must be done, and thrown again at the end. One that was
// raised meanwhile gives way to it.
struct ExceptionAside {
    JNIEnv* const env;
    const jthrowable exception;

    explicit ExceptionAside(JNIEnv* environment)
        : env(environment), exception(environment->ExceptionOccurred())
    {
        if (exception != nullptr) env->ExceptionClear();
    }
    ExceptionAside(const ExceptionAside&) = delete;
    ExceptionAside& operator=(const ExceptionAside&) = delete;
    ~ExceptionAside()
    {
        if (exception == nullptr) return;
        if (env->ExceptionCheck()) env->ExceptionClear();
        env->Throw(exception);
        env->DeleteLocalRef(exception);
    }
};

} // namespace

CK_MECHANISM jMechanismToCKMechanism(JNIEnv* env, jobject object)
{
    CK_MECHANISM mechanism{};
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_MECHANISM");
    if (cls == nullptr || object == nullptr) return mechanism;

    const LocalRef<jobject> type(
        env, GetObjectField(env, cls, object, "mechanism", "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;"));
    if (type == nullptr && env->ExceptionCheck()) return mechanism;
    const CK_MECHANISM_TYPE typeValue = jMechanismTypeToCKMechanismType(env, type);
    if (typeValue == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return mechanism;
    mechanism.mechanism = typeValue;

    const LocalRef<jobject> parameter(
        env, GetObjectField(env, cls, object, "pParameter", "Ljava/lang/Object;"));
    if (parameter != nullptr) {
        jMechanismParameterToCKMechanismParameter(
            env, parameter, &mechanism.pParameter, &mechanism.ulParameterLen);
    }
    if (env->ExceptionCheck()) return mechanism;

    const CK_ULONG parameterLen = GetLongField(env, cls, object, "parameterLen");
    if (parameterLen == CK_UNAVAILABLE_INFORMATION && env->ExceptionCheck()) return mechanism;
    mechanism.ulParameterLen = parameterLen;
    return mechanism;
}

void jMechanismParameterToCKMechanismParameter(
    JNIEnv* env, jobject object, CK_VOID_PTR* ckpParamPtr, CK_ULONG* ckpLength)
{
    assertThat(ckpParamPtr != nullptr && ckpLength != nullptr,
        "ckpParamPtr != ((void *)0) && ckpLength != ((void *)0)", "convToCK",
        "jMechanismParameterToCKMechanismParameter");
    *ckpParamPtr = nullptr;
    *ckpLength = 0;
    if (object == nullptr) return;
    const Converter* const row = converterOf(env, object);
    if (row == nullptr && env->ExceptionCheck()) return;
    if (row == nullptr) return jObjectToPrimitiveCKObjectPtrPtr(env, object, ckpParamPtr, ckpLength);

    if (row->structure == nullptr) {
        *ckpParamPtr = jLongObjectToCKULongPtr(env, object);
        if (*ckpParamPtr != nullptr) *ckpLength = sizeof(CK_ULONG);
        return;
    }
    *ckpParamPtr = newStructure(env, *row->structure, object, row->convert);
    if (*ckpParamPtr != nullptr) *ckpLength = row->structure->size;
}

void FreeCKMechanismParameter(JNIEnv* env, jobject jMechanism, CK_MECHANISM_PTR mechanism)
{
    const ExceptionAside pending(env);
    // A call that fails half-way may have left a length that belongs to nothing.
    if (pending.exception != nullptr && mechanism->pParameter == nullptr) return;
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_MECHANISM");
    const LocalRef<jobject> object(
        env, GetObjectField(env, cls, jMechanism, "pParameter", "Ljava/lang/Object;"));
    if (object == nullptr) return;
    const Converter* const row = converterOf(env, object);
    if (row == nullptr && env->ExceptionCheck()) return;
    if (row != nullptr) return freeParameter(*row, mechanism->pParameter, mechanism->ulParameterLen);
    wipeAndFree(mechanism->pParameter);
}

} // namespace zerlin
