// C_GetMechanismList: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetMechanismList(
    JNIEnv* env, jclass, jlong slotID, jobjectArray pMechanismList, jobject pulCount)
{
    return callCryptoki(env, C_GetMechanismList, Slot{slotID}, MechanismList{pMechanismList, pulCount});
}
