// Inverse real DFT, out of place, unscaled, from the layout that its peers read too.
#include "contest.h"

#include <kiss_fftr.h>

#include <algorithm>

namespace zrfgen::bench {
namespace {

// FFTW free to overwrite its input. What it leaves there would grow without bound from call to call, so it
// gets an input of its own, of zeros, which stay zeros.
template <class Real> Contender destroyingFftwContender(int length, const Array<Real> &dst) {
    const auto src = allocate<Real>(length);
    const auto plan = planRealInverse<Real, FFTW_DESTROY_INPUT>(length, src, dst);
    std::fill_n(src.get(), 2 * length, Real(0));
    return fftwContender<Real>("FFTW-destroy", plan, src, dst);
}

Contender kissFftContender(int length, Array<float> src, Array<float> dst) {
    if (length % 2 != 0)
        return {"KissFFT", nullptr};
    const std::shared_ptr<kiss_fftr_state> state(kiss_fftr_alloc(length, 1, nullptr, nullptr),
                                                 kiss_fftr_free);
    return contender("KissFFT", [=] {
        kiss_fftri(state.get(), reinterpret_cast<const kiss_fft_cpx *>(src.get()), dst.get());
    });
}

template <class Real>
std::vector<Contender> peers(int length, const Array<Real> &src, const Array<Real> &dst) {
    std::vector<Contender> result{
        fftwContender<Real>("FFTW", planRealInverse<Real>(length, src, dst), src, dst),
        destroyingFftwContender<Real>(length, dst)};
    if constexpr (std::is_same_v<Real, float>)
        result.push_back(kissFftContender(length, src, dst));
    return result;
}

template <class Real> Contest realInverseContest() {
    return contest<Real>("real DFT inverse", "DFTInv_CCSToR", realSuffix<Real>, peers<Real>);
}

} // namespace

std::vector<Contest> realInverseContests() {
    return {realInverseContest<float>(), realInverseContest<double>()};
}

} // namespace zrfgen::bench
