// C_GetSlotInfo: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetSlotInfo(
    JNIEnv* env, jclass, jlong slotID, jobject pInfo)
{
    return callCryptoki(env, C_GetSlotInfo, Slot{slotID}, SlotInfo{pInfo});
}
