// What the JVM calls when it loads the library and when the Java classes' loader is gone.
#include <atomic>

#include <jni.h>

#include "cryptoki/library.h"
#include "helper/jutil.h"
#include "jni/mutexCallbacks.h"
#include "util/fileVersion.h"

FILE_VERSION("1.1.1.3");

namespace {

// The JVM takes two names of one file for two libraries, but the system maps the file once: what is
// remembered of the first class loader would be used for the second one.
std::atomic<bool> isLoaded;
constexpr char IS_LOADED[] =
    "this libzerlin.so is already loaded, under another name of the same file, and "
    "serves one class loader at a time: load zerlin.jar in one class loader that all "
    "its users share";

JNIEnv* environment(JavaVM* vm)
{
    void* env = nullptr;
    return vm->GetEnv(&env, JNI_VERSION_1_2) == JNI_OK ? static_cast<JNIEnv*>(env) : nullptr;
}

} // namespace

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*)
{
    JNIEnv* const env = environment(vm);
    if (isLoaded.exchange(true)) {
        if (env != nullptr) zerlin::throwUnsatisfiedLink(env, IS_LOADED);
        return JNI_ERR; // the JVM calls no JNI_OnUnload for this load
    }
    const std::string problem = zerlin::loadLibrary();
    if (!problem.empty()) {
        if (env != nullptr) {
            zerlin::throwUnsatisfiedLink(env, problem.c_str());
            zerlin::forgetLookups(env);
        }
        isLoaded = false;
        return JNI_ERR;
    }
    if (env != nullptr) zerlin::preloadCallbackClasses(env);
    return JNI_VERSION_1_2;
}

JNIEXPORT void JNICALL JNI_OnUnload(JavaVM* vm, void*)
{
    JNIEnv* const env = environment(vm);
    if (env == nullptr) return;
    zerlin::releaseInitArgs(env);
    zerlin::forgetLookups(env);
    zerlin::unloadLibrary();
    isLoaded = false; // last: the next JNI_OnLoad may come before the library is unmapped
}
