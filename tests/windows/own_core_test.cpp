// A program that brings its own core library. The tests of the DCT-IV run in this program too, so the
// transforms give their usual result with its memory and without a capability.
#include <cstdlib>
#include <gtest/gtest.h>

TEST(OwnCore, IsAskedOnceAtLoad) {
    const char *const queries = std::getenv("ZRF_CORE_QUERIES");
    ASSERT_NE(queries, nullptr);
    EXPECT_STREQ(queries, "one");
}
