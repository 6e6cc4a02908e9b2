// The shortest transforms bit for bit against their arithmetic: each rounding where it belongs, in the order
// of additions that makes up the result. Of the complex ones, forward only.
#include "exports.h"
#include "random.h"

#include <array>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <number/quad.h>

namespace {

using zrfgen::gen::cosine, zrfgen::gen::sine;

template <class Real> using Reals = std::vector<Real>;
template <class Real> using List = std::vector<std::complex<Real>>;

template <class Element>
std::vector<Element> run(const Export &transform, const std::vector<Element> &x, int32_t flag) {
    std::vector<Element> result(x.size());
    EXPECT_EQ(transform.transform(x.data(), result.data(), transform.size, flag, nullptr), zrfStatusOk);
    return result;
}

// How many of a thousand random inputs give just the oracle's numbers.
template <class Element, class Oracle> int agreements(const Export &transform, int32_t flag, Oracle oracle) {
    int count = 0;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const auto x = randomElements<Element>(transform.size, seed);
        count += run(transform, x, flag) == oracle(x);
    }
    return count;
}

// The cosines, without their signs, and sines of the fifths of a turn.
template <class Wide> std::array<Wide, 4> constantsOf5() {
    const auto rounded = [](zrfgen::gen::Quad value) { return static_cast<Wide>(value); };
    return {rounded(cosine({1, 5})), rounded(-cosine({2, 5})), rounded(sine({1, 5})), rounded(sine({2, 5}))};
}

template <class Real> std::complex<Real> timesI(std::complex<Real> a) {
    return {-a.imag(), a.real()};
}

template <class Real> List<Real> dft2(const List<Real> &x) {
    return {x[0] + x[1], x[0] - x[1]};
}

// Wide is the type of the products; what they give is rounded to Real before the last additions.
template <class Real, class Wide> List<Real> dft3(const List<Real> &x) {
    using W = std::complex<Wide>;
    const auto a = x[1] + x[2], b = x[1] - x[2];
    const Wide half = 0.5, root = static_cast<Wide>(sine({1, 3}));
    const std::complex<Real> m(W(x[0]) - half * W(a)), rotated(root * W(b));
    return {x[0] + a, m - timesI(rotated), m + timesI(rotated)};
}

template <class Real> List<Real> dft4(const List<Real> &x) {
    const auto u0 = x[0] + x[2], u1 = x[0] - x[2], u2 = x[1] + x[3], u3 = x[1] - x[3];
    return {u0 + u2, u1 - timesI(u3), u0 - u2, u1 + timesI(u3)};
}

template <class Real, class Wide> List<Real> dft5(const List<Real> &x) {
    using W = std::complex<Wide>;
    const auto a = x[1] + x[4], b = x[2] + x[3], d = x[1] - x[4], e = x[2] - x[3];
    const auto [c1, c2, s1, s2] = constantsOf5<Wide>();
    const std::complex<Real> m1(W(x[0]) + c1 * W(a) - c2 * W(b)), m2(W(x[0]) - c2 * W(a) + c1 * W(b));
    const std::complex<Real> n1(s1 * W(d) + s2 * W(e)), n2(s2 * W(d) - s1 * W(e));
    return {x[0] + a + b, m1 - timesI(n1), m2 - timesI(n2), m2 + timesI(n2), m1 + timesI(n1)};
}

template <class Real> int agreements(int length, List<Real> oracle(const List<Real> &)) {
    const Export &transform = transformOf("DFTFwd_CToC", length, sizeof(Real) == sizeof(Float32));
    return agreements<std::complex<Real>>(transform, zrfScaleNone, oracle);
}

// The shortest odd lengths of Complex32 multiply in Float64, and that can be seen: Float32 products give
// other numbers.
TEST(Arithmetic, OfComplexNumbers) {
    EXPECT_EQ(agreements<Float32>(2, dft2<Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(3, dft3<Float32, Float64>), 1000);
    EXPECT_LT(agreements<Float32>(3, dft3<Float32, Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(4, dft4<Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(5, dft5<Float32, Float64>), 1000);
    EXPECT_LT(agreements<Float32>(5, dft5<Float32, Float32>), 1000);
    EXPECT_EQ(agreements<Float64>(2, dft2<Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(3, dft3<Float64, Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(4, dft4<Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(5, dft5<Float64, Float64>), 1000);
}

template <class Real> Reals<Real> length2(const Reals<Real> &x, Real factor) {
    return {(x[0] + x[1]) * factor, (x[0] - x[1]) * factor};
}

template <class Real> Reals<Real> length4(const Reals<Real> &x, Real factor) {
    const Real even = x[0] + x[2], odd = x[1] + x[3];
    return {(even + odd) * factor, (x[0] - x[2]) * factor, (x[3] - x[1]) * factor, (even - odd) * factor};
}

// The block over the sums and differences of pairs. What comes of products, of type Wide, is scaled before it
// is rounded to Real.
template <class Real, class Wide, bool isHartley> Reals<Real> length5(const Reals<Real> &x, Real factor) {
    const Real a1 = x[1] + x[4], a2 = x[2] + x[3], b1 = x[1] - x[4], b2 = x[2] - x[3];
    const auto [c1, c2, s1, s2] = constantsOf5<Wide>();
    const Wide u = x[0] + c1 * a1 - c2 * a2, v = x[0] - c2 * a1 + c1 * a2;
    const Wide t = s1 * b1 + s2 * b2, w = s2 * b1 - s1 * b2;
    const Real sum = (x[0] + a1 + a2) * factor;
    const auto scaled = [&](Wide value) { return static_cast<Real>(value * factor); };
    if (isHartley)
        return {sum, scaled(u + t), scaled(v + w), scaled(v - w), scaled(u - t)};
    return {sum, scaled(u), scaled(-t), scaled(v), scaled(-w)};
}

// Of R[0], R[1], I[1], R[2] and I[2], the last four doubled first.
Reals<Float64> inverseLength5(const Reals<Float64> &x, Float64 factor) {
    const Float64 r0 = x[0], a = 2 * x[1], b = 2 * x[3], c = 2 * x[2], d = 2 * x[4];
    const auto [c1, c2, s1, s2] = constantsOf5<Float64>();
    const Float64 u = r0 + c1 * a - c2 * b, v = r0 - c2 * a + c1 * b;
    const Float64 t = s1 * c + s2 * d, w = s2 * c - s1 * d;
    return {(r0 + a + b) * factor, (u - t) * factor, (v - w) * factor, (v + w) * factor, (u + t) * factor};
}

template <class Real>
int agreements(const char *family, int length, Reals<Real> oracle(const Reals<Real> &, Real)) {
    const Real factor = static_cast<Real>(1 / std::sqrt(static_cast<long double>(length)));
    return agreements<Real>(transformOf(family, length, sizeof(Real) == sizeof(Float32)), zrfScaleBySqrtN,
                            [=](const Reals<Real> &x) { return oracle(x, factor); });
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
