// Real DFT in both directions, out of place, unscaled, in the layout that its peers have too.
#include "contest.h"

#include <kiss_fftr.h>

namespace zrfgen::bench {
namespace {

Contender kissFftContender(int length, bool isInverse, Array<float> src, Array<float> dst) {
    if (length % 2 != 0)
        return {"KissFFT", nullptr};
    const std::shared_ptr<kiss_fftr_state> state(kiss_fftr_alloc(length, isInverse, nullptr, nullptr),
                                                 kiss_fftr_free);
    if (isInverse)
        return contender("KissFFT", [=] {
            kiss_fftri(state.get(), reinterpret_cast<const kiss_fft_cpx *>(src.get()), dst.get());
        });
    return contender("KissFFT",
                     [=] { kiss_fftr(state.get(), src.get(), reinterpret_cast<kiss_fft_cpx *>(dst.get())); });
}

template <class Real>
std::vector<Contender> forwardPeers(int length, const Array<Real> &src, const Array<Real> &dst) {
    std::vector<Contender> result{
        fftwContender<Real>("FFTW", planRealForward<Real>(length, src, dst), src, dst)};
    if constexpr (isSingle<Real>)
        result.push_back(kissFftContender(length, false, src, dst));
    return result;
}

// FFTW free to overwrite its input. What it leaves there would grow without bound from call to call, so it
// gets an input of its own, of zeros, which stay zeros.
template <class Real> Contender destroyingFftwContender(int length, const Array<Real> &dst) {
    const auto src = allocate<Real>(length);
    const auto plan = planRealInverse<Real, FFTW_DESTROY_INPUT>(length, src, dst);
    std::fill_n(src.get(), 2 * length, Real(0));
    return fftwContender<Real>("FFTW-destroy", plan, src, dst);
}

template <class Real>
std::vector<Contender> inversePeers(int length, const Array<Real> &src, const Array<Real> &dst) {
    std::vector<Contender> result{
        fftwContender<Real>("FFTW", planRealInverse<Real>(length, src, dst), src, dst),
        destroyingFftwContender<Real>(length, dst)};
    if constexpr (isSingle<Real>)
        result.push_back(kissFftContender(length, true, src, dst));
    return result;
}

} // namespace

std::vector<Contest> realForwardContests() {
    return {contestOfLengths<float>("real DFT forward", "DFTFwd_RToCCS", forwardPeers<float>),
            contestOfLengths<double>("real DFT forward", "DFTFwd_RToCCS", forwardPeers<double>)};
}

std::vector<Contest> realInverseContests() {
    return {contestOfLengths<float>("real DFT inverse", "DFTInv_CCSToR", inversePeers<float>),
            contestOfLengths<double>("real DFT inverse", "DFTInv_CCSToR", inversePeers<double>)};
}

} // namespace zrfgen::bench
