// C_GetSlotList: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetSlotList(
    JNIEnv* env, jclass, jboolean tokenPresent, jlongArray pSlotList, jobject pulCount)
{
    return callCryptoki(env, C_GetSlotList, Boolean{tokenPresent}, SlotList{pSlotList, pulCount});
}
