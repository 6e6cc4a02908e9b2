// Walsh-Hadamard transform by order, out of place, unscaled, with a caller's buffer: beside other ways to
// compute it, and for the orders made of passes over the data beside what each pass costs.
#include "walsh_hadamard_passes.h"

namespace zrfgen::bench {
namespace {

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

template <class Real>
std::vector<Contender> peers(int order, const Array<Real> &src, const Array<Real> &dst) {
    const volatile Real one = 1; // not known when compiling, so that the loop does multiply by it
    const Real scale = one;
    return {contender("radix-2", [=] { radix2(src.get(), dst.get(), order, scale); }),
            fftwContender<Real>("FFTW", planWalshHadamard<Real>(order, src, dst), src, dst)};
}

template <class Real>
Contest contestOfOrders(const std::string &title, int firstOrder, Peers<Real> orderPeers) {
    return contest<Real>(
        title + " " + realSuffix<Real>, true, firstOrder, zrfHighestOrder, orderPeers,
        [](int order, const Array<Real> &src, const Array<Real> &dst, auto of) {
            const auto transform =
                of(transformOf("WHT", order, isSingle<Real>)).template as<Export::WhtOrder>();
            const auto buffer = allocateBuffer<Real>(order);
            return [=] { return transform(src.get(), dst.get(), zrfScaleNone, buffer.get()); };
        });
}

} // namespace

std::vector<Contest> walshHadamardContests() {
    std::vector<Contest> contests = {contestOfOrders<float>("Walsh-Hadamard", 1, peers<float>),
                                     contestOfOrders<double>("Walsh-Hadamard", 1, peers<double>)};
    if (isBaseLibrary()) { // whose passes these are
        contests.push_back(
            contestOfOrders<float>("Walsh-Hadamard passes", firstOrderOfPasses, passContenders<float>));
        contests.push_back(
            contestOfOrders<double>("Walsh-Hadamard passes", firstOrderOfPasses, passContenders<double>));
    }
    return contests;
}

} // namespace zrfgen::bench
