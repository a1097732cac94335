// C_GetInfo: PKCS#11 v2.20, 11.4.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetInfo(JNIEnv* env, jclass, jobject pInfo)
{
    return callCryptoki(env, C_GetInfo, LibraryInfo{pInfo});
}
