// C_CloseAllSessions: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1CloseAllSessions(JNIEnv* env, jclass, jlong slotID)
{
    return callCryptoki(env, C_CloseAllSessions, Slot{slotID});
}
