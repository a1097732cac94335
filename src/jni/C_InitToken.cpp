// C_InitToken: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1InitToken(
    JNIEnv* env, jclass, jlong slotID, jbyteArray pPin, jlong ulPinLen, jbyteArray pLabel)
{
    if (isMissing(pPin, ulPinLen)) return argumentsBad(env);
    CallMemory memory;
    const ByteInput pin(env, memory, pPin);
    if (pin.failed) return nullptr;
    const ByteInput label(env, memory, pLabel);
    if (label.failed) return nullptr;
    return answer(env, C_InitToken(toCK(slotID), pin.data, toCK(ulPinLen), label.data));
}
