// The DCT-IV against its defining sum and against its inverse, itself.
#include "exports.h"
#include "random.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace {

// Rounding errors of sums of n numbers below 1 grow like the root of n, and with the stages.
template <class Real> double errorBound(int n) {
    return 2 * std::numeric_limits<Real>::epsilon() * std::sqrt(n) * std::max(1.0, std::log2(n) / 6);
}

// The largest error over every step-th output.
template <class Real>
double largestError(const std::vector<Real> &x, const std::vector<Real> &result, int step) {
    const std::int64_t n = std::ssize(x);
    std::vector<long double> cosines(4 * n); // of odd multiples of pi / (4n)
    for (int i = 0; i < n; ++i) {
        const long double cosine = std::cos(std::numbers::pi_v<long double> * (2 * i + 1) / (4 * n));
        cosines[i] = cosines[4 * n - 1 - i] = cosine;
        cosines[2 * n - 1 - i] = cosines[2 * n + i] = -cosine;
    }
    long double largest = 0;
    for (std::int64_t k = 0; k < n; k += step) {
        long double sum = 0;
        std::int64_t odd = k; // ((2j+1)(2k+1) - 1) / 2 modulo 4n
        for (int j = 0; j < n; ++j, odd = (odd + 2 * k + 1) % (4 * n))
            sum += x[j] * cosines[odd];
        largest = std::max(largest, std::abs(result[k] - sum));
    }
    return static_cast<double>(largest);
}

template <class Real> class Dct4 : public testing::Test {};
using Elements = testing::Types<Float32, Float64>;
TYPED_TEST_SUITE(Dct4, Elements);

TYPED_TEST(Dct4, GivesTheDefiningSumAndTwiceTheInput) {
    const Dct4Functions dct4(sizeof(TypeParam) == sizeof(Float32));
    for (int length = 2; length <= 1 << 22; length *= length < 1 << 18 ? 2 : 16) { // to three levels
        SCOPED_TRACE(length);
        const std::vector<TypeParam> x = randomElements<TypeParam>(length);
        std::vector<TypeParam> once(length), twice(length);
        Dct4Plan *plan = nullptr;
        ASSERT_EQ(dct4.initAlloc(&plan, length), zrfStatusOk);
        EXPECT_EQ(dct4.transform(x.data(), once.data(), plan), zrfStatusOk);
        EXPECT_EQ(dct4.transform(once.data(), twice.data(), plan), zrfStatusOk);
        EXPECT_EQ(dct4.release(plan), zrfStatusOk);
        const int step = length <= 2048 ? 1 : length / 1024 | 1; // odd, lest it stays in one residue class
        const double bound = errorBound<TypeParam>(length);
        EXPECT_LT(largestError(x, once, length < 1 << 17 ? step : 64 * step + 1), bound);
        for (int i = 0; i < length; ++i)
            ASSERT_NEAR(twice[i] * 2 / length, x[i], 4 * bound / std::sqrt(length)) << i;
    }
}

} // namespace
