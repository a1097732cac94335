// C_GetOperationState: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetOperationState(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pOperationState, jobject pulOperationStateLen)
{
    return callCryptoki(
        env, C_GetOperationState, Session{hSession}, StateOutput{pOperationState, pulOperationStateLen});
}
