// CT_InitToken: the vendor's initialisation of a token through a session.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_CT_1InitToken(
    JNIEnv* env, jclass, jobject hSession, jlong ulValue, jbyteArray pPin, jlong ulPinLen, jbyteArray pLabel)
{
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    CallMemory memory;
    const ByteInput pin(env, memory, pPin);
    if (pin.failed) return nullptr;
    const ByteInput label(env, memory, pLabel);
    if (label.failed) return nullptr;
    return answer(env, CT_InitToken(session, toCK(ulValue), pin.data, toCK(ulPinLen), label.data));
}
