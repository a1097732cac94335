// C_InitPIN: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1InitPIN(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPin, jlong ulPinLen)
{
    if (isMissing(pPin, ulPinLen)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput pin(env, memory, pPin);
    if (pin.failed) return nullptr;
    return answer(env, C_InitPIN(session, pin.data, toCK(ulPinLen)));
}
