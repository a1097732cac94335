// Replaces malloc, calloc, realloc and free in this program's own objects, by linking with --wrap: an
// allocation fails on request, every block is watched, and nothing of malloc's is zero by chance. Both
// concern the calling thread only. What shared libraries allocate, operator new included, is neither counted
// nor watched.
#pragma once

#include <map>
#include <string>
#include <vector>

// Only the n-th allocation from now returns null, counted from 1; with 0 none does.
void failAllocation(int n);

// Whether the allocation that was to fail has been reached.
bool allocationFailed();

// The blocks that are allocated while it lives. There is one such object at a time.
struct HeapWatch {
    HeapWatch() { current = this; }
    ~HeapWatch() { current = nullptr; }

    static inline thread_local HeapWatch* current = nullptr;
    std::map<void*, std::size_t> blocks; // not yet freed, and their sizes
    std::vector<std::string> freed;      // the contents of each block that free released
};
