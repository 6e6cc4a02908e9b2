// The blocks: short transforms written out, X[k] = sum over j of x[j] exp(-2 pi i j k / n), n the number of
// rows.
#pragma once

#include "algebra/decomposition.h"
#include "algebra/number_model.h"

#include <utility>

namespace zrfgen::gen {

template <ComplexModel Model> Values<Model> twoPoint(Model &m, const Values<Model> &x) {
    return {m.add(x[0], x[1]), m.sub(x[0], x[1])};
}

template <ComplexModel Model> Values<Model> fourPoint(Model &m, const Values<Model> &x) {
    const auto u0 = m.add(x[0], x[2]), u1 = m.sub(x[0], x[2]);
    const auto u2 = m.add(x[1], x[3]), u3 = m.quarterTurn(m.sub(x[1], x[3]));
    return {m.add(u0, u2), m.add(u1, u3), m.sub(u0, u2), m.sub(u1, u3)};
}

// Odd lengths by the defining sum, whose terms j and n - j share their products (R. C. Singleton, 1969): sums
// of x[j] and x[n-j] are weighted by cosines, differences by sines.
template <ComplexModel Model> Values<Model> oddPoint(Model &m, const Values<Model> &x) {
    const int n = static_cast<int>(x.size()), half = (n - 1) / 2;
    Values<Model> sums, differences;
    for (int j = 1; j <= half; ++j) {
        sums.push_back(m.add(x[j], x[n - j]));
        differences.push_back(m.sub(x[j], x[n - j]));
    }
    Values<Model> result(n);
    result[0] = x[0];
    for (const auto &sum : sums)
        result[0] = m.add(result[0], sum);
    for (int k = 1; k <= half; ++k) {
        std::vector<typename Model::Term> cosines, sines;
        for (int j = 1; j <= half; ++j) {
            cosines.push_back({cosine({j * k, n}), sums[j - 1]});
            sines.push_back({sine({j * k, n}), differences[j - 1]});
        }
        const auto even = m.weightedSum(x[0], cosines), odd = m.turnedSum(sines);
        result[k] = m.add(even, odd);
        result[n - k] = m.sub(even, odd);
    }
    return result;
}

// The five-point block with the cosines' half sum and half difference, -1/4 and sqrt(5)/4, in the place of
// the cosines (S. Winograd, 1978): two products fewer, as many additions, a longer way.
template <ComplexModel Model> Values<Model> sumDifferenceFivePoint(Model &m, const Values<Model> &x) {
    const auto a = m.add(x[1], x[4]), b = m.add(x[2], x[3]);
    const auto d = m.sub(x[1], x[4]), e = m.sub(x[2], x[3]);
    const auto t = m.add(a, b);
    const auto mean = m.weightedSum(x[0], {{Quad(-1) / 4, t}});
    const auto difference = m.weightedSum({}, {{squareRoot(5) / 4, m.sub(a, b)}});
    const auto m1 = m.add(mean, difference), m2 = m.sub(mean, difference);
    const Quad s1 = sine({1, 5}), s2 = sine({2, 5});
    const auto n1 = m.turnedSum({{s1, d}, {s2, e}}), n2 = m.turnedSum({{s2, d}, {-s1, e}});
    return {m.add(x[0], t), m.add(m1, n1), m.add(m2, n2), m.sub(m2, n2), m.sub(m1, n1)};
}

template <ComplexModel Model>
Values<Model> butterfly(Model &m, const Decomposition &form, const Values<Model> &x) {
    if (form.method == Decomposition::Method::SumDifference)
        return sumDifferenceFivePoint(m, x);
    return x.size() == 2 ? twoPoint(m, x) : x.size() == 4 ? fourPoint(m, x) : oddPoint(m, x);
}

// The product by exp(-2 pi i angle), free for quarters of a turn. An eighth is a sum and a product for each
// part: exp(-2 pi i / 8) = (1 - i) cos(pi / 4).
template <ComplexModel Model> typename Model::Value rotated(Model &m, typename Model::Value a, Turn angle) {
    if (!angle.isMultipleOf(8))
        return m.product(a, angle);
    const long eighths = 8 * angle.numerator / angle.denominator;
    for (long quarter = 0; quarter < eighths / 2; ++quarter)
        a = m.quarterTurn(a);
    if (eighths % 2 == 0)
        return a;
    const Quad h = cosine({1, 8});
    if constexpr (Model::capabilities.multipliesFirst) {
        a = m.scaled(a, h);
        return m.add(a, m.quarterTurn(a));
    }
    return m.scaled(m.add(a, m.quarterTurn(a)), h);
}

// u + W v and u - W v, W = exp(-2 pi i / 4), rotated by `plus` and `minus`. Where these two angles add up to
// quarter turns, they are a conjugate pair (I. Kamar and Y. Elcherif, 1989), for which four products serve
// both: with P = c u - s v and Q = s u + c v the results are P + W Q and P - W Q, up to quarter turns.
template <ComplexModel Model> std::pair<typename Model::Value, typename Model::Value>
rotatedPair(Model &m, typename Model::Value u, typename Model::Value v, Turn plus, Turn minus) {
    const auto turned = m.quarterTurn(v);
    if (plus.isMultipleOf(4) || !(plus + minus).isMultipleOf(4))
        return {rotated(m, m.add(u, turned), plus), rotated(m, m.sub(u, turned), minus)};
    const Quad c = cosine(plus), s = sine(plus);
    const auto p = m.weightedSum({}, {{c, u}, {-s, v}});
    const auto q = m.quarterTurn(m.weightedSum({}, {{s, u}, {c, v}}));
    return {m.add(p, q), rotated(m, m.sub(p, q), plus + minus)};
}

// The four-point block with output k rotated by k times the angle, ahead of the last additions.
template <ComplexModel Model> Values<Model> rotatedFourPoint(Model &m, const Values<Model> &x, Turn angle) {
    const auto u0 = m.add(x[0], x[2]), u1 = m.sub(x[0], x[2]);
    const auto u2 = m.add(x[1], x[3]), u3 = m.sub(x[1], x[3]);
    const Turn twice = angle + angle;
    const auto [second, fourth] = rotatedPair(m, u1, u3, angle, twice + angle);
    return {m.add(u0, u2), second, rotated(m, m.sub(u0, u2), twice), fourth};
}

} // namespace zrfgen::gen
