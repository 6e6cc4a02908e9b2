// The load notification, compiled into the test with a core library whose mask the test sets.
#include "load_start.h"

#include <gtest/gtest.h>
#include <zrfcore/zrfcore.h>

namespace {

std::uint64_t mask = 0x30;
int queries = 0;

} // namespace

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    ++queries;
    return mask;
}

namespace zrfgen {

TEST(LoadStart, RunsOnceBeforeMain) {
    EXPECT_EQ(queries, 1);
    EXPECT_EQ(capabilityFlag, 1u);
}

TEST(LoadStart, RecordsBothCapabilitiesTogether) {
    const auto recorded = [](std::uint64_t enabled) {
        mask = enabled;
        capabilityFlag = 7;
        EXPECT_EQ(entryRoutine(nullptr, processAttach, nullptr), 1);
        return capabilityFlag;
    };
    for (const std::uint64_t enabled : {0x30ull, 0x3full, 0xffffull, ~0ull})
        EXPECT_EQ(recorded(enabled), 1u) << enabled;
    for (const std::uint64_t enabled : {0ull, 0x10ull, 0x20ull, 0x0full, ~0x10ull, ~0x20ull, 0x30ull << 32})
        EXPECT_EQ(recorded(enabled), 0u) << enabled;
}

TEST(LoadStart, OtherReasonsHaveNoEffect) {
    const int queriesBefore = queries;
    capabilityFlag = 7;
    for (const std::uint32_t reason : {0u, 2u, 3u, 4u, 0x101u, ~0u})
        EXPECT_EQ(entryRoutine(nullptr, reason, nullptr), 1);
    EXPECT_EQ(capabilityFlag, 7u);
    EXPECT_EQ(queries, queriesBefore);
}

} // namespace zrfgen
