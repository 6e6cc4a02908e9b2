#include "algebra/bluestein.h"

#include "algebra/dft.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

using Column = SplitComplex::Column;
using Value = SplitComplex::Value;

ComplexQuad forwardChirp(int p, long j) {
    return onCircle({-(p + 1) / 2 * j * j, p});
}

ComplexQuad inverseChirp(int p, long j) {
    return onCircle({j * j, 2 * p});
}

// H[k] = 1/L times the spectrum of the mirrored conjugate chirp.
template <class Chirp> std::vector<ComplexQuad> filter(int p, int length, Chirp chirp) {
    std::vector<ComplexQuad> result;
    for (int k = 0; k < length; ++k) {
        const auto mirrored = [&](int n) {
            const int distance = std::min(n, length - n);
            const ComplexQuad c = distance < p ? chirp(p, distance) : ComplexQuad{};
            return ComplexQuad{c.re, -c.im};
        };
        result.push_back(spectrum(length, k, mirrored) / length);
    }
    return result;
}

Column exchanged(Column column) {
    for (auto &element : column)
        std::swap(element.re, element.im);
    return column;
}

} // namespace

Column bluesteinTransform(SplitComplex &m, const Decomposition &step, const Column &x) {
    const Decomposition &longer = step.factors[1];
    const int p = step.length, length = longer.length, lanes = m.perVector();

    std::vector<ComplexQuad> forward, inverse;
    for (int j = 0; j < p; ++j) {
        forward.push_back(forwardChirp(p, j));
        inverse.push_back(inverseChirp(p, j));
    }

    // Whole vectors of neighbours, the last one filled up with products by 0, so that what follows them is
    // zero in every lane.
    Column sequence;
    for (int first = 0; first < p; first += lanes) {
        const int count = std::min(lanes, p - first);
        const auto part = [&](const std::vector<ComplexQuad> &chirp) {
            std::vector<ComplexQuad> factors(chirp.begin() + first, chirp.begin() + first + count);
            factors.resize(lanes);
            return factors;
        };
        const Value product = m.multiply(m.gathered(Column(x.begin() + first, x.begin() + first + count)),
                                         m.constant(part(forward), part(inverse)));
        for (int lane = 0; lane < lanes; ++lane)
            sequence.push_back(m.element(product, lane));
    }
    sequence.resize(length, SplitComplex::zero());

    // The transform back is one there with real and imaginary parts exchanged before and after.
    const Column spectrum = transform(m, longer, Columns<SplitComplex>{sequence})[0];
    const Column product =
        m.multiplied(spectrum, filter(p, length, forwardChirp), filter(p, length, inverseChirp));
    Column result = exchanged(transform(m, longer, Columns<SplitComplex>{exchanged(product)})[0]);
    result.resize(p);
    return m.multiplied(result, forward, inverse);
}

} // namespace zrfgen::gen
