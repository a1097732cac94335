// C_Initialize: PKCS#11 v2.20, 11.4.
#include "halvorn_zerlin_Cryptoki.h"
#include "jni/frame.h"
#include "jni/mutexCallbacks.h"
#include "util/fileVersion.h"

using namespace zerlin;

FILE_VERSION("1.1.1.3");

namespace {

bool isInitArgs(JNIEnv* env, jobject object)
{
    const jclass cls = FindClass(env, java::INITIALIZE_ARGS.cls);
    return cls != nullptr && env->IsInstanceOf(object, cls);
}

} // namespace

JNIEXPORT jobject JNICALL Java_halvorn_zerlin_Cryptoki_C_1Initialize(JNIEnv* env, jclass, jobject pInitArgs)
{
    CK_C_INITIALIZE_ARGS* adapter = nullptr;
    // While callbacks are registered, further calls pass no arguments: wanted.
    if (pInitArgs != nullptr && !hasInitArgs()) {
        if (!isInitArgs(env, pInitArgs)) return result(env, CKR_ARGUMENTS_BAD);
        adapter = makeInitArgsAdapter(env, pInitArgs);
        if (env->ExceptionCheck()) return nullptr;
    }
    const CK_RV rv = C_Initialize(adapter);
    std::free(adapter);
    return result(env, rv);
}
