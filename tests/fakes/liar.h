// How a Cryptoki library lies: it reads all that it is promised, fills every output, writes into templates
// that are not for it to write, and reports absurd lengths, pointers and return values.
#pragma once

#include "fakes/recorder.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <random>

namespace liar {

inline std::atomic<unsigned> threads;
inline thread_local std::minstd_rand numbers(++threads);

inline CK_ULONG below(CK_ULONG limit)
{
    return static_cast<CK_ULONG>(numbers()) % limit;
}

template <typename T>
T oneOf(std::initializer_list<T> all)
{
    return all.begin()[below(all.size())];
}

// No 2 GiB less a few bytes: that much memory may be there.
inline std::int64_t around(std::uint64_t real)
{
    return static_cast<std::int64_t>(oneOf<std::uint64_t>({real, real, real, real, real - 1, real + 1, 0,
        ~0ULL, 1ULL << 31, 0xffff'ffff, 1ULL << 32, (1ULL << 32) + real, 1ULL << 63, below(5000)}));
}

// Behind every input there are zeroes, up to the declared length or 64 KiB.
constexpr CK_ULONG PROMISED = 64 << 10;

inline void read(const void* data, CK_ULONG declared)
{
    if (data == nullptr) return;
    static thread_local std::string copy;
    copy.assign(static_cast<const char*>(data), std::min(declared, PROMISED));
}

inline void write(void* data, CK_ULONG size)
{
    if (data != nullptr) std::memset(data, static_cast<int>(below(256)), std::min(size, PROMISED));
}

inline void use(CK_ATTRIBUTE* attributes, CK_ULONG count)
{
    if (attributes == nullptr) return;
    for (CK_ATTRIBUTE& one :
        std::span(attributes, std::min<CK_ULONG>(count, PROMISED / sizeof *attributes))) {
        read(one.pValue, one.ulValueLen);
        if (below(2) == 0) continue;
        write(one.pValue, one.ulValueLen);
        if (one.type == CKA_WILDCARD) one.type = CKA_LABEL;
        one.ulValueLen = static_cast<CK_ULONG>(around(one.ulValueLen));
        if (below(4) == 0) one.pValue = reinterpret_cast<CK_VOID_PTR>(below(5000));
    }
}

// Answers any call.
inline CK_RV answer(std::span<const recorder::Argument> all)
{
    using recorder::Argument;
    for (const auto& [form, data, number, elementSize, reported] : all) {
        const auto* const mechanism = static_cast<CK_MECHANISM*>(data);
        if (form == Argument::Bytes) read(data, number);
        if (form == Argument::Label) read(data, sizeof(CK_TOKEN_INFO::label));
        if (form == Argument::Template) use(static_cast<CK_ATTRIBUTE*>(data), number);
        if (form == Argument::Mechanism && mechanism->mechanism != 0)
            read(mechanism->pParameter, mechanism->ulParameterLen);
        if (form == Argument::Output) write(data, elementSize);
        if (form == Argument::Outputs) write(data, number * elementSize);
        if (reported != nullptr) *reported = static_cast<CK_ULONG>(around(number));
    }
    return below(2) == 0 ? CKR_OK : static_cast<CK_RV>(around(CKR_BUFFER_TOO_SMALL));
}

} // namespace liar
