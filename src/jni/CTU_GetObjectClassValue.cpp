// CTU_GetObjectClassValue: an object class by its name.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"
#include "zerlin/nametables.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/CTU_GetObjectClassValue $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetObjectClassValue(
    JNIEnv* env, jclass, jbyteArray name)
{
    return valueOfName(env, valObjClass, ckObjectClassToJObjectClass, name);
}
