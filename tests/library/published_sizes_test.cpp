// What the size queries answer: the bytes of a transform's buffer or plan are part of the contract.
#include "exports.h"

#include <gtest/gtest.h>

namespace {

TEST(WalshHadamardBuffers, HaveThePublishedSizes) {
    const int32_t sizes[] = {0, 1024, 2048, 4096, 8192, 18432, 34816, 73728}; // Float64 is one order ahead
    for (int order = 1; order <= 13; ++order) {
        EXPECT_EQ(whtBufferBytes(order, true), sizes[std::max(0, order - 7)]) << order;
        EXPECT_EQ(whtBufferBytes(order, false), order <= 7 ? 0 : sizes[order - 6]) << order;
    }
}

// The size, or the status of a refusal.
int32_t planBytes(int32_t length, bool isSingle) {
    int32_t bytes;
    const Status status = Dct4Functions(isSingle).getSize(length, &bytes);
    return status == zrfStatusOk ? bytes : status;
}

TEST(Dct4Plans, HaveThePublishedSizes) {
    constexpr int32_t refused = zrfStatusSizeError;
    // Of the powers of two from 2 to 2^30.
    const int32_t singleBytes[] = {224,       224,        224,      224,      224,       1632,
                                   2144,      3168,       5216,     9312,     17504,     52768,
                                   103968,    206112,     410912,   820000,   2164960,   4327648,
                                   8652768,   17303520,   34604512, 85986208, 171969440, 343935648,
                                   687868576, 1375733920, refused,  refused,  refused,   536874336};
    const int32_t doubleBytes[] = {224,        224,      224,      224,       224,       2144,
                                   3168,       5216,     9312,     17504,     33888,     101920,
                                   202272,     402720,   804128,   1606432,   4262112,   8521952,
                                   17041376,   34080736, 68158944, 169872288, 339741600, 679479968,
                                   1358957216, refused,  refused,  refused,   268438880, 536874336};
    for (int exponent = 1; exponent <= 30; ++exponent) {
        EXPECT_EQ(planBytes(1 << exponent, true), singleBytes[exponent - 1]) << exponent;
        EXPECT_EQ(planBytes(1 << exponent, false), doubleBytes[exponent - 1]) << exponent;
    }
    EXPECT_EQ(planBytes(33, true), 1408);
    EXPECT_EQ(planBytes(33, false), 1664);
    EXPECT_EQ(planBytes(9, false), 1280);
    EXPECT_EQ(planBytes(17, false), 1408);
}

} // namespace
