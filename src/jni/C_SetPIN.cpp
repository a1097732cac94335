// C_SetPIN: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SetPIN(JNIEnv* env, jclass, jobject hSession,
    jbyteArray pOldPin, jlong ulOldLen, jbyteArray pNewPin, jlong ulNewLen)
{
    if (isMissing(pOldPin, ulOldLen)) return argumentsBad(env);
    if (isMissing(pNewPin, ulNewLen)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput oldPin(env, memory, pOldPin);
    if (oldPin.failed) return nullptr;
    const ByteInput newPin(env, memory, pNewPin);
    if (newPin.failed) return nullptr;
    return answer(env, C_SetPIN(session, oldPin.data, toCK(ulOldLen), newPin.data, toCK(ulNewLen)));
}
