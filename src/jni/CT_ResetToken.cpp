// CT_ResetToken: the vendor's reset of the token behind a session.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_CT_1ResetToken(
    JNIEnv* env, jclass, jobject hSession, jbyteArray pPin, jlong ulPinLen, jbyteArray pLabel)
{
    return callCryptoki(env, CT_ResetToken, Session{hSession}, UncheckedPin{pPin, ulPinLen}, Label{pLabel});
}
