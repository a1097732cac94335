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
#include "helper/valueClasses.h"
#include "util/assertion.h"

namespace zerlin {

// A parameter class and the names under which its converter and its release tell their assertions.
struct ParameterConverter {
    Literal path;
    const Structure* structure; // null for the Long, which becomes a CK_ULONG
    const char* convert;
    const char* free;
    const char* freedName; // the native structure as the release names it
};

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/convToCK_mechanisms $\" \"$Revision: 1.1.1.2 $\"";

constexpr ParameterConverter converter(const Structure& structure, const char* convert, const char* free)
{
    return {structure.path, &structure, convert, free, structure.name};
}

constexpr ParameterConverter s_converters[] = {
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
constexpr std::size_t PSS_ROW = 1;
static_assert(s_converters[PSS_ROW].structure == &RSA_PKCS_PSS);

// The classes of the rows, and last the class that most parameters have, which no row is for.
template <std::size_t... row>
constexpr auto parameterClassPaths(std::index_sequence<row...>)
{
    return std::array{s_converters[row].path..., Literal("[B")};
}
constexpr auto PARAMETER_CLASS_PATHS = parameterClassPaths(std::make_index_sequence<ROWS>());

// The row of whose class the object is, or null. The classes are those of the paths. No object is of two
// rows, so that the order of the tests cannot change which one it is: the parameter of signatures comes
// first.
const ParameterConverter* converterOf(JNIEnv* env, const jclass* classes, jobject object)
{
    if (env->IsInstanceOf(object, classes[PSS_ROW])) return &s_converters[PSS_ROW];
    for (std::size_t row = 0; row < ROWS; ++row) {
        if (env->IsInstanceOf(object, classes[row])) return &s_converters[row];
    }
    return nullptr;
}

void freeParameter(const ParameterConverter& row, CK_VOID_PTR parameter, CK_ULONG paramLen)
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

// Into a cleared record. False with an exception pending; a buffer may have been made all the same.
bool convertParameter(
    JNIEnv* env, jobject object, CK_MECHANISM& mechanism, const ParameterConverter*& converter)
{
    const jclass* const classes = FindClasses(env, PARAMETER_CLASS_PATHS);
    if (classes == nullptr) return false;
    if (env->IsInstanceOf(object, classes[ROWS])) {
        // As every bare value, it is taken only where all the classes of values can be found.
        if (findValueClasses(env, std::size(VALUE_CLASSES)) == nullptr) return false;
        CK_BYTE_PTR bytes = nullptr;
        jByteArrayToCKByteArray(env, static_cast<jbyteArray>(object), &bytes, &mechanism.ulParameterLen);
        mechanism.pParameter = bytes;
        return bytes != nullptr;
    }
    converter = converterOf(env, classes, object);
    if (converter == nullptr) {
        jObjectToPrimitiveCKObjectPtrPtr(env, object, &mechanism.pParameter, &mechanism.ulParameterLen);
        return !env->ExceptionCheck();
    }
    const Structure* const structure = converter->structure;
    mechanism.pParameter = structure != nullptr ? newStructure(env, *structure, object, converter->convert)
                                                : jLongObjectToCKULongPtr(env, object);
    if (mechanism.pParameter == nullptr) return !env->ExceptionCheck();
    mechanism.ulParameterLen = structure != nullptr ? structure->size : sizeof(CK_ULONG);
    return true;
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

bool convertMechanism(
    JNIEnv* env, jobject object, CK_MECHANISM& mechanism, const ParameterConverter*& converter)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_MECHANISM");
    const jclass typeClass = FindClass(env, "halvorn/zerlin/constants/CK_MECHANISM_TYPE");
    const jfieldID typeField =
        GetFieldID(env, cls, "mechanism", "Lhalvorn/zerlin/constants/CK_MECHANISM_TYPE;");
    const jfieldID typeValue = GetFieldID(env, typeClass, "m_value", "J");
    const jfieldID parameterField = GetFieldID(env, cls, "pParameter", "Ljava/lang/Object;");
    const jfieldID lengthField = GetFieldID(env, cls, "parameterLen", "J");
    if (typeField == nullptr || typeValue == nullptr) return false;
    if (parameterField == nullptr || lengthField == nullptr) return false;
    if (object == nullptr) return true;
    // The two references live as long as the call. The field's own class vouches for that of the type.
    const jobject type = env->GetObjectField(object, typeField);
    mechanism.mechanism = type == nullptr ? CK_UNAVAILABLE_INFORMATION
                                          : static_cast<CK_ULONG>(env->GetLongField(type, typeValue));
    const jobject parameter = env->GetObjectField(object, parameterField);
    if (parameter != nullptr && !convertParameter(env, parameter, mechanism, converter)) return false;
    mechanism.ulParameterLen = static_cast<CK_ULONG>(env->GetLongField(object, lengthField));
    return true;
}

void freeMechanismParameter(const ParameterConverter* converter, const CK_MECHANISM& mechanism)
{
    if (converter == nullptr) return wipeAndFree(mechanism.pParameter);
    freeParameter(*converter, mechanism.pParameter, mechanism.ulParameterLen);
}

CK_MECHANISM jMechanismToCKMechanism(JNIEnv* env, jobject object)
{
    CK_MECHANISM mechanism{};
    const ParameterConverter* converter = nullptr;
    convertMechanism(env, object, mechanism, converter);
    return mechanism;
}

void jMechanismParameterToCKMechanismParameter(
    JNIEnv* env, jobject object, CK_VOID_PTR* ckpParamPtr, CK_ULONG* ckpLength)
{
    assertThat(ckpParamPtr != nullptr && ckpLength != nullptr,
        "ckpParamPtr != ((void *)0) && ckpLength != ((void *)0)", "convToCK",
        "jMechanismParameterToCKMechanismParameter");
    CK_MECHANISM mechanism{};
    const ParameterConverter* converter = nullptr;
    if (object != nullptr) convertParameter(env, object, mechanism, converter);
    *ckpParamPtr = mechanism.pParameter;
    *ckpLength = mechanism.ulParameterLen;
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
    const jclass* const classes = FindClasses(env, PARAMETER_CLASS_PATHS);
    if (classes != nullptr) freeMechanismParameter(converterOf(env, classes, object), *mechanism);
}

} // namespace zerlin
