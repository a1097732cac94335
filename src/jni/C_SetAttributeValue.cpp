// C_SetAttributeValue: PKCS#11 v2.20, 11.7.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"

using namespace zerlin;

namespace {

[[gnu::used]] const char* const fileVersion =
    "FileVersion: \"$RCSfile: prod/zerlin/src/jni/C_SetAttributeValue $\" \"$Revision: 1.1.1.3 $\"";

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1SetAttributeValue(
    JNIEnv* env, jclass, jobject hSession, jobject hObject, jobjectArray pTemplate, jlong ulCount)
{
    if (isMissing(pTemplate, ulCount)) return argumentsBad(env);
    const CK_SESSION_HANDLE session = jSessionHandleToCKSessionHandle(env, hSession);
    if (hasFailed(env, session)) return nullptr;
    // The template before the object, and no look at what the object's conversion raised: wanted.
    const Template attributes(env, pTemplate);
    if (attributes.failed) return nullptr;
    const CK_OBJECT_HANDLE object = jObjectHandleToCKObjectHandle(env, hObject);
    return result(env, C_SetAttributeValue(session, object, attributes.attributes, toCK(ulCount)));
}
