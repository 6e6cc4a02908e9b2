// Blocks of memory on wider boundaries than those of malloc.
#pragma once

#include <cstdlib>

inline bool allocateAligned(void **block, std::size_t alignment, std::size_t size) {
    return posix_memalign(block, alignment, size) == 0;
}

inline void releaseAligned(void *block) {
    std::free(block);
}
