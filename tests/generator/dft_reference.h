// The defining sums in quad precision, and inputs for them.
#pragma once

#include "graph/evaluate.h"

#include <random>

namespace zrfgen::gen {

// Numbers with short mantissas, exact in every element type.
inline std::vector<Quad> randomSource(int elements, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::vector<Quad> source;
    for (int i = 0; i < elements; ++i)
        source.push_back(static_cast<Quad>(static_cast<int>(random() % 2097152) - 1048576) / 1048576);
    return source;
}

// The transform of interleaved complex numbers.
inline std::vector<Quad> dftReference(const std::vector<Quad> &x, Direction direction) {
    const int n = static_cast<int>(x.size()) / 2;
    std::vector<Quad> result(x.size(), 0);
    for (int k = 0; k < n; ++k)
        for (int j = 0; j < n; ++j) {
            const Turn angle(direction == Direction::Forward ? -j * k : j * k, n);
            const Quad c = cosine(angle), s = sine(angle);
            result[2 * k] += x[2 * j] * c - x[2 * j + 1] * s;
            result[2 * k + 1] += x[2 * j] * s + x[2 * j + 1] * c;
        }
    return result;
}

// Entry i of the spectrum R[0], R[1], I[1], R[2] ... of n real numbers, as the weight of number j in it.
inline Quad spectrumWeight(int i, int j, int n) {
    const Turn angle(static_cast<long>((i + 1) / 2) * j, n);
    return i > 0 && i % 2 == 0 ? -sine(angle) : cosine(angle);
}

inline std::vector<Quad> realDftReference(const std::vector<Quad> &x) {
    const int n = static_cast<int>(x.size());
    std::vector<Quad> result(n, 0);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            result[i] += spectrumWeight(i, j, n) * x[j];
    return result;
}

// Entries that stand for their mirror image too count twice.
inline std::vector<Quad> inverseRealDftReference(const std::vector<Quad> &spectrum) {
    const int n = static_cast<int>(spectrum.size());
    std::vector<Quad> result(n, 0);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const bool isSingle = i == 0 || (n % 2 == 0 && i == n - 1);
            result[j] += (isSingle ? 1 : 2) * spectrumWeight(i, j, n) * spectrum[i];
        }
    return result;
}

inline std::vector<Quad> hartleyReference(const std::vector<Quad> &x) {
    const int n = static_cast<int>(x.size());
    std::vector<Quad> result(n, 0);
    for (int k = 0; k < n; ++k)
        for (int j = 0; j < n; ++j)
            result[k] += x[j] * (cosine({static_cast<long>(j) * k, n}) + sine({static_cast<long>(j) * k, n}));
    return result;
}

inline double largestDifference(const std::vector<Quad> &a, const std::vector<Quad> &b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double difference = static_cast<double>(a[i] > b[i] ? a[i] - b[i] : b[i] - a[i]);
        largest = std::max(largest, difference);
    }
    return largest;
}

} // namespace zrfgen::gen
