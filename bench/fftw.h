// FFTW in either precision under one name, planned with the most care that it takes in reasonable time.
#pragma once

#include <fftw3.h>

#include <complex>
#include <memory>
#include <type_traits>

namespace zrfgen::bench {

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

template <class Real> using Array = std::shared_ptr<std::complex<Real>[]>;

// With FFTW's allocator: the alignment that it plans for.
template <class Real> Array<Real> allocate(int length) {
    void *const memory = Fftw<Real>::malloc(length * sizeof(std::complex<Real>));
    return {static_cast<std::complex<Real> *>(memory), Fftw<Real>::free};
}

// The forward complex DFT, planned afresh each time, since the planner measures too and may have chosen in a
// slow spell of the machine. Planning overwrites the arrays; they must live as long as the plan.
template <class Real>
typename Fftw<Real>::Plan planForward(int length, const Array<Real> &src, const Array<Real> &dst) {
    using Library = Fftw<Real>;
    Library::forgetWisdom();
    return {Library::plan(length, reinterpret_cast<typename Library::Complex *>(src.get()),
                          reinterpret_cast<typename Library::Complex *>(dst.get()), FFTW_FORWARD,
                          FFTW_PATIENT),
            Library::destroy};
}

} // namespace zrfgen::bench
