// C_GetTokenInfo: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetTokenInfo(
    JNIEnv* env, jclass, jlong slotID, jobject pInfo)
{
    if (pInfo == nullptr) return argumentsBad(env);
    CK_TOKEN_INFO info{};
    const CK_RV rv = C_GetTokenInfo(toCK(slotID), &info);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !CopyCKTokenInfoToJTokenInfo(env, &info, pInfo)) return nullptr;
    return ckRVToJRV(env, rv);
}
