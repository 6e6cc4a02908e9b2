// FFTW in either precision under one name, planned with the most care that it takes in reasonable time.
#pragma once

#include <fftw3.h>

#include <memory>
#include <type_traits>
#include <vector>

namespace zrfgen::bench {

template <class Real> struct Fftw;

template <> struct Fftw<float> {
    static constexpr auto malloc = fftwf_malloc;
    static constexpr auto free = fftwf_free;
    static constexpr auto forgetWisdom = fftwf_forget_wisdom;
    static constexpr auto planComplex = fftwf_plan_dft_1d;
    static constexpr auto planRealForward = fftwf_plan_dft_r2c_1d;
    static constexpr auto planRealInverse = fftwf_plan_dft_c2r_1d;
    static constexpr auto planRealToReal = fftwf_plan_r2r_1d;
    static constexpr auto planRealToRealOfRank = fftwf_plan_r2r;
    static constexpr auto planManyComplex = fftwf_plan_many_dft;
    static constexpr auto planManyRealForward = fftwf_plan_many_dft_r2c;
    static constexpr auto planManyRealInverse = fftwf_plan_many_dft_c2r;
    static constexpr auto planManyRealToReal = fftwf_plan_many_r2r;
    static constexpr auto execute = fftwf_execute;
    static constexpr auto destroy = fftwf_destroy_plan;
    using Complex = fftwf_complex;
    using Plan = fftwf_plan;
};

template <> struct Fftw<double> {
    static constexpr auto malloc = fftw_malloc;
    static constexpr auto free = fftw_free;
    static constexpr auto forgetWisdom = fftw_forget_wisdom;
    static constexpr auto planComplex = fftw_plan_dft_1d;
    static constexpr auto planRealForward = fftw_plan_dft_r2c_1d;
    static constexpr auto planRealInverse = fftw_plan_dft_c2r_1d;
    static constexpr auto planRealToReal = fftw_plan_r2r_1d;
    static constexpr auto planRealToRealOfRank = fftw_plan_r2r;
    static constexpr auto planManyComplex = fftw_plan_many_dft;
    static constexpr auto planManyRealForward = fftw_plan_many_dft_r2c;
    static constexpr auto planManyRealInverse = fftw_plan_many_dft_c2r;
    static constexpr auto planManyRealToReal = fftw_plan_many_r2r;
    static constexpr auto execute = fftw_execute;
    static constexpr auto destroy = fftw_destroy_plan;
    using Complex = fftw_complex;
    using Plan = fftw_plan;
};

template <class Real> using Array = std::shared_ptr<Real[]>;

// Room for the elements of any transform of the length, of which length complex ones are the most. With
// FFTW's allocator: the alignment that it plans for.
template <class Real> Array<Real> allocate(int length) {
    return {static_cast<Real *>(Fftw<Real>::malloc(2 * length * sizeof(Real))), Fftw<Real>::free};
}

template <class Real> auto complexElements(const Array<Real> &array) {
    return reinterpret_cast<typename Fftw<Real>::Complex *>(array.get());
}

template <class Real> using Plan = std::shared_ptr<std::remove_pointer_t<typename Fftw<Real>::Plan>>;

// The planner measures too and may have chosen in a slow spell of the machine: it starts afresh each time.
template <class Real> Plan<Real> owned(typename Fftw<Real>::Plan plan) {
    Fftw<Real>::forgetWisdom();
    return {plan, Fftw<Real>::destroy};
}

template <class Real>
using Planner = Plan<Real> (*)(int length, const Array<Real> &src, const Array<Real> &dst);

// Planning overwrites the arrays; they must live as long as the plan. Patience takes minutes for the longest.
template <class Real>
Plan<Real> planComplexForward(int length, const Array<Real> &src, const Array<Real> &dst) {
    return owned<Real>(Fftw<Real>::planComplex(length, complexElements(src), complexElements(dst),
                                               FFTW_FORWARD,
                                               length <= 1 << 16 ? FFTW_PATIENT : FFTW_MEASURE));
}

template <class Real> Plan<Real> planRealForward(int length, const Array<Real> &src, const Array<Real> &dst) {
    return owned<Real>(Fftw<Real>::planRealForward(length, src.get(), complexElements(dst), FFTW_PATIENT));
}

// Whether the plan keeps its input makes a difference to FFTW in this direction alone.
template <class Real, unsigned inputFlag = FFTW_PRESERVE_INPUT>
Plan<Real> planRealInverse(int length, const Array<Real> &src, const Array<Real> &dst) {
    return owned<Real>(
        Fftw<Real>::planRealInverse(length, complexElements(src), dst.get(), FFTW_PATIENT | inputFlag));
}

template <class Real> Plan<Real> planHartley(int length, const Array<Real> &src, const Array<Real> &dst) {
    return owned<Real>(Fftw<Real>::planRealToReal(length, src.get(), dst.get(), FFTW_DHT, FFTW_PATIENT));
}

// A Hartley transform over as many dimensions as the order, two elements each: FFTW has nothing nearer.
template <class Real>
Plan<Real> planWalshHadamard(int order, const Array<Real> &src, const Array<Real> &dst) {
    const std::vector<int> dimensions(order, 2);
    const std::vector<fftw_r2r_kind> kinds(order, FFTW_DHT);
    return owned<Real>(Fftw<Real>::planRealToRealOfRank(order, dimensions.data(), src.get(), dst.get(),
                                                        kinds.data(), FFTW_PATIENT));
}

// Its sums are twice ours, for the same work.
template <class Real> Plan<Real> planDct4(int length, const Array<Real> &src, const Array<Real> &dst) {
    return owned<Real>(Fftw<Real>::planRealToReal(length, src.get(), dst.get(), FFTW_REDFT11, FFTW_PATIENT));
}

} // namespace zrfgen::bench
