// CT_CopyObject: the vendor's copy of an object between two sessions.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_CT_1CopyObject(JNIEnv* env, jclass, jobject hSession1,
    jobject hSession2, jobject hObject, jobjectArray pTemplate, jlong ulCount, jobject phNewObject)
{
    return callCryptoki(env, CT_CopyObject, Session{hSession1}, Session{hSession2}, Object{hObject},
        Attributes{pTemplate, ulCount}, NewObject{phNewObject});
}
