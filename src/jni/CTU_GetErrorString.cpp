// CTU_GetErrorString: the name of a return value.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetErrorString(
    JNIEnv* env, jclass, jobject value, jbyteArray pName, jobject pulNameLen)
{
    return nameOfValue(env, jRVToCKRV, strError, value, pName, pulNameLen);
}
