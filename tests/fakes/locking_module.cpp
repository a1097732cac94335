// A PKCS#11 module that only locks, and needs the callbacks of C_Initialize for it. C_SeedRandom starts as
// many threads as the seed has bytes and waits for them. It fails if a callback does, or if two threads ever
// hold the shared mutex at once.
#include "zerlin/cryptoki.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

CK_C_INITIALIZE_ARGS callbacks;
CK_VOID_PTR shared;
std::atomic<bool> isInitialised;
std::atomic<int> holders;

CK_RV initialize(CK_VOID_PTR arguments)
{
    if (isInitialised.exchange(true)) return CKR_CRYPTOKI_ALREADY_INITIALIZED;
    callbacks = *static_cast<CK_C_INITIALIZE_ARGS*>(arguments);
    return callbacks.CreateMutex(&shared);
}

CK_RV finalize(CK_VOID_PTR)
{
    if (!isInitialised.exchange(false)) return CKR_CRYPTOKI_NOT_INITIALIZED;
    return callbacks.DestroyMutex(shared);
}

void lockAndUnlock(std::atomic<int>& failures)
{
    CK_VOID_PTR own = nullptr;
    failures += callbacks.CreateMutex(&own) != CKR_OK;
    failures += callbacks.LockMutex(shared) != CKR_OK;
    failures += holders++ != 0;
    std::this_thread::yield();
    holders--;
    failures += callbacks.UnlockMutex(shared) != CKR_OK;
    failures += callbacks.DestroyMutex(own) != CKR_OK;
}

CK_RV seedRandom(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG length)
{
    if (!isInitialised) return CKR_CRYPTOKI_NOT_INITIALIZED;
    std::atomic<int> failures = 0;
    {
        std::vector<std::jthread> threads;
        for (CK_ULONG i = 0; i < length; ++i)
            threads.emplace_back([&] { lockAndUnlock(failures); });
        lockAndUnlock(failures); // the calling thread, too
    }
    return failures == 0 ? CKR_OK : CKR_CANT_LOCK;
}

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR list)
{
    static CK_FUNCTION_LIST functions = {};
    functions.version = {2, 20};
    functions.C_Initialize = initialize;
    functions.C_Finalize = finalize;
    functions.C_SeedRandom = seedRandom;
    *list = &functions;
    return CKR_OK;
}
