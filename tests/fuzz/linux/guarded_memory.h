// What guarded pages are made of on Linux.
#pragma once

#include <cstddef>
#include <sys/mman.h>
#include <unistd.h>

inline std::size_t pageBytes() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Whole pages of `size` bytes between two that must not be touched; null if there is no memory.
inline unsigned char *memoryBetweenPages(std::size_t size, std::size_t page) {
    void *all = mmap(nullptr, size + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED)
        return nullptr;
    auto *const first = static_cast<unsigned char *>(all) + page;
    return mprotect(first, size, PROT_READ | PROT_WRITE) == 0 ? first : nullptr;
}
