// The discrete Fourier transform as a decomposition has it, written once over number models. All transforms
// are forward ones; what an inverse kernel does differently is the number model's affair.
// The columns of a stage are independent of one another, so a model may run several at a time.
#pragma once

#include "algebra/blocks.h"
#include "algebra/bluestein.h"
#include "algebra/columns.h"
#include "algebra/complex_rader.h"
#include "algebra/decomposition.h"
#include "algebra/half_spectrum.h"
#include "algebra/rader.h"

namespace zrfgen::gen {

using Twiddles = Decomposition::Twiddles;

// All columns through a decomposition. Each run of `alike` columns is the same place in as many transforms.
template <ComplexModel Model> Columns<Model> transform(Model &m, const Decomposition &decomposition,
                                                       const Columns<Model> &columns, int alike = 1);

// The transform of a real column is its own mirror image, but twiddles keep rows k1 and a - k1 of a
// Cooley-Tukey step of length q from looking alike. Where the model knows real columns, takes the outputs of
// the upper rows from the lower ones, so that the upper ones need not be computed.
template <ComplexModel Model>
void takeHalfOfRealRows(Columns<Model> &results, const Columns<Model> &columns, int a, int q) {
    if constexpr (Model::capabilities.realColumns) {
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

// All columns through a decomposition. Where the model knows real columns, the real and the imaginary parts
// of any other column are taken as columns of their own, combined at the end.
template <ComplexModel Model> Columns<Model> transformParts(Model &m, const Decomposition &decomposition,
                                                            const Columns<Model> &columns, int alike) {
    if constexpr (Model::capabilities.realColumns) {
        Columns<Model> parts;
        for (const auto &column : columns) {
            parts.push_back(Model::realPart(column));
            if (!Model::isReal(column))
                parts.push_back(Model::imaginaryPart(column));
        }
        parts = transform(m, decomposition, parts, alike);
        Columns<Model> results;
        auto part = parts.begin();
        for (const auto &column : columns) {
            results.push_back(*part++);
            if (!Model::isReal(column)) {
                for (std::size_t k = 0; k < column.size(); ++k)
                    results.back()[k] = m.sub(results.back()[k], Model::quarterTurn((*part)[k]));
                ++part;
            }
        }
        return results;
    }
    return transform(m, decomposition, columns, alike);
}

// Splits every column: member j of class r is its element index(r, j). Each class stands for all columns in
// turn.
template <ComplexModel Model, class Index>
Columns<Model> residueClasses(const Columns<Model> &columns, int classes, int members, Index index) {
    Columns<Model> results;
    for (int r = 0; r < classes; ++r)
        for (const auto &x : columns) {
            typename Model::Column &result = results.emplace_back();
            for (int j = 0; j < members; ++j)
                result.push_back(x[index(r, j)]);
        }
    return results;
}

// Good's mapping (I. J. Good, 1958): with a and b coprime, element j of residue class r modulo b is
// x[(b j + a r') mod n] with a r' = r mod b, so class r carries no rotation; output k is the one with
// k mod a = k1 and k mod b = k2.
template <ComplexModel Model>
Columns<Model> primeFactorStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &first = step.factors[0], &second = step.factors[1];
    const int a = first.length, b = second.length, n = step.length;
    const int count = static_cast<int>(columns.size());
    auto classes = residueClasses<Model>(columns, b, a, [&](int r, int j) { return (b * j + a * r) % n; });
    classes = transform(m, first, classes, count);

    Columns<Model> across(a * count);
    for (int k1 = 0; k1 < a; ++k1)
        for (int c = 0; c < count; ++c)
            for (int r = 0; r < b; ++r)
                across[k1 * count + c].push_back(classes[r * count + c][k1]);
    across = transformParts(m, second, across, count);

    Columns<Model> results(count, typename Model::Column(n));
    for (int c = 0; c < count; ++c)
        for (int k = 0; k < n; ++k)
            results[c][k] = across[k % a * count + c][k % b];
    takeHalfOfRealRows<Model>(results, columns, a, a);
    return results;
}

// A row of single elements, each multiplied by exp(-2 pi i r k1 / n), k1 counting its runs of `alike` ones.
template <ComplexModel Model>
Columns<Model> twiddled(Model &m, const Columns<Model> &row, int alike, int r, int n, Twiddles form) {
    if (r == 0)
        return row;
    const auto angle = [&](int column) { return Turn(r * (column / alike), n); };
    if (form == Twiddles::Shortest)
        return mapColumns(m, row, alike, [&](const Values<Model> &x, Group group) {
            return Values<Model>{rotated(m, x[0], angle(group.first))};
        });
    if constexpr (Model::capabilities.sharedVectors) {
        const int run = runOfFullVectors(static_cast<int>(row.size()), m.columnsTogether(), alike);
        return mapColumns(m, row, run, [&](const Values<Model> &x, Group group) {
            std::vector<Turn> angles;
            for (int place = 0; place < group.count; ++place)
                angles.push_back(angle(group.first + place));
            return Values<Model>{m.products(x[0], angles)};
        });
    }
    throw DecompositionError("columns that do not share vectors have no twiddles beside one another");
}

// Blocks of four points with the twiddles inside. Run r of `alike` columns has those of row r.
template <ComplexModel Model>
Columns<Model> twiddledFourPoints(Model &m, const Columns<Model> &columns, int alike, int n) {
    return mapColumns(m, columns, alike, [&](const Values<Model> &x, Group group) {
        return rotatedFourPoint(m, x, {group.first / alike, n});
    });
}

// J. W. Cooley and J. W. Tukey, 1965: residue classes modulo b, rotation by exp(-2 pi i r k1 / n), transforms
// across the classes.
template <ComplexModel Model>
Columns<Model> cooleyTukeyStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &first = step.factors[0], &second = step.factors[1];
    const int a = first.length, b = second.length, n = step.length;
    const int count = static_cast<int>(columns.size());
    const bool isFolded = step.twiddles == Twiddles::Folded;

    auto classes = residueClasses<Model>(columns, b, a, [&](int r, int j) { return b * j + r; });
    classes = isFolded ? twiddledFourPoints(m, classes, count, n) : transform(m, first, classes, count);

    // Row r of the second stage, all columns side by side.
    Columns<Model> across(a * count);
    for (int r = 0; r < b; ++r) {
        Columns<Model> row;
        for (int k1 = 0; k1 < a; ++k1)
            for (int c = 0; c < count; ++c)
                row.push_back({classes[r * count + c][k1]});
        if (!isFolded)
            row = twiddled(m, row, count, r, n, step.twiddles);
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

// P. Duhamel and H. Hollmann, 1984: the half of the even elements E and the quarters of classes 1 and 3
// modulo 4, these rotated by exp(-2 pi i k / n) and exp(-2 pi i 3 k / n). Outputs k, k + n/4, k + n/2 and k +
// 3n/4 are those of a four-point block whose sums of the even elements are E[k] and E[k + n/4].
template <ComplexModel Model>
Columns<Model> splitRadixStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const int n = step.length, quarter = n / 4, count = static_cast<int>(columns.size());
    const auto even = transform(m, step.factors[0],
                                residueClasses<Model>(columns, 1, n / 2, [](int, int j) { return 2 * j; }));
    const auto odd =
        transform(m, step.factors[1],
                  residueClasses<Model>(columns, 2, quarter, [](int r, int j) { return 4 * j + 2 * r + 1; }));
    Columns<Model> results(count, typename Model::Column(n));
    for (int c = 0; c < count; ++c)
        for (int k = 0; k < quarter; ++k) {
            const auto u = rotated(m, odd[c][k], {k, n}), v = rotated(m, odd[count + c][k], {3 * k, n});
            const auto sum = m.add(u, v), turned = m.quarterTurn(m.sub(u, v));
            results[c][k] = m.add(even[c][k], sum);
            results[c][k + quarter] = m.add(even[c][k + quarter], turned);
            results[c][k + 2 * quarter] = m.sub(even[c][k], sum);
            results[c][k + 3 * quarter] = m.sub(even[c][k + quarter], turned);
        }
    takeHalfOfRealRows<Model>(results, columns, quarter, n);
    return results;
}

// A prime-factor step of q = a c and b with the transform of b run between the two stages of q: one works
// across the residue classes and the other within them, so their order is free.
template <ComplexModel Model>
Columns<Model> primeFactorInsideStep(Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const Decomposition &outer = step.factors[0], &inner = step.factors[1];
    const Decomposition &first = outer.factors[0], &last = outer.factors[1];
    const int a = first.length, b = inner.length, c = last.length, q = outer.length, n = step.length;
    const int count = static_cast<int>(columns.size()), alike = b * count;

    // Part s b + r: class s modulo c of class r modulo b.
    auto parts = residueClasses<Model>(
        columns, c * b, a, [&](int part, int i) { return (b * (c * i + part / b) + q * (part % b)) % n; });
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
        row = twiddled(m, row, alike, s, q, outer.twiddles);
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

// Runs a step over the columns, one vector of them after the other where they fill vectors, or as many
// vectors as go together: the shorter transforms inside are then done with before the next ones begin, and
// few values wait at a time.
template <ComplexModel Model, class Step> Columns<Model>
oneVectorAtATime(Step run, Model &m, const Decomposition &step, const Columns<Model> &columns) {
    const auto chunk = static_cast<std::size_t>(m.columnsTogether());
    if (columns.size() % chunk != 0)
        return run(m, step, columns);
    Columns<Model> results;
    for (auto first = columns.begin(); first != columns.end(); first += chunk)
        for (auto &column : run(m, step, Columns<Model>(first, first + chunk)))
            results.push_back(column);
    return results;
}

// Runs block(values) over all columns, in vectors as full as can be.
template <ComplexModel Model, class Block>
Columns<Model> runBlock(Model &m, const Columns<Model> &columns, int alike, Block block) {
    const int run = runOfFullVectors(static_cast<int>(columns.size()), m.columnsTogether(), alike);
    return mapColumns(m, columns, run, [&](const Values<Model> &x, Group) { return block(x); });
}

// The first column of each transform in one form of a block, the others in another.
template <ComplexModel Model>
Columns<Model> byColumnStep(Model &m, const Decomposition &step, const Columns<Model> &columns, int alike) {
    const auto others = columns.begin() + alike;
    auto results = transform(m, step.factors[0], Columns<Model>(columns.begin(), others), alike);
    for (auto &column : transform(m, step.factors[1], Columns<Model>(others, columns.end()), alike))
        results.push_back(column);
    return results;
}

template <ComplexModel Model> Columns<Model> transform(Model &m, const Decomposition &decomposition,
                                                       const Columns<Model> &columns, int alike) {
    using enum Decomposition::Method;
    switch (decomposition.method) {
    case Butterfly:
    case SumDifference:
        return runBlock(m, columns, alike,
                        [&](const Values<Model> &x) { return butterfly(m, decomposition, x); });
    case ByColumn:
        return byColumnStep(m, decomposition, columns, alike);
    case PrimeFactor:
        return oneVectorAtATime(primeFactorStep<Model>, m, decomposition, columns);
    case PrimeFactorInside:
        return oneVectorAtATime(primeFactorInsideStep<Model>, m, decomposition, columns);
    case CooleyTukey:
        return oneVectorAtATime(cooleyTukeyStep<Model>, m, decomposition, columns);
    case SplitRadix:
        if constexpr (!Model::capabilities.sharedVectors)
            return splitRadixStep(m, decomposition, columns);
        break;
    case RealLanes: {
        const HalfSpectrumTransform halfSpectrum(decomposition.factors[0]);
        return runBlock(m, columns, alike, [&](const Values<Model> &x) { return halfSpectrum(m, x); });
    }
    case RealRader: {
        const RealLaneRader rader(decomposition);
        return runBlock(m, columns, alike, [&](const Values<Model> &x) { return rader(m, x); });
    }
    case ComplexRader:
        if constexpr (Model::capabilities.sharedVectors)
            return {raderInComplexLanes(m, decomposition, columns[0])};
        break;
    case Bluestein:
        if constexpr (Model::capabilities.zeroElements)
            return {bluesteinTransform(m, decomposition, columns[0])};
        break;
    }
    throw DecompositionError(describe(decomposition) + ": not in this number model");
}

} // namespace zrfgen::gen
