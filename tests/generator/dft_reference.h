// The defining sums in quad precision, and inputs for them.
#pragma once

#include "graph/evaluate.h"
#include "tests/random.h"

#include <cmath>

namespace zrfgen::gen {

// Numbers that are exact in every element type.
inline std::vector<Quad> randomSource(int elements, unsigned seed = 1) {
    const auto numbers = randomElements<float>(elements, seed);
    return {numbers.begin(), numbers.end()};
}

// As many sums over the numbers of x, each by its weight(sum, number).
template <class Weight> std::vector<Quad> weightedSums(const std::vector<Quad> &x, Weight weight) {
    std::vector<Quad> sums(x.size(), 0);
    for (std::size_t k = 0; k < x.size(); ++k)
        for (std::size_t j = 0; j < x.size(); ++j)
            sums[k] += weight(static_cast<long>(k), static_cast<long>(j)) * x[j];
    return sums;
}

// The transform of interleaved complex numbers.
inline std::vector<Quad> dftReference(const std::vector<Quad> &x, Direction direction) {
    const long n = std::ssize(x) / 2;
    std::vector<ComplexQuad> roots;
    for (long k = 0; k < n; ++k)
        roots.push_back(onCircle({direction == Direction::Forward ? -k : k, n}));
    return weightedSums(x, [&](long k, long j) {
        const ComplexQuad root = roots[(k / 2) * (j / 2) % n];
        return k % 2 == j % 2 ? root.re : k % 2 == 1 ? root.im : -root.im;
    });
}

// Entry i of the spectrum R[0], R[1], I[1], R[2] ... of n real numbers, as the weight of number j in it.
inline Quad spectrumWeight(long i, long j, long n) {
    const Turn angle((i + 1) / 2 * j, n);
    return i > 0 && i % 2 == 0 ? -sine(angle) : cosine(angle);
}

inline std::vector<Quad> realDftReference(const std::vector<Quad> &x) {
    return weightedSums(x, [n = std::ssize(x)](long i, long j) { return spectrumWeight(i, j, n); });
}

// Entries that stand for their mirror image too count twice.
inline std::vector<Quad> inverseRealDftReference(const std::vector<Quad> &spectrum) {
    return weightedSums(spectrum, [n = std::ssize(spectrum)](long j, long i) {
        const bool isSingle = i == 0 || (n % 2 == 0 && i == n - 1);
        return (isSingle ? 1 : 2) * spectrumWeight(i, j, n);
    });
}

inline std::vector<Quad> hartleyReference(const std::vector<Quad> &x) {
    return weightedSums(x, [n = std::ssize(x)](long k, long j) {
        return cosine({j * k, n}) + sine({j * k, n});
    });
}

inline double largestDifference(const std::vector<Quad> &a, const std::vector<Quad> &b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(static_cast<double>(a[i] - b[i])));
    return largest;
}

} // namespace zrfgen::gen
