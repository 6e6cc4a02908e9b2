// The DFTs and Hartley transforms on lists of doubles, which hold the numbers of both element types, and
// their definition. A complex element is its real and its imaginary part; half a spectrum is R[0], R[1],
// I[1], R[2] and so on in every layout.
#pragma once

#include "exports.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

using Values = std::vector<double>;

// A source between -1 and 1, the same on every run.
inline Values randomValues(const Export &transform, unsigned seed) {
    std::mt19937_64 generator(seed);
    std::uniform_real_distribution<double> uniform(-1, 1);
    Values values(transform.numbers(transform.size));
    for (double &value : values)
        value = transform.isSingle ? static_cast<Float32>(uniform(generator)) : uniform(generator);
    return values;
}

template <class Real> Values runAs(const Export &transform, const Values &source, int32_t flag) {
    const int n = transform.size;
    std::vector<Real> src(transform.srcCount(n)), dst(transform.dstCount(n));
    for (std::size_t i = 0; i < source.size(); ++i)
        src[transform.srcPosition(n, i)] = static_cast<Real>(source[i]);
    EXPECT_EQ(transform.transform(src.data(), dst.data(), n, flag, nullptr), zrfStatusOk);
    Values result(source.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = dst[transform.dstPosition(n, i)];
    return result;
}

inline Values run(const Export &transform, const Values &source, int32_t flag) {
    return (transform.isSingle ? runAs<Float32> : runAs<Float64>)(transform, source, flag);
}

// The cosine and sine of k/n of a turn; exact at quarters of a turn.
inline long double cosineOfTurn(int k, int n) {
    constexpr int atQuarters[] = {1, 0, -1, 0};
    k = (k % n + n) % n;
    if (4 * k % n == 0)
        return atQuarters[4 * k / n];
    return std::cos(2 * std::numbers::pi_v<long double> * k / n);
}
inline long double sineOfTurn(int k, int n) {
    return cosineOfTurn(4 * k - n, 4 * n);
}

// What a number of an array is: a part of the element or spectrum entry of this index.
struct Part {
    int index;
    bool isImaginary;
    Part(const Export &transform, bool isSpectrum, int i)
        : index(transform.isComplex() ? i / 2
                : isSpectrum          ? (i + 1) / 2
                                      : i),
          isImaginary(transform.isComplex() ? i % 2 == 1 : isSpectrum && i > 0 && i % 2 == 0) {}
};

// The number by which the transform multiplies source number j on its way to result number k, before scaling.
inline long double coefficient(const Export &transform, int k, int j) {
    const int n = transform.size;
    const bool isFromSpectrum = transform.family.ends_with("ToR");
    const Part to(transform, transform.family.starts_with("DFTFwd_RTo"), k),
        from(transform, isFromSpectrum, j);
    const int turns = to.index * from.index % n;
    const long double c = cosineOfTurn(turns, n), s = sineOfTurn(turns, n);
    if (transform.family == "Hartley")
        return c + s;
    const long double signedSine = transform.family.starts_with("DFTFwd") ? -s : s;
    const long double factor = to.isImaginary == from.isImaginary ? c
                               : to.isImaginary                   ? signedSine
                                                                  : -signedSine;
    // An inner entry of half a spectrum stands for its mirror image as well.
    return isFromSpectrum && from.index != 0 && 2 * from.index != n ? 2 * factor : factor;
}
