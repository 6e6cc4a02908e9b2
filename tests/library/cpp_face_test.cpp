// The typed C++ face: the values and refusals of the C calls behind it, and what does not compile.
#include "registry.h"

#include <zrfgen/transforms.hpp>

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <random>

namespace {

using zrfgen::Scale, zrfgen::dynamic;
using SpectrumLayout = zrfgen::Layout;

constexpr Scale scales[] = {Scale::ForwardByN, Scale::InverseByN, Scale::BySqrtN, Scale::None};

template <class Element> std::vector<Element> randomElements(std::size_t count) {
    std::mt19937 generator(5);
    std::uniform_real_distribution<double> value(-1, 1);
    std::vector<Element> elements(count);
    for (Element &element : elements)
        element = Element(value(generator));
    return elements;
}

template <class Element> bool haveSameBits(const std::vector<Element> &a, const std::vector<Element> &b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(Element)) == 0;
}

// Holds the face to the C call, with sizes known when it is compiled and with the same sizes at run time.
template <class Element, std::size_t from, std::size_t to, class Plain, class Face>
void compare(Plain plain, Face face) {
    const std::vector<Element> source = randomElements<Element>(from);
    for (const Scale scale : scales) {
        std::vector<Element> expected(to), known(to), measured(to);
        ASSERT_EQ(plain(source.data(), expected.data(), static_cast<int32_t>(scale)), zrfStatusOk);
        EXPECT_EQ(face(std::span<const Element, from>(source), std::span<Element, to>(known), scale), 0);
        EXPECT_EQ(face(source, measured, scale), 0);
        EXPECT_TRUE(haveSameBits(known, expected));
        EXPECT_TRUE(haveSameBits(measured, expected));
    }
}

template <class Real, std::size_t N, SpectrumLayout layout> void compareRealDft(const std::string &name) {
    constexpr std::size_t size = zrfgen::spectrumSize(layout, N);
    constexpr bool isSingle = sizeof(Real) == sizeof(float);
    compare<Real, N, size>(
        builtTransform("DFTFwd_RTo" + name, N, isSingle).call,
        [](auto &&x, auto &&X, Scale s) { return zrfgen::realDftForward<layout>(x, X, s); });
    compare<Real, size, N>(
        builtTransform("DFTInv_" + name + "ToR", N, isSingle).call,
        [](auto &&X, auto &&x, Scale s) { return zrfgen::realDftInverse<layout>(X, x, s); });
}

template <class Real, std::size_t N> void compareAtLength() {
    SCOPED_TRACE(N);
    using Complex = std::complex<Real>;
    constexpr bool isSingle = sizeof(Real) == sizeof(float);
    const auto forward = [](auto &&x, auto &&X, Scale s) { return zrfgen::dftForward(x, X, s); };
    const auto forwardOfN = [](auto &&x, auto &&X, Scale s) { return zrfgen::dftForward<N>(x, X, s); };
    const auto inverse = [](auto &&x, auto &&X, Scale s) { return zrfgen::dftInverse(x, X, s); };
    const auto hartley = [](auto &&x, auto &&X, Scale s) { return zrfgen::hartley(x, X, s); };
    compare<Complex, N, N>(builtTransform("DFTFwd_CToC", N, isSingle).call, forward);
    compare<Complex, N, N>(builtTransform("DFTFwd_CToC", N, isSingle).call, forwardOfN);
    compare<Complex, N, N>(builtTransform("DFTInv_CToC", N, isSingle).call, inverse);
    compare<Real, N, N>(builtTransform("Hartley", N, isSingle).call, hartley);
    compareRealDft<Real, N, SpectrumLayout::CCS>("CCS");
    compareRealDft<Real, N, SpectrumLayout::Pack>("Pack");
    compareRealDft<Real, N, SpectrumLayout::Perm>("Perm");
}

template <class Real, std::size_t N> void compareWalshHadamard() {
    SCOPED_TRACE(N);
    using AnyOrder = Status(ZRF_CALL *)(const void *, void *, int32_t, int32_t, void *);
    const auto any =
        reinterpret_cast<AnyOrder>(exportAddress(sizeof(Real) == 4 ? "zrfgWHT_32f" : "zrfgWHT_64f"));
    const auto plain = [any](const Real *x, Real *X, int32_t flag) {
        return any(x, X, std::countr_zero(N), flag, nullptr);
    };
    std::vector<zrfgen::ScratchBlock> buffer(zrfgen::walshHadamardBufferSize<Real>(N));
    EXPECT_EQ(buffer.empty(), N <= 128);
    const auto withBuffer = [&](auto &&x, auto &&X, Scale s) {
        return zrfgen::walshHadamard(x, X, s, buffer);
    };
    compare<Real, N, N>(plain, [](auto &&x, auto &&X, Scale s) { return zrfgen::walshHadamard(x, X, s); });
    compare<Real, N, N>(plain, withBuffer);
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
    compareAtLength<TypeParam, 64>();
    compareWalshHadamard<TypeParam, 2>();
    compareWalshHadamard<TypeParam, 128>();
    compareWalshHadamard<TypeParam, 256>();
    compareWalshHadamard<TypeParam, 8192>();
}

TYPED_TEST(CppFace, RefusesSizesAtRunTimeAndWritesNothing) {
    const std::vector<TypeParam> values = randomElements<TypeParam>(100);
    std::vector<TypeParam> output(values);
    const auto expectRefusal = [&](std::size_t from, std::size_t to, auto face) {
        EXPECT_EQ(face(std::span(values.data(), from), std::span(output.data(), to)), zrfStatusSizeError)
            << from << " to " << to;
        EXPECT_TRUE(haveSameBits(output, values));
    };
    const auto hartley = [](auto x, auto X) { return zrfgen::hartley(x, X, Scale::None); };
    const auto hartley8 = [](auto x, auto X) { return zrfgen::hartley<8>(x, X, Scale::None); };
    const auto walsh = [](auto x, auto X) { return zrfgen::walshHadamard(x, X, Scale::None); };
    const auto ccs = [](auto x, auto X) {
        return zrfgen::realDftForward<SpectrumLayout::CCS>(x, X, Scale::None);
    };
    const auto fromCcs = [](auto X, auto x) {
        return zrfgen::realDftInverse<SpectrumLayout::CCS>(X, x, Scale::None);
    };
    for (const std::size_t size : {0, 1, 65})
        expectRefusal(size, size, hartley);
    if constexpr (sizeof(std::size_t) > sizeof(int32_t)) // 16 in 32 bits
        expectRefusal((std::size_t{1} << 31) * 2 + 16, (std::size_t{1} << 31) * 2 + 16, hartley);
    expectRefusal(16, 15, hartley);
    expectRefusal(16, 16, hartley8);
    for (const std::size_t size : {0, 1, 12})
        expectRefusal(size, size, walsh);
    expectRefusal(16, 8, walsh);
    expectRefusal(16, 17, ccs);
    expectRefusal(17, 19, ccs);
    expectRefusal(16, 16, fromCcs);
    EXPECT_EQ(zrfgen::hartley(values, output, static_cast<Scale>(3)), zrfStatusSizeError);
    EXPECT_EQ(zrfgen::hartley(std::span(values).first(8), std::span(output).first(8), static_cast<Scale>(3)),
              zrfStatusFlagError);
}

// What a call compiles with.
template <class Source, class Destination, std::size_t N = dynamic>
concept Dft = requires(const Source &x, Destination &X) {
    zrfgen::dftForward<N>(x, X, Scale::None);
};
template <class Source, class Destination, std::size_t N = dynamic>
concept Hartley = requires(const Source &x, Destination &X) {
    zrfgen::hartley<N>(x, X, Scale::None);
};
template <class Source, class Destination>
concept Walsh = requires(const Source &x, Destination &X) {
    zrfgen::walshHadamard(x, X, Scale::None);
};
template <class Source, class Destination, SpectrumLayout layout, std::size_t N = dynamic>
concept RealDft = requires(const Source &x, Destination &X) {
    zrfgen::realDftForward<layout, N>(x, X, Scale::None);
};
template <class Source, class Destination, SpectrumLayout layout>
concept InverseRealDft = requires(const Source &X, Destination &x) {
    zrfgen::realDftInverse<layout>(X, x, Scale::None);
};
template <std::size_t N> using Floats = std::array<float, N>;
using Complex = std::complex<float>;

static_assert(Dft<Complex[16], std::span<Complex>> && Dft<std::vector<Complex>, std::array<Complex, 8>, 8>);
static_assert(Dft<std::array<Complex32, 4>, Complex32[4]> && Dft<Complex[2], Complex[2]>);
static_assert(!Dft<Complex[1], Complex[1]> && !Dft<Complex[65], Complex[65]>);
static_assert(!Dft<std::vector<Complex>, std::vector<Complex>, 65>);
static_assert(!Dft<Complex[16], Complex[15]> && !Dft<Complex[16], Complex[16], 8>);
static_assert(!Dft<Complex[8], Complex[8], 16> && !Dft<std::vector<Complex>, Complex[16], 15>);
static_assert(!Dft<Complex[16], const Complex[16]> && !Dft<Complex[16], const std::vector<Complex>>);
static_assert(!Dft<Complex[16], std::complex<double>[16]> && !Dft<Floats<16>, Floats<16>>);
static_assert(!Dft<Complex *, Complex *> && !Hartley<Complex[16], Complex[16]> && !Hartley<int[8], int[8]>);
static_assert(Hartley<Floats<16>, Floats<16>> && !Hartley<Floats<16>, Floats<17>>);
static_assert(Walsh<Floats<8192>, Floats<8192>> && !Walsh<Floats<12>, Floats<12>>);
static_assert(!Walsh<Floats<1>, Floats<1>> && !Walsh<Floats<16384>, Floats<16384>>);
static_assert(RealDft<Floats<16>, Floats<18>, SpectrumLayout::CCS>);
static_assert(RealDft<Floats<17>, Floats<18>, SpectrumLayout::CCS>);
static_assert(!RealDft<Floats<16>, Floats<16>, SpectrumLayout::CCS>);
static_assert(!RealDft<Floats<16>, Floats<18>, SpectrumLayout::Pack>);
static_assert(!RealDft<std::vector<float>, Floats<18>, SpectrumLayout::Perm, 16>);
static_assert(InverseRealDft<Floats<18>, Floats<17>, SpectrumLayout::CCS>);
static_assert(!InverseRealDft<Floats<18>, Floats<15>, SpectrumLayout::CCS>);

TEST(CppFaceIndices, FindTheBinsOfEachLayout) {
    for (const SpectrumLayout layout : {SpectrumLayout::CCS, SpectrumLayout::Pack, SpectrumLayout::Perm})
        for (std::size_t N = 2; N <= 64; ++N) {
            SCOPED_TRACE(N);
            const std::vector<double> x = randomElements<double>(N);
            std::vector<double> spectrum(zrfgen::spectrumSize(layout, N));
            const Status status =
                layout == SpectrumLayout::CCS
                    ? zrfgen::realDftForward<SpectrumLayout::CCS>(x, spectrum, Scale::None)
                : layout == SpectrumLayout::Pack
                    ? zrfgen::realDftForward<SpectrumLayout::Pack>(x, spectrum, Scale::None)
                    : zrfgen::realDftForward<SpectrumLayout::Perm>(x, spectrum, Scale::None);
            ASSERT_EQ(status, zrfStatusOk);
            for (std::size_t k = 0; k < N; ++k) {
                std::complex<double> sum;
                for (std::size_t j = 0; j < N; ++j)
                    sum += std::polar(x[j], -2 * std::numbers::pi * static_cast<double>(j * k % N) / N);
                EXPECT_LT(std::abs(zrfgen::bin(layout, spectrum, N, k) - sum), 1e-13);
            }
            const bool holdsZeros = layout == SpectrumLayout::CCS;
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

// Rows of N elements, known when this is compiled or not, that lie apart in one array.
template <std::size_t N> void transformRowsInPlace() {
    constexpr std::size_t length = 8, stride = 11, count = 5;
    std::vector<float> samples = randomElements<float>(stride * (count - 1) + length), expected = samples;
    for (std::size_t row = 0; row < count; ++row)
        zrfgHartley_8_32f(&expected[row * stride], &expected[row * stride], zrfScaleNone);
    const auto hartley = [](auto x, auto X) { return zrfgen::hartley(x, X, Scale::None); };
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
    std::vector<float> x(65);
    EXPECT_NO_THROW(zrfgen::orThrow(zrfgen::hartley<2>(Floats<2>{}, std::span(x).first<2>(), Scale::None)));
    try {
        zrfgen::orThrow(zrfgen::hartley(x, x, Scale::None));
        FAIL() << "nothing thrown";
    } catch (const zrfgen::Error &error) {
        EXPECT_EQ(error.status(), zrfStatusSizeError);
        EXPECT_NE(std::string(error.what()).find("length is out of range"), std::string::npos);
    }
}

} // namespace
