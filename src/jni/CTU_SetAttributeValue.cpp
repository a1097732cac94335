// CTU_SetAttributeValue: one attribute of an object from a value object.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/frame.h"
#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobject type, jobject value, jlong ulValueLen)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    if (hasFailed(env, object)) return nullptr;
    const CK_ATTRIBUTE_TYPE attributeType = jAttributeTypeToCKAttributeType(env, type);
    if (hasFailed(env, attributeType)) return nullptr;
    const BareValue native(env, value);
    if (env->ExceptionCheck()) return nullptr;
    return answer(env, SetAttr(session, object, attributeType, native.data, toCK(ulValueLen)));
}
