// Forward real DFT, out of place, unscaled, to the layout that its peers write too.
#include "contest.h"

#include <kiss_fftr.h>

namespace zrfgen::bench {
namespace {

Contender kissFftContender(int length, Array<float> src, Array<float> dst) {
    if (length % 2 != 0)
        return {"KissFFT", nullptr};
    const std::shared_ptr<kiss_fftr_state> state(kiss_fftr_alloc(length, 0, nullptr, nullptr),
                                                 kiss_fftr_free);
    return contender("KissFFT",
                     [=] { kiss_fftr(state.get(), src.get(), reinterpret_cast<kiss_fft_cpx *>(dst.get())); });
}

template <class Real>
std::vector<Contender> peers(int length, const Array<Real> &src, const Array<Real> &dst) {
    std::vector<Contender> result{
        fftwContender<Real>("FFTW", planRealForward<Real>(length, src, dst), src, dst)};
    if constexpr (std::is_same_v<Real, float>)
        result.push_back(kissFftContender(length, src, dst));
    return result;
}

template <class Real> Contest realForwardContest() {
    return contest<Real>("real DFT forward", "DFTFwd_RToCCS", realSuffix<Real>, peers<Real>);
}

} // namespace

std::vector<Contest> realForwardContests() {
    return {realForwardContest<float>(), realForwardContest<double>()};
}

} // namespace zrfgen::bench
