// A PKCS#11 module that lies: it reads inputs as long as they are declared, up to the 64 KiB that the binding
// promises, fills every output, and reports absurd lengths, counts, handles, pointers and return values. In
// between it uses the locking callbacks of the last C_Initialize. On the session HONEST two functions do as
// the checks in tests/endurance/Attack.java expect.
#pragma GCC visibility push(default)
#include "zerlin/cryptoki.h"
#pragma GCC visibility pop

#include "cryptoki/functions.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <random>

namespace {

constexpr CK_SESSION_HANDLE HONEST = 0x7A5EC0DE;
constexpr CK_BYTE MASK = 0x5A;
constexpr CK_ULONG PROMISED = 64 << 10;

std::mutex registration;
CK_C_INITIALIZE_ARGS registered;

std::atomic<unsigned> seeds;
thread_local std::minstd_rand numbers(++seeds);

CK_ULONG below(CK_ULONG limit)
{
    return static_cast<CK_ULONG>(numbers()) % limit;
}

CK_ULONG absurd(CK_ULONG real)
{
    const CK_ULONG all[] = {
        real, real, real - 1, real + 1, 0, ~CK_ULONG{0}, 0x7FFFFFFF, 0x80000000, below(5000)};
    return all[below(std::size(all))];
}

CK_RV anyResult()
{
    const CK_RV all[] = {CKR_OK, CKR_OK, CKR_OK, CKR_BUFFER_TOO_SMALL, absurd(CKR_ATTRIBUTE_SENSITIVE)};
    return all[below(std::size(all))];
}

void read(const void* data, CK_ULONG declared)
{
    const auto* const bytes = static_cast<const volatile CK_BYTE*>(data);
    for (CK_ULONG i = 0; data != nullptr && i < std::min(declared, PROMISED); ++i)
        static_cast<void>(bytes[i]);
}

void fill(void* data, CK_ULONG declared)
{
    const auto value = static_cast<int>(below(256));
    if (data != nullptr) std::memset(data, value, std::min(declared, PROMISED));
}

CK_ULONG promisedRecords(CK_ULONG declared)
{
    return std::min<CK_ULONG>(declared, PROMISED / sizeof(CK_ATTRIBUTE));
}

// Takes the arguments of a call, one after the other.
struct Taker {
    enum { Nothing, Bytes, Numbers, Records } last = Nothing;
    CK_BYTE_PTR bytes = nullptr;
    CK_ULONG_PTR numbers = nullptr;
    CK_ATTRIBUTE_PTR records = nullptr;

    void operator()(CK_BYTE_PTR given)
    {
        last = Bytes;
        bytes = given;
    }
    void operator()(CK_ATTRIBUTE_PTR given)
    {
        last = Records;
        records = given;
    }
    void operator()(CK_ULONG declared)
    {
        if (last == Bytes) read(bytes, declared);
        if (last == Numbers) fill(numbers, std::min(declared, PROMISED) * sizeof *numbers); // C_FindObjects
        for (CK_ULONG i = 0; last == Records && records != nullptr && i < promisedRecords(declared); ++i)
            read(records[i].pValue, records[i].ulValueLen);
        last = Nothing;
    }
    void operator()(CK_ULONG_PTR given)
    {
        if (last == Bytes || last == Numbers) {
            const CK_ULONG size = last == Bytes ? 1 : sizeof *given;
            fill(last == Bytes ? static_cast<void*>(bytes) : numbers, std::min(*given, PROMISED) * size);
            *given = absurd(*given);
            last = Nothing;
        } else {
            last = Numbers;
            numbers = given;
        }
    }
    void operator()(CK_MECHANISM_PTR given)
    {
        if (given->mechanism != 0) read(given->pParameter, given->ulParameterLen);
    }
    void operator()(CK_VOID_PTR) {}
    void operator()(CK_NOTIFY) {}
    void operator()(CK_BBOOL) {}
    template <typename Info>
    void operator()(Info* info)
    {
        fill(info, sizeof *info);
    }

    ~Taker()
    {
        if (last == Bytes) read(bytes, sizeof(CK_TOKEN_INFO::label));
        if (last == Numbers && numbers != nullptr) *numbers = absurd(1);
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
    Taker taker;
    (taker(arguments), ...);
    return anyResult();
}

CK_RV initialize(CK_VOID_PTR arguments)
{
    std::unique_lock lock(registration);
    registered =
        arguments == nullptr ? CK_C_INITIALIZE_ARGS{} : *static_cast<CK_C_INITIALIZE_ARGS*>(arguments);
    lock.unlock();
    useLocks();
    return anyResult();
}

CK_RV getAttributeValue(CK_SESSION_HANDLE on, CK_OBJECT_HANDLE, CK_ATTRIBUTE_PTR records, CK_ULONG count)
{
    if (on != HONEST && below(4) == 0) useLocks();
    for (CK_ULONG i = 0; records != nullptr && i < promisedRecords(count); ++i) {
        CK_ATTRIBUTE& one = records[i];
        fill(one.pValue, one.ulValueLen);
        if (on == HONEST && one.pValue != nullptr) std::memset(one.pValue, MASK, one.ulValueLen);
        if (on == HONEST || below(8) == 0) continue;
        if (one.type == CKA_WILDCARD) one.type = absurd(CKA_LABEL);
        one.ulValueLen = absurd(one.ulValueLen);
        if (below(4) == 0) one.pValue = reinterpret_cast<CK_VOID_PTR>(std::uintptr_t{absurd(16)});
    }
    return on == HONEST ? CKR_OK : anyResult();
}

CK_RV getObjectSize(CK_SESSION_HANDLE on, CK_OBJECT_HANDLE object, CK_ULONG_PTR size)
{
    if (on != HONEST) return answer(on, object, size);
    *size = ~object;
    return CKR_OK;
}

// Two handles, which are no array and its count.
CK_RV generateKeyPair(CK_SESSION_HANDLE on, CK_MECHANISM_PTR mechanism, CK_ATTRIBUTE_PTR first,
    CK_ULONG count, CK_ATTRIBUTE_PTR second, CK_ULONG secondCount, CK_OBJECT_HANDLE_PTR one,
    CK_OBJECT_HANDLE_PTR two)
{
    answer(on, mechanism, first, count, one);
    return answer(second, secondCount, two);
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
    functions.C_GetObjectSize = getObjectSize;
    functions.C_GenerateKeyPair = generateKeyPair;
    *list = &functions;
    return CKR_OK;
}
