// The Java locking callbacks: what is kept of the caller's CK_C_INITIALIZE_ARGS between C_Initialize and
// C_Finalize, and the native functions through which the Cryptoki library calls them.
#pragma once

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// Whether an initialisation with callbacks is in force, or half of one was left by a failure.
bool hasInitArgs();

// The native arguments for the Java ones, from malloc, or null with an exception pending (or for a null
// argument). Registers the callbacks when the object has any. The caller frees the result.
CK_C_INITIALIZE_ARGS* makeInitArgsAdapter(JNIEnv* env, jobject jInitArgs);

// Ends the registration, if there is one. Allowed while an exception is pending.
void releaseInitArgs(JNIEnv* env);

// Looks up the classes of the callbacks while the class loader of the Java classes is at hand: a thread that
// comes to the JVM through a callback would ask the system's loader. Leaves no exception pending.
void preloadCallbackClasses(JNIEnv* env);

// What the Cryptoki library calls, on any thread. A mutex is a global reference to the object that the Java
// CreateMutex returned.
CK_RV callJCreateMutex(CK_VOID_PTR_PTR ppMutex);
CK_RV callJDestroyMutex(CK_VOID_PTR mutex);
CK_RV callJLockMutex(CK_VOID_PTR mutex);
CK_RV callJUnlockMutex(CK_VOID_PTR mutex);

} // namespace zerlin
