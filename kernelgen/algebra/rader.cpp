#include "algebra/rader.h"

#include "algebra/dft.h"

#include <map>

namespace zrfgen::gen {

namespace {

using Column = SplitComplex::Column;

// The powers g^0 .. g^(p-2) modulo p of the smallest primitive root g.
std::vector<int> powersOfPrimitiveRoot(int p) {
    for (int g = 2;; ++g) {
        std::vector<int> powers{1};
        while (powers.back() * g % p != 1)
            powers.push_back(powers.back() * g % p);
        if (static_cast<int>(powers.size()) == p - 1)
            return powers;
    }
}

struct ComplexQuad {
    Quad re, im;
};

// B[k] = 1/m times the sum over q of exp(-2 pi i g^(-q) / p) exp(-2 pi i q k / m), m = p - 1: the spectrum of
// the convolution's fixed sequence with the 1/m of the transform back folded in.
ComplexQuad spectrum(const std::vector<int> &powers, int k) {
    const int m = static_cast<int>(powers.size()), p = m + 1;
    ComplexQuad sum{0, 0};
    for (int q = 0; q < m; ++q) {
        const Turn angle = Turn(powers[(m - q) % m], p) + Turn(q * k, m);
        sum.re += cosine(angle);
        sum.im -= sine(angle);
    }
    return {sum.re / m, sum.im / m};
}

} // namespace

Column raderInComplexLanes(SplitComplex &m, const Decomposition &step, const Column &x) {
    const int p = step.length, length = p - 1;
    const Type type = m.real.type();
    const std::vector<int> powers = powersOfPrimitiveRoot(p);

    Column sequence;
    for (int q = 0; q < length; ++q)
        sequence.push_back(x[powers[q]]);
    const Column there = transform(m, step.factors[0], Columns<SplitComplex>{sequence})[0];

    // The product with the spectrum, one vector at a time as the transform left them. x[0] joins entry 0, and
    // so reaches every output of the transform back.
    std::map<NodeId, std::vector<int>> vectors;
    for (int k = 0; k < length; ++k)
        vectors[there[k].re.node].push_back(k);
    Column product(length), result(p);
    for (const auto &[node, indices] : vectors) {
        std::vector<Quad> re(type.lanes, 1), im(type.lanes, 0), inverseRe = re, inverseIm = im;
        for (const int k : indices) {
            const ComplexQuad b = spectrum(powers, k);
            const int lane = there[k].re.lane, sign = k % 2 == 0 ? 1 : -1;
            re[lane] = b.re;
            im[lane] = b.im;
            inverseRe[lane] = sign * b.re;
            inverseIm[lane] = sign * b.im;
        }
        const auto constants = [&](const std::vector<Quad> &forward, const std::vector<Quad> &inverse) {
            return m.graph.byDirection(m.graph.constant(type, forward), m.graph.constant(type, inverse));
        };
        const SplitComplex::Value a{{node, there[indices[0]].re.isNegative},
                                    {there[indices[0]].im.node, there[indices[0]].im.isNegative}};
        auto c = m.multiply(a, constants(re, inverseRe), constants(im, inverseIm));
        if (indices[0] == 0) {
            const int lane = there[0].re.lane;
            const auto x0 = m.alone(x[0], lane);
            const auto sum = m.add(x0, a);
            result[0] = {{sum.re.node, lane, sum.re.isNegative}, {sum.im.node, lane, sum.im.isNegative}};
            c = m.add(x0, c);
        }
        for (const int k : indices)
            product[k] = {{c.re.node, there[k].re.lane, c.re.isNegative},
                          {c.im.node, there[k].im.lane, c.im.isNegative}};
    }

    // Entry r of the transform back is entry m - r of a transform there.
    const Column back = transform(m, step.factors[1], Columns<SplitComplex>{product})[0];
    for (int r = 0; r < length; ++r)
        result[powers[(length - r) % length]] = back[(length - r) % length];
    return result;
}

} // namespace zrfgen::gen
