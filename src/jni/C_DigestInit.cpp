// C_DigestInit: PKCS#11 v2.20, 11.10.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_DigestInit $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1DigestInit(
    JNIEnv* env, jclass, jobject hSession, jobject pMechanism)
{
    if (pMechanism == nullptr) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    Mechanism mechanism(env, pMechanism);
    if (mechanism.failed) return nullptr;
    return answer(env, C_DigestInit(session, &mechanism.native));
}
