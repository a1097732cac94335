// C_DigestKey: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestKey(
    JNIEnv* env, jclass, jobject hSession, jobject hKey)
{
    return callCryptoki(env, C_DigestKey, Session{hSession}, Key{hKey});
}
