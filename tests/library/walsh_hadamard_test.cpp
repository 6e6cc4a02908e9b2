// The Walsh-Hadamard transforms: bit for bit the butterfly graph, with scratch memory of just the size that
// is asked for. The program brings its own allocator, which sees what the library takes.
#include "guarded_pages.h"
#include "registry.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <zrfcore/zrfcore.h>

namespace {

// Blocks end where their pages end, so that a step behind them faults.
std::map<void *, std::unique_ptr<GuardedPages>> allocated;
std::vector<int32_t> allocations;
int releases = 0;

} // namespace

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    allocations.push_back(size);
    auto pages = std::make_unique<GuardedPages>(size);
    void *const block = pages->end() - size;
    allocated[block] = std::move(pages);
    return block;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    ++releases;
    EXPECT_EQ(allocated.erase(block), 1u);
}

std::uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    return 0;
}

namespace {

constexpr int highestOrder = 13;
constexpr int32_t flags[] = {zrfScaleNone, zrfScaleBySqrtN, zrfScaleFwdByN, zrfScaleInvByN};

template <class Real> class WalshHadamard : public testing::Test {
protected:
    using Call = Status(ZRF_CALL *)(const void *src, void *dst, int32_t flag, void *buffer);
    using AnyOrderCall = Status(ZRF_CALL *)(const void *src, void *dst, int32_t order, int32_t flag,
                                            void *buffer);
    using SizeQuery = Status(ZRF_CALL *)(int32_t order, int32_t *size);

    static constexpr bool isSingle = sizeof(Real) == sizeof(Float32);
    using Bits = std::conditional_t<isSingle, std::uint32_t, std::uint64_t>;

    const std::string suffix = isSingle ? "_32f" : "_64f";
    const AnyOrderCall anyOrder = reinterpret_cast<AnyOrderCall>(exportAddress("zrfgWHT" + suffix));
    const SizeQuery sizeQuery = reinterpret_cast<SizeQuery>(exportAddress("zrfgWHTGetBufferSize" + suffix));

    Call kernel(int order) const {
        return reinterpret_cast<Call>(exportAddress("zrfgWHT_" + std::to_string(order) + suffix));
    }

    int32_t bufferSize(int order) const {
        int32_t size = -1;
        EXPECT_EQ(sizeQuery(order, &size), zrfStatusOk);
        return size;
    }

    // 1/sqrt(N): for odd orders the power of two next below times the numbers that stand here.
    static Real factor(int order, int32_t flag) {
        if (flag == zrfScaleNone)
            return 1;
        if (flag != zrfScaleBySqrtN)
            return std::ldexp(Real(1), -order);
        const Real rootHalf =
            std::bit_cast<Real>(static_cast<Bits>(isSingle ? 0x3f3504f3 : 0x3fe6a09e667f3bcc));
        return std::ldexp(order % 2 == 0 ? Real(1) : rootHalf, -(order / 2));
    }

    static std::vector<Real> butterflies(std::vector<Real> x, Real factor) {
        for (std::size_t distance = 1; distance < x.size(); distance *= 2)
            for (std::size_t j = 0; j < x.size(); ++j)
                if ((j & distance) == 0) {
                    const Real a = x[j], c = x[j + distance];
                    x[j] = a + c;
                    x[j + distance] = a - c;
                }
        for (Real &value : x)
            value *= factor;
        return x;
    }

    // Plain numbers; zeros of both signs among denormals; a few that are not finite.
    static std::vector<std::vector<Real>> inputs(int order) {
        using Limits = std::numeric_limits<Real>;
        const Real tiny[] = {0, -Real(0), Limits::denorm_min(), -Limits::denorm_min(), Limits::min()};
        const Real wild[] = {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Limits::max()};
        std::mt19937 random(order);
        std::uniform_real_distribution<Real> uniform(-1, 1);
        std::vector<std::vector<Real>> result(3, std::vector<Real>(1 << order));
        for (Real &value : result[0])
            value = uniform(random);
        for (Real &value : result[1])
            value = tiny[random() % 5];
        result[2] = result[0];
        result[2][random() % result[2].size()] = wild[order % 4];
        return result;
    }

    // The same bits, or both not a number.
    static bool isSame(const std::vector<Real> &expected, const unsigned char *dst) {
        for (const Real value : expected) {
            Real result;
            std::memcpy(&result, dst, sizeof result);
            dst += sizeof result;
            if (std::bit_cast<Bits>(result) != std::bit_cast<Bits>(value) &&
                !(std::isnan(result) && std::isnan(value)))
                return false;
        }
        return true;
    }
};

using Elements = testing::Types<Float32, Float64>;
TYPED_TEST_SUITE(WalshHadamard, Elements);

// Arrays and buffer end at their pages' ends, or up to 12 bytes short of it: off the 16-byte boundary.
TYPED_TEST(WalshHadamard, GivesTheBitsOfTheButterflyGraph) {
    constexpr std::size_t step = sizeof(TypeParam);
    for (int order = 1; order <= highestOrder; ++order) {
        SCOPED_TRACE(order);
        const std::size_t bytes = step << order;
        GuardedPages srcPages(bytes + 16), dstPages(bytes + 16), bufferPages(this->bufferSize(order));
        unsigned char *const buffer = bufferPages.end() - this->bufferSize(order);
        const auto kernel = this->kernel(order);
        for (const auto &input : this->inputs(order))
            for (const int32_t flag : flags) {
                const auto expected = this->butterflies(input, this->factor(order, flag));
                for (std::size_t srcShift = 0; srcShift < 16; srcShift += step)
                    for (std::size_t dstShift = 0; dstShift < 16; dstShift += step) {
                        unsigned char *const src = srcPages.end() - bytes - srcShift;
                        unsigned char *const dst = dstPages.end() - bytes - dstShift;
                        std::memcpy(src, input.data(), bytes);
                        ASSERT_EQ(kernel(src, dst, flag, buffer), zrfStatusOk);
                        ASSERT_TRUE(this->isSame(expected, dst))
                            << flag << " " << srcShift << " " << dstShift;
                        ASSERT_EQ(std::memcmp(src, input.data(), bytes), 0);
                    }
                unsigned char *const inPlace = srcPages.end() - bytes;
                std::memcpy(inPlace, input.data(), bytes);
                ASSERT_EQ(this->anyOrder(inPlace, inPlace, order, flag, buffer), zrfStatusOk);
                ASSERT_TRUE(this->isSame(expected, inPlace)) << flag << " in place";
            }
    }
}

TYPED_TEST(WalshHadamard, TakesTheBufferThatTheCallerLeavesOut) {
    for (int order = 1; order <= highestOrder; ++order)
        for (const bool isAligned : {true, false}) {
            const auto input = this->inputs(order)[0];
            std::vector<TypeParam> src(input.size() + 4), dst(input.size() + 4);
            const std::size_t first = isAligned ? 0 : 1; // vectors' memory lies on the boundary
            std::copy(input.begin(), input.end(), src.begin() + first);
            allocations.clear();
            releases = 0;
            ASSERT_EQ(this->kernel(order)(&src[first], &dst[first], zrfScaleBySqrtN, nullptr), zrfStatusOk);
            const auto expected = this->butterflies(input, this->factor(order, zrfScaleBySqrtN));
            EXPECT_TRUE(this->isSame(expected, reinterpret_cast<unsigned char *>(&dst[first]))) << order;
            const int32_t size = this->bufferSize(order);
            EXPECT_EQ(allocations, size == 0 ? std::vector<int32_t>{} : std::vector{size});
            EXPECT_EQ(releases, size == 0 ? 0 : 1);
        }
}

TYPED_TEST(WalshHadamard, RefusesInOrder) {
    allocations.clear();
    alignas(16) TypeParam array[2] = {1, 2};
    for (int order = 1; order <= highestOrder; ++order) {
        const auto kernel = this->kernel(order);
        unsigned char *const misaligned = reinterpret_cast<unsigned char *>(array) + 4;
        for (const int32_t flag : {0, 3, 12, 16, -1}) {
            EXPECT_EQ(kernel(nullptr, misaligned, flag, nullptr), zrfStatusNullPointer);
            EXPECT_EQ(kernel(array, nullptr, flag, nullptr), zrfStatusNullPointer);
            EXPECT_EQ(kernel(array, misaligned, flag, nullptr), zrfStatusFlagError);
            EXPECT_EQ(this->anyOrder(array, array, order, flag, nullptr), zrfStatusFlagError);
        }
    }
    for (const int32_t order : {0, 14, -1, 99}) {
        int32_t size = 77;
        EXPECT_EQ(this->anyOrder(nullptr, nullptr, order, 3, nullptr), zrfStatusSizeError);
        EXPECT_EQ(this->sizeQuery(order, nullptr), zrfStatusNullPointer);
        EXPECT_EQ(this->sizeQuery(order, &size), zrfStatusSizeError);
        EXPECT_EQ(size, 77);
    }
    EXPECT_EQ(array[0], 1);
    EXPECT_TRUE(allocations.empty());
}

TYPED_TEST(WalshHadamard, NamesItsBufferSizes) {
    const int32_t sizes[] = {1024, 2048, 4096, 8192, 18432, 34816, 73728};
    for (int order = 1; order <= 7; ++order)
        EXPECT_EQ(this->bufferSize(order), 0);
    for (int order = 8; order <= highestOrder; ++order)
        EXPECT_EQ(this->bufferSize(order), sizes[order - 8 + (this->isSingle ? 0 : 1)]);
}

} // namespace
