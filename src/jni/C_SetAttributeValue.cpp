// C_SetAttributeValue: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobjectArray pTemplate, jlong ulCount)
{
    return callCryptoki(env, C_SetAttributeValue, Session{hSession}, UncheckedLastObject{hObject},
        Attributes{pTemplate, ulCount});
}
