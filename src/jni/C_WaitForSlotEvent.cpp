// C_WaitForSlotEvent: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_WaitForSlotEvent $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1WaitForSlotEvent(
    JNIEnv* env, jclass, jlong flags, jobject pSlot, jobject pReserved)
{
    const jclass longRefClass = FindClass(env, "halvorn/zerlin/LongRef");
    if (longRefClass == nullptr) return nullptr;
    if (pSlot == nullptr) return argumentsBad(env);

    CK_SLOT_ID slot = 0;
    const CK_RV rv = C_WaitForSlotEvent(toCK(flags), &slot, pReserved);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, longRefClass, pSlot, "value", slot)) return nullptr;
    return ckRVToJRV(env, rv);
}
