// Quad-precision numbers, from which every constant is rounded once, and exact rational angles.
#pragma once

namespace zrfgen::gen {

using Quad = __float128;

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

} // namespace zrfgen::gen
