// C_SeedRandom: PKCS#11 v2.20, 11.15.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/shapes.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SeedRandom(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pSeed, jlong ulSeedLen)
{
    if (isMissing(pSeed, ulSeedLen)) return argumentsBad(env);
    return dataIn(env, C_SeedRandom, Content::Secret, hSession, pSeed, ulSeedLen);
}
