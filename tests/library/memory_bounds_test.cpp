// The transforms touch their arrays and nothing else: arrays next to pages that must not be touched, with a
// source that must not be written. A fault ends the program; the case that was running names the export.
#include "values.h"

#include <cstring>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// One page between two inaccessible ones.
class GuardedPage {
public:
    GuardedPage() : pageBytes(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
        void *address = mmap(nullptr, 3 * pageBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (address == MAP_FAILED)
            throw std::runtime_error("no memory");
        page = static_cast<unsigned char *>(address) + pageBytes;
        allow(PROT_READ | PROT_WRITE);
    }
    ~GuardedPage() { munmap(page - pageBytes, 3 * pageBytes); }
    GuardedPage(const GuardedPage &) = delete;
    GuardedPage &operator=(const GuardedPage &) = delete;

    void allow(int access) {
        if (mprotect(page, pageBytes, access) != 0)
            throw std::runtime_error("cannot protect a page");
    }

    // At the start of the page, at its end, and in its middle on an odd address and off the 16-byte boundary.
    std::vector<unsigned char *> placements(std::size_t bytes) const {
        return {page, page + pageBytes - bytes, page + 65, page + 72};
    }

private:
    std::size_t pageBytes;
    unsigned char *page;
};

class MemoryBounds : public EachTransform {};

TEST_P(MemoryBounds, ArraysAndNoMore) {
    const Transform &transform = GetParam();
    const Values input = randomValues(transform, 4), expected = run(transform, input, zrfScaleNone);
    GuardedPage srcPage, dstPage;
    for (unsigned char *src : srcPage.placements(transform.srcBytes()))
        for (unsigned char *dst : dstPage.placements(transform.dstBytes())) {
            srcPage.allow(PROT_READ | PROT_WRITE);
            encode(transform, input, src);
            srcPage.allow(PROT_READ);
            ASSERT_EQ(transform.call(src, dst, zrfScaleNone), zrfStatusOk);
            ASSERT_EQ(decode(transform, dst), expected);
        }
}

INSTANTIATE_FOR_EACH_TRANSFORM(MemoryBounds);

} // namespace
