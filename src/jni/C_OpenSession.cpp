// C_OpenSession: PKCS#11 v2.20, 11.6.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1OpenSession(
    JNIEnv* env, jclass, jlong slotID, jlong flags, jobject pApplication, jobject Notify, jobject phSession)
{
    return callCryptoki(env, C_OpenSession, Slot{slotID}, Flags{flags}, Pointer{pApplication},
        NotifyPointer{Notify}, NewSession{phSession});
}
