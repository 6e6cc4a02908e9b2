#include "algebra/rader.h"

namespace zrfgen::gen {

std::vector<int> powersOfPrimitiveRoot(int p) {
    for (int g = 2;; ++g) {
        std::vector<int> powers{1};
        while (powers.back() * g % p != 1)
            powers.push_back(powers.back() * g % p);
        if (static_cast<int>(powers.size()) == p - 1)
            return powers;
    }
}

std::vector<ComplexQuad> raderSpectrum(const std::vector<int> &powers) {
    const int m = static_cast<int>(powers.size());
    const auto sequence = [&](int q) { return onCircle({-powers[(m - q) % m], m + 1}); };
    std::vector<ComplexQuad> result;
    for (int k = 0; k < m; ++k)
        result.push_back(spectrum(m, k, sequence) / m);
    return result;
}

RealLaneRader::RealLaneRader(const Decomposition &step)
    : powers(powersOfPrimitiveRoot(step.length)),
      there(realTransform(step.factors[0], FormalComplex::Factors::Carried)) {
    const LinearMap mirrored = realTransform(step.factors[1], FormalComplex::Factors::Carried);
    back = mirrored.transposed();
    const int p = step.length, m = p - 1;
    // Both maps leave factors to their users: they go into the constants, and so does the 2 that stands for
    // the conjugate half.
    const auto factors = [&](int output, int input) {
        return mirrored.outputs[output].factor * there.outputs[input].factor;
    };
    for (int k = 0; k <= m / 2; ++k) {
        const bool isOdd = k % 2 == 1;
        const auto sequence = [&](int q) {
            const Turn angle(powers[(m - q) % m], p);
            return ComplexQuad{isOdd ? sine(angle) : cosine(angle), 0};
        };
        const ComplexQuad b = spectrum(m, k, sequence) / m;
        if (k == 0 || k == m / 2) {
            const int place = k == 0 ? 0 : m - 1;
            rows.push_back({isOdd, {{b.re * factors(place, place), place}}});
            continue;
        }
        const int re = 2 * k - 1, im = 2 * k;
        rows.push_back({isOdd, {{2 * b.re * factors(re, re), re}, {-2 * b.im * factors(re, im), im}}});
        rows.push_back({isOdd, {{2 * b.re * factors(im, im), im}, {2 * b.im * factors(im, re), re}}});
    }
}

} // namespace zrfgen::gen
