// A PKCS#11 module that lies: it reads inputs as long as they are declared, up to the 64 KiB that the binding
// promises, fills every output, and reports absurd lengths, counts, handles, pointers and return values. In
// between it uses the locking callbacks of the last C_Initialize. On the session HONEST C_GetAttributeValue
// does as the check in tests/endurance/Attack.java expects.
#include "zerlin/cryptoki.h"

#include "cryptoki/functions.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <random>

namespace {

constexpr CK_SESSION_HANDLE HONEST = 0x7A5EC0DE;
constexpr CK_ULONG PROMISED = 64 << 10;

std::mutex registration;
CK_C_INITIALIZE_ARGS registered;

CK_ULONG below(CK_ULONG limit)
{
    static std::atomic<unsigned> seeds;
    static thread_local std::minstd_rand numbers(++seeds);
    return static_cast<CK_ULONG>(numbers()) % limit;
}

CK_ULONG absurd(CK_ULONG real)
{
    const CK_ULONG all[] = {
        real, real, real - 1, real + 1, 0, ~CK_ULONG{0}, 0x7FFFFFFF, 0x80000000, below(5000)};
    return all[below(std::size(all))];
}

void read(const void* data, CK_ULONG declared)
{
    const auto* const bytes = static_cast<const volatile CK_BYTE*>(data);
    for (CK_ULONG i = 0; data != nullptr && i < std::min(declared, PROMISED); ++i)
        static_cast<void>(bytes[i]);
}

void fill(void* data, CK_ULONG declared, CK_ULONG value = 0x5A)
{
    if (data != nullptr) std::memset(data, static_cast<CK_BYTE>(value), std::min(declared, PROMISED));
}

template <typename Use>
void forEachRecord(CK_ATTRIBUTE_PTR records, CK_ULONG declared, Use use)
{
    const CK_ULONG count = std::min<CK_ULONG>(declared, PROMISED / sizeof(CK_ATTRIBUTE));
    if (records != nullptr) std::for_each_n(records, count, use);
}

// Takes the arguments of a call, one after the other. A pointer is used when its length comes.
struct Taker {
    bool holdsList; // ends with an array and its count
    CK_BYTE_PTR bytes = nullptr;
    CK_ULONG_PTR numbers = nullptr;
    CK_ATTRIBUTE_PTR records = nullptr;

    void operator()(CK_BYTE_PTR given) { bytes = given; }
    void operator()(CK_ATTRIBUTE_PTR given) { records = given; }
    void operator()(CK_ULONG declared)
    {
        read(bytes, declared);
        fill(numbers, declared * sizeof *numbers); // C_FindObjects
        forEachRecord(records, declared, [](CK_ATTRIBUTE& one) { read(one.pValue, one.ulValueLen); });
        *this = {holdsList};
    }
    void operator()(CK_ULONG_PTR given)
    {
        if (bytes == nullptr && numbers == nullptr) {
            numbers = given;
            return;
        }
        fill(bytes, *given);
        fill(numbers, (holdsList ? *given : 1) * sizeof *numbers);
        *given = absurd(*given);
        *this = {holdsList};
    }
    void operator()(CK_MECHANISM_PTR given)
    {
        if (given->mechanism != 0) read(given->pParameter, given->ulParameterLen);
    }
    template <typename Other>
    void operator()(Other given)
    {
        if constexpr (std::is_class_v<std::remove_pointer_t<Other>>) fill(given, sizeof *given);
    }
};

void useLocks()
{
    std::unique_lock lock(registration);
    const CK_C_INITIALIZE_ARGS callbacks = registered;
    lock.unlock();
    CK_VOID_PTR mutex = nullptr;
    if (callbacks.CreateMutex != nullptr) callbacks.CreateMutex(&mutex);
    for (const auto callback : {callbacks.LockMutex, callbacks.UnlockMutex, callbacks.DestroyMutex})
        if (callback != nullptr) callback(mutex);
}

template <typename... A>
CK_RV answer(A... arguments)
{
    if (below(4) == 0) useLocks();
    Taker taker{sizeof...(A) == 3};
    (taker(arguments), ...);
    read(taker.bytes, sizeof(CK_TOKEN_INFO::label));
    if (taker.numbers != nullptr) *taker.numbers = absurd(1);
    return below(2) == 0 ? CKR_OK : absurd(CKR_BUFFER_TOO_SMALL);
}

CK_RV initialize(CK_VOID_PTR arguments)
{
    const std::lock_guard lock(registration);
    registered = {};
    if (arguments != nullptr) registered = *static_cast<CK_C_INITIALIZE_ARGS*>(arguments);
    return absurd(CKR_OK);
}

CK_RV getAttributeValue(
    CK_SESSION_HANDLE on, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_PTR records, CK_ULONG count)
{
    const CK_RV result = on == HONEST ? CKR_OK : answer(on);
    forEachRecord(records, count, [=](CK_ATTRIBUTE& one) {
        fill(one.pValue, one.ulValueLen, object);
        if (on == HONEST || below(8) == 0) return;
        if (one.type == CKA_WILDCARD) one.type = absurd(CKA_LABEL);
        one.ulValueLen = absurd(one.ulValueLen);
        if (below(4) == 0) one.pValue = reinterpret_cast<CK_VOID_PTR>(absurd(16));
    });
    return result;
}

} // namespace

// Without it the embedded library would copy by itself, and trust what this module reports.
CK_RV CT_CopyObject(CK_SESSION_HANDLE to, CK_SESSION_HANDLE from, CK_OBJECT_HANDLE object,
    CK_ATTRIBUTE_PTR records, CK_ULONG count, CK_OBJECT_HANDLE_PTR made)
{
    return answer(to, from, object, records, count, made);
}

CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR list)
{
    static CK_FUNCTION_LIST functions = {};
    functions.version = {2, 20};
    zerlin::forEachStandardFunction([](const char*, auto member) { functions.*member = answer; });
    functions.C_Initialize = initialize;
    functions.C_GetAttributeValue = getAttributeValue;
    *list = &functions;
    return CKR_OK;
}
