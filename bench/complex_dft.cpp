// Forward complex DFT, out of place, unscaled: the fixed-size exports beside FFTW and KissFFT.
#include "contest.h"

#include <kiss_fft.h>

namespace zrfgen::bench {
namespace {

Contender kissFftContender(int length, Array<float> src, Array<float> dst) {
    const std::shared_ptr<kiss_fft_state> state(kiss_fft_alloc(length, 0, nullptr, nullptr), kiss_fft_free);
    return contender("KissFFT", [=] {
        kiss_fft(state.get(), reinterpret_cast<const kiss_fft_cpx *>(src.get()),
                 reinterpret_cast<kiss_fft_cpx *>(dst.get()));
    });
}

template <class Real>
std::vector<Contender> peers(int length, const Array<Real> &src, const Array<Real> &dst) {
    std::vector<Contender> result{
        fftwContender<Real>("FFTW", planComplexForward<Real>(length, src, dst), src, dst)};
    // KissFFT's C library is packaged in single precision alone. Its C++ header does double too, but is
    // nearly twice as slow at some lengths: no stand-in.
    if constexpr (isSingle<Real>)
        result.push_back(kissFftContender(length, src, dst));
    return result;
}

} // namespace

std::vector<Contest> complexDftContests() {
    return {contestOfLengths<float>("complex DFT", "DFTFwd_CToC", peers<float>),
            contestOfLengths<double>("complex DFT", "DFTFwd_CToC", peers<double>)};
}

} // namespace zrfgen::bench
