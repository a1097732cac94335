// The buffers of a call that have no room on the stack.
#include "helper/memory.h"

#include <cstdint>
#include <cstring>

#include "util/fileVersion.h"
#include <sys/mman.h>

FILE_VERSION("1.1.1.2");

namespace zerlin {
namespace {

constexpr std::size_t CHUNK = std::size_t{16} << 10;

// From here on malloc would fetch fresh pages for every call too, one by one.
constexpr std::size_t BIG = std::size_t{512} << 10;
constexpr std::size_t TOO_BIG = std::size_t{32} << 20;
constexpr std::size_t HUGE_PAGE = std::size_t{2} << 20;

std::size_t roundedUp(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

} // namespace

struct Chunk {
    Chunk* next;
    std::size_t used;
    CK_BYTE bytes[CHUNK - 2 * sizeof(void*)];
};

bool CallMemory::isHeldBeside(const void* taken) const
{
    if (taken >= mapping && taken < mapping + mappingSize) return true;
    for (const Chunk* chunk = chunks; chunk != nullptr; chunk = chunk->next) {
        if (taken >= chunk->bytes && taken < chunk->bytes + sizeof chunk->bytes) return true;
    }
    return false;
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
    chunks->used = std::min(sizeof chunks->bytes, chunks->used + roundedUp(size, 8));
    return taken;
}

void CallMemory::wipeChunks() const
{
    for (Chunk* chunk = chunks; chunk != nullptr; chunk = chunk->next) {
        wipe(chunk->bytes, chunk->used);
    }
}

// Room for a second buffer of the same size lies behind the first, so that the input and the output of a call
// share huge pages. What is never touched costs nothing.
void CallMemory::map(std::size_t size)
{
    const std::size_t room = 2 * size + BIG;
    const std::size_t wanted = room + 2 * HUGE_PAGE; // where it begins is not known
    void* const mapped =
        mmap(nullptr, wanted, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapped == MAP_FAILED) return;
    mapping = static_cast<CK_BYTE_PTR>(mapped);
    mappingSize = wanted;
    const auto address = reinterpret_cast<std::uintptr_t>(mapped);
    mappingUsed = roundedUp(address, HUGE_PAGE) - address;
    // Ordinary pages will do for what is beyond them by a few bytes.
    const std::size_t hugePages = (room + HUGE_PAGE / 2) / HUGE_PAGE;
    madvise(mapping + mappingUsed, hugePages * HUGE_PAGE, MADV_HUGEPAGE);
}

CK_BYTE_PTR CallMemory::takeMore(std::size_t size, bool isZeroed)
{
    if (size < UNCHUNKED_SIZE) {
        CK_BYTE_PTR const taken = takeFromChunk(size);
        if (taken != nullptr && isZeroed) std::memset(taken, 0, size);
        return taken;
    }
    if (size >= BIG && size <= TOO_BIG) {
        if (mapping == nullptr) map(size);
        if (mapping != nullptr && size <= mappingSize - mappingUsed) {
            CK_BYTE_PTR const taken = mapping + mappingUsed;
            mappingUsed = std::min(mappingSize, mappingUsed + roundedUp(size, 8));
            return taken;
        }
    }
    return static_cast<CK_BYTE_PTR>(isZeroed ? std::calloc(size, 1) : std::malloc(size));
}

void CallMemory::releaseMore(CK_BYTE_PTR taken, std::size_t size, Content content)
{
    const bool isMapped = taken >= mapping && taken < mapping + mappingSize;
    if (taken == nullptr || isMapped) return;
    if (content == Content::Secret) explicit_bzero(taken, size); // quicker than wipe where size is big
    if (!isHeldBeside(taken)) std::free(taken);
}

void CallMemory::freeAll()
{
    while (chunks != nullptr) {
        Chunk* const next = chunks->next;
        std::free(chunks);
        chunks = next;
    }
    if (mapping != nullptr) munmap(mapping, mappingSize);
}

} // namespace zerlin
