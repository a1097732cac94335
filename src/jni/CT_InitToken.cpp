// CT_InitToken: the vendor's initialisation of a token through a session.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_CT_1InitToken(
    JNIEnv* env, jclass, jobject hSession, jlong ulValue, jbyteArray pPin, jlong ulPinLen, jbyteArray pLabel)
{
    return callCryptoki(
        env, CT_InitToken, Session{hSession}, Number{ulValue}, UncheckedPin{pPin, ulPinLen}, Label{pLabel});
}
