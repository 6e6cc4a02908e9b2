// DCT-IV by order, out of place, from a plan, beside FFTW's own and what its users make of a complex DFT of
// half the length; KissFFT has none. Planning is not timed.
#include "contest.h"
#include "rotations.h"

#include <cmath>
#include <numbers>

namespace zrfgen::bench {
namespace {

template <class Real> Contender byComplexDft(int length, const Array<Real> &src, const Array<Real> &dst) {
    const auto in = allocate<Real>(length / 2), out = allocate<Real>(length / 2),
               rotations = allocate<Real>(length / 2);
    for (int n = 0; n < length / 2; ++n) {
        const double angle = -std::numbers::pi * (8 * n + 1) / (8.0 * length);
        rotations[2 * n] = static_cast<Real>(std::cos(angle));
        rotations[2 * n + 1] = static_cast<Real>(std::sin(angle));
    }
    return contender("FFTW-complex", [=, plan = planComplexForward<Real>(length / 2, in, out)] {
        rotateIn(src.get(), rotations.get(), in.get(), length);
        Fftw<Real>::execute(plan.get());
        rotateOut(out.get(), rotations.get(), dst.get(), length);
    });
}

template <class Real>
std::vector<Contender> peers(int order, const Array<Real> &src, const Array<Real> &dst) {
    const int length = 1 << order;
    return {fftwContender<Real>("FFTW", planDct4<Real>(length, src, dst), src, dst),
            byComplexDft<Real>(length, src, dst)};
}

template <class Real> Contest contestOfOrders(const std::string &title, int firstOrder, int lastOrder) {
    return contest<Real>(title + " " + realSuffix<Real>, true, firstOrder, lastOrder, peers<Real>,
                         [](int order, const Array<Real> &src, const Array<Real> &dst, auto of) {
                             const Dct4Functions dct4(isSingle<Real>);
                             Dct4Plan *made = nullptr; // still if it cannot be made: the transform refuses it
                             dct4.initAlloc(&made, 1 << order);
                             const std::shared_ptr<Dct4Plan> plan(made, dct4.release);
                             const auto name = std::string("zrfgDCT4_") + realSuffix<Real>;
                             return [=, transform = of(exportNamed(name)).template as<Export::Dct4>()] {
                                 return transform(src.get(), dst.get(), plan.get());
                             };
                         });
}

} // namespace

std::vector<Contest> dct4Contests() {
    // The long ones apart: the caches decide there, which would blur the mean.
    return {contestOfOrders<float>("DCT-IV", 1, 13), contestOfOrders<double>("DCT-IV", 1, 13),
            contestOfOrders<float>("DCT-IV long", 14, 20), contestOfOrders<double>("DCT-IV long", 14, 20)};
}

} // namespace zrfgen::bench
