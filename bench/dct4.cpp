// DCT-IV by order, out of place, from a plan, beside FFTW; KissFFT has none. Planning is not timed.
#include "contest.h"

namespace zrfgen::bench {
namespace {

template <class Real> struct Dct4;

template <> struct Dct4<float> {
    static constexpr auto makePlan = zrfgDCT4InitAlloc_32f;
    static constexpr auto freePlan = zrfgDCT4Free_32f;
    static constexpr auto transform = zrfgDCT4_32f;
};

template <> struct Dct4<double> {
    static constexpr auto makePlan = zrfgDCT4InitAlloc_64f;
    static constexpr auto freePlan = zrfgDCT4Free_64f;
    static constexpr auto transform = zrfgDCT4_64f;
};

// Null if it cannot be made, which the transform refuses.
template <class Real> std::shared_ptr<Dct4Plan> makePlan(int length) {
    Dct4Plan *plan = nullptr;
    Dct4<Real>::makePlan(&plan, length);
    return {plan, Dct4<Real>::freePlan};
}

template <class Real> Contest orderContest(const std::string &title, int firstOrder, int lastOrder) {
    Contest result{title + " " + realSuffix<Real>, true, {}, [=](int order) {
                       const int length = 1 << order;
                       const auto src = allocate<Real>(length), dst = allocate<Real>(length);
                       const Contender fftw =
                           fftwContender<Real>("FFTW", planDct4<Real>(length, src, dst), src, dst);
                       fill<Real>(src, length); // after the planning, which overwrites it
                       const auto plan = makePlan<Real>(length);
                       const Contender zrfgen = zrfgenContender("order " + std::to_string(order), [=] {
                           return Dct4<Real>::transform(src.get(), dst.get(), plan.get());
                       });
                       return std::vector<Contender>{zrfgen, fftw};
                   }};
    for (int order = firstOrder; order <= lastOrder; ++order)
        result.lengths.push_back(order);
    return result;
}

} // namespace

std::vector<Contest> dct4Contests() {
    // The long ones apart: the caches decide there, which would blur the mean.
    return {orderContest<float>("DCT-IV", 1, 13), orderContest<double>("DCT-IV", 1, 13),
            orderContest<float>("DCT-IV long", 14, 20), orderContest<double>("DCT-IV long", 14, 20)};
}

} // namespace zrfgen::bench
