// CTU_GetSessionStateString: the name of a session state.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetSessionStateString(
    JNIEnv* env, jclass, jobject value, jbyteArray pName, jobject pulNameLen)
{
    return nameOfValue(env, jStateToCKState, strSesState, value, pName, pulNameLen);
}
