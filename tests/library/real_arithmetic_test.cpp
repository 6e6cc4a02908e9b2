// The shortest real transforms bit for bit against their arithmetic.
#include "definition.h"

namespace {

template <class Real> using List = std::vector<Real>;

template <class Real> Values length2(const List<Real> &x, Real factor) {
    return {(x[0] + x[1]) * factor, (x[0] - x[1]) * factor};
}

template <class Real> Values length4(const List<Real> &x, Real factor) {
    const Real even = x[0] + x[2], odd = x[1] + x[3];
    return {(even + odd) * factor, (x[0] - x[2]) * factor, (x[3] - x[1]) * factor, (even - odd) * factor};
}

// The block over the sums and differences of pairs. What comes of products, of type Wide, is scaled before it
// is rounded to Real.
template <class Real, class Wide, bool isHartley> Values length5(const List<Real> &x, Real factor) {
    const Real a1 = x[1] + x[4], a2 = x[2] + x[3], b1 = x[1] - x[4], b2 = x[2] - x[3];
    const Wide c1 = cosineOfTurn(1, 5), c2 = -cosineOfTurn(2, 5);
    const Wide s1 = sineOfTurn(1, 5), s2 = sineOfTurn(2, 5);
    const Wide u = x[0] + c1 * a1 - c2 * a2, v = x[0] - c2 * a1 + c1 * a2;
    const Wide t = s1 * b1 + s2 * b2, w = s2 * b1 - s1 * b2;
    const Real sum = (x[0] + a1 + a2) * factor;
    const auto scaled = [&](Wide value) { return static_cast<Real>(value * factor); };
    if (isHartley)
        return {sum, scaled(u + t), scaled(v + w), scaled(v - w), scaled(u - t)};
    return {sum, scaled(u), scaled(-t), scaled(v), scaled(-w)};
}

// Of R[0], R[1], I[1], R[2] and I[2], the last four doubled first.
Values inverseLength5(const List<Float64> &x, Float64 factor) {
    const Float64 r0 = x[0], a = 2 * x[1], b = 2 * x[3], c = 2 * x[2], d = 2 * x[4];
    const Float64 c1 = cosineOfTurn(1, 5), c2 = -cosineOfTurn(2, 5);
    const Float64 s1 = sineOfTurn(1, 5), s2 = sineOfTurn(2, 5);
    const Float64 u = r0 + c1 * a - c2 * b, v = r0 - c2 * a + c1 * b;
    const Float64 t = s1 * c + s2 * d, w = s2 * c - s1 * d;
    return {(r0 + a + b) * factor, (u - t) * factor, (v - w) * factor, (v + w) * factor, (u + t) * factor};
}

// How many of a thousand random inputs give just the oracle's numbers.
template <class Real>
int agreements(const std::string &family, int length, Values oracle(const List<Real> &, Real)) {
    const Export &transform = transformOf(family, length, sizeof(Real) == sizeof(Float32));
    const Real factor = static_cast<Real>(1 / std::sqrt(static_cast<long double>(length)));
    int count = 0;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const Values input = randomValues(transform, seed);
        count += run(transform, input, zrfScaleBySqrtN) == oracle({input.begin(), input.end()}, factor);
    }
    return count;
}

TEST(RealArithmetic, TwoAndFourOnlyAdd) {
    for (const char *family : {"DFTFwd_RToPack", "DFTInv_PackToR", "Hartley"}) {
        EXPECT_EQ(agreements(family, 2, length2<Float32>), 1000) << family;
        EXPECT_EQ(agreements(family, 2, length2<Float64>), 1000) << family;
    }
    EXPECT_EQ(agreements("DFTFwd_RToPack", 4, length4<Float32>), 1000);
    EXPECT_EQ(agreements("DFTFwd_RToPack", 4, length4<Float64>), 1000);
}

TEST(RealArithmetic, Five) {
    EXPECT_EQ(agreements("DFTFwd_RToPack", 5, length5<Float64, Float64, false>), 1000);
    EXPECT_EQ(agreements("Hartley", 5, length5<Float64, Float64, true>), 1000);
    EXPECT_EQ(agreements("DFTInv_PackToR", 5, inverseLength5), 1000);
    // The plain sum stays in Float32. Float32 products would give other numbers.
    EXPECT_EQ(agreements("DFTFwd_RToPack", 5, length5<Float32, Float64, false>), 1000);
    EXPECT_LT(agreements("DFTFwd_RToPack", 5, length5<Float32, Float32, false>), 1000);
}

} // namespace
