// getMechanismParameterSize of the class CK_MECHANISM: what parameterLen must be for a parameter object.
#include "halvorn_zerlin_CK_MECHANISM.h"
#include "helper/convToCK.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.3");

JNIEXPORT jlong JNICALL Java_halvorn_zerlin_CK_1MECHANISM_getMechanismParameterSize(
    JNIEnv* env, jclass, jobject parameter)
{
    return zerlin::parameterSize(env, parameter);
}
