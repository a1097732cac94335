// C_GetInfo: PKCS#11 v2.20, 11.4.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1GetInfo(JNIEnv* env, jclass, jobject pInfo)
{
    if (pInfo == nullptr) return argumentsBad(env);
    CK_INFO info{};
    const CK_RV rv = C_GetInfo(&info);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK) {
        info.libraryVersion = {3, 10}; // the version of this binding, wanted
        if (!CopyCKInfoToJInfo(env, &info, pInfo)) return nullptr;
    }
    return ckRVToJRV(env, rv);
}
