// C_Finalize: PKCS#11 v2.20, 11.4.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "jni/mutexCallbacks.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_Finalize $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Finalize(JNIEnv* env, jclass, jobject pReserved)
{
    const CK_RV rv = C_Finalize(pReserved);
    if (rv == CKR_OK) releaseInitArgs(env);
    return result(env, rv);
}
