// What the natives that make one key share.
#pragma once

#include "jni/frame.h"

namespace zerlin {

// The new key's handle into the caller's object, then what the mechanism has returned into its parameter.
inline void writeKey(JNIEnv* env, jclass handleClass, jobject phKey, CK_OBJECT_HANDLE key, jobject pMechanism,
    const Mechanism& mechanism)
{
    SetLongField(env, handleClass, phKey, "m_value", key);
    if (env->ExceptionCheck()) return;
    CopyCKMechanismToJMechanism(env, &mechanism.native, pMechanism);
}

} // namespace zerlin
