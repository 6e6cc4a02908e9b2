// The three layouts of a real sequence's spectrum: one computation, and zeros that nothing touches.
#include "values.h"

namespace {

// The numbers of a Pack array where the other layout has them, and its zeros.
Values fromPack(const Values &pack, Layout layout, std::size_t count) {
    const int n = static_cast<int>(pack.size());
    Values values(count);
    for (std::size_t i = 0; i < count; ++i)
        for (int j = 0; j < n; ++j)
            if (partAt(layout, n, i) == partAt(Layout::Pack, n, j))
                values[i] = pack[j];
    return values;
}

TEST(RealLayouts, HoldTheSameBits) {
    for (const char *family : {"DFTFwd_RToCCS", "DFTFwd_RToPerm"})
        for (const bool isSingle : {true, false})
            for (int n = 2; n <= 64; ++n) {
                const Transform &forward = builtTransform(family, n, isSingle);
                const Transform &inverse = oppositeOf(forward);
                const Transform &packForward = builtTransform("DFTFwd_RToPack", n, isSingle);
                const Transform &packInverse = oppositeOf(packForward);
                SCOPED_TRACE(forward.name);
                const auto inLayout = [&](const Values &pack) {
                    return fromPack(pack, forward.dstLayout, forward.dstCount());
                };
                const Values input = randomValues(packForward, 6);
                for (const int32_t flag : scalingFlags) {
                    EXPECT_EQ(bitsOf(run(forward, input, flag)),
                              bitsOf(inLayout(run(packForward, input, flag))));
                    EXPECT_EQ(bitsOf(run(inverse, inLayout(input), flag)),
                              bitsOf(run(packInverse, input, flag)));
                }
            }
}

TEST(RealLayouts, ZerosOfCcsAreWrittenAndNeverRead) {
    for (const bool isSingle : {true, false})
        for (int n = 2; n <= 64; ++n) {
            const Transform &forward = builtTransform("DFTFwd_RToCCS", n, isSingle);
            const Transform &inverse = oppositeOf(forward);
            const std::vector<int> zeros = zeroPositions(Layout::CCS, n);
            const Values spectrum = randomValues(inverse, 7);
            for (const int32_t flag : scalingFlags)
                for (const double value : notFinite) {
                    SCOPED_TRACE(testing::Message() << forward.name << ", flag " << flag << ", " << value);
                    const auto output = bitsOf(run(forward, Values(forward.srcCount(), value), flag));
                    Values marred = spectrum;
                    for (const int position : zeros) {
                        EXPECT_EQ(output[position], 0u);
                        marred[position] = value;
                    }
                    EXPECT_EQ(bitsOf(run(inverse, marred, flag)), bitsOf(run(inverse, spectrum, flag)));
                }
        }
}

} // namespace
