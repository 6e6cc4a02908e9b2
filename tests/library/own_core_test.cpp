// A program that brings its own core functions, of a processor that can do nothing. The tests of accuracy run
// in this program too, so the transforms give their usual result.
#include <cstdlib>
#include <gtest/gtest.h>
#include <zrfcore/zrfcore.h>

static int queries = 0;

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    return size > 0 ? std::aligned_alloc(16, (static_cast<std::size_t>(size) + 15) / 16 * 16) : nullptr;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    std::free(block);
}

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    ++queries;
    return 0;
}

TEST(OwnCore, IsAskedOnceAtLoad) {
    EXPECT_EQ(queries, 1);
}
