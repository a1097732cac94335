// CTU_FindObject: the first object of a class and label.
#include "halvorn_zerlin_CTUtil.h"
#include "jni/call.h"
#include "zerlin/tokenobject.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_CTUtil_CTU_1FindObject(
    JNIEnv* env, jclass, jobject hSession, jobject objectClass, jbyteArray label, jobject phObject)
{
    return callCryptoki(env, CT_OpenObject, Session{hSession}, ObjectClass{objectClass}, LabelText{label},
        NewObject{phObject});
}
