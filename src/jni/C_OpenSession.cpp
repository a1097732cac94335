// C_OpenSession: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1OpenSession(
    JNIEnv* env, jclass, jlong slotID, jlong flags, jobject pApplication, jobject Notify, jobject phSession)
{
    if (FindClass(env, java::SESSION_HANDLE.cls) == nullptr) return nullptr;
    if (phSession == nullptr) return argumentsBad(env);

    CK_SESSION_HANDLE session = 0;
    const CK_RV rv =
        C_OpenSession(toCK(slotID), toCK(flags), pApplication, reinterpret_cast<CK_NOTIFY>(Notify), &session);
    if (hasRaised(env)) return nullptr;
    if (rv == CKR_OK && !SetLongField(env, phSession, java::SESSION_HANDLE.m_value, session)) return nullptr;
    return ckRVToJRV(env, rv);
}
