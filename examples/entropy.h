#pragma once

#include <cmath>
#include <numbers>
#include <unordered_map>

// What the best code for such numbers takes altogether, with the correction for counting only so many of them
// (Miller and Madow). The code itself costs nothing here.
inline double entropy(const std::unordered_map<int, int> &counts) {
    int total = 0;
    for (const auto &[value, count] : counts)
        total += count;
    double bits = double(counts.size() - 1) / (2 * std::numbers::ln2);
    for (const auto &[value, count] : counts)
        bits += count * std::log2(double(total) / count);
    return bits;
}
