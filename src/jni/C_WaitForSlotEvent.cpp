// C_WaitForSlotEvent: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1WaitForSlotEvent(
    JNIEnv* env, jclass, jlong flags, jobject pSlot, jobject pReserved)
{
    if (FindClass(env, java::LONG_REF.cls) == nullptr) return nullptr;
    if (pSlot == nullptr) return argumentsBad(env);

    CK_SLOT_ID slot = 0;
    const CK_RV rv = C_WaitForSlotEvent(toCK(flags), &slot, pReserved);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, pSlot, java::LONG_REF.value, slot)) return nullptr;
    return ckRVToJRV(env, rv);
}
