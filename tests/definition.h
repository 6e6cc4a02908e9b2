// What the DFTs and Hartley transforms compute, in quad precision, and how far results are from it. A complex
// element counts as its real and its imaginary part, half a spectrum as R[0], R[1], I[1], R[2] and so on in
// every layout.
#pragma once

#include "exports.h"
#include "random.h"

#include <cmath>
#include <functional>
#include <number/quad.h>

// The coefficients for n elements by results, then by sources; the scale is 1.
inline std::vector<std::vector<zrfgen::gen::Quad>> definition(std::string_view family, int n) {
    using namespace zrfgen::gen;
    const bool isComplex = family.ends_with("CToC"), isFromSpectrum = family.ends_with("ToR");
    const bool isToSpectrum = family.starts_with("DFTFwd_RTo");
    const int count = isComplex ? 2 * n : n;
    // All are parts of the complex DFT, in whose arrays a number has this place.
    const auto place = [&](bool isSpectrum, int i) {
        return isComplex ? i : isSpectrum ? i + (i > 0) : 2 * i;
    };
    std::vector<ComplexQuad> roots;
    for (int k = 0; k < n; ++k)
        roots.push_back(onCircle({family.starts_with("DFTInv") ? k : -k, n}));
    const auto coefficient = [&](int to, int from) {
        const ComplexQuad root = roots[(to / 2) * (from / 2) % n];
        return to % 2 == from % 2 ? root.re : to % 2 == 1 ? root.im : -root.im;
    };

    std::vector matrix(count, std::vector<Quad>(count));
    for (int k = 0; k < count; ++k)
        for (int j = 0; j < count; ++j) {
            const int to = place(isToSpectrum, k), from = place(isFromSpectrum, j);
            matrix[k][j] = coefficient(to, from);
            if (family == "Hartley")
                matrix[k][j] += coefficient(to, from + 1);
            if (isFromSpectrum && from != 0 && from / 2 * 2 != n) // stands for its mirror image as well
                matrix[k][j] *= 2;
        }
    return matrix;
}

// The largest error of what compute() makes in dst of a 1 at each place of src.
template <class Real>
double impulseError(const Export &transform, Real *src, Real *dst, const std::function<void()> &compute) {
    const auto exact = definition(transform.family, transform.size);
    const int n = transform.size, count = transform.numbers(n);
    std::fill_n(src, transform.srcCount(n), Real(0));
    double largest = 0;
    for (int j = 0; j < count; ++j) {
        Real &impulse = src[transform.srcPosition(n, j)];
        impulse = 1;
        compute();
        impulse = 0;
        for (int k = 0; k < count; ++k)
            largest = std::max(largest,
                               std::abs(static_cast<double>(dst[transform.dstPosition(n, k)] - exact[k][j])));
    }
    return largest;
}

// The relative root-mean-square error of what each computation makes in dst of the same random vectors in
// src.
template <class Real>
std::vector<double> randomErrors(const Export &transform, Real *src, Real *dst, int vectors,
                                 const std::vector<std::function<void()>> &computations) {
    using zrfgen::gen::Quad;
    const auto coefficients = definition(transform.family, transform.size);
    const int n = transform.size, count = transform.numbers(n);
    std::fill_n(src, transform.srcCount(n), Real(0)); // the zeros of a layout, too
    RandomNumbers random(1);
    Quad size = 0;
    std::vector<Quad> errors(computations.size(), 0);
    while (vectors-- > 0) {
        std::vector<Quad> exact(count, 0);
        for (int j = 0; j < count; ++j) {
            const Real value = src[transform.srcPosition(n, j)] = random.next<Real>();
            for (int k = 0; k < count; ++k)
                exact[k] += coefficients[k][j] * value;
        }
        for (const Quad value : exact)
            size += value * value;
        for (std::size_t i = 0; i < errors.size(); ++i) {
            computations[i]();
            for (int k = 0; k < count; ++k) {
                const Quad error = dst[transform.dstPosition(n, k)] - exact[k];
                errors[i] += error * error;
            }
        }
    }
    std::vector<double> relative;
    for (const Quad error : errors)
        relative.push_back(std::sqrt(static_cast<double>(error / size)));
    return relative;
}
