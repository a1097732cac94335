// The native memory of one call, and overwriting what may have been a secret.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <malloc.h>

#include "zerlin/cryptoki.h"

namespace zerlin {

// Overwrites memory in a way that no compiler leaves out.
inline void wipe(void* memory, std::size_t size)
{
    std::memset(memory, 0, size);
    asm volatile("" : : "r"(memory) : "memory");
}

// Overwrites memory from malloc that may have held a PIN, a seed, a key or clear text, and frees it.
inline void wipeAndFree(void* memory)
{
    if (memory == nullptr) return;
    wipe(memory, malloc_usable_size(memory));
    std::free(memory);
}

// The greatest size of a buffer. A greater one fails as if memory had run out, on every platform.
constexpr std::size_t MAX_BUFFER_SIZE = 0x7FFFFFFF;

// The size in bytes of that many elements and some spare bytes, or a size above MAX_BUFFER_SIZE. Every size
// that depends on a Java length or count is computed here.
constexpr std::size_t bufferSize(std::size_t count, std::size_t elementSize, std::size_t spareBytes = 0)
{
    return count > (MAX_BUFFER_SIZE - spareBytes) / elementSize ? SIZE_MAX : count * elementSize + spareBytes;
}

// Whether bytes must be overwritten when the call is over.
enum class Content { Secret, Public };

// The stack holds two buffers of a KiB and some. The address sanitizer sees the end of a buffer only where
// malloc made it: there no buffer lies on the stack or in a chunk.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t STACK_SIZE = 0;
constexpr std::size_t UNCHUNKED_SIZE = 0;
#else
constexpr std::size_t STACK_SIZE = 2560;
constexpr std::size_t UNCHUNKED_SIZE = 1025; // what is smaller is taken from chunks
#endif

// What lies at the start of a mapping, whose size and used bytes count from there.
struct Mapping {
    Mapping* next;
    std::size_t size;
    std::size_t used;
};

// The buffers of one call. It owns them all: each is taken with what it holds, and the end of the call wipes
// the secret ones and frees every one. Small buffers lie on the stack or, where that is used up, in chunks;
// big ones in mappings, whose pages cost far less than malloc's and go back to the system, which clears them;
// those in between come from malloc. A buffer is aligned to 16, and no two begin at the same address. What
// cannot be allocated, or is longer than MAX_BUFFER_SIZE, is null.
struct CallMemory {
    struct Chunk* chunks = nullptr;       // the last one first
    struct Block* blocks = nullptr;       // from malloc, the last one first
    Mapping* mappings = nullptr;          // the last one first
    std::size_t secretEnd = 0;            // secrets fill the stack from its start,
    std::size_t publicStart = STACK_SIZE; // all else from its end
    alignas(16) CK_BYTE stack[std::max(STACK_SIZE, std::size_t{16})];

    CallMemory() = default; // leaves the stack as it is
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;
    ~CallMemory()
    {
        if (secretEnd != 0) wipe(stack, secretEnd);
        if (chunks != nullptr || blocks != nullptr || mappings != nullptr) freeAll();
    }

    CK_BYTE_PTR take(std::size_t size, Content content)
    {
        if (size >= publicStart - secretEnd) return takeElsewhere(size, content, false);
        const std::size_t rounded = size / 16 * 16 + 16;
        if (content == Content::Public) return stack + (publicStart -= rounded);
        CK_BYTE_PTR const taken = stack + secretEnd;
        secretEnd += rounded;
        return taken;
    }

    // The same, filled with zeroes.
    CK_BYTE_PTR takeZeroed(std::size_t size, Content content)
    {
        if (size >= publicStart - secretEnd) return takeElsewhere(size, content, true);
        return static_cast<CK_BYTE_PTR>(std::memset(take(size, content), 0, size));
    }

    // A buffer of which the Cryptoki library is told another length: one that is greater is fenced, so that a
    // library that uses all of it meets zeroes, or a page that nobody may access, and nothing of this
    // process.
    CK_BYTE_PTR takeDeclared(std::size_t size, std::size_t declared, Content content)
    {
        return declared <= size ? take(size, content) : takeFenced(size, declared);
    }

    // Zeroes up to the fenced size; behind them, or behind up to 15 more, lies an inaccessible page.
    CK_BYTE_PTR takeFenced(std::size_t size, std::size_t declared);
    static constexpr std::size_t fencedSize(std::size_t size, std::size_t declared)
    {
        return std::max(size, std::min(declared, std::size_t{64} << 10));
    }

private:
    CK_BYTE_PTR takeElsewhere(std::size_t size, Content content, bool isZeroed);
    CK_BYTE_PTR takeFromChunk(std::size_t size);
    CK_BYTE_PTR takeFromMapping(std::size_t size);
    CK_BYTE_PTR takeBlock(std::size_t size, Content content, bool isZeroed);
    bool map(std::size_t size);
    void freeAll();
};

} // namespace zerlin
