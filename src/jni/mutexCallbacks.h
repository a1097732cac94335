// The Java locking callbacks: what is kept of the caller's CK_C_INITIALIZE_ARGS between C_Initialize and
// C_Finalize, and the native functions through which the Cryptoki library calls them.
#pragma once

#include <atomic>

#include <jni.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// The initialisation in force: the Java arguments, from which every trampoline fetches its callback, and a
// copy of the native ones that only marks that callbacks are registered.
extern std::atomic<jobject> gInitArgsObject;
extern std::atomic<CK_C_INITIALIZE_ARGS*> gInitArgs;

// Whether an initialisation with callbacks is in force, or half of one was left by a failure.
inline bool hasInitArgs()
{
    return gInitArgsObject.load(std::memory_order_relaxed) != nullptr ||
           gInitArgs.load(std::memory_order_relaxed) != nullptr;
}

// The native arguments for the Java ones, from malloc, or null with an exception pending (or for a null
// argument). Registers the callbacks when the object has any. The caller frees the result.
CK_C_INITIALIZE_ARGS* makeInitArgsAdapter(JNIEnv* env, jobject jInitArgs);

// Ends the registration, if there is one. Allowed while an exception is pending.
void releaseInitArgs(JNIEnv* env);

// Looks up the classes of the callbacks with the class loader of the Java classes: a thread that enters the
// JVM through a callback would ask the system's loader. Leaves no exception pending.
void preloadCallbackClasses(JNIEnv* env);

// What the Cryptoki library calls, on any thread. A mutex is a global reference to the object that the Java
// CreateMutex returned.
CK_RV callJCreateMutex(CK_VOID_PTR_PTR ppMutex);
CK_RV callJDestroyMutex(CK_VOID_PTR mutex);
CK_RV callJLockMutex(CK_VOID_PTR mutex);
CK_RV callJUnlockMutex(CK_VOID_PTR mutex);

} // namespace zerlin
