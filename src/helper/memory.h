// The native memory of one call, and overwriting what may have been a secret.
#pragma once

#include <algorithm>
#include <cstddef>
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

// Whether bytes must be overwritten when the call is over.
enum class Content { Secret, Public };

// Two buffers of a KiB and some. The address sanitizer sees the ends of buffers only where each is malloc's.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t STACK_SIZE = 1;
constexpr std::size_t UNCHUNKED_SIZE = 1;
#else
constexpr std::size_t STACK_SIZE = 2560;
constexpr std::size_t UNCHUNKED_SIZE = 1025; // what is smaller is taken from chunks
#endif

// The buffers of one call: small ones on the stack or, where that is used up, in chunks; big ones in one
// mapping of its own, whose pages cost far less than malloc's and go back to the system, which clears them;
// from malloc what lies between.
struct CallMemory {
    alignas(8) CK_BYTE stack[STACK_SIZE];
    std::size_t stackUsed = 0;
    struct Chunk* chunks = nullptr; // the last one first
    CK_BYTE_PTR mapping = nullptr;
    std::size_t mappingSize = 0;
    std::size_t mappingUsed = 0;

    CallMemory() = default; // leaves the stack as it is
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;
    ~CallMemory()
    {
        if (chunks != nullptr || mapping != nullptr) freeAll();
    }

    // At least that many bytes, or null. They are zero where that is asked for.
    CK_BYTE_PTR take(std::size_t size, bool isZeroed)
    {
        if (size >= sizeof stack - stackUsed) return takeMore(size, isZeroed);
        CK_BYTE_PTR const taken = stack + stackUsed;
        stackUsed = std::min(sizeof stack, (stackUsed + size + 7) & ~std::size_t{7});
        if (isZeroed) std::memset(taken, 0, size);
        return taken;
    }

    // Ends the use of a buffer from take.
    void release(CK_BYTE_PTR taken, std::size_t size, Content content)
    {
        if (isOnStack(taken)) {
            if (content == Content::Secret) wipe(taken, size);
        } else {
            releaseMore(taken, size, content);
        }
    }

    // Whether this memory will free the buffer itself, so that nobody else does.
    bool holds(const void* taken) const
    {
        return isOnStack(taken) || ((chunks != nullptr || mapping != nullptr) && isHeldBeside(taken));
    }

    // Wipes what was taken from the stack and from chunks, whatever it was.
    void wipeHeld()
    {
        wipe(stack, stackUsed);
        if (chunks != nullptr) wipeChunks();
    }

private:
    bool isOnStack(const void* taken) const { return taken >= stack && taken < stack + sizeof stack; }
    bool isHeldBeside(const void* taken) const;
    CK_BYTE_PTR takeMore(std::size_t size, bool isZeroed);
    CK_BYTE_PTR takeFromChunk(std::size_t size);
    void releaseMore(CK_BYTE_PTR taken, std::size_t size, Content content);
    void wipeChunks() const;
    void map(std::size_t size);
    void freeAll();
};

} // namespace zerlin
