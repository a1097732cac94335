// C_Login: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Login(
    JNIEnv* env, jclass, jobject hSession, jobject userType, jbyteArray pPin, jlong ulPinLen)
{
    if (isMissing(pPin, ulPinLen)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    const CK_USER_TYPE user = jUserTypeToCKUserType(env, userType);
    if (hasFailed(env, user)) return nullptr;
    CallMemory memory;
    const ByteInput pin(env, memory, pPin);
    if (pin.failed) return nullptr;
    return answer(env, C_Login(session, user, pin.data, toCK(ulPinLen)));
}
