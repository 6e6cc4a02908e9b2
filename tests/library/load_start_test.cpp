// The load notification, compiled into the test with a core library whose mask the test sets.
#include "load_start.h"

#include <gtest/gtest.h>
#include <zrfcore/zrfcore.h>

namespace {

std::uint64_t mask = 0x30;

} // namespace

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    return mask;
}

namespace zrfgen {

TEST(LoadStart, RecordsBothCapabilitiesTogetherAtProcessAttachAlone) {
    EXPECT_EQ(capabilityFlag, 1u); // before main
    const auto recorded = [](std::uint32_t reason, std::uint64_t enabled) {
        mask = enabled;
        capabilityFlag = 7;
        EXPECT_EQ(entryRoutine(nullptr, reason, nullptr), 1);
        return capabilityFlag;
    };
    for (const std::uint64_t enabled : {0x30ull, 0x3full, 0xffffull, ~0ull})
        EXPECT_EQ(recorded(processAttach, enabled), 1u) << enabled;
    for (const std::uint64_t enabled : {0ull, 0x10ull, 0x20ull, 0x0full, ~0x10ull, ~0x20ull, 0x30ull << 32})
        EXPECT_EQ(recorded(processAttach, enabled), 0u) << enabled;
    for (const std::uint32_t reason : {0u, 2u, 3u, 4u, 0x101u, ~0u})
        EXPECT_EQ(recorded(reason, ~0ull), 7u) << reason;
}

} // namespace zrfgen
