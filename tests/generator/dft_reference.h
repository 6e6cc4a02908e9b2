// The defining sum in quad precision, and inputs for it.
#pragma once

#include "graph/evaluate.h"

#include <random>

namespace zrfgen::gen {

// Interleaved complex numbers with short mantissas, exact in every element type.
inline std::vector<Quad> randomSource(int complexElements, unsigned seed = 1) {
    std::mt19937 random(seed);
    std::vector<Quad> source;
    for (int i = 0; i < 2 * complexElements; ++i)
        source.push_back(static_cast<Quad>(static_cast<int>(random() % 2097152) - 1048576) / 1048576);
    return source;
}

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

inline double largestDifference(const std::vector<Quad> &a, const std::vector<Quad> &b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double difference = static_cast<double>(a[i] > b[i] ? a[i] - b[i] : b[i] - a[i]);
        largest = std::max(largest, difference);
    }
    return largest;
}

} // namespace zrfgen::gen
