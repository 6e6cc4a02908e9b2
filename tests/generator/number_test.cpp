#include "number/quad.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace zrfgen::gen {

namespace {

TEST(Turn, IsReducedAndWrapsAround) {
    EXPECT_EQ(Turn(-3, 12), Turn(3, 4));
    EXPECT_EQ(Turn(1, 3) + Turn(5, 6), Turn(1, 6));
    EXPECT_TRUE(Turn(6, 8).isMultipleOf(4));
    EXPECT_FALSE(Turn(1, 8).isMultipleOf(4));
}

TEST(Cosine, IsSymmetricToTheLastBit) {
    for (int n = 1; n <= 128; ++n)
        for (int k = 0; k < n; ++k) {
            EXPECT_TRUE(cosine({k, n}) == cosine({-k, n})) << k << "/" << n;
            EXPECT_TRUE(cosine({k, n}) == -cosine(Turn(k, n) + Turn(1, 2))) << k << "/" << n;
            EXPECT_TRUE(sine({k, n}) == cosine(Turn(k, n) + Turn(-1, 4))) << k << "/" << n;
            const long double angle = 2 * std::numbers::pi_v<long double> * k / n;
            EXPECT_NEAR(static_cast<double>(cosine({k, n}) - std::cos(angle)), 0, 1e-18) << k << "/" << n;
            const Quad norm = cosine({k, n}) * cosine({k, n}) + sine({k, n}) * sine({k, n});
            EXPECT_LT(static_cast<double>(norm > 1 ? norm - 1 : 1 - norm), 1e-33) << k << "/" << n;
        }
}

TEST(Cosine, HasTheKnownValues) {
    EXPECT_TRUE(cosine({1, 4}) == 0);
    EXPECT_TRUE(cosine({1, 2}) == -1);
    const Quad half = squareRoot(Quad(1) / 2), fifth = (squareRoot(5) - 1) / 4;
    EXPECT_LT(static_cast<double>((cosine({1, 8}) - half) * (cosine({1, 8}) - half)), 1e-66);
    EXPECT_LT(static_cast<double>((cosine({1, 5}) - fifth) * (cosine({1, 5}) - fifth)), 1e-66);
    EXPECT_EQ(static_cast<double>(cosine({1, 5})), 0.30901699437494745);
    EXPECT_EQ(static_cast<double>(sine({1, 3})), 0.8660254037844386);
}

} // namespace

} // namespace zrfgen::gen
