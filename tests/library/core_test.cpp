// The core library that comes with the transforms.
#include <zrfcore/zrfcore.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace {

TEST(Core, BlocksAreAligned) {
    for (int32_t size = 1; size <= 100; ++size) {
        void *block = zrfMalloc(size);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u) << size << " bytes";
        std::memset(block, 1, static_cast<std::size_t>(size));
        zrfFree(block);
    }
}

TEST(Core, NoBlockForSizesThatAreNotPositive) {
    for (const int32_t size : {0, -1, INT_MIN})
        EXPECT_EQ(zrfMalloc(size), nullptr) << size;
    zrfFree(nullptr);
}

TEST(Core, EnablesWhatThisProgramIsCompiledFor) {
    const std::uint64_t wanted = zrfCpuMmx | zrfCpuSse | zrfCpuSse2 | zrfCpuSse3;
    EXPECT_EQ(zrfGetEnabledCpuFeatures() & wanted, wanted);
}

} // namespace
