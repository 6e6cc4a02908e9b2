// The typed C++ interface: the values and refusals of the C calls behind it, and what does not compile.
#include "exports.h"
#include "random.h"

#include <zrfgen/transforms.hpp>

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace {

using zrfgen::Scale, zrfgen::dynamic;
using SpectrumLayout = zrfgen::Layout;

// The calls of the face, as functions that can be handed on and asked whether they take certain arrays.
#define FACE(call) [](auto &&x, auto &&X, Scale scale = Scale::None) -> decltype(call) { return call; }
constexpr auto forward = FACE(zrfgen::dftForward(x, X, scale));
constexpr auto inverse = FACE(zrfgen::dftInverse(x, X, scale));
constexpr auto hartley = FACE(zrfgen::hartley(x, X, scale));
constexpr auto walshHadamard = FACE(zrfgen::walshHadamard(x, X, scale));
template <std::size_t N> constexpr auto forwardOf = FACE(zrfgen::dftForward<N>(x, X, scale));
template <SpectrumLayout layout>
constexpr auto realForward = FACE(zrfgen::realDftForward<layout>(x, X, scale));
template <SpectrumLayout layout>
constexpr auto realInverse = FACE(zrfgen::realDftInverse<layout>(x, X, scale));

constexpr auto CCS = SpectrumLayout::CCS, Pack = SpectrumLayout::Pack, Perm = SpectrumLayout::Perm;

template <class Element> bool haveSameBits(const std::vector<Element> &a, const std::vector<Element> &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Element)) == 0;
}

// Holds the face to the C call, with sizes known when it is compiled and with the same sizes at run time.
template <class Element, std::size_t from, std::size_t to, class Face>
void compare(const Export &plain, int32_t size, Face face) {
    const std::vector<Element> source = randomElements<Element>(from);
    for (const Scale scale : {Scale::ForwardByN, Scale::InverseByN, Scale::BySqrtN, Scale::None}) {
        std::vector<Element> expected(to), known(to), measured(to);
        const int32_t flag = static_cast<int32_t>(scale);
        ASSERT_EQ(plain.transform(source.data(), expected.data(), size, flag, nullptr), zrfStatusOk);
        EXPECT_EQ(face(std::span<const Element, from>(source), std::span<Element, to>(known), scale), 0);
        EXPECT_EQ(face(source, measured, scale), 0);
        EXPECT_TRUE(haveSameBits(known, expected));
        EXPECT_TRUE(haveSameBits(measured, expected));
    }
}

template <class Real, std::size_t N> void compareAtLength() {
    SCOPED_TRACE(N);
    using Complex = std::complex<Real>;
    constexpr std::size_t ccsSize = zrfgen::spectrumSize(CCS, N);
    const auto plain = [](const char *family) { return transformOf(family, N, sizeof(Real) == 4); };
    compare<Complex, N, N>(plain("DFTFwd_CToC"), N, forward);
    compare<Complex, N, N>(plain("DFTFwd_CToC"), N, forwardOf<N>);
    compare<Complex, N, N>(plain("DFTInv_CToC"), N, inverse);
    compare<Real, N, ccsSize>(plain("DFTFwd_RToCCS"), N, realForward<CCS>);
    compare<Real, N, N>(plain("DFTFwd_RToPack"), N, realForward<Pack>);
    compare<Real, N, N>(plain("DFTFwd_RToPerm"), N, realForward<Perm>);
    compare<Real, ccsSize, N>(plain("DFTInv_CCSToR"), N, realInverse<CCS>);
    compare<Real, N, N>(plain("DFTInv_PackToR"), N, realInverse<Pack>);
    compare<Real, N, N>(plain("DFTInv_PermToR"), N, realInverse<Perm>);
    compare<Real, N, N>(plain("Hartley"), N, hartley);
}

template <class Real, std::size_t N> void compareWalshHadamard() {
    SCOPED_TRACE(N);
    const Export &plain = exportNamed(sizeof(Real) == 4 ? "zrfgWHT_32f" : "zrfgWHT_64f");
    std::vector<zrfgen::ScratchBlock> buffer(zrfgen::walshHadamardBufferSize<Real>(N));
    EXPECT_EQ(buffer.empty(), N <= 128);
    const auto withBuffer = [&](auto &&x, auto &&X, Scale s) {
        return zrfgen::walshHadamard(x, X, s, buffer);
    };
    compare<Real, N, N>(plain, std::countr_zero(N), walshHadamard);
    compare<Real, N, N>(plain, std::countr_zero(N), withBuffer);
    if (!buffer.empty()) {
        std::vector<Real> x(N);
        buffer.pop_back();
        EXPECT_EQ(withBuffer(x, x, Scale::None), zrfStatusSizeError);
    }
}

template <class Real> class CppFace : public testing::Test {};
using Reals = testing::Types<float, double>;
TYPED_TEST_SUITE(CppFace, Reals);

TYPED_TEST(CppFace, GivesTheBitsOfTheCCall) {
    compareAtLength<TypeParam, 2>();
    compareAtLength<TypeParam, 7>();
    compareAtLength<TypeParam, 16>();
    compareAtLength<TypeParam, zrfLongestLength>();
    compareWalshHadamard<TypeParam, 2>();
    compareWalshHadamard<TypeParam, 128>();
    compareWalshHadamard<TypeParam, 256>();
    compareWalshHadamard<TypeParam, 8192>();
}

TYPED_TEST(CppFace, RefusesSizesAtRunTimeAndWritesNothing) {
    const std::vector<TypeParam> values = randomElements<TypeParam>(16384);
    std::vector<TypeParam> output(values);
    const auto expectRefusal = [&](std::size_t from, std::size_t to, auto face) {
        EXPECT_EQ(face(std::span(values.data(), from), std::span(output.data(), to)), zrfStatusSizeError)
            << from << " to " << to;
        EXPECT_TRUE(haveSameBits(output, values));
    };
    for (const std::size_t size : {0, 1, zrfLongestLength + 1})
        expectRefusal(size, size, hartley);
    if constexpr (sizeof(std::size_t) > sizeof(int32_t)) { // 16 in 32 bits
        const std::size_t large = (std::size_t{1} << 31) * 2 + 16;
        expectRefusal(large, large, hartley);
    }
    expectRefusal(16, 15, hartley);
    expectRefusal(16, 16, FACE(zrfgen::hartley<8>(x, X, scale)));
    for (const std::size_t size : {0, 1, 12, 16384})
        expectRefusal(size, size, walshHadamard);
    expectRefusal(16, 8, walshHadamard);
    expectRefusal(16, 17, realForward<CCS>);
    expectRefusal(17, 19, realForward<CCS>);
    expectRefusal(16, 16, realInverse<CCS>);
    EXPECT_EQ(hartley(std::span(values).first(8), std::span(output).first(8), Scale{3}), zrfStatusFlagError);
    EXPECT_TRUE(haveSameBits(output, values));
}

template <class Source, class Destination> constexpr bool compiles(auto face) {
    return std::is_invocable_v<decltype(face), const Source &, Destination &>;
}
template <std::size_t N> using Floats = std::array<float, N>;
using Complex = std::complex<float>;
constexpr std::size_t tooLong = zrfLongestLength + 1;

// Elements decide whether a function takes arrays; what their sizes have to be is in tests/headers.
static_assert(compiles<std::vector<Complex>, std::array<Complex, 8>>(forwardOf<8>));
static_assert(compiles<std::array<Complex32, 4>, Complex32[4]>(forward));
static_assert(compiles<const Complex *, Complex *>(forwardOf<8>));
static_assert(!compiles<Complex[16], const Complex[16]>(forward) &&
              !compiles<Complex *, const Complex *>(forwardOf<8>));
static_assert(!compiles<Complex[16], std::complex<double>[16]>(forward));
static_assert(!compiles<Floats<16>, Floats<16>>(forward) && !compiles<void *, Complex *>(forwardOf<8>));
static_assert(!compiles<Complex[16], Complex[16]>(hartley) && !compiles<int[8], int[8]>(hartley));
static_assert(compiles<Floats<16>, Complex[9]>(realForward<CCS>) &&
              compiles<Complex[9], Floats<16>>(realInverse<CCS>));
static_assert(!compiles<Floats<16>, Complex[8]>(realForward<Perm>));
static_assert(!compiles<Floats<16>, std::complex<double>[9]>(realForward<CCS>));
static_assert(noexcept(zrfgen::dftForward(std::span<Complex>(), std::span<Complex>(), Scale::None)));

TYPED_TEST(CppFace, TakesPointersAndComplexBins) {
    constexpr std::size_t N = 15, bins = N / 2 + 1;
    const std::vector<TypeParam> x = randomElements<TypeParam>(N);
    std::vector<TypeParam> expected(2 * bins), parts(2 * bins), back(N), backFromParts(N);
    std::array<std::complex<TypeParam>, bins> ofType;
    std::vector<std::complex<TypeParam>> measured(bins), atPointer(bins);
    ASSERT_EQ(realForward<CCS>(x, expected), zrfStatusOk);
    const auto expectSame = [&](const std::complex<TypeParam> *spectrum) {
        EXPECT_EQ(std::memcmp(spectrum, expected.data(), bins * sizeof *spectrum), 0);
    };
    EXPECT_EQ(realForward<CCS>(std::span<const TypeParam, N>(x), ofType), zrfStatusOk);
    expectSame(ofType.data());
    EXPECT_EQ(realForward<CCS>(x, measured), zrfStatusOk);
    expectSame(measured.data());
    EXPECT_EQ((zrfgen::realDftForward<CCS, N>(x.data(), atPointer.data(), Scale::None)), zrfStatusOk);
    expectSame(atPointer.data());
    EXPECT_EQ((zrfgen::realDftForward<CCS, N>(x.data(), parts.data(), Scale::None)), zrfStatusOk);
    EXPECT_TRUE(haveSameBits(parts, expected));

    EXPECT_EQ(realInverse<CCS>(parts, backFromParts), zrfStatusOk);
    EXPECT_EQ((zrfgen::realDftInverse<CCS, N>(ofType.data(), back.data(), Scale::None)), zrfStatusOk);
    EXPECT_TRUE(haveSameBits(back, backFromParts));
    EXPECT_EQ(zrfgen::hartley<N>(x.data(), static_cast<TypeParam *>(nullptr), Scale::None),
              zrfStatusNullPointer);
    measured.pop_back();
    EXPECT_EQ(realForward<CCS>(x, measured), zrfStatusSizeError);
}

template <SpectrumLayout layout> void expectConvolution(std::size_t N) {
    SCOPED_TRACE(N);
    const std::vector<double> a = randomElements<double>(2 * N), b(a.begin() + N, a.end());
    std::vector<double> A(zrfgen::spectrumSize(layout, N)), B(A), sum(A), result(N);
    ASSERT_EQ(realForward<layout>(std::span(a).first(N), A), zrfStatusOk);
    ASSERT_EQ(realForward<layout>(b, B), zrfStatusOk);
    EXPECT_EQ(zrfgen::addProductOfSpectra<layout>(A, B, sum), zrfStatusOk);
    EXPECT_EQ(zrfgen::multiplySpectra<layout>(A, B, A), zrfStatusOk);
    EXPECT_EQ(sum, A);
    EXPECT_EQ(realInverse<layout>(A, result, Scale::InverseByN), zrfStatusOk);
    for (std::size_t i = 0; i < N; ++i) {
        double expected = 0;
        for (std::size_t j = 0; j < N; ++j)
            expected += a[j] * b[(i + N - j) % N];
        EXPECT_NEAR(result[i], expected, 1e-13);
    }
    B.pop_back();
    EXPECT_EQ(zrfgen::multiplySpectra<layout>(A, B, A), zrfStatusSizeError);
}

TEST(CppFaceProducts, AreThoseOfCircularConvolution) {
    for (const std::size_t N : {2, 3, 8, 9, 64}) {
        expectConvolution<CCS>(N);
        expectConvolution<Pack>(N);
        expectConvolution<Perm>(N);
    }
    const Complex a[2] = {{1, 0}, {1, 2}}, b[2] = {{3, 0}, {0, 1}};
    Complex product[2];
    EXPECT_EQ(zrfgen::multiplySpectra<CCS>(a, b, product), zrfStatusOk);
    EXPECT_EQ(product[0], Complex(3, 0));
    EXPECT_EQ(product[1], Complex(-2, 1));
}

TEST(CppFaceIndices, FindTheBinsOfEachLayout) {
    for (const SpectrumLayout layout : {CCS, Pack, Perm})
        for (std::size_t N = zrfShortestLength; N <= zrfLongestLength; ++N) {
            SCOPED_TRACE(N);
            const std::vector<double> x = randomElements<double>(N);
            std::vector<double> spectrum(zrfgen::spectrumSize(layout, N));
            const Status status = layout == CCS    ? realForward<CCS>(x, spectrum)
                                  : layout == Pack ? realForward<Pack>(x, spectrum)
                                                   : realForward<Perm>(x, spectrum);
            ASSERT_EQ(status, zrfStatusOk);
            std::vector<std::complex<double>> whole(N);
            ASSERT_EQ(forward(std::vector<std::complex<double>>(x.begin(), x.end()), whole), zrfStatusOk);
            for (std::size_t k = 0; k < N; ++k)
                for (const int wraps : {-2, -1, 0, 1}) {
                    const int index = int(k) + wraps * int(N);
                    EXPECT_LT(std::abs(zrfgen::bin(layout, spectrum, N, index) - whole[k]), 1e-13) << index;
                }
            EXPECT_EQ(zrfgen::bin(layout, spectrum, N, 2 * N + 1), zrfgen::bin(layout, spectrum, N, 1));
            const bool holdsZeros = layout == CCS;
            if (holdsZeros) {
                std::vector<std::complex<double>> bins(N / 2 + 1);
                ASSERT_EQ(realForward<CCS>(x, bins), zrfStatusOk);
                for (const int k : {-1, 0, 1})
                    EXPECT_EQ(zrfgen::bin(layout, bins, N, k), zrfgen::bin(layout, spectrum, N, k));
            }
            EXPECT_EQ(zrfgen::imaginaryIndex(layout, N, 0).has_value(), holdsZeros);
            EXPECT_EQ(zrfgen::imaginaryIndex(layout, N, N / 2).has_value(), holdsZeros || N % 2 == 1);
        }
}

template <class Plan>
concept Transforms = requires(Plan &plan, std::span<float> x) {
    plan.transform(x, x);
};
static_assert(Transforms<zrfgen::Dct4<float>> && !Transforms<const zrfgen::Dct4<float>>);
static_assert(!std::is_copy_constructible_v<zrfgen::Dct4<float>>);

TEST(CppFaceDct4, OwnsItsPlanAndMovesIt) {
    const std::vector<double> x = randomElements<double>(64);
    std::vector<double> expected(64), output(64);
    Dct4Plan *plain;
    ASSERT_EQ(zrfgDCT4InitAlloc_64f(&plain, 64), zrfStatusOk);
    ASSERT_EQ(zrfgDCT4_64f(x.data(), expected.data(), plain), zrfStatusOk);
    ASSERT_EQ(zrfgDCT4Free_64f(plain), zrfStatusOk);

    zrfgen::Dct4<double> first, second;
    EXPECT_THROW(zrfgen::Dct4<double>(48), zrfgen::Error);
    EXPECT_EQ(first.transform(x, output), zrfStatusNullPointer);
    ASSERT_EQ(first.plan(8), zrfStatusOk);
    ASSERT_EQ(first.plan(64), zrfStatusOk);
    for (const std::size_t refused : {std::size_t{0}, std::size_t{1}, std::size_t{48}, std::size_t{65},
                                      std::size_t{1} << 28, std::size_t{1} << 31, ~std::size_t{0}})
        EXPECT_EQ(first.plan(refused), zrfStatusSizeError) << refused;
    ASSERT_EQ(second.plan(16), zrfStatusOk);
    second = std::move(first);
    EXPECT_FALSE(first);
    EXPECT_EQ(first.length(), 0u);
    EXPECT_EQ(first.transform(x, output), zrfStatusNullPointer);
    ASSERT_TRUE(second);
    EXPECT_EQ(second.length(), 64u);
    EXPECT_EQ(second.transform(std::span(x).first(63), output), zrfStatusSizeError);
    EXPECT_EQ(second.transform(x, std::span(output).first(63)), zrfStatusSizeError);
    EXPECT_TRUE(haveSameBits(output, std::vector<double>(64)));
    EXPECT_EQ(zrfgen::Dct4<double>(std::move(second)).transform(x, output), zrfStatusOk);
    EXPECT_TRUE(haveSameBits(output, expected));
}

TEST(CppFaceDct4, ScalesByItsOwnInverse) {
    const std::vector<double> x = randomElements<double>(64);
    std::vector<double> plain(64), scaled(64), back(64);
    zrfgen::Dct4<double> dct(64);
    ASSERT_EQ(dct.transform(x, plain), zrfStatusOk);
    EXPECT_EQ(dct.transform(x, scaled, Scale{3}), zrfStatusFlagError);
    EXPECT_EQ(scaled, std::vector<double>(64));
    for (const auto &[there, andBack] : {std::pair{Scale::BySqrtN, Scale::BySqrtN},
                                         {Scale::None, Scale::InverseByN},
                                         {Scale::ForwardByN, Scale::None}}) {
        ASSERT_EQ(dct.transform(x, scaled, there), zrfStatusOk);
        ASSERT_EQ(dct.transform(scaled, back, andBack), zrfStatusOk);
        for (std::size_t i = 0; i < 64; ++i)
            EXPECT_NEAR(back[i], x[i], 1e-14);
    }
    ASSERT_EQ(dct.transform(x, scaled, Scale::BySqrtN), zrfStatusOk);
    for (std::size_t k = 0; k < 64; ++k)
        EXPECT_EQ(scaled[k], plain[k] * std::sqrt(2.0 / 64));
}

// Rows of N elements, known when this is compiled or not, that lie apart in one array.
template <std::size_t N> void transformRowsInPlace() {
    constexpr std::size_t length = 8, stride = 11, count = 5;
    std::vector<float> samples = randomElements<float>(stride * (count - 1) + length), expected = samples;
    for (std::size_t row = 0; row < count; ++row)
        zrfgHartley_8_32f(&expected[row * stride], &expected[row * stride], zrfScaleNone);
    const zrfgen::Rows<float, N> rows(samples, count, stride, length);
    EXPECT_EQ(zrfgen::forEachRow(rows, rows, hartley), zrfStatusOk);
    EXPECT_TRUE(haveSameBits(samples, expected));

    for (const zrfgen::Rows<float, N> &refused :
         {zrfgen::Rows<float, N>(samples, count + 1, stride, length), // too many
          zrfgen::Rows<float, N>(samples, count, stride + 1, length), // too far apart
          zrfgen::Rows<float, N>(samples, count, ~std::size_t{0} / 2, length),
          zrfgen::Rows<float, N>(samples, 1, stride, samples.size() + 1)}) {
        EXPECT_EQ(refused.status(), zrfStatusSizeError);
        EXPECT_EQ(refused.count(), 0u);
        EXPECT_EQ(zrfgen::forEachRow(refused, refused, hartley), zrfStatusSizeError);
    }
    const zrfgen::Rows<const float, N> overlapping(samples, count, length / 2, length);
    const zrfgen::Rows<float, N> overlappingToo(samples, count, length / 2, length);
    EXPECT_EQ(zrfgen::forEachRow(overlapping, overlappingToo, hartley), zrfStatusSizeError);
    EXPECT_EQ(zrfgen::forEachRow(zrfgen::Rows<float, N>(samples, 2, stride, length), rows, hartley),
              zrfStatusSizeError);
    EXPECT_TRUE(haveSameBits(samples, expected));

    int calls = 0;
    const auto failSecond = [&](auto, auto) { return ++calls == 2 ? zrfStatusPlanError : zrfStatusOk; };
    EXPECT_EQ(zrfgen::forEachRow(overlapping, rows, failSecond), zrfStatusPlanError);
    EXPECT_EQ(calls, 2);
}

TEST(CppFaceRows, AreTransformedInPlaceOrRefused) {
    transformRowsInPlace<8>();
    transformRowsInPlace<dynamic>();
}

TEST(CppFaceErrors, AreThrownWhenAskedFor) {
    std::vector<float> x(tooLong);
    EXPECT_NO_THROW(zrfgen::orThrow(hartley(Floats<2>{}, std::span(x).first<2>())));
    try {
        zrfgen::orThrow(hartley(x, x));
        FAIL() << "nothing thrown";
    } catch (const zrfgen::Error &error) {
        EXPECT_EQ(error.status(), zrfStatusSizeError);
        EXPECT_NE(std::string(error.what()).find("length is out of range"), std::string::npos);
    }
}

} // namespace
