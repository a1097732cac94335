// What a key-producing mechanism has returned through its parameter, back into the caller's parameter object.
#include "helper/copyToJava.h"
#include "helper/elements.h"
#include "helper/jutil.h"
#include "zerlin/mech.h"

namespace zerlin {
namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/helper/copyToJava_mechanisms $\" \"$Revision: 1.1.1.2 $\"";

constexpr CK_ULONG PBE_IV_LENGTH = 8;

// The class, when the parameter object is of it: only then has the native parameter that class's structure.
// Null otherwise, with an exception pending when the lookup raised.
jclass classOfParameter(JNIEnv* env, jobject parameter, Literal path)
{
    const jclass cls = FindClass(env, path);
    return cls != nullptr && env->IsInstanceOf(parameter, cls) ? cls : nullptr;
}

// Fills the byte[] that a field of the object holds.
void fillBytes(JNIEnv* env, jclass cls, jobject object, Literal field, const CK_BYTE* source, CK_ULONG length)
{
    if (env->ExceptionCheck()) return;
    const LocalRef<jbyteArray> array(env, GetByteArrayField(env, cls, object, field));
    if (!env->ExceptionCheck()) CopyCKByteArrayToJByteArray(env, source, length, array);
}

void writePbe(JNIEnv* env, const void* data, jobject parameter)
{
    const jclass cls = classOfParameter(env, parameter, "halvorn/zerlin/params/CK_PBE_PARAMS");
    if (cls == nullptr) return;
    const auto* const params = static_cast<const CK_PBE_PARAMS*>(data);
    fillBytes(env, cls, parameter, "pInitVector", params->pInitVector, PBE_IV_LENGTH);
}

// The value of the CK_OBJECT_HANDLE that a field of the object holds.
void writeHandle(JNIEnv* env, jclass cls, jobject object, Literal field, CK_OBJECT_HANDLE value)
{
    if (env->ExceptionCheck()) return;
    const LocalRef<jobject> handle(
        env, GetObjectField(env, cls, object, field, "Lhalvorn/zerlin/CK_OBJECT_HANDLE;"));
    if (env->ExceptionCheck()) return;
    SetLongField(env, FindClass(env, "halvorn/zerlin/CK_OBJECT_HANDLE"), handle, "m_value", value);
}

void writeKeyMaterial(JNIEnv* env, const void* data, jobject parameter)
{
    const jclass cls = classOfParameter(env, parameter, "halvorn/zerlin/params/CK_SSL3_KEY_MAT_PARAMS");
    if (cls == nullptr) return;
    const CK_SSL3_KEY_MAT_OUT* const out =
        static_cast<const CK_SSL3_KEY_MAT_PARAMS*>(data)->pReturnedKeyMaterial;
    if (out == nullptr) return;
    const jclass outClass = FindClass(env, "halvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT");
    if (outClass == nullptr) return;
    const LocalRef<jobject> jOut(env, GetObjectField(env, cls, parameter, "pReturnedKeyMaterial",
                                          "Lhalvorn/zerlin/params/CK_SSL3_KEY_MAT_OUT;"));
    if (env->ExceptionCheck()) return;
    writeHandle(env, outClass, jOut, "hClientMacSecret", out->hClientMacSecret);
    writeHandle(env, outClass, jOut, "hServerMacSecret", out->hServerMacSecret);
    writeHandle(env, outClass, jOut, "hClientKey", out->hClientKey);
    writeHandle(env, outClass, jOut, "hServerKey", out->hServerKey);
    if (env->ExceptionCheck()) return;
    const CK_ULONG length = bytesOfBits(GetLongField(env, cls, parameter, "IVSizeInBits"));
    fillBytes(env, outClass, jOut, "pIVClient", out->pIVClient, length);
    fillBytes(env, outClass, jOut, "pIVServer", out->pIVServer, length);
}

void writeMasterKeyVersion(JNIEnv* env, const void* data, jobject parameter, CK_ULONG parameterLen)
{
    const jclass cls =
        classOfParameter(env, parameter, "halvorn/zerlin/params/CK_SSL3_MASTER_KEY_DERIVE_PARAMS");
    if (cls == nullptr || parameterLen < sizeof(CK_VERSION)) return;
    const CK_VERSION* const version = static_cast<const CK_SSL3_MASTER_KEY_DERIVE_PARAMS*>(data)->pVersion;
    if (version == nullptr) return;
    const LocalRef<jobject> jVersion(
        env, GetObjectField(env, cls, parameter, "pVersion", "Lhalvorn/zerlin/CK_VERSION;"));
    if (!env->ExceptionCheck()) CopyCKVersionToJVersion(env, version, jVersion);
}

void writeWrapSet(JNIEnv* env, const void* data, jobject parameter)
{
    const jclass cls = classOfParameter(env, parameter, "halvorn/zerlin/params/CK_KEY_WRAP_SET_OAEP_PARAMS");
    if (cls == nullptr) return;
    const auto* const params = static_cast<const CK_KEY_WRAP_SET_OAEP_PARAMS*>(data);
    SetLongField(env, cls, parameter, "XLen", params->XLen);
    fillBytes(env, cls, parameter, "pX", params->pX, params->XLen);
}

void writeCertificates(JNIEnv* env, const void* data, jobject parameter)
{
    const jclass cls = classOfParameter(env, parameter, "halvorn/zerlin/params/CK_PKCS12_PBE_IMPORT_PARAMS");
    if (cls == nullptr) return;
    const auto* const params = static_cast<const CK_PKCS12_PBE_IMPORT_PARAMS*>(data);
    if (params->hCertCount == nullptr) return;
    const LocalRef<jobject> count(
        env, GetObjectField(env, cls, parameter, "hCertCount", "Lhalvorn/zerlin/LongRef;"));
    if (env->ExceptionCheck()) return;
    SetLongField(env, FindClass(env, "halvorn/zerlin/LongRef"), count, "value", *params->hCertCount);
    if (env->ExceptionCheck()) return;
    const LocalRef<jobjectArray> handles(
        env, GetObjectArrayField(env, cls, parameter, "hCert", "[Lhalvorn/zerlin/CK_OBJECT_HANDLE;"));
    if (handles == nullptr || params->hCert == nullptr) return;
    const jsize length = elementsToCopy(env, handles, *params->hCertCount);
    for (jsize i = 0; i < length; ++i) {
        const LocalRef<jobject> handle(env, env->GetObjectArrayElement(handles, i));
        if (env->ExceptionCheck()) return;
        CopyCKObjectPtrToJObjectPrimitive(env, &params->hCert[i], sizeof(CK_OBJECT_HANDLE), handle);
        if (env->ExceptionCheck()) return;
    }
}

} // namespace

void CopyCKMechanismToJMechanism(JNIEnv* env, const CK_MECHANISM* source, jobject target)
{
    const jclass cls = FindClass(env, "halvorn/zerlin/CK_MECHANISM");
    if (cls == nullptr || source == nullptr || target == nullptr) return;
    if (source->pParameter == nullptr || !env->IsInstanceOf(target, cls)) return;
    const LocalRef<jobject> parameter(
        env, GetObjectField(env, cls, target, "pParameter", "Ljava/lang/Object;"));
    if (env->ExceptionCheck()) return;
    const CK_ULONG parameterLen = GetLongField(env, cls, target, "parameterLen");
    if (env->ExceptionCheck() || parameter == nullptr) return;

    if (isPbeMech(source->mechanism)) writePbe(env, source->pParameter, parameter);
    if (env->ExceptionCheck()) return;
    switch (source->mechanism) {
    case CKM_SSL3_KEY_AND_MAC_DERIVE:
        return writeKeyMaterial(env, source->pParameter, parameter);
    case CKM_SSL3_MASTER_KEY_DERIVE:
        return writeMasterKeyVersion(env, source->pParameter, parameter, parameterLen);
    case CKM_KEY_WRAP_SET_OAEP:
        return writeWrapSet(env, source->pParameter, parameter);
    case CKM_PKCS12_PBE_IMPORT:
        return writeCertificates(env, source->pParameter, parameter);
    default:
        return;
    }
}

} // namespace zerlin
