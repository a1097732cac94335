// C_WrapKey: PKCS#11 v2.20, 11.14.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/call.h"

using namespace zerlin;
FILE_VERSION("1.1.1.3");

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1WrapKey(JNIEnv* env, jclass, jobject hSession,
    jobject pMechanism, jobject hWrappingKey, jobject hKey, jbyteArray pWrappedKey, jobject pulWrappedKeyLen)
{
    return callCryptoki(env, C_WrapKey, Session{hSession}, Mechanism{pMechanism}, WrappingKey{hWrappingKey},
        Key{hKey}, CipherOutput{pWrappedKey, pulWrappedKeyLen});
}
