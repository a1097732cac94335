// What the JVM calls when it loads the library and when the Java classes' loader is gone.
#include <atomic>
#include <new>
#include <string>
#include <string_view>

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

jbyteArray newBytes(JNIEnv* env, std::string_view text)
{
    const auto length = static_cast<jsize>(text.size());
    const jbyteArray bytes = env->NewByteArray(length);
    if (bytes == nullptr) return nullptr;
    env->SetByteArrayRegion(bytes, 0, length, reinterpret_cast<const jbyte*>(text.data()));
    return env->ExceptionCheck() ? nullptr : bytes;
}

// Whether the pending exception says that a class or method does not exist; then it is cleared.
bool isMissing(JNIEnv* env)
{
    const jthrowable thrown = env->ExceptionOccurred();
    env->ExceptionClear();
    const jclass linkageError = env->FindClass("java/lang/LinkageError");
    if (linkageError == nullptr) return false;
    if (env->IsInstanceOf(thrown, linkageError)) return true;
    env->Throw(thrown);
    return false;
}

// Asks the Java class whether this library is its version's, and which Cryptoki library the program wants.
// Classes of an older version have no such method: nothing is chosen then. False when an exception is
// pending.
bool askJava(JNIEnv* env, std::string& chosen)
{
    const jclass nativeLibrary = env->FindClass("halvorn/zerlin/NativeLibrary");
    const jmethodID onLoad =
        nativeLibrary == nullptr ? nullptr : env->GetStaticMethodID(nativeLibrary, "onLoad", "([B[B)[B");
    if (onLoad == nullptr) return isMissing(env);
    const jbyteArray version = newBytes(env, ZERLIN_VERSION);
    const jbyteArray file = version == nullptr ? nullptr : newBytes(env, zerlin::ownFile());
    if (file == nullptr) return false;
    const auto path =
        static_cast<jbyteArray>(env->CallStaticObjectMethod(nativeLibrary, onLoad, version, file));
    if (env->ExceptionCheck()) return false;
    if (path == nullptr) return true;
    chosen.resize(static_cast<std::size_t>(env->GetArrayLength(path)));
    env->GetByteArrayRegion(
        path, 0, static_cast<jsize>(chosen.size()), reinterpret_cast<jbyte*>(chosen.data()));
    return !env->ExceptionCheck();
}

// False when it cannot be used; an exception says why.
bool load(JNIEnv* env)
try {
    std::string chosen;
    if (env != nullptr && !askJava(env, chosen)) return false;
    const std::string problem = zerlin::loadLibrary(chosen);
    if (!problem.empty() && env != nullptr) zerlin::throwUnsatisfiedLink(env, problem.c_str());
    return problem.empty();
} catch (const std::bad_alloc&) {
    zerlin::throwOutOfMemory(env); // only askJava throws it, so there is an environment
    return false;
}

} // namespace

JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*)
{
    JNIEnv* const env = environment(vm);
    if (isLoaded.exchange(true)) {
        if (env != nullptr) zerlin::throwUnsatisfiedLink(env, IS_LOADED);
        return JNI_ERR; // the JVM calls no JNI_OnUnload for this load
    }
    if (!load(env)) {
        if (env != nullptr) zerlin::forgetLookups(env);
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
