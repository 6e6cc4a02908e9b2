// The discrete Fourier transform, written once over number models. All transforms are forward ones; what an
// inverse kernel does differently is the number model's affair.
//
// A model's Value is what one arithmetic operation works on, a Column the inputs or outputs of one transform.
// The columns of a stage are independent of one another, so a model may run several at a time.
#pragma once

#include "algebra/columns.h"
#include "algebra/decomposition.h"
#include "algebra/rader.h"
#include "number/quad.h"

#include <optional>
#include <vector>

namespace zrfgen::gen {

template <class Model> using Rows = std::vector<typename Model::Value>;
template <class Model> using Columns = std::vector<typename Model::Column>;

// Blocks: X[k] = sum over j of x[j] exp(-2 pi i j k / n), n the number of rows.

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

// All columns through a decomposition. Each run of `alike` columns is the same place in as many transforms.
template <class Model> Columns<Model> transform(Model &m, const Decomposition &decomposition,
                                                const Columns<Model> &columns, int alike = 1);

// The transform of a real column is its own mirror image, but twiddles keep rows k1 and a - k1 of a
// Cooley-Tukey step of length q from looking alike. Where the model knows real columns, takes the outputs of
// the upper rows from the lower ones, so that the upper ones need not be computed.
template <class Model>
void takeHalfOfRealRows(Columns<Model> &results, const Columns<Model> &columns, int a, int q) {
    if constexpr (requires { Model::isReal(columns[0]); }) {
        for (std::size_t c = 0; c < columns.size(); ++c) {
            if (!Model::isReal(columns[c]))
                continue;
            const int n = static_cast<int>(columns[c].size());
            for (int k = 0; k < n; ++k) {
                const int row = k % q % a;
                if (2 * row > a || (2 * row == a && 2 * (k % q) > q))
                    results[c][k] = Model::conjugate(results[c][n - k]);
            }
        }
    }
}

// Good's mapping (I. J. Good, 1958): with a and b coprime, element j of residue class r modulo b is
// x[(b j + a r') mod n] with a r' = r mod b, so class r carries no rotation; output k is the one with
// k mod a = k1 and k mod b = k2.
template <class Model>
Columns<Model> primeFactorStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &first = step.factors[0], &second = step.factors[1];
    const int a = first.length, b = second.length, n = step.length;
    const int count = static_cast<int>(columns.size());
    Columns<Model> classes;
    for (int r = 0; r < b; ++r)
        for (const auto &x : columns) {
            typename Model::Column members;
            for (int j = 0; j < a; ++j)
                members.push_back(x[(b * j + a * r) % n]);
            classes.push_back(members);
        }
    classes = transform(m, first, classes, count);

    Columns<Model> across(a * count);
    for (int k1 = 0; k1 < a; ++k1)
        for (int c = 0; c < count; ++c)
            for (int r = 0; r < b; ++r)
                across[k1 * count + c].push_back(classes[r * count + c][k1]);
    across = transform(m, second, across, count);

    Columns<Model> results(count, typename Model::Column(n));
    for (int c = 0; c < count; ++c)
        for (int k = 0; k < n; ++k)
            results[c][k] = across[k % a * count + c][k % b];
    takeHalfOfRealRows<Model>(results, columns, a, a);
    return results;
}

// A row of single elements, rotated by exp(-2 pi i r k1 / n), k1 counting its runs of `alike` ones.
template <class Model> Columns<Model> twiddled(Model &m, const Columns<Model> &row, int alike, int r, int n) {
    if (r == 0)
        return row;
    return mapColumns(m, row, alike, [&](const Rows<Model> &x, Group group) {
        std::vector<Turn> angles;
        for (int column = group.first; column < group.first + group.count; ++column)
            angles.push_back({r * (column / alike), n});
        return Rows<Model>{m.rotate(x[0], angles)};
    });
}

// J. W. Cooley and J. W. Tukey, 1965: residue classes modulo b, rotation by exp(-2 pi i r k1 / n), transforms
// across the classes.
template <class Model>
Columns<Model> cooleyTukeyStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &first = step.factors[0], &second = step.factors[1];
    const int a = first.length, b = second.length, n = step.length;
    const int count = static_cast<int>(columns.size());
    const bool rotatesInside = Model::rotatesInsideBlocks && m.perVector() == 1 &&
                               first.method == Decomposition::Method::Butterfly && a == 4;

    Columns<Model> classes;
    for (int r = 0; r < b; ++r)
        for (const auto &x : columns) {
            typename Model::Column members;
            for (int j = 0; j < a; ++j)
                members.push_back(x[b * j + r]);
            classes.push_back(members);
        }
    if (rotatesInside) {
        classes = mapColumns(m, classes, count, [&](const Rows<Model> &x, Group group) {
            const int r = group.first / count;
            return rotatedFourPoint(m, x, {{}, {r, n}, {2 * r, n}, {3 * r, n}});
        });
    } else {
        classes = transform(m, first, classes, count);
    }

    // Row r of the second stage, all columns side by side.
    Columns<Model> across(a * count);
    for (int r = 0; r < b; ++r) {
        Columns<Model> row;
        for (int k1 = 0; k1 < a; ++k1)
            for (int c = 0; c < count; ++c)
                row.push_back({classes[r * count + c][k1]});
        if (!rotatesInside)
            row = twiddled(m, row, count, r, n);
        for (int column = 0; column < a * count; ++column)
            across[column].push_back(row[column][0]);
    }
    across = transform(m, second, across, count);

    Columns<Model> results(count, typename Model::Column(n));
    for (int c = 0; c < count; ++c)
        for (int k = 0; k < n; ++k)
            results[c][k] = across[k % a * count + c][k / a];
    takeHalfOfRealRows<Model>(results, columns, a, n);
    return results;
}

// A prime-factor step of q = a c and b, with the transform of b run between the two stages of q: one works
// across the residue classes and the other within them, so their order is free.
template <class Model>
Columns<Model> surroundedStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &first = step.factors[0], &inner = step.factors[1], &last = step.factors[2];
    const int a = first.length, b = inner.length, c = last.length, q = a * c, n = step.length;
    const int count = static_cast<int>(columns.size()), alike = b * count;

    Columns<Model> parts;
    for (int s = 0; s < c; ++s)
        for (int r = 0; r < b; ++r)
            for (const auto &x : columns) {
                typename Model::Column members;
                for (int i = 0; i < a; ++i)
                    members.push_back(x[(b * (c * i + s) + q * r) % n]);
                parts.push_back(members);
            }
    parts = transform(m, first, parts, alike);

    Columns<Model> inside(q * count);
    for (int s = 0; s < c; ++s)
        for (int k1 = 0; k1 < a; ++k1)
            for (int place = 0; place < alike; ++place)
                inside[(s * a + k1) * count + place % count].push_back(parts[s * alike + place][k1]);
    inside = transform(m, inner, inside, count);

    Columns<Model> across(a * alike);
    for (int s = 0; s < c; ++s) {
        Columns<Model> row;
        for (int k1 = 0; k1 < a; ++k1)
            for (int kb = 0; kb < b; ++kb)
                for (int column = 0; column < count; ++column)
                    row.push_back({inside[(s * a + k1) * count + column][kb]});
        row = twiddled(m, row, alike, s, q);
        for (int place = 0; place < a * alike; ++place)
            across[place].push_back(row[place][0]);
    }
    across = transform(m, last, across, alike);

    Columns<Model> results(count, typename Model::Column(n));
    for (int column = 0; column < count; ++column)
        for (int k = 0; k < n; ++k)
            results[column][k] = across[k % q % a * alike + k % b * count + column][k % q / a];
    takeHalfOfRealRows<Model>(results, columns, a, q);
    return results;
}

// Runs a step over the columns, one vector of them after the other where they fill vectors: the shorter
// transforms inside are then done with before the next ones begin, and few values wait at a time.
template <class Model, class Step>
Columns<Model> oneVectorAtATime(Model &m, const Columns<Model> &columns, Step step) {
    const auto chunk = static_cast<std::size_t>(m.perVector());
    if (columns.size() % chunk != 0)
        return step(columns);
    Columns<Model> results;
    for (auto first = columns.begin(); first != columns.end(); first += chunk)
        for (auto &column : step(Columns<Model>(first, first + chunk)))
            results.push_back(column);
    return results;
}

template <class Model> Columns<Model> transform(Model &m, const Decomposition &decomposition,
                                                const Columns<Model> &columns, int alike) {
    switch (decomposition.method) {
    case Decomposition::Method::PrimeFactor:
        return oneVectorAtATime(m, columns, [&](const Columns<Model> &chunk) {
            return primeFactorStep(m, decomposition, chunk);
        });
    case Decomposition::Method::Surrounded:
        return oneVectorAtATime(
            m, columns, [&](const Columns<Model> &chunk) { return surroundedStep(m, decomposition, chunk); });
    case Decomposition::Method::CooleyTukey:
        return oneVectorAtATime(m, columns, [&](const Columns<Model> &chunk) {
            return cooleyTukeyStep(m, decomposition, chunk);
        });
    case Decomposition::Method::RealRader: {
        const RealLaneRader rader(decomposition);
        return mapColumns(m, columns, alike, [&](const Rows<Model> &x, Group) { return rader(m, x); });
    }
    case Decomposition::Method::RealLanes: {
        const HalfSpectrumTransform halfSpectrum(decomposition.factors[0]);
        return mapColumns(m, columns, alike, [&](const Rows<Model> &x, Group) { return halfSpectrum(m, x); });
    }
    case Decomposition::Method::FirstThenOthers:
        return mapColumns(m, columns, alike, [&](const Rows<Model> &x, Group group) {
            const Decomposition &form = decomposition.factors[group.first == 0 ? 0 : 1];
            return form.method == Decomposition::Method::RealRader ? RealLaneRader(form)(m, x)
                                                                   : butterfly(m, form, x);
        });
    default:
        return mapColumns(m, columns, alike,
                          [&](const Rows<Model> &x, Group) { return butterfly(m, decomposition, x); });
    }
}

// A prime length by Rader's convolution in complex lanes: both transforms of length m are complex ones, with
// their columns side by side. The inverse kernel is the same sequence with the signs of the odd spectrum
// constants changed, so the model must take the direction from constants.
template <class Model> typename Model::Column raderInComplexLanes(Model &m, const Decomposition &step,
                                                                  const typename Model::Column &x) {
    using Column = typename Model::Column;
    const std::vector<int> powers = powersOfPrimitiveRoot(step.length);
    const int length = step.length - 1;
    const std::vector<ComplexQuad> forward = raderSpectrum(powers);
    std::vector<ComplexQuad> inverse = forward;
    for (int k = 1; k < length; k += 2)
        inverse[k] = {-forward[k].re, -forward[k].im};

    Column sequence;
    for (const int power : powers)
        sequence.push_back(x[power]);
    const Column there = transform(m, step.factors[0], Columns<Model>{sequence})[0];
    Column result(step.length);
    result[0] = m.withFirstIncreased(there, x[0])[0];

    // x[0] joins entry 0, and so reaches every output of the transform back. Entry r of that is entry m - r
    // of a transform there.
    const Column product = m.withFirstIncreased(m.multiplied(there, forward, inverse), x[0]);
    const Column back = transform(m, step.factors[1], Columns<Model>{product})[0];
    for (int r = 0; r < length; ++r)
        result[powers[(length - r) % length]] = back[(length - r) % length];
    return result;
}

} // namespace zrfgen::gen
