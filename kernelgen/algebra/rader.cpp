#include "algebra/rader.h"

#include "algebra/dft.h"
#include "algebra/formal_complex.h"

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

namespace {

using Column = SplitComplex::Column;

// B[k], the spectrum of the convolution's fixed sequence with the 1/m of the transform back folded in.
template <class Sequence> ComplexQuad foldedSpectrum(int m, int k, Sequence sequence) {
    const ComplexQuad sum = spectrum(m, k, sequence);
    return {sum.re / m, sum.im / m};
}

} // namespace

Column raderInComplexLanes(SplitComplex &m, const Decomposition &step, const Column &x) {
    const int p = step.length, length = p - 1;
    const std::vector<int> powers = powersOfPrimitiveRoot(p);

    Column sequence;
    for (int q = 0; q < length; ++q)
        sequence.push_back(x[powers[q]]);
    const Column there = transform(m, step.factors[0], Columns<SplitComplex>{sequence})[0];

    std::vector<ComplexQuad> forward, inverse;
    for (int k = 0; k < length; ++k) {
        const ComplexQuad b = foldedSpectrum(length, k, [&](int q) {
            return onCircle({-powers[(length - q) % length], p});
        });
        const int sign = k % 2 == 0 ? 1 : -1;
        forward.push_back(b);
        inverse.push_back({sign * b.re, sign * b.im});
    }
    Column product = m.multiplied(there, forward, inverse);

    // x[0] joins entry 0, and so reaches every output of the transform back.
    const int lane = there[0].re.lane;
    const auto x0 = m.alone(x[0], lane);
    Column result(p);
    result[0] = m.element(m.add(x0, m.vectorOf(there[0])), lane);
    const NodeId first = product[0].re.node;
    const auto joined = m.add(x0, m.vectorOf(product[0]));
    for (auto &element : product)
        if (element.re.node == first)
            element = m.element(joined, element.re.lane);

    // Entry r of the transform back is entry m - r of a transform there.
    const Column back = transform(m, step.factors[1], Columns<SplitComplex>{product})[0];
    for (int r = 0; r < length; ++r)
        result[powers[(length - r) % length]] = back[(length - r) % length];
    return result;
}

namespace {

// The transform of m real numbers as a map to R[0], R[1], I[1], R[2], ... R[m/2].
LinearMap realTransform(const Decomposition &decomposition) {
    const int m = decomposition.length;
    LinearMap map;
    FormalComplex model(map);
    FormalComplex::Column sequence;
    for (int q = 0; q < m; ++q)
        sequence.push_back({FormalComplex::Part{map.input()}, {}});
    const auto result = transform(model, decomposition, Columns<FormalComplex>{sequence})[0];
    for (int k = 0; k <= m / 2; ++k) {
        map.outputs.push_back({result[k].re->ref, result[k].re->factor});
        if (k > 0 && k < m / 2)
            map.outputs.push_back({result[k].im->ref, result[k].im->factor});
    }
    return map;
}

} // namespace

RealLaneRader::RealLaneRader(const Decomposition &step)
    : powers(powersOfPrimitiveRoot(step.length)), there(realTransform(step.factors[0])),
      back(realTransform(step.factors[1])) {
    const int p = step.length, m = p - 1;
    // Both maps leave factors to their users: they go into the constants, and so does the 2 that stands for
    // the conjugate half.
    const auto factors = [&](int output, int input) {
        return back.outputs[output].factor * there.outputs[input].factor;
    };
    for (int k = 0; k <= m / 2; ++k) {
        const bool isOdd = k % 2 == 1;
        const ComplexQuad b = foldedSpectrum(m, k, [&](int q) {
            const Turn angle(powers[(m - q) % m], p);
            return ComplexQuad{isOdd ? sine(angle) : cosine(angle), 0};
        });
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
