// Memory between two pages that must not be touched.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

class GuardedPages {
public:
    // As many pages as hold the bytes.
    explicit GuardedPages(std::size_t bytes) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        size = (bytes + page - 1) / page * page;
        void *all = mmap(nullptr, size + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        first = static_cast<unsigned char *>(all) + page;
        if (all == MAP_FAILED || mprotect(first, size, PROT_READ | PROT_WRITE) != 0)
            throw std::runtime_error("no memory");
    }

    unsigned char *begin() const { return first; }
    unsigned char *end() const { return first + size; }

private:
    std::size_t size;
    unsigned char *first;
};
