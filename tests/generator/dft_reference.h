// The defining sums in quad precision, and inputs for them.
#pragma once

#include "graph/evaluate.h"
#include "tests/definition.h"

#include <cmath>
#include <numeric>

namespace zrfgen::gen {

// Numbers that are exact in every element type.
inline std::vector<Quad> randomSource(int elements, unsigned seed = 1) {
    const auto numbers = randomElements<float>(elements, seed);
    return {numbers.begin(), numbers.end()};
}

// What a transform of n elements makes of x by its definition.
inline std::vector<Quad> defined(std::string_view family, int n, const std::vector<Quad> &x) {
    std::vector<Quad> results;
    for (const std::vector<Quad> &coefficients : definition(family, n))
        results.push_back(std::inner_product(x.begin(), x.end(), coefficients.begin(), Quad(0)));
    return results;
}

inline double largestDifference(const std::vector<Quad> &a, const std::vector<Quad> &b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(static_cast<double>(a[i] - b[i])));
    return largest;
}

} // namespace zrfgen::gen
