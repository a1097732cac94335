// CTU_GetMechanismTypeValue: a mechanism type by its name.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/names.h"
#include "zerlin/nametables.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/CTU_GetMechanismTypeValue $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1GetMechanismTypeValue(
    JNIEnv* env, jclass, jbyteArray name)
{
    return valueOfName(env, valMechanism, ckMechanismTypeToJMechanismType, name);
}
