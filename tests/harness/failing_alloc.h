// malloc, calloc, realloc and free as this program's own objects call them: an allocation fails on request,
// and what becomes of the blocks is watched. For the calling thread only. What shared libraries allocate,
// operator new included, is neither counted nor seen. Linked with --wrap of all four.
#pragma once

#include <map>
#include <string>
#include <vector>

// The n-th allocation from now, from 1, returns null, and only that one; 0: none does.
void failAllocation(int n);

// Has the one that was to fail been reached?
bool allocationFailed();

// The blocks allocated while it lives. One at a time.
struct HeapWatch {
    HeapWatch() { current = this; }
    ~HeapWatch() { current = nullptr; }

    static inline thread_local HeapWatch* current = nullptr;
    std::map<void*, std::size_t> blocks; // not yet freed, with their sizes
    std::vector<std::string> freed;      // what each block held when it was freed; not what realloc moved
};
