// CTU_SetAttributeValue: one attribute of an object from a value object.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/call.h"
#include "zerlin/attrutil.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1SetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobject type, jobject value, jlong ulValueLen)
{
    return callCryptoki(
        env, SetAttr, Session{hSession}, Object{hObject}, AttributeType{type}, Value{value, ulValueLen});
}
