// Forward complex DFT, out of place, unscaled: the fixed-size exports beside FFTW and KissFFT.
#include "families.h"

#include <fftw3.h>
#include <kiss_fft.h>
#include <zrfgen/transforms.h>

#include <complex>
#include <dlfcn.h>
#include <memory>
#include <random>
#include <stdexcept>
#include <type_traits>

namespace zrfgen::bench {
namespace {

template <class Real> struct Fftw;

template <> struct Fftw<float> {
    static constexpr auto malloc = fftwf_malloc;
    static constexpr auto free = fftwf_free;
    static constexpr auto forgetWisdom = fftwf_forget_wisdom;
    static constexpr auto plan = fftwf_plan_dft_1d;
    static constexpr auto execute = fftwf_execute;
    static constexpr auto destroy = fftwf_destroy_plan;
    using Complex = fftwf_complex;
    using Plan = std::shared_ptr<std::remove_pointer_t<fftwf_plan>>;
};

template <> struct Fftw<double> {
    static constexpr auto malloc = fftw_malloc;
    static constexpr auto free = fftw_free;
    static constexpr auto forgetWisdom = fftw_forget_wisdom;
    static constexpr auto plan = fftw_plan_dft_1d;
    static constexpr auto execute = fftw_execute;
    static constexpr auto destroy = fftw_destroy_plan;
    using Complex = fftw_complex;
    using Plan = std::shared_ptr<std::remove_pointer_t<fftw_plan>>;
};

template <class Real> constexpr const char *suffix = std::is_same_v<Real, float> ? "32fc" : "64fc";

template <class Real> using Array = std::shared_ptr<std::complex<Real>[]>;

// With FFTW's allocator: the alignment that it plans for.
template <class Real> Array<Real> allocate(int length) {
    void *const memory = Fftw<Real>::malloc(length * sizeof(std::complex<Real>));
    return {static_cast<std::complex<Real> *>(memory), Fftw<Real>::free};
}

template <class Real> void fill(const Array<Real> &array, int length) {
    std::mt19937 generator;
    std::uniform_real_distribution<Real> value(-1, 1);
    for (int i = 0; i < length; ++i)
        array[i] = {value(generator), value(generator)};
}

using Transform = Status(ZRF_CALL *)(const void *src, void *dst, std::int32_t flag);

// Null if the library has no such export.
Transform findExport(int length, const std::string &suffix) {
    const std::string name = "zrfgDFTFwd_CToC_" + std::to_string(length) + "_" + suffix;
    return reinterpret_cast<Transform>(dlsym(RTLD_DEFAULT, name.c_str()));
}

template <class Real> Contender zrfgenContender(int length, Array<Real> src, Array<Real> dst) {
    const Transform transform = findExport(length, suffix<Real>);
    if (const Status status = transform(src.get(), dst.get(), zrfScaleNone); status != zrfStatusOk)
        throw std::runtime_error("zrfgen refused length " + std::to_string(length) + " with status " +
                                 std::to_string(status) + "; run the tests before the benchmark");
    return {"zrfgen", [=](std::int64_t times) {
                for (; times > 0; --times)
                    transform(src.get(), dst.get(), zrfScaleNone);
            }};
}

// Planned afresh each time, since the planner measures too and may have chosen in a slow spell of the
// machine. Planning overwrites the arrays.
template <class Real> Contender fftwContender(int length, Array<Real> src, Array<Real> dst) {
    using Library = Fftw<Real>;
    Library::forgetWisdom();
    const typename Library::Plan plan(
        Library::plan(length, reinterpret_cast<typename Library::Complex *>(src.get()),
                      reinterpret_cast<typename Library::Complex *>(dst.get()), FFTW_FORWARD, FFTW_PATIENT),
        Library::destroy);
    // The arrays live as long as the plan that points to them.
    return {"FFTW", [plan, src, dst](std::int64_t times) {
                for (; times > 0; --times)
                    Library::execute(plan.get());
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
    Contest result{std::string("complex DFT ") + suffix<Real>, {}, contenders<Real>};
    for (int length = 2; length <= 64; ++length)
        if (findExport(length, suffix<Real>) != nullptr)
            result.lengths.push_back(length);
    return result;
}

} // namespace

std::vector<Contest> complexDftContests() {
    return {contest<float>(), contest<double>()};
}

} // namespace zrfgen::bench
