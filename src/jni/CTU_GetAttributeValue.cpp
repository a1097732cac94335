// CTU_GetAttributeValue: one attribute of an object into a value object.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/frame.h"
#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeValue(JNIEnv* env, jclass,
    jobject hSession, jobject hObject, jobject type, jobject value, jlong ulValueLen, jobject pulValueLen)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pulValueLen == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    const CK_ATTRIBUTE_TYPE attributeType = jAttributeTypeToCKAttributeType(env, type);
    if (hasFailed(env, attributeType)) return nullptr;
    const BareValue native(env, value);
    if (env->ExceptionCheck()) return nullptr;

    CK_ULONG length = 0;
    const CK_RV rv = GetAttr(session, object, attributeType, native.data, toCK(ulValueLen), &length);
    if (hasRaised(env)) return nullptr;
    if (rv != CKR_OK) return ckRVToJRV(env, rv);
    SetLongField(env, pulValueLen, java::LONG_REF.value, length);
    if (env->ExceptionCheck()) return nullptr;
    CopyCKObjectPtrToJObjectPrimitive(env, native.data, length, value);
    return result(env, rv);
}
