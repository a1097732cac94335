// C_GetAttributeValue: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobjectArray pTemplate, jlong ulCount)
{
    return callCryptoki(
        env, C_GetAttributeValue, Session{hSession}, Object{hObject}, ServedAttributes{pTemplate, ulCount});
}
