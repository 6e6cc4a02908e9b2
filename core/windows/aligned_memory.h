// Blocks of memory on wider boundaries than those of malloc.
#pragma once

#include <malloc.h>

inline bool allocateAligned(void **block, std::size_t alignment, std::size_t size) {
    *block = _aligned_malloc(size, alignment);
    return *block != nullptr;
}

inline void releaseAligned(void *block) {
    _aligned_free(block);
}
