// C_SeedRandom: PKCS#11 v2.20, 11.15.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SeedRandom(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSeed, jlong ulSeedLen)
{
    return callCryptoki(env, C_SeedRandom, Session{hSession}, Seed{pSeed, ulSeedLen});
}
