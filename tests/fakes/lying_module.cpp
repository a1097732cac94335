// A PKCS#11 module that lies (liar.h) and in between uses the locking callbacks of the last C_Initialize. On
// the session HONEST C_GetAttributeValue does as the check in tests/endurance/Attack.java expects.
#include "fakes/liar.h"

#include <mutex>

namespace {

constexpr CK_SESSION_HANDLE HONEST = 0x7A5EC0DE;

std::mutex registration;
CK_C_INITIALIZE_ARGS registered;

CK_RV initialize(CK_VOID_PTR arguments)
{
    const std::lock_guard lock(registration);
    registered = {};
    if (arguments != nullptr) registered = *static_cast<CK_C_INITIALIZE_ARGS*>(arguments);
    return liar::answer({});
}

void useLocks()
{
    const auto callbacks = [] {
        const std::lock_guard lock(registration);
        return registered;
    }();
    CK_VOID_PTR mutex = nullptr;
    if (callbacks.CreateMutex != nullptr) callbacks.CreateMutex(&mutex);
    for (const auto callback : {callbacks.LockMutex, callbacks.UnlockMutex, callbacks.DestroyMutex})
        if (callback != nullptr) callback(mutex);
}

CK_RV answer(std::span<const recorder::Argument> all)
{
    if (all.front().number == HONEST) {
        const auto* const attribute = static_cast<CK_ATTRIBUTE*>(all[2].data);
        std::memset(attribute->pValue, static_cast<CK_BYTE>(all[1].number), attribute->ulValueLen);
        return CKR_OK;
    }
    if (liar::below(4) == 0) useLocks();
    return liar::answer(all);
}

} // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR list)
{
    recorder::script().isQuiet = true;
    recorder::script().C_Initialize = initialize;
    recorder::script().answer = answer;
    static CK_FUNCTION_LIST functions = zerlin::findFunctions().standard;
    functions.version = {2, 20};
    *list = &functions;
    return CKR_OK;
}
