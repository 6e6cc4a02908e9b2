// What the DFTs and Hartley transforms compute, as a matrix over real numbers. A complex element is its real
// and its imaginary part; half a spectrum is R[0], R[1], I[1], R[2] and so on in every layout.
#pragma once

#include "exports.h"

#include <number/quad.h>

// By results, then by sources; the scale is 1.
template <class Number> std::vector<std::vector<Number>> definition(const Export &transform) {
    using namespace zrfgen::gen;
    const int n = transform.size, count = transform.numbers(n);
    const bool isFromSpectrum = transform.family.ends_with("ToR");
    const bool isToSpectrum = transform.family.starts_with("DFTFwd_RTo");
    struct Part {
        int index;
        bool isImaginary;
    };
    const auto part = [&](bool isSpectrum, int i) {
        return transform.isComplex() ? Part{i / 2, i % 2 == 1}
               : isSpectrum          ? Part{(i + 1) / 2, i > 0 && i % 2 == 0}
                                     : Part{i, false};
    };
    std::vector<ComplexQuad> roots;
    for (int k = 0; k < n; ++k)
        roots.push_back(onCircle({transform.family.starts_with("DFTInv") ? k : -k, n}));

    std::vector matrix(count, std::vector<Number>(count));
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < count; ++j) {
            const Part to = part(isToSpectrum, k), from = part(isFromSpectrum, j);
            const ComplexQuad root = roots[to.index * from.index % n];
            const ComplexQuad z = from.isImaginary ? ComplexQuad{-root.im, root.re} : root;
            const Quad value = transform.family == "Hartley" ? z.re - z.im : to.isImaginary ? z.im : z.re;
            // An inner entry of half a spectrum stands for its mirror image as well.
            const bool isTwice = isFromSpectrum && from.index != 0 && 2 * from.index != n;
            matrix[k][j] = static_cast<Number>(isTwice ? 2 * value : value);
        }
    return matrix;
}
