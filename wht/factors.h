// The scale factors of the Walsh-Hadamard transform of 2^order elements.
#pragma once

#include "vector_kernel.h"

namespace zrfgen {

// 1/sqrt(2) as 1 divided by the rounded square root of 2: in Float64 one unit in the last place below the
// nearest number, which the results of odd orders have to show.
template <class Element> inline constexpr Element inverseRootOfTwo = 0;
template <> inline constexpr Float32 inverseRootOfTwo<Float32> = 0x1.6a09e6p-1f;
template <> inline constexpr Float64 inverseRootOfTwo<Float64> = 0x1.6a09e667f3bccp-1;

template <class Element, int order> struct WhtFactors {
    // Exact: products of powers of two.
    static constexpr Element byPowerOfTwo(int exponent) { return Element(1) / Element(1 << exponent); }

    static constexpr ScaleFactor<Element> one{1};
    static constexpr ScaleFactor<Element> byN{byPowerOfTwo(order)};
    static constexpr ScaleFactor<Element> bySqrtN{byPowerOfTwo(order / 2) *
                                                  (order % 2 == 0 ? Element(1) : inverseRootOfTwo<Element>)};
};

} // namespace zrfgen
