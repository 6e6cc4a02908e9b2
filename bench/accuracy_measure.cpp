#include "accuracy_measure.h"

#include "tests/definition.h"

#include <stdexcept>

namespace zrfgen::bench {
namespace {

template <class Real> auto callOf(const Export &transform, const Array<Real> &src, const Array<Real> &dst) {
    return [=, &transform] {
        const Status status =
            transform.transform(src.get(), dst.get(), transform.size, zrfScaleNone, nullptr);
        if (status != zrfStatusOk)
            throw std::runtime_error(std::string(transform.name) + " refused with status " +
                                     std::to_string(status) + "; run the tests first");
    };
}

} // namespace

template <class Real>
Accuracy measureAccuracy(const std::string &family, int length, Planner<Real> planFftw) {
    const bool isSingle = std::is_same_v<Real, float>;
    const Export &transform = transformOf(family, length, isSingle);
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    const auto plan = planFftw(length, src, dst);
    const auto errors = randomErrors(transform, src.get(), dst.get(), randomVectors,
                                     {callOf(transform, src, dst), [&] { Fftw<Real>::execute(plan.get()); }});
    const auto impulse = [&](const Export &either) {
        return impulseError(either, src.get(), dst.get(), callOf(either, src, dst));
    };
    const Export &mirrored = transform.isComplex() ? transformOf("DFTInv_CToC", length, isSingle) : transform;
    return {errors[0], errors[1], std::max(impulse(transform), impulse(mirrored))};
}

template Accuracy measureAccuracy(const std::string &family, int length, Planner<float> planFftw);
template Accuracy measureAccuracy(const std::string &family, int length, Planner<double> planFftw);

} // namespace zrfgen::bench
