/// \file
/// zrfgen from C++20: the functions of transforms.h, typed by element and length.
///
/// An array may be anything that makes a std::span: std::array, a C array, std::vector, std::span; or a
/// pointer, where the template argument says the length. Where the length is known to the compiler, the call
/// is the plain call of the function of that length, and arrays whose types say another size do not compile.
/// Other arrays are measured at run time: zrfStatusSizeError says that they do not fit, and then nothing has
/// been written.
///
///     std::array<std::complex<float>, 16> x = ..., X;
///     zrfStatus status = zrfgen::dftForward(x, X, zrfgen::Scale::None);
///
/// Sums, overlap, alignment and all else are as transforms.h states them for the function of the same name.
/// Nothing here throws but orThrow() and the constructor of a Dct4 for a length, which are there where
/// exceptions are enabled.
#ifndef ZRFGEN_TRANSFORMS_HPP
#define ZRFGEN_TRANSFORMS_HPP

#if __cplusplus < 202002L && !(defined(_MSVC_LANG) && _MSVC_LANG >= 202002L)
#error                                                                                                       \
    "zrfgen/transforms.hpp needs C++20: compile with -std=c++20. zrfgen/transforms.h serves older standards."
#else

#include "transforms.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#ifdef __cpp_exceptions
#include <stdexcept>
#include <string>
#endif

// <X11/X.h> makes a macro of this name.
#pragma push_macro("None")
#undef None

namespace zrfgen {
// For the linker, names here differ from those inside a static library.
inline namespace typed {

/// A length that is known at run time alone.
inline constexpr std::size_t dynamic = std::dynamic_extent;

/// The factor that multiplies every output of a transform of length N.
enum class Scale : std::int32_t {
    ForwardByN = zrfScaleFwdByN, ///< 1/N in forward DFTs, Hartley and Walsh-Hadamard, 1 in inverse DFTs
    InverseByN = zrfScaleInvByN, ///< 1/N in inverse DFTs, Hartley and Walsh-Hadamard, 1 in forward DFTs
    BySqrtN = zrfScaleBySqrtN,   ///< 1/sqrt(N)
    None = zrfScaleNone,         ///< 1
    By1 = zrfScaleNone           ///< the same, for programs in which None is a macro
};

/// How an array holds X[0] ... X[N/2], the spectrum of N real elements: see transforms.h.
enum class Layout { CCS, Pack, Perm };

/// The elements of such an array: in CCS N+2 for even and N+1 for odd N, else N.
[[nodiscard]] constexpr std::size_t spectrumSize(Layout layout, std::size_t N) noexcept {
    return layout == Layout::CCS ? N + 2 - N % 2 : N;
}

/// Where the real part of X[k] stands, k = 0..N/2.
[[nodiscard]] constexpr std::size_t realIndex(Layout layout, std::size_t N, std::size_t k) noexcept {
    if (layout == Layout::Perm && k != 0 && 2 * k == N)
        return 1;
    return layout == Layout::CCS || k == 0 || (layout == Layout::Perm && N % 2 == 0) ? 2 * k : 2 * k - 1;
}

/// Where the imaginary part of X[k] stands, k = 0..N/2. Those of X[0] and, for even N, X[N/2] are zero: Pack
/// and Perm do not hold them.
[[nodiscard]] constexpr std::optional<std::size_t> imaginaryIndex(Layout layout, std::size_t N,
                                                                  std::size_t k) noexcept {
    if (layout != Layout::CCS && (k == 0 || 2 * k == N))
        return std::nullopt;
    return realIndex(layout, N, k) + 1;
}

namespace detail { // what the functions are made of: not for use

// entry<Family, Element, N> is the function of length N, entry<Family, Element> the one of any size. The
// families are types without contents, named as in families.inc.
template <class Family, class Element, std::size_t N = dynamic> inline constexpr auto entry = nullptr;

#define ZRF_BIND(family, Element, N, function)                                                               \
    template <> inline constexpr auto entry<struct family, Element, N> = function;
#define ZRF_BIND_LENGTH(N, family, suffix, Element)                                                          \
    ZRF_BIND(family, Element, N, zrfg##family##_##N##_##suffix)
#define ZRF_BIND_ORDER(order, suffix, Element)                                                               \
    ZRF_BIND(WHT, Element, (std::size_t{1} << order), zrfgWHT_##order##_##suffix)
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(ZRF_BIND_LENGTH, family, suffix, Element)                                            \
    ZRF_BIND(family, Element, dynamic, zrfg##family##_##suffix)
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    ZRF_FOR_EACH_ORDER(ZRF_BIND_ORDER, suffix, Element)                                                      \
    ZRF_BIND(WHT, Element, dynamic, zrfgWHT_##suffix)                                                        \
    ZRF_BIND(WHTGetBufferSize, Element, dynamic, zrfgWHTGetBufferSize_##suffix)
#define ZRF_DCT4_FAMILY(suffix, Element)                                                                     \
    ZRF_BIND(DCT4InitAlloc, Element, dynamic, zrfgDCT4InitAlloc_##suffix)                                    \
    ZRF_BIND(DCT4, Element, dynamic, zrfgDCT4_##suffix)                                                      \
    ZRF_BIND(DCT4Free, Element, dynamic, zrfgDCT4Free_##suffix)
#define ZRF_VERSION_QUERY(name)
#include "families.inc"
#undef ZRF_BIND
#undef ZRF_BIND_LENGTH
#undef ZRF_BIND_ORDER

template <Layout layout, class... Families> using ByLayout =
    std::tuple_element_t<static_cast<std::size_t>(layout), std::tuple<Families...>>;
template <Layout layout> using RealForward = ByLayout<layout, DFTFwd_RToCCS, DFTFwd_RToPack, DFTFwd_RToPerm>;
template <Layout layout> using RealInverse = ByLayout<layout, DFTInv_CCSToR, DFTInv_PackToR, DFTInv_PermToR>;

// The element of the C functions: std::complex lies in memory as an array of its two parts.
template <class Element> struct InC { using Type = Element; };
template <> struct InC<std::complex<float>> { using Type = zrfComplex32; };
template <> struct InC<std::complex<double>> { using Type = zrfComplex64; };

template <class Array> inline constexpr bool isPointer = std::is_pointer_v<std::remove_cvref_t<Array>>;

template <class Array>
concept Contiguous = requires(Array &&array) {
    std::span(std::forward<Array>(array));
};
template <class Array>
concept ArrayOrPointer = Contiguous<Array> ||
    (isPointer<Array> &&std::is_object_v<std::remove_pointer_t<std::remove_cvref_t<Array>>>);

// An array as a span; at a pointer stand as many elements as it is said to have.
template <class Array> constexpr auto spanOf(Array &array, std::size_t size) noexcept {
    if constexpr (isPointer<Array>)
        return std::span(array, size);
    else
        return std::span(array);
}
template <class Array> using SpanOf = decltype(spanOf(std::declval<std::remove_reference_t<Array> &>(), 0));
template <class Array> using ElementOf = typename SpanOf<Array>::value_type;
template <class Array> inline constexpr std::size_t extentOf = SpanOf<Array>::extent;

template <class Element> struct PartsOf { using Real = Element; };
template <class Part> struct PartsOf<std::complex<Part>> { using Real = Part; };
template <class Array> using RealOf = typename PartsOf<ElementOf<Array>>::Real;
template <class Array> inline constexpr std::size_t partsOfElement =
    std::same_as<ElementOf<Array>, RealOf<Array>> ? 1 : 2;

// Complex elements as the real ones that they are made of.
template <class Element, std::size_t extent> auto partsOf(std::span<Element, extent> elements) noexcept {
    using Part = typename PartsOf<std::remove_const_t<Element>>::Real;
    using Real = std::conditional_t<std::is_const_v<Element>, const Part, Part>;
    return std::span<Real>(reinterpret_cast<Real *>(elements.data()),
                           elements.size() * (sizeof(Element) / sizeof(Real)));
}

// dynamic is the greatest number: the length that one of them states, or else dynamic.
template <std::size_t N, class... Arrays>
inline constexpr std::size_t lengthOf = std::min({N, extentOf<Arrays>...});

// The concepts are about elements, and have the names that a compiler prints for a call that does not fit.
template <class Element>
concept FloatOrDouble = std::same_as<Element, float> || std::same_as<Element, double>;
template <class Element>
concept ComplexElement = std::same_as<typename InC<Element>::Type, zrfComplex32> ||
    std::same_as<typename InC<Element>::Type, zrfComplex64>;
template <class Array>
concept Writable = ArrayOrPointer<Array> && !std::is_const_v<typename SpanOf<Array>::element_type>;
template <class Destination, class Source>
concept WritableOfSameElement = ArrayOrPointer<Source> && Writable<Destination> &&
    std::same_as<ElementOf<Source>, ElementOf<Destination>>;
template <class Destination, class Source>
concept ComplexDestination = WritableOfSameElement<Destination, Source> && ComplexElement<ElementOf<Source>>;
template <class Destination, class Source>
concept RealDestination = WritableOfSameElement<Destination, Source> && FloatOrDouble<ElementOf<Source>>;
template <class Spectrum, class Reals, Layout layout>
concept SpectrumOf = ArrayOrPointer<Spectrum> && ArrayOrPointer<Reals> && FloatOrDouble<ElementOf<Reals>> &&
    (std::same_as<ElementOf<Spectrum>, ElementOf<Reals>> ||
     (layout == Layout::CCS && std::same_as<ElementOf<Spectrum>, std::complex<ElementOf<Reals>>>));
template <class Spectrum, class Reals, Layout layout>
concept WritableSpectrumOf = Writable<Spectrum> && SpectrumOf<Spectrum, Reals, layout>;
template <class Reals, class Spectrum, Layout layout>
concept RealsOf = Writable<Reals> && SpectrumOf<Spectrum, Reals, layout>;

// Sizes that types state. A compiler prints the numbers beside the text.
template <std::size_t size, std::size_t needed> constexpr void requireSize() noexcept {
    if constexpr (size != dynamic && needed != dynamic)
        static_assert(size == needed, "zrfgen: this array's size is not the one that the transform needs");
}
template <std::size_t length, class... Arrays> constexpr void requireLengthOfPointers() noexcept {
    static_assert(length != dynamic || !(isPointer<Arrays> || ...),
                  "zrfgen: a pointer does not say the length; say it as in dftForward<16>(source, ...)");
}
template <std::size_t length> constexpr bool isLength() noexcept {
    if constexpr (length != dynamic)
        static_assert(zrfShortestLength <= length && length <= zrfLongestLength,
                      "zrfgen: there is no transform of this length; lengths are 2 to 64");
    return length == dynamic || (zrfShortestLength <= length && length <= zrfLongestLength);
}
template <std::size_t length> constexpr bool isPowerOfTwo() noexcept {
    constexpr bool isPower = std::has_single_bit(length) && 2 <= length && length <= 1 << zrfHighestOrder;
    if constexpr (length != dynamic)
        static_assert(isPower,
                      "zrfgen: there is no transform of this length; lengths are powers of two, 2 to 8192");
    return length == dynamic || isPower;
}

// Calls the function of length N, or where that is dynamic the one of any size, if the spans have the sizes.
template <class Family, std::size_t N, class From, class To>
zrfStatus transform(From from, std::size_t fromSize, To to, std::size_t toSize, std::size_t length,
                    Scale scale) noexcept {
    if (from.size() != fromSize || to.size() != toSize || length > zrfLongestLength)
        return zrfStatusSizeError;
    using Element = typename InC<typename To::value_type>::Type;
    const auto *const elementsFrom = reinterpret_cast<const Element *>(from.data());
    auto *const elementsTo = reinterpret_cast<Element *>(to.data());
    const auto flag = static_cast<std::int32_t>(scale);
    if constexpr (!isLength<N>())
        return zrfStatusSizeError;
    else if constexpr (N != dynamic)
        return entry<Family, Element, N>(elementsFrom, elementsTo, flag);
    else
        return entry<Family, Element>(elementsFrom, elementsTo, static_cast<std::int32_t>(length), flag);
}

// Of two equal arrays: the length, where it is known, with the sizes held against it.
template <std::size_t N, class Source, class Destination> constexpr std::size_t lengthOfEqual() noexcept {
    constexpr std::size_t known = lengthOf<N, Source, Destination>;
    requireLengthOfPointers<known, Source, Destination>();
    requireSize<extentOf<Source>, N>();
    requireSize<extentOf<Destination>, N == dynamic ? extentOf<Source> : N>();
    return known;
}

template <class Family, std::size_t N, class Source, class Destination>
zrfStatus transformEqual(const Source &source, Destination &destination, Scale scale) noexcept {
    constexpr std::size_t known = lengthOfEqual<N, const Source, Destination>();
    const auto from = spanOf(source, known);
    const std::size_t length = known == dynamic ? from.size() : known;
    return transform<Family, known>(from, length, spanOf(destination, known), length, length, scale);
}

// The spectrum's elements in the array's own type.
template <Layout layout, class Spectrum> constexpr std::size_t spectrumExtent(std::size_t N) noexcept {
    return N == dynamic ? dynamic : spectrumSize(layout, N) / partsOfElement<Spectrum>;
}

// Of real elements and a spectrum: the length, where it is known, with the sizes held against it.
template <Layout layout, std::size_t N, class Reals, class Spectrum>
constexpr std::size_t lengthOfReals() noexcept {
    constexpr std::size_t known = lengthOf<N, Reals>;
    requireLengthOfPointers<known, Reals, Spectrum>();
    requireSize<extentOf<Reals>, N>();
    requireSize<extentOf<Spectrum>, spectrumExtent<layout, Spectrum>(N == dynamic ? known : N)>();
    return known;
}

} // namespace detail

/// Forward complex DFT: X[k] = s * sum over j of x[j] exp(-2 pi i j k / N), k = 0..N-1, N = 2..64.
///
/// N is the template argument, else a static extent, else the size of the source at run time. The elements
/// are std::complex of float or double, zrfComplex32 or zrfComplex64: the same in both arrays.
/// \return zrfStatusOk; zrfStatusSizeError if sizes known at run time alone do not fit; zrfStatusNullPointer
/// if a pointer is null; zrfStatusFlagError if the scale is not one of the enumerators
template <std::size_t N = dynamic, class Source, detail::ComplexDestination<const Source &> Destination>
[[nodiscard]] zrfStatus dftForward(const Source &source, Destination &&destination, Scale scale) noexcept {
    return detail::transformEqual<detail::DFTFwd_CToC, N>(source, destination, scale);
}

/// Inverse complex DFT: as dftForward(), with exp(+2 pi i j k / N).
template <std::size_t N = dynamic, class Source, detail::ComplexDestination<const Source &> Destination>
[[nodiscard]] zrfStatus dftInverse(const Source &source, Destination &&destination, Scale scale) noexcept {
    return detail::transformEqual<detail::DFTInv_CToC, N>(source, destination, scale);
}

/// Hartley transform: X[k] = s * sum over j of x[j] (cos(2 pi j k / N) + sin(2 pi j k / N)), k = 0..N-1.
/// Elements are float or double; N and statuses are as in dftForward().
template <std::size_t N = dynamic, class Source, detail::RealDestination<const Source &> Destination>
[[nodiscard]] zrfStatus hartley(const Source &source, Destination &&destination, Scale scale) noexcept {
    return detail::transformEqual<detail::Hartley, N>(source, destination, scale);
}

/// Forward DFT of N real elements, float or double, N = 2..64, to spectrumSize(layout, N) elements, or in CCS
/// layout to half as many of std::complex: X[0] to X[N/2].
///
/// N is the template argument, else the extent of the source, else its size at run time.
/// \return as dftForward()
template <Layout layout, std::size_t N = dynamic, class Source,
          detail::WritableSpectrumOf<const Source &, layout> Spectrum>
[[nodiscard]] zrfStatus realDftForward(const Source &source, Spectrum &&spectrum, Scale scale) noexcept {
    constexpr std::size_t known = detail::lengthOfReals<layout, N, const Source, Spectrum>();
    const auto from = detail::spanOf(source, known);
    const std::size_t length = known == dynamic ? from.size() : known;
    const auto to =
        detail::partsOf(detail::spanOf(spectrum, detail::spectrumExtent<layout, Spectrum>(known)));
    return detail::transform<detail::RealForward<layout>, known>(from, length, to,
                                                                 spectrumSize(layout, length), length, scale);
}

/// Inverse DFT of spectrumSize(layout, N) elements, or in CCS layout of half as many of std::complex, to N
/// real ones, N = 2..64.
///
/// N is the template argument, else the extent of the destination, else its size at run time.
/// \return as dftForward()
template <Layout layout, std::size_t N = dynamic, class Spectrum,
          detail::RealsOf<const Spectrum &, layout> Destination>
[[nodiscard]] zrfStatus realDftInverse(const Spectrum &spectrum, Destination &&destination,
                                       Scale scale) noexcept {
    constexpr std::size_t known = detail::lengthOfReals<layout, N, Destination, const Spectrum>();
    const auto from =
        detail::partsOf(detail::spanOf(spectrum, detail::spectrumExtent<layout, const Spectrum>(known)));
    const auto to = detail::spanOf(destination, known);
    const std::size_t length = known == dynamic ? to.size() : known;
    return detail::transform<detail::RealInverse<layout>, known>(from, spectrumSize(layout, length), to,
                                                                 length, length, scale);
}

/// X[k] of the spectrum of N real elements, for any whole k: it counts modulo N, so -1 is N-1. The array is
/// as realDftForward() takes it. What a layout does not hold is the conjugate of what it holds.
template <class Spectrum, std::integral Index>
requires detail::Contiguous<const Spectrum &>
[[nodiscard]] constexpr auto bin(Layout layout, const Spectrum &spectrum, std::size_t N, Index k) noexcept {
    const std::span elements(spectrum);
    using Real = detail::RealOf<const Spectrum>;
    std::size_t place = static_cast<std::size_t>(k) % N;
    if constexpr (std::is_signed_v<Index>)
        if (k < 0)
            place = N - 1 - static_cast<std::size_t>(-(k + 1)) % N;
    const std::size_t held = std::min(place, N - place);
    if constexpr (detail::partsOfElement<const Spectrum> == 2) {
        return place == held ? elements[held] : std::conj(elements[held]);
    } else {
        const auto imaginary = imaginaryIndex(layout, N, held);
        const Real part = imaginary ? elements[*imaginary] : Real(0);
        return std::complex<Real>(elements[realIndex(layout, N, held)], place == held ? part : -part);
    }
}

namespace detail {

template <Layout layout, class A, class B, class To, class Put>
zrfStatus multiplySpectra(const A &a, const B &b, To &to, Put put) noexcept {
    requireSize<extentOf<const B>, extentOf<const A>>();
    requireSize<extentOf<To>, extentOf<const A>>();
    const auto x = partsOf(std::span(a)), y = partsOf(std::span(b));
    const auto product = partsOf(std::span(to));
    const std::size_t size = x.size();
    if (size != y.size() || size != product.size() || (layout == Layout::CCS && size % 2 != 0))
        return zrfStatusSizeError;
    std::size_t i = 0;
    if (layout != Layout::CCS && size > 0) { // X[0] and, for even N, X[N/2] are real
        put(product[0], x[0] * y[0]);
        const bool isEven = size % 2 == 0;
        const std::size_t half = layout == Layout::Pack ? size - 1 : 1;
        if (isEven)
            put(product[half], x[half] * y[half]);
        i = layout == Layout::Perm && isEven ? 2 : 1;
    }
    for (; i + 1 < size; i += 2) {
        const auto re = x[i] * y[i] - x[i + 1] * y[i + 1], im = x[i] * y[i + 1] + x[i + 1] * y[i];
        put(product[i], re);
        put(product[i + 1], im);
    }
    return zrfStatusOk;
}

template <class To, class A, class B, Layout layout>
concept ProductOf = Contiguous<A> && Contiguous<B> && Contiguous<To> && Writable<To> &&
    std::same_as<ElementOf<A>, ElementOf<B>> && std::same_as<ElementOf<A>, ElementOf<To>> &&
    FloatOrDouble<RealOf<A>> &&(layout == Layout::CCS || std::same_as<ElementOf<A>, RealOf<A>>);

} // namespace detail

/// product[k] = a[k] b[k] for every k: the spectrum of the circular convolution of two signals of equal
/// length, all three as realDftForward() writes them in this layout. The product may be one of the factors.
/// \return zrfStatusOk; zrfStatusSizeError if the sizes differ, or are odd in CCS layout
template <Layout layout, class A, class B, detail::ProductOf<const A &, const B &, layout> Product>
[[nodiscard]] zrfStatus multiplySpectra(const A &a, const B &b, Product &&product) noexcept {
    return detail::multiplySpectra<layout>(a, b, product, [](auto &to, auto value) { to = value; });
}

/// sum[k] += a[k] b[k], as multiplySpectra().
template <Layout layout, class A, class B, detail::ProductOf<const A &, const B &, layout> Sum>
[[nodiscard]] zrfStatus addProductOfSpectra(const A &a, const B &b, Sum &&sum) noexcept {
    return detail::multiplySpectra<layout>(a, b, sum, [](auto &to, auto value) { to += value; });
}

/// Memory for walshHadamard() to work in. Arrays of these stand on the 16-byte boundary that it asks for:
///
///     std::vector<zrfgen::ScratchBlock> buffer(zrfgen::walshHadamardBufferSize<float>(1024));
#if defined(_WIN32) && !defined(_WIN64) // where the heap keeps to 8 bytes, though GCC takes 16 for granted
struct alignas(32) ScratchBlock {
    std::byte bytes[32];
};
#else
struct alignas(16) ScratchBlock {
    std::byte bytes[16];
};
#endif

/// The blocks that a Walsh-Hadamard transform of so many elements needs: 0 up to 128 elements, and for
/// lengths that are refused.
template <detail::FloatOrDouble Real>
[[nodiscard]] std::size_t walshHadamardBufferSize(std::size_t length) noexcept {
    std::int32_t bytes = 0;
    if (std::has_single_bit(length))
        detail::entry<detail::WHTGetBufferSize, Real>(std::countr_zero(length), &bytes);
    return (static_cast<std::size_t>(bytes) + sizeof(ScratchBlock) - 1) / sizeof(ScratchBlock);
}

/// Walsh-Hadamard transform: X[k] = s * sum over j of (-1)^popcount(j AND k) x[j], k = 0..N-1, for powers of
/// two N = 2..8192. Elements are float or double; the arrays are the same or do not overlap.
///
/// N is as in dftForward(). From 256 elements up a call works in the buffer, which serves one call at a time;
/// without a buffer it allocates one and releases it.
/// \return as dftForward(); zrfStatusSizeError also if there are fewer blocks than walshHadamardBufferSize()
template <std::size_t N = dynamic, class Source, detail::RealDestination<const Source &> Destination>
[[nodiscard]] zrfStatus walshHadamard(const Source &source, Destination &&destination, Scale scale,
                                      std::span<ScratchBlock> buffer = {}) noexcept {
    using Real = detail::ElementOf<Destination>;
    constexpr std::size_t known = detail::lengthOfEqual<N, const Source, Destination>();
    const auto from = detail::spanOf(source, known);
    const auto to = detail::spanOf(destination, known);
    const std::size_t length = known == dynamic ? from.size() : known;
    if (from.size() != length || to.size() != length || !std::has_single_bit(length) ||
        (!buffer.empty() && buffer.size() < walshHadamardBufferSize<Real>(length)))
        return zrfStatusSizeError;
    auto *const bytes = buffer.empty() ? nullptr : reinterpret_cast<std::uint8_t *>(buffer.data());
    const auto flag = static_cast<std::int32_t>(scale);
    if constexpr (!detail::isPowerOfTwo<known>())
        return zrfStatusSizeError;
    else if constexpr (known != dynamic)
        return detail::entry<detail::WHT, Real, known>(from.data(), to.data(), flag, bytes);
    else
        return detail::entry<detail::WHT, Real>(from.data(), to.data(), std::countr_zero(length), flag,
                                                bytes);
}

/// DCT-IV, X[k] = s * sum over j of x[j] cos(pi (2j+1) (2k+1) / (4N)), k = 0..N-1, by a plan of its own.
template <detail::FloatOrDouble Real> class Dct4 {
public:
    Dct4() noexcept = default; ///< without a plan

#ifdef __cpp_exceptions
    /// As plan(), with an Error instead of a status.
    explicit Dct4(std::size_t length);
#endif

    /// Plans for N elements: a power of two, from 2 to 2^26 of float or 2^25 of double. A plan that cannot be
    /// made leaves the one before.
    /// \return zrfStatusOk; zrfStatusSizeError if the length is refused; zrfStatusNullPointer if memory is
    /// exhausted
    [[nodiscard]] zrfStatus plan(std::size_t length) noexcept {
        if (!std::has_single_bit(length) || length > INT32_MAX)
            return zrfStatusSizeError;
        zrfDct4Plan *made = nullptr;
        const zrfStatus status =
            detail::entry<detail::DCT4InitAlloc, Real>(&made, static_cast<std::int32_t>(length));
        if (status == zrfStatusOk) {
            block.reset(made);
            plannedLength = length;
        }
        return status;
    }

    /// N, or 0 without a plan
    [[nodiscard]] std::size_t length() const noexcept {
        return block ? plannedLength : 0;
    }
    explicit operator bool() const noexcept {
        return block != nullptr;
    } ///< whether there is a plan

    /// Transforms N elements. The arrays are the same or do not overlap. Not const: a plan for 64 or more
    /// elements has a work table that every call writes, so threads need an object each.
    ///
    /// Twice without a scale gives N/2 times the input, so N/2 takes the place of N in the scale: BySqrtN is
    /// sqrt(2/N), with which the transform is its own inverse, and both of the others are 2/N. The products
    /// by it are rounded like all others. \return zrfStatusOk; zrfStatusNullPointer without a plan;
    /// zrfStatusSizeError if an array is not of N elements; zrfStatusFlagError if the scale is not one
    /// of the enumerators
    [[nodiscard]] zrfStatus transform(std::span<const Real> source, std::span<Real> destination,
                                      Scale scale = Scale::None) noexcept {
        if (!block)
            return zrfStatusNullPointer;
        if (source.size() != plannedLength || destination.size() != plannedLength)
            return zrfStatusSizeError;
        const double inverse = 2 / static_cast<double>(plannedLength);
        double factor = 1;
        if (scale == Scale::BySqrtN)
            factor = std::sqrt(inverse);
        else if (scale == Scale::ForwardByN || scale == Scale::InverseByN)
            factor = inverse;
        else if (scale != Scale::None)
            return zrfStatusFlagError;
        const zrfStatus status =
            detail::entry<detail::DCT4, Real>(source.data(), destination.data(), block.get());
        if (status == zrfStatusOk && scale != Scale::None)
            for (Real &element : destination)
                element *= static_cast<Real>(factor);
        return status;
    }

private:
    struct Free {
        void operator()(zrfDct4Plan *plan) const noexcept { detail::entry<detail::DCT4Free, Real>(plan); }
    };
    std::unique_ptr<zrfDct4Plan, Free> block;
    std::size_t plannedLength = 0;
};

/// Rows of N elements in one array, for forEachRow().
///
///     zrfgen::Rows<const float, 64> frames(samples, 100, 32); // each starts in the middle of the one before
template <class Element, std::size_t N = dynamic> class Rows {
public:
    /// Each row starts `stride` elements after the one before; `length` is to be given where N is dynamic.
    /// Rows that do not all fit into the array are refused: status() says so, and there are none.
    constexpr Rows(std::span<Element> array, std::size_t count, std::size_t stride = N,
                   std::size_t length = N) noexcept
        : elements(array.data()), rowCount(count), rowStride(stride), rowLength(length) {
        const bool allFit =
            count == 0 || (length <= array.size() &&
                           (count == 1 || stride == 0 || count - 1 <= (array.size() - length) / stride));
        if (!allFit || (N != dynamic && length != N)) {
            rowCount = 0;
            refusal = zrfStatusSizeError;
        }
    }

    [[nodiscard]] constexpr zrfStatus status() const noexcept {
        return refusal;
    } ///< zrfStatusOk, or zrfStatusSizeError if refused
    [[nodiscard]] constexpr std::size_t count() const noexcept { return rowCount; }
    [[nodiscard]] constexpr std::size_t length() const noexcept { return rowLength; }
    [[nodiscard]] constexpr std::size_t stride() const noexcept { return rowStride; }
    [[nodiscard]] constexpr Element *data() const noexcept { return elements; }
    [[nodiscard]] constexpr bool overlap() const noexcept { return rowCount > 1 && rowStride < rowLength; }
    constexpr std::span<Element, N> operator[](std::size_t i) const noexcept {
        return std::span<Element, N>(elements + i * rowStride, rowLength);
    }

private:
    Element *elements;
    std::size_t rowCount, rowStride, rowLength;
    zrfStatus refusal = zrfStatusOk;
};

/// Calls a transform for row after row with two spans, the source and the destination.
///
///     forEachRow(frames, spectra, [](auto x, auto X) { return hartley(x, X, zrfgen::Scale::None); });
///
/// \return zrfStatusOk; the first other status of the transform, which leaves out all further rows;
/// zrfStatusSizeError, with no call, if rows were refused, counts differ, or destination rows overlap
template <class From, std::size_t M, class To, std::size_t N,
          std::invocable<std::span<From, M>, std::span<To, N>> Transform>
[[nodiscard]] zrfStatus forEachRow(const Rows<From, M> &sources, const Rows<To, N> &destinations,
                                   Transform &&transform) {
    if (sources.status() != zrfStatusOk || destinations.status() != zrfStatusOk ||
        sources.count() != destinations.count() || destinations.overlap())
        return zrfStatusSizeError;
    for (std::size_t i = 0; i < sources.count(); ++i)
        if (const zrfStatus status = transform(sources[i], destinations[i]); status != zrfStatusOk)
            return status;
    return zrfStatusOk;
}

/// What a status says, for a person to read.
[[nodiscard]] constexpr const char *describe(zrfStatus status) noexcept {
    return status == zrfStatusOk ? "no error"
           : status == zrfStatusPlanError
               ? "the DCT-IV plan is not one of this element type, or was overwritten"
           : status == zrfStatusSizeError   ? "a length is out of range, or an array's size does not fit"
           : status == zrfStatusNullPointer ? "a pointer is null, no plan was made, or memory is exhausted"
           : status == zrfStatusFlagError   ? "the scale is not one of the four"
                                            : "unknown status";
}

#ifdef __cpp_exceptions
/// A status other than zrfStatusOk, as an exception whose text names the cause.
class Error : public std::runtime_error {
public:
    explicit Error(zrfStatus status)
        : std::runtime_error(std::string(describe(status)) + " (zrfgen status " + std::to_string(status) +
                             ")"),
          cause(status) {}
    [[nodiscard]] zrfStatus status() const noexcept { return cause; }

private:
    zrfStatus cause;
};

/// Throws an Error unless the status is zrfStatusOk: orThrow(dftForward(x, X, Scale::None)).
inline void orThrow(zrfStatus status) {
    if (status != zrfStatusOk)
        throw Error(status);
}

template <detail::FloatOrDouble Real> Dct4<Real>::Dct4(std::size_t length) {
    orThrow(plan(length));
}
#endif

} // namespace typed
} // namespace zrfgen

#pragma pop_macro("None")

#endif
#endif
