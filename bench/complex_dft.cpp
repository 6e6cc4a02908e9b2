// Forward complex DFT, out of place, unscaled: the fixed-size exports beside FFTW and KissFFT.
#include "exports.h"
#include "families.h"
#include "fftw.h"

#include <kiss_fft.h>

#include <random>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

template <class Real> void fill(const Array<Real> &array, int length) {
    std::mt19937 generator;
    std::uniform_real_distribution<Real> value(-1, 1);
    for (int i = 0; i < length; ++i)
        array[i] = {value(generator), value(generator)};
}

constexpr const char *family = "DFTFwd_CToC";

template <class Real> Contender zrfgenContender(int length, Array<Real> src, Array<Real> dst) {
    const Transform transform = findExport(family, length, complexSuffix<Real>);
    if (const Status status = transform(src.get(), dst.get(), zrfScaleNone); status != zrfStatusOk)
        throw std::runtime_error("zrfgen refused length " + std::to_string(length) + " with status " +
                                 std::to_string(status) + "; run the tests before the benchmark");
    return {"zrfgen", [=](std::int64_t times) {
                for (; times > 0; --times)
                    transform(src.get(), dst.get(), zrfScaleNone);
            }};
}

template <class Real> Contender fftwContender(int length, Array<Real> src, Array<Real> dst) {
    const auto plan = planForward<Real>(length, src, dst);
    // The arrays live as long as the plan that points to them.
    return {"FFTW", [plan, src, dst](std::int64_t times) {
                for (; times > 0; --times)
                    Fftw<Real>::execute(plan.get());
            }};
}

Contender kissFftContender(int length, Array<float> src, Array<float> dst) {
    const std::shared_ptr<kiss_fft_state> state(kiss_fft_alloc(length, 0, nullptr, nullptr), kiss_fft_free);
    return {"KissFFT", [=](std::int64_t times) {
                for (; times > 0; --times)
                    kiss_fft(state.get(), reinterpret_cast<const kiss_fft_cpx *>(src.get()),
                             reinterpret_cast<kiss_fft_cpx *>(dst.get()));
            }};
}

// All contenders of a length work on the same two arrays.
template <class Real> std::vector<Contender> contenders(int length) {
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    const Contender fftw = fftwContender<Real>(length, src, dst);
    fill<Real>(src, length);
    std::vector<Contender> result{zrfgenContender<Real>(length, src, dst), fftw};
    // KissFFT's C library is packaged in single precision alone. Its C++ header does double too, but is
    // nearly twice as slow at some lengths: no stand-in.
    if constexpr (std::is_same_v<Real, float>)
        result.push_back(kissFftContender(length, src, dst));
    return result;
}

template <class Real> Contest contest() {
    Contest result{std::string("complex DFT ") + complexSuffix<Real>, {}, contenders<Real>};
    for (int length = 2; length <= 64; ++length)
        if (findExport(family, length, complexSuffix<Real>) != nullptr)
            result.lengths.push_back(length);
    return result;
}

} // namespace

std::vector<Contest> complexDftContests() {
    return {contest<float>(), contest<double>()};
}

} // namespace zrfgen::bench
