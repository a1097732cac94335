// The buffers of a call that have no room on the stack.
#include "helper/memory.h"

#include <cstdint>

#include <sys/mman.h>

#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

constexpr std::size_t CHUNK_SIZE = std::size_t{16} << 10;

// From here on malloc would fetch fresh pages for every call too, one by one.
constexpr std::size_t BIG = std::size_t{512} << 10;
constexpr std::size_t TOO_BIG = std::size_t{32} << 20;
constexpr std::size_t HUGE_PAGE = std::size_t{2} << 20;

constexpr std::size_t roundedUp(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

} // namespace

struct Chunk {
    Chunk* next;
    std::size_t used;
    alignas(16) CK_BYTE bytes[CHUNK_SIZE - 16];
};

// What lies before the bytes of a buffer from malloc.
struct alignas(16) Block {
    Block* next;
    std::size_t size;
    Content content;
};

CK_BYTE_PTR CallMemory::takeElsewhere(std::size_t size, Content content, bool isZeroed)
{
    if (size < UNCHUNKED_SIZE) {
        CK_BYTE_PTR const taken = takeFromChunk(size);
        if (taken != nullptr && isZeroed) std::memset(taken, 0, size);
        return taken;
    }
    if (size >= BIG && size <= TOO_BIG) {
        CK_BYTE_PTR const taken = takeFromMapping(size);
        if (taken != nullptr) return taken; // its pages are zero
    }
    return takeBlock(size, content, isZeroed);
}

CK_BYTE_PTR CallMemory::takeFromChunk(std::size_t size)
{
    if (chunks == nullptr || size >= sizeof chunks->bytes - chunks->used) {
        auto* const chunk = static_cast<Chunk*>(std::malloc(sizeof(Chunk)));
        if (chunk == nullptr) return nullptr;
        chunk->next = chunks;
        chunk->used = 0;
        chunks = chunk;
    }
    CK_BYTE_PTR const taken = chunks->bytes + chunks->used;
    chunks->used += size / 16 * 16 + 16;
    return taken;
}

CK_BYTE_PTR CallMemory::takeFromMapping(std::size_t size)
{
    if (mapping == nullptr) map(size);
    const std::size_t rounded = roundedUp(size, 16);
    if (mapping == nullptr || rounded > mappingSize - mappingUsed) return nullptr;
    CK_BYTE_PTR const taken = mapping + mappingUsed;
    mappingUsed += rounded;
    return taken;
}

// Room for a second buffer of the same size lies behind the first, so that the input and the output of a call
// share huge pages. What is never touched costs nothing.
void CallMemory::map(std::size_t size)
{
    const std::size_t room = 2 * size + BIG;
    const std::size_t length = room + 2 * HUGE_PAGE; // where it begins is not known
    void* const mapped =
        mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapped == MAP_FAILED) return;
    mapping = static_cast<CK_BYTE_PTR>(mapped);
    mappingSize = length;
    const auto address = reinterpret_cast<std::uintptr_t>(mapped);
    mappingUsed = roundedUp(address, HUGE_PAGE) - address;
    // Ordinary pages are enough for what exceeds them by a few bytes.
    const std::size_t hugePages = (room + HUGE_PAGE / 2) / HUGE_PAGE;
    madvise(mapping + mappingUsed, hugePages * HUGE_PAGE, MADV_HUGEPAGE);
}

CK_BYTE_PTR CallMemory::takeBlock(std::size_t size, Content content, bool isZeroed)
{
    if (size > SIZE_MAX - sizeof(Block)) return nullptr;
    const std::size_t whole = sizeof(Block) + size;
    auto* const block = static_cast<Block*>(isZeroed ? std::calloc(whole, 1) : std::malloc(whole));
    if (block == nullptr) return nullptr;
    *block = {blocks, size, content};
    blocks = block;
    return reinterpret_cast<CK_BYTE_PTR>(block + 1);
}

void CallMemory::freeAll()
{
    while (chunks != nullptr) {
        Chunk* const next = chunks->next;
        wipe(chunks->bytes, chunks->used);
        std::free(chunks);
        chunks = next;
    }
    while (blocks != nullptr) {
        Block* const next = blocks->next;
        if (blocks->content == Content::Secret) wipe(blocks + 1, blocks->size);
        std::free(blocks);
        blocks = next;
    }
    if (mapping != nullptr) munmap(mapping, mappingSize);
}

} // namespace zerlin
