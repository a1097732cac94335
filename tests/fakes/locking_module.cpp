// A PKCS#11 module that only locks. C_SeedRandom starts as many threads as the seed has bytes and waits for
// them; each uses the locking callbacks of C_Initialize. C_GetObjectSize reports how many threads have held
// the shared mutex; if two ever held it at once, the number is too small.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include <atomic>
#include <thread>
#include <vector>

namespace {

CK_C_INITIALIZE_ARGS callbacks;
CK_VOID_PTR shared;
std::atomic<bool> isInitialised;
CK_ULONG turns; // guarded by the shared mutex alone

CK_RV initialize(CK_VOID_PTR arguments)
{
    if (isInitialised) return CKR_CRYPTOKI_ALREADY_INITIALIZED;
    callbacks = {};
    if (arguments != nullptr) callbacks = *static_cast<CK_C_INITIALIZE_ARGS*>(arguments);
    if (callbacks.CreateMutex != nullptr && callbacks.CreateMutex(&shared) != CKR_OK) return CKR_CANT_LOCK;
    isInitialised = true;
    return CKR_OK;
}

CK_RV finalize(CK_VOID_PTR)
{
    if (!isInitialised.exchange(false)) return CKR_CRYPTOKI_NOT_INITIALIZED;
    return callbacks.DestroyMutex == nullptr ? CKR_OK : callbacks.DestroyMutex(shared);
}

CK_RV getInfo(CK_INFO_PTR)
{
    return isInitialised ? CKR_OK : CKR_CRYPTOKI_NOT_INITIALIZED;
}

void lockAndUnlock(std::atomic<int>& failures)
{
    CK_VOID_PTR own = nullptr;
    failures += callbacks.CreateMutex(&own) != CKR_OK;
    failures += callbacks.LockMutex(own) != CKR_OK;
    failures += callbacks.LockMutex(shared) != CKR_OK;
    const CK_ULONG seen = turns;
    std::this_thread::yield();
    turns = seen + 1;
    failures += callbacks.UnlockMutex(shared) != CKR_OK;
    failures += callbacks.UnlockMutex(own) != CKR_OK;
    failures += callbacks.DestroyMutex(own) != CKR_OK;
}

CK_RV seedRandom(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG length)
{
    if (!isInitialised) return CKR_CRYPTOKI_NOT_INITIALIZED;
    if (callbacks.CreateMutex == nullptr) return CKR_OK;
    std::atomic<int> failures = 0;
    {
        std::vector<std::jthread> threads;
        for (CK_ULONG i = 0; i < length; ++i)
            threads.emplace_back([&] { lockAndUnlock(failures); });
        lockAndUnlock(failures); // the calling thread, too
    }
    return failures == 0 ? CKR_OK : CKR_CANT_LOCK;
}

CK_RV getObjectSize(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ULONG_PTR size)
{
    *size = turns;
    return CKR_OK;
}

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR list)
{
    static CK_FUNCTION_LIST functions = {};
    functions.version = {2, 20};
    functions.C_Initialize = initialize;
    functions.C_Finalize = finalize;
    functions.C_GetInfo = getInfo;
    functions.C_SeedRandom = seedRandom;
    functions.C_GetObjectSize = getObjectSize;
    *list = &functions;
    return CKR_OK;
}
