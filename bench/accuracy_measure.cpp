#include "accuracy_measure.h"

#include "exports.h"
#include "fftw.h"

#include <number/quad.h>

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

using gen::ComplexQuad, gen::Quad;

struct Direction {
    const char *family;
    int sign; // of the exponent
};

constexpr Direction forward{"DFTFwd_CToC", -1}, inverse{"DFTInv_CToC", +1};

// The defining sum.
class ExactDft {
public:
    ExactDft(int length, Direction direction) {
        for (int turns = 0; turns < length; ++turns)
            roots.push_back(gen::onCircle({direction.sign * turns, length}));
    }

    template <class Real> std::vector<ComplexQuad> operator()(const Array<Real> &src) const {
        const std::size_t length = roots.size();
        std::vector<ComplexQuad> sums(length);
        for (std::size_t k = 0; k < length; ++k)
            for (std::size_t j = 0; j < length; ++j) {
                const ComplexQuad root = roots[j * k % length];
                const Quad re = src[j].real(), im = src[j].imag();
                sums[k].re += re * root.re - im * root.im;
                sums[k].im += re * root.im + im * root.re;
            }
        return sums;
    }

private:
    std::vector<ComplexQuad> roots;
};

class ZrfgenDft {
public:
    ZrfgenDft(int length, Direction direction, const char *suffix)
        : name(std::string(direction.family) + " of length " + std::to_string(length) + " for " + suffix),
          transform(findExport(direction.family, length, suffix)) {
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
    template <class Real> void add(const Array<Real> &values, const std::vector<ComplexQuad> &exact) {
        for (std::size_t i = 0; i < exact.size(); ++i) {
            error += square(values[i].real() - exact[i].re) + square(values[i].imag() - exact[i].im);
            size += square(exact[i].re) + square(exact[i].im);
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

template <class Real> double impulseError(int length, Direction direction) {
    const ZrfgenDft transform(length, direction, complexSuffix<Real>);
    const ExactDft exactDft(length, direction);
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    std::fill_n(src.get(), length, 0);
    double largest = 0;
    for (int position = 0; position < length; ++position) {
        for (const std::complex<Real> unit : {std::complex<Real>(1, 0), std::complex<Real>(0, 1)}) {
            src[position] = unit;
            transform(src.get(), dst.get());
            const std::vector<ComplexQuad> exact = exactDft(src);
            for (int k = 0; k < length; ++k)
                largest = std::max({largest, std::abs(static_cast<double>(dst[k].real() - exact[k].re)),
                                    std::abs(static_cast<double>(dst[k].imag() - exact[k].im))});
        }
        src[position] = 0;
    }
    return largest;
}

} // namespace

template <class Real> Accuracy measureAccuracy(int length) {
    const ZrfgenDft transform(length, forward, complexSuffix<Real>);
    const ExactDft exactDft(length, forward);
    const auto src = allocate<Real>(length), dst = allocate<Real>(length);
    const auto plan = planForward<Real>(length, src, dst);
    std::mt19937_64 generator;
    RelativeError zrfgen, fftw;
    for (int vector = 0; vector < randomVectors; ++vector) {
        std::generate_n(src.get(), length, [&] {
            return std::complex<Real>{randomValue<Real>(generator), randomValue<Real>(generator)};
        });
        const std::vector<ComplexQuad> exact = exactDft(src);
        transform(src.get(), dst.get());
        zrfgen.add(dst, exact);
        Fftw<Real>::execute(plan.get());
        fftw.add(dst, exact);
    }
    return {zrfgen.rootMeanSquare(), fftw.rootMeanSquare(),
            std::max(impulseError<Real>(length, forward), impulseError<Real>(length, inverse))};
}

template Accuracy measureAccuracy<float>(int length);
template Accuracy measureAccuracy<double>(int length);

} // namespace zrfgen::bench
