// The shortest transforms bit for bit against their arithmetic: each rounding where it belongs, in the order
// of additions that makes up the result. Of the complex ones, forward only: the inverse mirrors it.
#include "exports.h"
#include "random.h"

#include <array>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <number/quad.h>
#include <span>

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

// A complex product of four real products and two additions.
template <class Real> std::complex<Real> times(std::complex<Real> a, std::complex<Real> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

template <class Real> std::complex<Real> timesI(std::complex<Real> a) {
    return {-a.imag(), a.real()};
}

// cos + i sin of -k/n of a turn.
template <class Real> std::complex<Real> twiddle(int k, int n) {
    return {static_cast<Real>(cosine({k, n})), static_cast<Real>(-sine({k, n}))};
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

// Three pairs (j, j + 3), then a 3-point transform over their sums and one over their differences.
template <class Real> List<Real> dft6(const List<Real> &x) {
    const auto sums = dft3<Real, Real>({x[0] + x[3], x[2] + x[5], x[4] + x[1]});
    const auto differences = dft3<Real, Real>({x[0] - x[3], x[2] - x[5], x[4] - x[1]});
    return {sums[0], differences[1], sums[2], differences[0], sums[1], differences[2]};
}

// N = a b: a-point transforms of the residue classes modulo b, twiddle factors, b-point transforms.
template <class Real, int a, int b, auto first, auto second> List<Real> cooleyTukey(const List<Real> &x) {
    List<Real> columns[b], result(a * b);
    for (int j2 = 0; j2 < b; ++j2) {
        for (int j1 = 0; j1 < a; ++j1)
            columns[j2].push_back(x[b * j1 + j2]);
        columns[j2] = first(columns[j2]);
    }
    for (int k1 = 0; k1 < a; ++k1) {
        List<Real> row;
        for (int j2 = 0; j2 < b; ++j2)
            row.push_back(times(columns[j2][k1], twiddle<Real>(j2 * k1, a * b)));
        row = second(row);
        for (int k2 = 0; k2 < b; ++k2)
            result[k1 + a * k2] = row[k2];
    }
    return result;
}

// In Complex64 the odd half is turned by an eighth ahead of its last additions.
List<Float64> dft8InVectors(const List<Float64> &x) {
    const auto even = dft4<Float64>({x[0], x[2], x[4], x[6]});
    const auto u0 = x[1] + x[5], u2 = x[3] + x[7];
    const auto hu = 0.7071067811865476 * (x[1] - x[5]), hv = 0.7071067811865476 * (x[3] - x[7]);
    const auto p = hu - hv, iq = timesI(hu + hv);
    const List<Float64> odd = {u0 + u2, p - iq, timesI(u2 - u0), -p - iq};
    List<Float64> result;
    for (const double sign : {1., -1.})
        for (int k = 0; k < 4; ++k)
            result.push_back(even[k] + sign * odd[k]);
    return result;
}

template <class Real> int agreements(int length, List<Real> oracle(const List<Real> &)) {
    const Export &transform = transformOf("DFTFwd_CToC", length, sizeof(Real) == sizeof(Float32));
    return agreements<std::complex<Real>>(transform, zrfScaleNone, oracle);
}

TEST(Arithmetic, Complex32) {
    EXPECT_EQ(agreements<Float32>(2, dft2<Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(4, dft4<Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(6, dft6<Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(8, cooleyTukey<Float32, 4, 2, dft4<Float32>, dft2<Float32>>), 1000);
    constexpr auto dft3Narrow = dft3<Float32, Float32>;
    EXPECT_EQ(agreements<Float32>(9, cooleyTukey<Float32, 3, 3, dft3Narrow, dft3Narrow>), 1000);
    EXPECT_EQ(agreements<Float32>(16, cooleyTukey<Float32, 4, 4, dft4<Float32>, dft4<Float32>>), 1000);
}

// The shortest odd lengths multiply in Float64, and that can be seen: Float32 products give other numbers.
TEST(Arithmetic, Complex32WithWideProducts) {
    EXPECT_EQ(agreements<Float32>(3, dft3<Float32, Float64>), 1000);
    EXPECT_LT(agreements<Float32>(3, dft3<Float32, Float32>), 1000);
    EXPECT_EQ(agreements<Float32>(5, dft5<Float32, Float64>), 1000);
    EXPECT_LT(agreements<Float32>(5, dft5<Float32, Float32>), 1000);
}

TEST(Arithmetic, Complex64) {
    constexpr auto block3 = dft3<Float64, Float64>;
    EXPECT_EQ(agreements<Float64>(2, dft2<Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(3, block3), 1000);
    EXPECT_EQ(agreements<Float64>(4, dft4<Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(5, dft5<Float64, Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(6, dft6<Float64>), 1000);
    EXPECT_EQ(agreements<Float64>(8, dft8InVectors), 1000);
    EXPECT_EQ(agreements<Float64>(9, cooleyTukey<Float64, 3, 3, block3, block3>), 1000);
}

// Lengths whose additions stand in the same order in both directions. The others agree within rounding.
bool hasExchangeSymmetry(int length, bool isSingle) {
    constexpr int otherOrder64[] = {22, 33, 44, 46, 49, 50, 55, 58, 62};
    constexpr int primesByConvolution[] = {7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53, 59, 61};
    return std::ranges::count(isSingle ? std::span<const int>(primesByConvolution) : otherOrder64, length) ==
           0;
}

// Real and imaginary parts exchanged.
template <class Real> List<Real> exchanged(List<Real> list) {
    for (auto &element : list)
        element = {element.imag(), element.real()};
    return list;
}

template <class Real> void expectMirroredInverse() {
    const bool isSingle = sizeof(Real) == sizeof(Float32);
    for (int length = zrfShortestLength; length <= zrfLongestLength; ++length) {
        const Export &forward = transformOf("DFTFwd_CToC", length, isSingle);
        const Export &inverse = transformOf("DFTInv_CToC", length, isSingle);
        SCOPED_TRACE(forward.name);
        const auto input = randomElements<std::complex<Real>>(length);
        auto output = run(forward, input, zrfScaleBySqrtN);
        if (hasExchangeSymmetry(length, isSingle)) {
            EXPECT_EQ(run(inverse, exchanged(input), zrfScaleBySqrtN), exchanged(output));
        }
        if (length <= 5) {
            std::reverse(output.begin() + 1, output.end());
            EXPECT_EQ(run(inverse, input, zrfScaleBySqrtN), output);
        }
    }
}

TEST(Arithmetic, OfTheInverseMirrorsThatOfTheForwardTransform) {
    expectMirroredInverse<Float32>();
    expectMirroredInverse<Float64>();
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
