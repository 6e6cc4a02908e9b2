// The transforms touch their arrays and nothing else: arrays next to pages that must not be touched, with a
// source that must not be written. A fault ends the program; the case that was running names the export.
#include "guarded_pages.h"
#include "values.h"

namespace {

// At the start of the page, at its end, and in its middle on an odd address and off the 16-byte boundary.
std::vector<unsigned char *> placements(const GuardedPages &page, std::size_t bytes) {
    return {page.begin(), page.end() - bytes, page.begin() + 65, page.begin() + 72};
}

class MemoryBounds : public EachTransform {};

TEST_P(MemoryBounds, ArraysAndNoMore) {
    const Transform &transform = GetParam();
    const Values input = randomValues(transform, 4), expected = run(transform, input, zrfScaleNone);
    GuardedPages srcPage, dstPage;
    for (unsigned char *src : placements(srcPage, transform.srcBytes()))
        for (unsigned char *dst : placements(dstPage, transform.dstBytes())) {
            srcPage.allow(PROT_READ | PROT_WRITE);
            encode(transform, input, src);
            srcPage.allow(PROT_READ);
            ASSERT_EQ(transform.call(src, dst, zrfScaleNone), zrfStatusOk);
            ASSERT_EQ(decode(transform, dst), expected);
        }
}

INSTANTIATE_FOR_EACH_TRANSFORM(MemoryBounds);

} // namespace
