// C_CreateObject: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CreateObject(
    JNIEnv* env, jclass, jobject hSession, jobjectArray pTemplate, jlong ulCount, jobject phObject)
{
    return callCryptoki(
        env, C_CreateObject, Session{hSession}, Attributes{pTemplate, ulCount}, NewObject{phObject});
}
