// What guarded pages are made of on Windows.
#pragma once

#include <cstddef>

#include <windows.h>

inline std::size_t pageBytes() {
    return 4096;
}

// Whole pages of `size` bytes between two that must not be touched; null if there is no memory.
inline unsigned char *memoryBetweenPages(std::size_t size, std::size_t page) {
    void *all = VirtualAlloc(nullptr, size + 2 * page, MEM_RESERVE, PAGE_NOACCESS);
    if (all == nullptr)
        return nullptr;
    return static_cast<unsigned char *>(
        VirtualAlloc(static_cast<unsigned char *>(all) + page, size, MEM_COMMIT, PAGE_READWRITE));
}
