#include "number/quad.h"

#include <numeric>

// The header of libquadmath is found by GCC alone; these declarations let other compilers build this file.
extern "C" {
__float128 acosq(__float128);
__float128 cosq(__float128);
__float128 sinq(__float128);
__float128 sqrtq(__float128);
}

namespace zrfgen::gen {

Quad squareRoot(Quad x) {
    return sqrtq(x);
}

Turn::Turn(long numerator, long denominator) {
    const long reduced = (numerator % denominator + denominator) % denominator;
    const long divisor = std::gcd(reduced, denominator);
    this->numerator = reduced / divisor;
    this->denominator = denominator / divisor;
}

Turn operator+(Turn a, Turn b) {
    return {a.numerator * b.denominator + b.numerator * a.denominator, a.denominator * b.denominator};
}

Quad cosine(Turn angle) {
    const long k = angle.numerator, n = angle.denominator;
    if (2 * k > n)
        return cosine({n - k, n});
    if (4 * k > n)
        return -cosine({n - 2 * k, 2 * n});
    if (4 * k == n)
        return 0;
    const Quad turn = 2 * acosq(-1);
    return 8 * k > n ? sinq(turn * (n - 4 * k) / (4 * n)) : cosq(turn * k / n);
}

Quad sine(Turn angle) {
    return cosine(angle + Turn(3, 4));
}

} // namespace zrfgen::gen
