// CTU_GetAttributeTypeString: the name of an attribute type.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetAttributeTypeString(
    JNIEnv* env, jclass, jobject value, jbyteArray pName, jobject pulNameLen)
{
    return nameOfValue(env, jAttributeTypeToCKAttributeType, strAttribute, value, pName, pulNameLen);
}
