// The buffers of a call that have no room on the stack.
#include "helper/memory.h"

#include <sys/mman.h>

#include "util/fileVersion.h"

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

constexpr std::size_t CHUNK_SIZE = std::size_t{16} << 10;

// From here on malloc would fetch fresh pages for every call too, one by one.
constexpr std::size_t BIG = std::size_t{512} << 10;
// Up to here a mapping has room for a second buffer of the same size.
constexpr std::size_t MAX_PAIRED = std::size_t{32} << 20;
constexpr std::size_t PAGE = std::size_t{4} << 10;
constexpr std::size_t HUGE_PAGE = std::size_t{2} << 20;

constexpr std::size_t roundedUp(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

void* mapPages(std::size_t length)
{
    void* const mapped =
        mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return mapped == MAP_FAILED ? nullptr : mapped;
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
    if (size > MAX_BUFFER_SIZE) return nullptr;
    if (size < UNCHUNKED_SIZE) {
        CK_BYTE_PTR const taken = takeFromChunk(size);
        if (taken != nullptr && isZeroed) std::memset(taken, 0, size);
        return taken;
    }
    CK_BYTE_PTR const taken = size < BIG ? nullptr : takeFromMapping(size); // whose pages are zero
    return taken != nullptr ? taken : takeBlock(size, content, isZeroed);
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
    const std::size_t rounded = roundedUp(size, 16);
    if (mappings == nullptr || rounded > mappings->size - mappings->used) {
        if (!map(rounded)) return nullptr;
    }
    CK_BYTE_PTR const taken = reinterpret_cast<CK_BYTE_PTR>(mappings) + mappings->used;
    mappings->used += rounded;
    return taken;
}

// Maps room for a buffer and, behind it, for a second one of the same size, so that the input and the output
// of a call share huge pages. What is never touched costs nothing.
bool CallMemory::map(std::size_t size)
{
    const std::size_t room = size <= MAX_PAIRED ? 2 * size + BIG : size;
    const std::size_t length = room + 2 * HUGE_PAGE; // where it begins is not known
    auto* const mapping = static_cast<Mapping*>(mapPages(length));
    if (mapping == nullptr) return false;
    const auto address = reinterpret_cast<std::uintptr_t>(mapping);
    const std::size_t start = roundedUp(address + sizeof(Mapping), HUGE_PAGE) - address;
    *mapping = {mappings, length, start};
    mappings = mapping;
    // Ordinary pages are enough for what exceeds them by a few bytes.
    const std::size_t hugePages = (room + HUGE_PAGE / 2) / HUGE_PAGE;
    madvise(reinterpret_cast<CK_BYTE_PTR>(mapping) + start, hugePages * HUGE_PAGE, MADV_HUGEPAGE);
    return true;
}

CK_BYTE_PTR CallMemory::takeFenced(std::size_t size, std::size_t declared)
{
    if (size > MAX_BUFFER_SIZE) return nullptr;
    const std::size_t pages = roundedUp(fencedSize(size, declared), PAGE);
    const std::size_t length = PAGE + pages + PAGE;
    auto* const mapping = static_cast<Mapping*>(mapPages(length));
    if (mapping == nullptr) return nullptr;
    CK_BYTE_PTR const fence = reinterpret_cast<CK_BYTE_PTR>(mapping) + PAGE + pages;
    if (mprotect(fence, PAGE, PROT_NONE) != 0) {
        munmap(mapping, length);
        return nullptr;
    }
    // The first mapping stays first: takeFromMapping takes from it.
    Mapping*& place = mappings != nullptr ? mappings->next : mappings;
    *mapping = {place, length, length};
    place = mapping;
    return fence - roundedUp(fencedSize(size, declared), 16);
}

CK_BYTE_PTR CallMemory::takeBlock(std::size_t size, Content content, bool isZeroed)
{
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
        if (blocks->content == Content::Secret) wipe(blocks, sizeof(Block) + blocks->size);
        std::free(blocks);
        blocks = next;
    }
    while (mappings != nullptr) {
        Mapping* const next = mappings->next;
        munmap(mappings, mappings->size);
        mappings = next;
    }
}

} // namespace zerlin
