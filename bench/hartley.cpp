// Hartley transform, out of place, unscaled, beside FFTW; KissFFT has none.
#include "contest.h"

namespace zrfgen::bench {
namespace {

template <class Real>
std::vector<Contender> peers(int length, const Array<Real> &src, const Array<Real> &dst) {
    return {fftwContender<Real>("FFTW", planHartley<Real>(length, src, dst), src, dst)};
}

} // namespace

std::vector<Contest> hartleyContests() {
    return {contestOfLengths<float>("Hartley", "Hartley", peers<float>),
            contestOfLengths<double>("Hartley", "Hartley", peers<double>)};
}

} // namespace zrfgen::bench
