#include "accuracy_measure.h"

#include "definition.h"
#include "exports.h"
#include "fftw.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace zrfgen::bench {
namespace {

using gen::Quad;

template <class Real> std::vector<Quad> exactResults(const Definition &definition, const Array<Real> &src) {
    std::vector<Quad> sums(definition.size(), 0);
    for (std::size_t k = 0; k < sums.size(); ++k)
        for (std::size_t j = 0; j < definition[k].size(); ++j)
            sums[k] += definition[k][j] * src[j];
    return sums;
}

class ZrfgenTransform {
public:
    ZrfgenTransform(const std::string &family, int length, const std::string &suffix)
        : name(family + " of length " + std::to_string(length) + " for " + suffix),
          transform(findExport(family, length, suffix)) {
        if (transform == nullptr)
            throw std::runtime_error("the library has no " + name);
    }

    void operator()(const void *src, void *dst) const {
        if (const Status status = transform(src, dst, zrfScaleNone); status != zrfStatusOk)
            throw std::runtime_error(name + " refused with status " + std::to_string(status) +
                                     "; run the tests first");
    }

private:
    std::string name;
    Transform transform;
};

class RelativeError {
public:
    template <class Real> void add(const Array<Real> &values, const std::vector<Quad> &exact) {
        for (std::size_t i = 0; i < exact.size(); ++i) {
            error += square(values[i] - exact[i]);
            size += square(exact[i]);
        }
    }

    double rootMeanSquare() const { return std::sqrt(static_cast<double>(error / size)); }

private:
    static Quad square(Quad x) { return x * x; }

    Quad error = 0, size = 0;
};

// Uniform in [-1, 1), in steps that use every bit of the type near 1.
template <class Real> Real randomValue(std::mt19937_64 &generator) {
    constexpr int bits = std::numeric_limits<Real>::digits;
    const auto steps = static_cast<std::int64_t>(generator() >> (64 - bits - 1));
    return std::ldexp(static_cast<Real>(steps - (std::int64_t(1) << bits)), -bits);
}

// The imaginary parts that are zero in the spectrum of every real sequence count for nothing in the sum.
bool isUsed(const Definition &definition, std::size_t source) {
    return std::ranges::any_of(definition, [=](const auto &result) { return result[source] != 0; });
}

template <class Real>
double impulseError(const ZrfgenTransform &transform, int length, const Definition &definition) {
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    const std::size_t sources = definition[0].size();
    std::fill_n(src.get(), sources, Real(0));
    double largest = 0;
    for (std::size_t position = 0; position < sources; ++position) {
        src[position] = 1;
        transform(src.get(), dst.get());
        for (std::size_t k = 0; k < definition.size(); ++k)
            largest = std::max(largest, std::abs(static_cast<double>(dst[k] - definition[k][position])));
        src[position] = 0;
    }
    return largest;
}

template <class Real>
using Planner = Plan<Real> (*)(int length, const Array<Real> &src, const Array<Real> &dst);

template <class Real> Accuracy measure(const ZrfgenTransform &transform, int length,
                                       const Definition &definition, Planner<Real> planFftw) {
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    const auto plan = planFftw(length, src, dst);
    std::mt19937_64 generator;
    RelativeError zrfgen, fftw;
    for (int vector = 0; vector < randomVectors; ++vector) {
        for (std::size_t j = 0; j < definition[0].size(); ++j)
            src[j] = isUsed(definition, j) ? randomValue<Real>(generator) : 0;
        const std::vector<Quad> exact = exactResults(definition, src);
        transform(src.get(), dst.get());
        zrfgen.add(dst, exact);
        Fftw<Real>::execute(plan.get());
        fftw.add(dst, exact);
    }
    return {zrfgen.rootMeanSquare(), fftw.rootMeanSquare(),
            impulseError<Real>(transform, length, definition)};
}

} // namespace

template <class Real> Accuracy complexForwardAccuracy(int length) {
    const ZrfgenTransform forward("DFTFwd_CToC", length, complexSuffix<Real>),
        inverse("DFTInv_CToC", length, complexSuffix<Real>);
    Accuracy accuracy = measure<Real>(forward, length, complexDft(length, -1), planComplexForward<Real>);
    accuracy.impulse =
        std::max(accuracy.impulse, impulseError<Real>(inverse, length, complexDft(length, +1)));
    return accuracy;
}

template <class Real> Accuracy realForwardAccuracy(int length) {
    return measure<Real>({"DFTFwd_RToCCS", length, realSuffix<Real>}, length, realForward(length),
                         planRealForward<Real>);
}

template <class Real> Accuracy realInverseAccuracy(int length) {
    return measure<Real>({"DFTInv_CCSToR", length, realSuffix<Real>}, length, realInverse(length),
                         planRealInverse<Real>);
}

template <class Real> Accuracy hartleyAccuracy(int length) {
    return measure<Real>({"Hartley", length, realSuffix<Real>}, length, hartley(length), planHartley<Real>);
}

template Accuracy complexForwardAccuracy<float>(int length);
template Accuracy complexForwardAccuracy<double>(int length);
template Accuracy realForwardAccuracy<float>(int length);
template Accuracy realForwardAccuracy<double>(int length);
template Accuracy realInverseAccuracy<float>(int length);
template Accuracy realInverseAccuracy<double>(int length);
template Accuracy hartleyAccuracy<float>(int length);
template Accuracy hartleyAccuracy<double>(int length);

} // namespace zrfgen::bench
