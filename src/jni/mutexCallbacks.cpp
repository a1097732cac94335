// Registers the Java locking callbacks and calls them from whatever thread the Cryptoki library runs on.
#include "jni/mutexCallbacks.h"

#include <atomic>
#include <cstdlib>
#include <mutex>

#include <dlfcn.h>

#include "helper/javaNames.h"
#include "util/fileVersion.h"

namespace zerlin {
FILE_VERSION("1.1.1.3");

namespace {

// A locking callback: the field that holds it, and the names of its interface.
struct Callback {
    JavaField& field;
    java::Callback& names;
};

constexpr Callback CREATE = {java::INITIALIZE_ARGS.createMutex, java::CREATE_MUTEX};
constexpr Callback DESTROY = {java::INITIALIZE_ARGS.destroyMutex, java::DESTROY_MUTEX};
constexpr Callback LOCK = {java::INITIALIZE_ARGS.lockMutex, java::LOCK_MUTEX};
constexpr Callback UNLOCK = {java::INITIALIZE_ARGS.unlockMutex, java::UNLOCK_MUTEX};

CK_C_INITIALIZE_ARGS* newInitArgs(JNIEnv* env)
{
    void* const memory = std::calloc(1, sizeof(CK_C_INITIALIZE_ARGS));
    if (memory == nullptr) throwOutOfMemory(env);
    return static_cast<CK_C_INITIALIZE_ARGS*>(memory);
}

// Held while the registered object is taken or replaced: a thread may finalise while others lock.
constinit std::mutex registration;

// Replaces the registered object, of which object is a global reference or null.
void setRegisteredObject(JNIEnv* env, jobject object)
{
    const std::lock_guard lock(registration);
    const jobject previous = gInitArgsObject.exchange(object);
    if (previous != nullptr) env->DeleteGlobalRef(previous);
}

// Fills the adapter and registers it. On failure an exception is pending.
void fillAdapter(JNIEnv* env, jobject jInitArgs, CK_C_INITIALIZE_ARGS* adapter)
{
    const auto read = [&](const Callback& callback, auto& function, auto trampoline) {
        const LocalRef<jobject> object(env, GetObjectField(env, jInitArgs, callback.field));
        function = object != nullptr ? trampoline : nullptr;
        return object != nullptr || !env->ExceptionCheck();
    };
    if (!read(CREATE, adapter->CreateMutex, callJCreateMutex)) return;
    if (!read(DESTROY, adapter->DestroyMutex, callJDestroyMutex)) return;
    if (!read(LOCK, adapter->LockMutex, callJLockMutex)) return;
    if (!read(UNLOCK, adapter->UnlockMutex, callJUnlockMutex)) return;

    if (adapter->CreateMutex != nullptr || adapter->DestroyMutex != nullptr ||
        adapter->LockMutex != nullptr || adapter->UnlockMutex != nullptr) {
        const jobject registered = env->NewGlobalRef(jInitArgs);
        setRegisteredObject(env, registered);
        if (registered == nullptr) throwOutOfMemory(env);
        if (env->ExceptionCheck()) return;
        CK_C_INITIALIZE_ARGS* const copy = newInitArgs(env);
        if (copy == nullptr) return;
        *copy = *adapter;                    // flags and pReserved still zero: deliberate
        std::free(gInitArgs.exchange(copy)); // two threads may initialise at once
    }

    adapter->flags = GetLongField(env, jInitArgs, java::INITIALIZE_ARGS.flags);
    if (env->ExceptionCheck()) return;
    // The reference itself is handed to the Cryptoki library, which can only ask whether it is null.
    adapter->pReserved = GetObjectField(env, jInitArgs, java::INITIALIZE_ARGS.reserved);
}

// Null where no libjvm is loaded. It is not linked, so that programs without a JVM can use this library.
decltype(&JNI_GetCreatedJavaVMs) findGetCreatedJavaVMs()
{
    constexpr const char* NAME = "JNI_GetCreatedJavaVMs";
    void* symbol = dlsym(RTLD_DEFAULT, NAME);
    if (symbol == nullptr) { // a program may have loaded it for itself only
        void* const libjvm = dlopen("libjvm.so", RTLD_LAZY | RTLD_NOLOAD);
        if (libjvm == nullptr) return nullptr;
        symbol = dlsym(libjvm, NAME);
        dlclose(libjvm);
    }
    return reinterpret_cast<decltype(&JNI_GetCreatedJavaVMs)>(symbol);
}

JavaVM* createdVM()
{
    static std::atomic<decltype(&JNI_GetCreatedJavaVMs)> found; // a JVM is never unloaded
    auto getCreatedJavaVMs = found.load();
    if (getCreatedJavaVMs == nullptr) found = getCreatedJavaVMs = findGetCreatedJavaVMs();
    JavaVM* vm = nullptr;
    jsize count = 0;
    return getCreatedJavaVMs != nullptr && getCreatedJavaVMs(&vm, 1, &count) == JNI_OK && count >= 1
               ? vm
               : nullptr;
}

// The JVM on the current thread, for the length of one callback. Only the full way through a callback ends
// with leave(): a thread attached here stays attached after a failure and so keeps its exception: deliberate.
struct CallbackThread {
    JavaVM* const vm;
    JNIEnv* env = nullptr;
    bool attachedHere = false;

    // False when an exception is pending, or when there is no environment.
    bool enter()
    {
        const jint known = vm->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_2);
        if (known == JNI_OK && env->ExceptionCheck()) return false;
        if (known == JNI_EDETACHED || known == JNI_EVERSION) {
            env = nullptr;
            vm->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr);
            attachedHere = known == JNI_EDETACHED && env != nullptr;
        }
        return env != nullptr && !env->ExceptionCheck();
    }

    void leave() const
    {
        if (attachedHere) vm->DetachCurrentThread();
    }

    bool failed() const { return env == nullptr || env->ExceptionCheck(); }
};

// A local reference to the registered object, or null.
jobject registeredObject(JNIEnv* env)
{
    const std::lock_guard lock(registration);
    const jobject object = gInitArgsObject;
    return object == nullptr ? nullptr : env->NewLocalRef(object);
}

// The callback object of the initialisation in force and its method. The object is a local reference; null
// when any step failed, or nothing is registered, or the caller has taken the callback away since.
jobject findCallback(JNIEnv* env, const Callback& callback, jmethodID* method)
{
    if (FindClass(env, java::INITIALIZE_ARGS.cls) == nullptr) return nullptr;
    if (FindClass(env, callback.names.cls) == nullptr) return nullptr;
    const LocalRef<jobject> registered(env, registeredObject(env));
    if (registered == nullptr) return nullptr;
    const jobject object = GetObjectField(env, registered, callback.field);
    if (object == nullptr) return nullptr;
    *method = GetMethodID(env, callback.names.call);
    if (*method != nullptr) return object;
    env->DeleteLocalRef(object);
    return nullptr;
}

// Calls the callback's (Object) -> long on the mutex. False when it was not reached, or threw.
bool callOnMutex(JNIEnv* env, const Callback& callback, jobject mutex, CK_RV* rv)
{
    jmethodID method = nullptr;
    const LocalRef<jobject> object(env, findCallback(env, callback, &method));
    if (object == nullptr) return false;
    const jlong answer = env->CallLongMethod(object, method, mutex);
    if (env->ExceptionCheck()) return false;
    *rv = static_cast<CK_RV>(answer);
    return true;
}

enum class MutexAfterwards { Kept, Deleted };

CK_RV callWithMutex(const Callback& callback, CK_VOID_PTR mutex, MutexAfterwards afterwards)
{
    if (mutex == nullptr) return CKR_MUTEX_BAD;
    JavaVM* const vm = createdVM();
    if (vm == nullptr) return CKR_OK; // unlike callJCreateMutex: deliberate
    CallbackThread thread{vm};
    if (!thread.enter()) return CKR_MUTEX_BAD;
    CK_RV rv = CKR_MUTEX_BAD;
    const auto reference = static_cast<jobject>(mutex);
    const bool wasCalled = callOnMutex(thread.env, callback, reference, &rv);
    if (wasCalled && afterwards == MutexAfterwards::Deleted) thread.env->DeleteGlobalRef(reference);
    if (!thread.failed()) thread.leave();
    return rv;
}

// A global reference to the object that the Java CreateMutex returns; null when it returned none or failed.
jobject createMutex(JNIEnv* env)
{
    jmethodID method = nullptr;
    const LocalRef<jobject> object(env, findCallback(env, CREATE, &method));
    if (object == nullptr) return nullptr;
    const LocalRef<jobject> mutex(env, env->CallObjectMethod(object, method));
    return env->ExceptionCheck() ? nullptr : env->NewGlobalRef(mutex);
}

} // namespace

std::atomic<jobject> gInitArgsObject;
std::atomic<CK_C_INITIALIZE_ARGS*> gInitArgs;

CK_C_INITIALIZE_ARGS* makeInitArgsAdapter(JNIEnv* env, jobject jInitArgs)
{
    if (FindClass(env, java::INITIALIZE_ARGS.cls) == nullptr || jInitArgs == nullptr) return nullptr;
    CK_C_INITIALIZE_ARGS* const adapter = newInitArgs(env);
    if (adapter == nullptr) return nullptr;
    fillAdapter(env, jInitArgs, adapter);
    if (!env->ExceptionCheck()) return adapter;
    // gInitArgsObject is left as it is, so that the next C_Initialize passes no arguments until a C_Finalize
    // has succeeded: deliberate.
    std::free(adapter);
    std::free(gInitArgs.exchange(nullptr));
    return nullptr;
}

void releaseInitArgs(JNIEnv* env)
{
    setRegisteredObject(env, nullptr);
    std::free(gInitArgs.exchange(nullptr));
}

void preloadCallbackClasses(JNIEnv* env)
{
    FindClass(env, java::INITIALIZE_ARGS.cls);
    for (const Callback* callback : {&CREATE, &DESTROY, &LOCK, &UNLOCK}) {
        if (env->ExceptionCheck()) env->ExceptionClear();
        FindClass(env, callback->names.cls);
    }
    if (env->ExceptionCheck()) env->ExceptionClear();
}

CK_RV callJCreateMutex(CK_VOID_PTR_PTR ppMutex)
{
    if (ppMutex == nullptr) return CKR_MUTEX_BAD;
    *ppMutex = nullptr;
    JavaVM* const vm = createdVM();
    if (vm == nullptr) return CKR_MUTEX_BAD;
    CallbackThread thread{vm};
    if (!thread.enter()) return CKR_MUTEX_BAD;
    *ppMutex = createMutex(thread.env);
    if (!thread.failed()) thread.leave();
    return *ppMutex != nullptr ? CKR_OK : CKR_MUTEX_BAD;
}

CK_RV callJDestroyMutex(CK_VOID_PTR mutex)
{
    return callWithMutex(DESTROY, mutex, MutexAfterwards::Deleted);
}

CK_RV callJLockMutex(CK_VOID_PTR mutex)
{
    return callWithMutex(LOCK, mutex, MutexAfterwards::Kept);
}

CK_RV callJUnlockMutex(CK_VOID_PTR mutex)
{
    return callWithMutex(UNLOCK, mutex, MutexAfterwards::Kept);
}

} // namespace zerlin
