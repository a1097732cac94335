// What the natives that make one key share.
#pragma once

#include "jni/frame.h"

namespace zerlin {

// The new key's handle into the caller's object, then what the mechanism has returned into its parameter.
// False with an exception pending.
inline bool writeKey(
    JNIEnv* env, jobject phKey, CK_OBJECT_HANDLE key, jobject pMechanism, const Mechanism& mechanism)
{
    if (!SetLongField(env, phKey, java::OBJECT_HANDLE.m_value, key)) return false;
    if (mechanism.native.pParameter == nullptr) return true;
    CopyCKMechanismToJMechanism(env, &mechanism.native, pMechanism);
    return !env->ExceptionCheck();
}

} // namespace zerlin
