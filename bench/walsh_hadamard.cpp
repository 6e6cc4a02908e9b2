// Walsh-Hadamard transform by order, out of place, unscaled, with a caller's buffer: beside other ways to
// compute it, and for the orders made of passes over the data beside what each pass costs.
#include "contest.h"
#include "walsh_hadamard_passes.h"

#include <algorithm>

namespace zrfgen::bench {
namespace {

using BufferedTransform = Status(ZRF_CALL *)(const void *src, void *dst, std::int32_t flag,
                                             std::uint8_t *buffer);

template <class Real> BufferedTransform findOrder(int order) {
    return findExport<BufferedTransform>("WHT", order, realSuffix<Real>);
}

template <class Real> Array<std::uint8_t> allocateBuffer(int order) {
    std::int32_t size = 0;
    if constexpr (std::is_same_v<Real, float>)
        zrfgWHTGetBufferSize_32f(order, &size);
    else
        zrfgWHTGetBufferSize_64f(order, &size);
    return {static_cast<std::uint8_t *>(Fftw<Real>::malloc(size)), Fftw<Real>::free};
}

// The butterflies as plain loops, for the compiler to vectorise with the library's instruction set.
template <class Real>
[[gnu::noinline]] void radix2(const Real *__restrict src, Real *__restrict dst, int order, Real scale) {
    const int length = 1 << order;
    std::copy_n(src, length, dst);
    for (int half = 1; half < length; half *= 2)
        for (int first = 0; first < length; first += 2 * half) {
            Real *const lower = dst + first, *const upper = lower + half;
            for (int i = 0; i < half; ++i) {
                const Real a = lower[i], b = upper[i];
                lower[i] = a + b;
                upper[i] = a - b;
            }
        }
    for (int i = 0; i < length; ++i)
        dst[i] *= scale;
}

template <class Real> std::vector<Contender> peers(int order, const Array<Real> &src, const Array<Real> &dst,
                                                   const Array<std::uint8_t> &) {
    const volatile Real one = 1; // not known when compiling, so that the loop does multiply by it
    const Real scale = one;
    return {contender("radix-2", [=] { radix2(src.get(), dst.get(), order, scale); }),
            fftwContender<Real>("FFTW", planWalshHadamard<Real>(order, src, dst), src, dst)};
}

template <class Real> using OrderPeers = std::vector<Contender> (*)(int order, const Array<Real> &src,
                                                                    const Array<Real> &dst,
                                                                    const Array<std::uint8_t> &buffer);

template <class Real>
Contest orderContest(const std::string &title, int firstOrder, OrderPeers<Real> orderPeers) {
    Contest result{title + " " + realSuffix<Real>, true, {}, [=](int order) {
                       const int length = 1 << order;
                       const auto src = allocate<Real>(length), dst = allocate<Real>(length);
                       const auto buffer = allocateBuffer<Real>(order);
                       std::vector<Contender> contenders = orderPeers(order, src, dst, buffer);
                       fill<Real>(src, length); // after the planning, which overwrites it
                       const BufferedTransform transform = findOrder<Real>(order);
                       contenders.insert(
                           contenders.begin(), zrfgenContender("order " + std::to_string(order), [=] {
                               return transform(src.get(), dst.get(), zrfScaleNone, buffer.get());
                           }));
                       return contenders;
                   }};
    for (int order = firstOrder; findOrder<Real>(order) != nullptr; ++order)
        result.lengths.push_back(order);
    return result;
}

} // namespace

std::vector<Contest> walshHadamardContests() {
    return {orderContest<float>("Walsh-Hadamard", 1, peers<float>),
            orderContest<double>("Walsh-Hadamard", 1, peers<double>),
            orderContest<float>("Walsh-Hadamard passes", firstOrderOfPasses, passContenders<float>),
            orderContest<double>("Walsh-Hadamard passes", firstOrderOfPasses, passContenders<double>)};
}

} // namespace zrfgen::bench
