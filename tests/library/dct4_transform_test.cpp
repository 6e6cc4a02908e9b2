// The DCT-IV against its defining sum.
#include "registry.h"
#include "values.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <numbers>
#include <random>

namespace {

template <class Real> class Dct4 : public testing::Test {
protected:
    static constexpr bool isSingle = sizeof(Real) == sizeof(Float32);
    using Transform = Status(ZRF_CALL *)(const void *, void *, const Dct4Plan *);
    using Init = Status(ZRF_CALL *)(Dct4Plan **, int32_t, void *);
    using GetSize = Status(ZRF_CALL *)(int32_t, int32_t *);

    template <class Function> static Function find(const std::string &name) {
        return reinterpret_cast<Function>(exportAddress("zrfgDCT4" + name + (isSingle ? "_32f" : "_64f")));
    }
    const Transform transform = find<Transform>("");

    // A plan in a block of just the reported size, and the block.
    struct OwnedPlan {
        std::vector<unsigned char> block;
        Dct4Plan *plan = nullptr;
    };
    static OwnedPlan makePlan(int32_t length) {
        OwnedPlan result;
        int32_t size = 0;
        EXPECT_EQ(find<GetSize>("GetSize")(length, &size), zrfStatusOk) << length;
        result.block.resize(size);
        EXPECT_EQ(find<Init>("Init")(&result.plan, length, result.block.data()), zrfStatusOk) << length;
        return result;
    }

    static std::vector<Real> randomInput(int length, unsigned seed = 1) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<Real> uniform(-1, 1);
        std::vector<Real> x(length);
        for (Real &value : x)
            value = uniform(random);
        return x;
    }

    std::vector<Real> run(const std::vector<Real> &x, const Dct4Plan *plan) const {
        std::vector<Real> result(x.size());
        EXPECT_EQ(transform(x.data(), result.data(), plan), zrfStatusOk);
        return result;
    }

    // The cosines of all odd multiples of pi / (4n).
    static std::vector<long double> cosines(int n) {
        std::vector<long double> table(4 * n);
        for (int i = 0; i < 4 * n; ++i)
            table[i] = std::cos(std::numbers::pi_v<long double> * (2 * i + 1) / (4 * n));
        return table;
    }

    static long double expectedAt(int k, const std::vector<Real> &x,
                                  const std::vector<long double> &cosines) {
        const std::int64_t n = static_cast<std::int64_t>(x.size());
        long double sum = 0;
        std::int64_t odd = k; // ((2j+1)(2k+1) - 1) / 2 modulo 4n
        for (std::int64_t j = 0; j < n; ++j, odd = (odd + 2 * k + 1) % (4 * n))
            sum += x[j] * cosines[odd];
        return sum;
    }

    // The largest error over every `step`-th output.
    static double largestError(const std::vector<Real> &x, const std::vector<Real> &result, int step) {
        const int n = static_cast<int>(x.size());
        const auto table = cosines(n);
        long double largest = 0;
        for (int k = 0; k < n; k += step)
            largest = std::max(largest, std::abs(result[k] - expectedAt(k, x, table)));
        return static_cast<double>(largest);
    }

    // Rounding errors of sums of n numbers below 1 grow like the root of n, and with the stages.
    static double errorBound(int n) {
        return 1.5 * std::numeric_limits<Real>::epsilon() * std::sqrt(n) * std::max(1.0, std::log2(n) / 6);
    }
};

using Elements = testing::Types<Float32, Float64>;
TYPED_TEST_SUITE(Dct4, Elements);

TYPED_TEST(Dct4, GivesTheDefiningSum) {
    for (int length = 2; length <= 1 << 20; length *= 2) {
        const auto owned = this->makePlan(length);
        const auto x = this->randomInput(length);
        const int step = length <= 2048 ? 1 : length / 1024 | 1; // odd, lest it stays in one residue class
        EXPECT_LT(this->largestError(x, this->run(x, owned.plan), length < 1 << 17 ? step : 64 * step + 1),
                  this->errorBound(length))
            << length;
    }
}

TYPED_TEST(Dct4, TwiceGivesHalfTheLengthTimesTheInput) {
    for (int length = 2; length <= 1 << 16; length *= 2) {
        const auto owned = this->makePlan(length);
        const auto x = this->randomInput(length), back = this->run(this->run(x, owned.plan), owned.plan);
        for (int i = 0; i < length; ++i)
            ASSERT_NEAR(back[i] * 2 / length, x[i], 4 * this->errorBound(length) / std::sqrt(length))
                << length;
    }
}

// In place, off every boundary, and a second time with the same plan.
TYPED_TEST(Dct4, GivesTheSameBitsWhereverTheArraysLie) {
    for (int length = 2; length <= 8192; length *= 2) {
        const auto owned = this->makePlan(length);
        const auto x = this->randomInput(length), expected = this->run(x, owned.plan);
        const std::size_t bytes = length * sizeof(TypeParam);
        std::vector<unsigned char> src(bytes + 64), dst(bytes + 64);
        for (const std::size_t srcOffset : {0, 4, 8, 12})
            for (const std::size_t dstOffset : {0, 4, 8, 20}) {
                std::fill(dst.begin(), dst.end(), 0xa5);
                std::memcpy(&src[srcOffset], x.data(), bytes);
                ASSERT_EQ(this->transform(&src[srcOffset], &dst[dstOffset], owned.plan), zrfStatusOk);
                ASSERT_EQ(std::memcmp(&dst[dstOffset], expected.data(), bytes), 0) << length;
                ASSERT_EQ(std::memcmp(&src[srcOffset], x.data(), bytes), 0);
                std::fill_n(&dst[dstOffset], bytes, 0xa5);
                ASSERT_EQ(std::count(dst.begin(), dst.end(), 0xa5), std::ssize(dst)) << length;
            }
        ASSERT_EQ(this->transform(&src[12], &src[12], owned.plan), zrfStatusOk);
        ASSERT_EQ(std::memcmp(&src[12], expected.data(), bytes), 0) << length << " in place";
    }
}

TYPED_TEST(Dct4, RefusesInOrder) {
    const auto owned = this->makePlan(64);
    const auto x = this->randomInput(64);
    std::vector<TypeParam> result(64, 7);
    EXPECT_EQ(this->transform(nullptr, nullptr, nullptr), zrfStatusNullPointer);
    EXPECT_EQ(this->transform(x.data(), result.data(), nullptr), zrfStatusNullPointer);
    EXPECT_EQ(this->transform(nullptr, result.data(), owned.plan), zrfStatusNullPointer);
    EXPECT_EQ(this->transform(x.data(), nullptr, owned.plan), zrfStatusNullPointer);
    auto *words = reinterpret_cast<int32_t *>(owned.plan);
    constexpr int kind = 8; // behind the header, three lists and the work table
    ASSERT_EQ(words[kind], 6);
    for (const int32_t wrong : {0, 7, -1}) {
        words[kind] = wrong;
        EXPECT_EQ(this->transform(x.data(), result.data(), owned.plan), zrfStatusPlanError);
    }
    EXPECT_EQ(result, std::vector<TypeParam>(64, 7));
}

// Lengths of one above a power of two have plans, which stay within the arrays.
TYPED_TEST(Dct4, StaysWithinTheArraysAtOddLengths) {
    for (const int length : {33, 65, 129, 4097}) {
        const auto owned = this->makePlan(length);
        const auto x = this->randomInput(length);
        std::vector<TypeParam> result(length + 8, 7);
        EXPECT_EQ(this->transform(x.data(), result.data(), owned.plan), zrfStatusOk);
        for (int i = length; i < length + 8; ++i)
            EXPECT_EQ(result[i], 7) << length;
    }
}

} // namespace
