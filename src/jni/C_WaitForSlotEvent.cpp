// C_WaitForSlotEvent: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1WaitForSlotEvent(
    JNIEnv* env, jclass, jlong flags, jobject pSlot, jobject pReserved)
{
    return callCryptoki(env, C_WaitForSlotEvent, Flags{flags}, NewLong{pSlot}, Pointer{pReserved});
}
