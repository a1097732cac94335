// Freeing native memory that may have held a secret.
#pragma once

#include <cstdlib>
#include <cstring>

#include <malloc.h>

namespace zerlin {

// Overwrites memory from malloc that may have held a PIN, a seed, a key or clear text, and frees it.
inline void wipeAndFree(void* memory)
{
    if (memory == nullptr) return;
    explicit_bzero(memory, malloc_usable_size(memory));
    std::free(memory);
}

} // namespace zerlin
