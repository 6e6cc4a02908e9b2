// Memory between two pages that must not be touched.
#pragma once

#include "guarded_memory.h"

#include <cstddef>
#include <stdexcept>

class GuardedPages {
public:
    // As many pages as hold the bytes.
    explicit GuardedPages(std::size_t bytes) {
        const std::size_t page = pageBytes();
        size = (bytes + page - 1) / page * page;
        first = memoryBetweenPages(size, page);
        if (first == nullptr)
            throw std::runtime_error("no memory");
    }

    unsigned char *begin() const { return first; }
    unsigned char *end() const { return first + size; }

private:
    std::size_t size;
    unsigned char *first;
};
