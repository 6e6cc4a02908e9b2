// The DFTs and Hartley transforms on lists of doubles, which hold the numbers of both element types, in the
// order of the definition.
#pragma once

#include "exports.h"
#include "random.h"

#include <gtest/gtest.h>

using Values = std::vector<double>;

inline Values randomValues(const Export &transform, unsigned seed) {
    Values values = randomNumbers<Float64>(transform.numbers(transform.size), seed);
    if (transform.isSingle)
        std::ranges::transform(values, values.begin(),
                               [](double value) { return static_cast<Float32>(value); });
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
