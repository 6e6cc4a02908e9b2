// The blocks: short transforms written out, X[k] = sum over j of x[j] exp(-2 pi i j k / n), n the number of
// rows.
#pragma once

#include "algebra/decomposition.h"
#include "number/quad.h"

#include <utility>
#include <vector>

namespace zrfgen::gen {

template <class Model> using Rows = std::vector<typename Model::Value>;

template <class Model> Rows<Model> twoPoint(Model &m, const Rows<Model> &x) {
    return {m.add(x[0], x[1]), m.sub(x[0], x[1])};
}

template <class Model> Rows<Model> fourPoint(Model &m, const Rows<Model> &x) {
    const auto u0 = m.add(x[0], x[2]), u1 = m.sub(x[0], x[2]);
    const auto u2 = m.add(x[1], x[3]), u3 = m.quarterTurn(m.sub(x[1], x[3]));
    return {m.add(u0, u2), m.add(u1, u3), m.sub(u0, u2), m.sub(u1, u3)};
}

// Odd lengths in the direct form: sums of x[j] and x[n-j] weighted by cosines, differences by sines.
template <class Model> Rows<Model> oddPoint(Model &m, const Rows<Model> &x) {
    const int n = static_cast<int>(x.size()), half = (n - 1) / 2;
    Rows<Model> sums, differences;
    for (int j = 1; j <= half; ++j) {
        sums.push_back(m.add(x[j], x[n - j]));
        differences.push_back(m.sub(x[j], x[n - j]));
    }
    Rows<Model> result(n);
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

// The five-point block with the cosines' sum and difference, -1/4 and sqrt(5)/4, in the place of the cosines:
// two products fewer, as many additions, a longer way.
template <class Model> Rows<Model> sumDifferenceFivePoint(Model &m, const Rows<Model> &x) {
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

template <class Model> Rows<Model> butterfly(Model &m, const Decomposition &form, const Rows<Model> &x) {
    if (form.method == Decomposition::Method::SumDifference)
        return sumDifferenceFivePoint(m, x);
    return x.size() == 2 ? twoPoint(m, x) : x.size() == 4 ? fourPoint(m, x) : oddPoint(m, x);
}

// u + W u' and u - W u', W = exp(-2 pi i / 4), rotated by `plus` and `minus`. Where these two angles add up
// to quarter turns, four products serve both: with P = c u - s u' and Q = s u + c u' the results are P + W Q
// and P - W Q, up to quarter turns.
template <class Model> std::pair<typename Model::Value, typename Model::Value>
rotatedPair(Model &m, typename Model::Value u, typename Model::Value v, Turn plus, Turn minus) {
    const auto turned = m.quarterTurn(v);
    if (plus.isMultipleOf(4) || !(plus + minus).isMultipleOf(4))
        return {m.rotate(m.add(u, turned), {plus}), m.rotate(m.sub(u, turned), {minus})};
    const Quad c = cosine(plus), s = sine(plus);
    const auto p = m.weightedSum({}, {{c, u}, {-s, v}});
    const auto q = m.quarterTurn(m.weightedSum({}, {{s, u}, {c, v}}));
    return {m.add(p, q), m.rotate(m.sub(p, q), {plus + minus})};
}

// The four-point block with output k rotated by angles[k], the rotation taken ahead of the last additions.
template <class Model>
Rows<Model> rotatedFourPoint(Model &m, const Rows<Model> &x, const std::vector<Turn> &angles) {
    const auto u0 = m.add(x[0], x[2]), u1 = m.sub(x[0], x[2]);
    const auto u2 = m.add(x[1], x[3]), u3 = m.sub(x[1], x[3]);
    const auto [second, fourth] = rotatedPair(m, u1, u3, angles[1], angles[3]);
    return {m.rotate(m.add(u0, u2), {angles[0]}), second, m.rotate(m.sub(u0, u2), {angles[2]}), fourth};
}

} // namespace zrfgen::gen
