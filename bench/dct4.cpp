// DCT-IV by order, out of place, from a plan, beside FFTW; KissFFT has none. Planning is not timed.
#include "contest.h"

namespace zrfgen::bench {
namespace {

template <class Real>
std::vector<Contender> peers(int order, const Array<Real> &src, const Array<Real> &dst) {
    return {fftwContender<Real>("FFTW", planDct4<Real>(1 << order, src, dst), src, dst)};
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
