// C_GetMechanismInfo: PKCS#11 v2.20, 11.5.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetMechanismInfo(
    JNIEnv* env, jclass, jlong slotID, jobject type, jobject pInfo)
{
    if (pInfo == nullptr) return argumentsBad(env);
    const CK_MECHANISM_TYPE mechanism = jMechanismTypeToCKMechanismType(env, type);
    if (env->ExceptionCheck()) return nullptr;

    CK_MECHANISM_INFO info{};
    const CK_RV rv = C_GetMechanismInfo(toCK(slotID), mechanism, &info);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !CopyCKMechanismInfoToJMechanismInfo(env, &info, pInfo)) return nullptr;
    return ckRVToJRV(env, rv);
}
