// Hartley transform, out of place, unscaled, beside FFTW; KissFFT has none.
#include "contest.h"

namespace zrfgen::bench {
namespace {

template <class Real>
std::vector<Contender> peers(int length, const Array<Real> &src, const Array<Real> &dst) {
    return {fftwContender<Real>("FFTW", planHartley<Real>(length, src, dst), src, dst)};
}

template <class Real> Contest hartleyContest() {
    return contest<Real>("Hartley", "Hartley", realSuffix<Real>, peers<Real>);
}

} // namespace

std::vector<Contest> hartleyContests() {
    return {hartleyContest<float>(), hartleyContest<double>()};
}

} // namespace zrfgen::bench
