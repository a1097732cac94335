// CTU_GetKeyTypeValue: a key type by its name.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetKeyTypeValue(
    JNIEnv* env, jclass, jbyteArray name)
{
    return valueOfName(env, valKeyType, ckKeyTypeToJKeyType, name);
}
