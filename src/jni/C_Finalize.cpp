// C_Finalize: PKCS#11 v2.20, 11.4.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "jni/mutexCallbacks.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Finalize(JNIEnv* env, jclass, jobject pReserved)
{
    const CK_RV rv = C_Finalize(pReserved);
    if (rv == CKR_OK) releaseInitArgs(env);
    return result(env, rv);
}
