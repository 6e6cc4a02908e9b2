// Memory between two pages that must not be touched.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

class GuardedPages {
public:
    // As many pages as hold the bytes.
    explicit GuardedPages(std::size_t bytes = 1)
        : pageBytes(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
          size((bytes + pageBytes - 1) / pageBytes * pageBytes) {
        void *address = mmap(nullptr, size + 2 * pageBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (address == MAP_FAILED)
            throw std::runtime_error("no memory");
        first = static_cast<unsigned char *>(address) + pageBytes;
        allow(PROT_READ | PROT_WRITE);
    }
    ~GuardedPages() { munmap(first - pageBytes, size + 2 * pageBytes); }
    GuardedPages(const GuardedPages &) = delete;
    GuardedPages &operator=(const GuardedPages &) = delete;

    void allow(int access) {
        if (mprotect(first, size, access) != 0)
            throw std::runtime_error("cannot protect a page");
    }

    unsigned char *begin() const { return first; }
    unsigned char *end() const { return first + size; }

private:
    std::size_t pageBytes, size;
    unsigned char *first;
};
