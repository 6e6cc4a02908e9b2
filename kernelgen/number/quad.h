// Quad-precision numbers, from which every constant is rounded once, and exact rational angles.
#pragma once

namespace zrfgen::gen {

using Quad = __float128;

struct ComplexQuad {
    Quad re = 0, im = 0;
};

inline ComplexQuad operator/(ComplexQuad value, int divisor) {
    return {value.re / divisor, value.im / divisor};
}

Quad squareRoot(Quad x);

// An angle as an exact fraction of a full turn, reduced to 0 <= numerator < denominator in lowest terms.
struct Turn {
    long numerator = 0, denominator = 1;

    Turn() = default;
    Turn(long numerator, long denominator);

    bool isMultipleOf(long fraction) const { return fraction % denominator == 0; } // of 1 / fraction turn
    friend bool operator==(const Turn &, const Turn &) = default;
};

Turn operator+(Turn a, Turn b);

// Cosine and sine of the angle. Equal up to sign wherever symmetry makes them so: the argument is brought
// into the first eighth of the circle before a series sees it.
Quad cosine(Turn angle);
Quad sine(Turn angle);
// exp(2 pi i angle)
inline ComplexQuad onCircle(Turn angle) {
    return {cosine(angle), sine(angle)};
}

// Entry k of the transform of a sequence of n numbers: the sum over q of sequence(q) exp(-2 pi i q k / n). A
// part that vanishes by symmetry is exactly 0, rather than what rounding left of it.
template <class Sequence> ComplexQuad spectrum(int n, int k, Sequence sequence) {
    ComplexQuad sum;
    for (int q = 0; q < n; ++q) {
        const ComplexQuad value = sequence(q), root = onCircle({-q * k, n});
        sum.re += value.re * root.re - value.im * root.im;
        sum.im += value.re * root.im + value.im * root.re;
    }
    // Far above the rounding of a quad, 1e-34, and far below any entry that is not 0.
    constexpr Quad negligible = 1e-30;
    const auto cleaned = [](Quad x) { return x < negligible && x > -negligible ? 0 : x; };
    return {cleaned(sum.re), cleaned(sum.im)};
}

} // namespace zrfgen::gen
