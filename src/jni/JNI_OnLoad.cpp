// What the JVM calls when it loads the library and when the Java classes' loader is gone.
#include <jni.h>

#include "helper/jutil.h"
#include "jni/mutexCallbacks.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.3");

namespace {

JNIEnv* environment(JavaVM* vm)
{
    void* env = nullptr;
    return vm->GetEnv(&env, JNI_VERSION_1_2) == JNI_OK ? static_cast<JNIEnv*>(env) : nullptr;
}

} // namespace

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*)
{
    JNIEnv* const env = environment(vm);
    if (env != nullptr) zerlin::preloadCallbackClasses(env);
    return JNI_VERSION_1_2;
}

JNIEXPORT void JNICALL JNI_OnUnload(JavaVM* vm, void*)
{
    JNIEnv* const env = environment(vm);
    if (env == nullptr) return;
    zerlin::releaseInitArgs(env);
    zerlin::forgetLookups(env);
}
