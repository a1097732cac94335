// The wrappers that the linker uses instead of malloc, calloc, realloc and free.
#include "harness/failing_alloc.h"

#include <cstddef>
#include <cstring>

namespace {

thread_local int untilFailure = 0; // below 0: the allocation has failed

bool isToFail()
{
    if (untilFailure <= 0 || --untilFailure > 0) return false;
    untilFailure = -1;
    return true;
}

void* allocated(void* block, std::size_t size)
{
    if (HeapWatch::current != nullptr && block != nullptr) HeapWatch::current->blocks[block] = size;
    return block;
}

} // namespace

void failAllocation(int n)
{
    untilFailure = n;
}

bool allocationFailed()
{
    return untilFailure < 0;
}

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);

void* __wrap_malloc(std::size_t size)
{
    void* const block = isToFail() ? nullptr : __real_malloc(size);
    return block == nullptr ? nullptr : allocated(std::memset(block, 0xee, size), size);
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return isToFail() ? nullptr : allocated(__real_calloc(count, size), count * size);
}

void* __wrap_realloc(void* block, std::size_t size)
{
    if (isToFail()) return nullptr;
    void* const moved = __real_realloc(block, size);
    if (HeapWatch::current != nullptr && moved != nullptr) HeapWatch::current->blocks.erase(block);
    return allocated(moved, size);
}

void __wrap_free(void* block)
{
    HeapWatch* const watch = HeapWatch::current;
    if (watch != nullptr)
        if (const auto node = watch->blocks.extract(block))
            watch->freed.emplace_back(static_cast<const char*>(block), node.mapped());
    __real_free(block);
}

} // extern "C"
