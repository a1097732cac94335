// CTU_GetKeyTypeString: the name of a key type.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetKeyTypeString(
    JNIEnv* env, jclass, jobject value, jbyteArray pName, jobject pulNameLen)
{
    return nameOfValue(env, jKeyTypeToCKKeyType, strKeyType, value, pName, pulNameLen);
}
