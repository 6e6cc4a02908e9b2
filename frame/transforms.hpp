/// \file
/// zrfgen from C++20: the functions of transforms.h, typed by element and length.
///
/// An array may be anything that makes a std::span: std::array, a C array, std::vector, std::span. Where the
/// type says its extent, the call is the plain call of the function of that length, and arrays that do not
/// fit do not compile. Other arrays are measured at run time: zrfStatusSizeError says that they do not fit,
/// and then nothing has been written.
///
///     std::array<std::complex<float>, 16> x = ..., X;
///     Status status = zrfgen::dftForward(x, X, zrfgen::Scale::None);
///
/// Sums, overlap, alignment and all else are as transforms.h states them for the function of the same name.
/// Nothing here throws but orThrow(), which is there where exceptions are enabled.
#ifndef ZRFGEN_TRANSFORMS_HPP
#define ZRFGEN_TRANSFORMS_HPP

#include "transforms.h"

#include <algorithm>
#include <bit>
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
    None = zrfScaleNone          ///< 1
};

/// How an array holds X[0] ... X[N/2], the spectrum of N real elements: see transforms.h.
enum class Layout { CCS, Pack, Perm };

/// The elements of such an array: in CCS N+2 for even and N+1 for odd N, else N.
constexpr std::size_t spectrumSize(Layout layout, std::size_t N) {
    return layout == Layout::CCS ? N + 2 - N % 2 : N;
}

/// Where the real part of X[k] stands, k = 0..N/2.
constexpr std::size_t realIndex(Layout layout, std::size_t N, std::size_t k) {
    if (layout == Layout::Perm && k != 0 && 2 * k == N)
        return 1;
    return layout == Layout::CCS || k == 0 || (layout == Layout::Perm && N % 2 == 0) ? 2 * k : 2 * k - 1;
}

/// Where the imaginary part of X[k] stands, k = 0..N/2. Those of X[0] and, for even N, X[N/2] are zero: Pack
/// and Perm do not hold them.
constexpr std::optional<std::size_t> imaginaryIndex(Layout layout, std::size_t N, std::size_t k) {
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
template <> struct InC<std::complex<float>> { using Type = Complex32; };
template <> struct InC<std::complex<double>> { using Type = Complex64; };

template <class Array> using SpanOf = decltype(std::span(std::declval<Array>()));
template <class Array> using ElementOf = typename SpanOf<Array>::value_type;
template <class Array> inline constexpr std::size_t extentOf = SpanOf<Array>::extent;

// dynamic is the greatest number: the length that one of them states, or else dynamic.
template <std::size_t N, class... Arrays>
inline constexpr std::size_t lengthOf = std::min({N, extentOf<Arrays>...});
template <Layout layout, std::size_t N>
inline constexpr std::size_t sizeOfSpectrum = N == dynamic ? dynamic : spectrumSize(layout, N);

// The concepts have the names that a compiler prints for a call which does not compile.
template <class Element>
concept FloatOrDouble = std::same_as<Element, float> || std::same_as<Element, double>;
template <class Element>
concept ComplexElement = std::same_as<typename InC<Element>::Type, Complex32> ||
    std::same_as<typename InC<Element>::Type, Complex64>;
template <class Array>
concept Contiguous = requires(Array array) {
    std::span(std::forward<Array>(array));
};
template <class Array>
concept Writable = Contiguous<Array> && !std::is_const_v<typename SpanOf<Array>::element_type>;
template <class Destination, class Source>
concept WritableOfSameElement =
    Contiguous<Source> && Writable<Destination> && std::same_as<ElementOf<Source>, ElementOf<Destination>>;
template <std::size_t N>
concept SupportedLength = N == dynamic || (N >= zrfShortestLength && N <= zrfLongestLength);
template <std::size_t N>
concept SupportedPowerOfTwo = N == dynamic ||
                              (N >= 2 && N <= (std::size_t{1} << zrfHighestOrder) && std::has_single_bit(N));
template <std::size_t length, std::size_t... extents>
concept ExtentsFit = length == dynamic || ((extents == length || extents == dynamic) && ...);

template <class Destination, class Source, std::size_t N>
concept EqualArrays = WritableOfSameElement<Destination, Source> &&
    ExtentsFit<lengthOf<N, Source, Destination>, N, extentOf<Source>, extentOf<Destination>>;
template <class Destination, class Source, std::size_t N>
concept ComplexTransform = EqualArrays<Destination, Source, N> && ComplexElement<ElementOf<Source>> &&
    SupportedLength<lengthOf<N, Source, Destination>>;
template <class Destination, class Source, std::size_t N>
concept HartleyTransform = EqualArrays<Destination, Source, N> && FloatOrDouble<ElementOf<Source>> &&
    SupportedLength<lengthOf<N, Source, Destination>>;
template <class Destination, class Source, std::size_t N>
concept WalshHadamardTransform = EqualArrays<Destination, Source, N> && FloatOrDouble<ElementOf<Source>> &&
    SupportedPowerOfTwo<lengthOf<N, Source, Destination>>;
template <class Reals, class Spectrum, Layout layout, std::size_t N>
concept RealsAndSpectrum = FloatOrDouble<ElementOf<Reals>> && SupportedLength<lengthOf<N, Reals>> &&
    ExtentsFit<lengthOf<N, Reals>, N, extentOf<Reals>> &&
    ExtentsFit<sizeOfSpectrum<layout, lengthOf<N, Reals>>, extentOf<Spectrum>>;
template <class Spectrum, class Source, Layout layout, std::size_t N>
concept RealForwardTransform =
    WritableOfSameElement<Spectrum, Source> && RealsAndSpectrum<Source, Spectrum, layout, N>;
template <class Destination, class Spectrum, Layout layout, std::size_t N>
concept RealInverseTransform =
    WritableOfSameElement<Destination, Spectrum> && RealsAndSpectrum<Destination, Spectrum, layout, N>;

// Calls the function of length N, or where that is dynamic the one of any size, if the arrays have the sizes.
template <class Family, std::size_t N, class Source, class Destination>
Status transform(const Source &source, std::size_t sourceSize, Destination &destination,
                 std::size_t destinationSize, std::size_t length, Scale scale) {
    const std::span from(source);
    const std::span to(destination);
    if (from.size() != sourceSize || to.size() != destinationSize || length > zrfLongestLength)
        return zrfStatusSizeError;
    using Element = typename InC<typename decltype(to)::value_type>::Type;
    const auto *const elementsFrom = reinterpret_cast<const Element *>(from.data());
    auto *const elementsTo = reinterpret_cast<Element *>(to.data());
    const auto flag = static_cast<std::int32_t>(scale);
    if constexpr (N != dynamic)
        return entry<Family, Element, N>(elementsFrom, elementsTo, flag);
    else
        return entry<Family, Element>(elementsFrom, elementsTo, static_cast<std::int32_t>(length), flag);
}

template <class Family, std::size_t N, class Source, class Destination>
Status transformEqual(const Source &source, Destination &destination, Scale scale) {
    constexpr std::size_t known = lengthOf<N, const Source &, Destination &>;
    const std::size_t length = known == dynamic ? std::span(source).size() : known;
    return transform<Family, known>(source, length, destination, length, length, scale);
}

} // namespace detail

/// Forward complex DFT: X[k] = s * sum over j of x[j] exp(-2 pi i j k / N), k = 0..N-1, N = 2..64.
///
/// N is the template argument, else a static extent, else the size of the source at run time. The elements
/// are std::complex of float or double, Complex32 or Complex64: the same in both arrays.
/// \return zrfStatusOk; zrfStatusSizeError if sizes known at run time alone do not fit; zrfStatusFlagError if
/// the scale is none of the enumerators
template <std::size_t N = dynamic, class Source, detail::ComplexTransform<const Source &, N> Destination>
Status dftForward(const Source &source, Destination &&destination, Scale scale) {
    return detail::transformEqual<detail::DFTFwd_CToC, N>(source, destination, scale);
}

/// Inverse complex DFT: as dftForward(), with exp(+2 pi i j k / N).
template <std::size_t N = dynamic, class Source, detail::ComplexTransform<const Source &, N> Destination>
Status dftInverse(const Source &source, Destination &&destination, Scale scale) {
    return detail::transformEqual<detail::DFTInv_CToC, N>(source, destination, scale);
}

/// Hartley transform: X[k] = s * sum over j of x[j] (cos(2 pi j k / N) + sin(2 pi j k / N)), k = 0..N-1.
/// Elements are float or double; N and statuses are as in dftForward().
template <std::size_t N = dynamic, class Source, detail::HartleyTransform<const Source &, N> Destination>
Status hartley(const Source &source, Destination &&destination, Scale scale) {
    return detail::transformEqual<detail::Hartley, N>(source, destination, scale);
}

/// Forward DFT of N real elements, float or double, N = 2..64, to spectrumSize(layout, N) elements.
///
/// N is the template argument, else the extent of the source, else its size at run time.
/// \return as dftForward()
template <Layout layout, std::size_t N = dynamic, class Source,
          detail::RealForwardTransform<const Source &, layout, N> Spectrum>
Status realDftForward(const Source &source, Spectrum &&spectrum, Scale scale) {
    constexpr std::size_t known = detail::lengthOf<N, const Source &>;
    const std::size_t length = known == dynamic ? std::span(source).size() : known;
    const std::size_t size = spectrumSize(layout, length);
    return detail::transform<detail::RealForward<layout>, known>(source, length, spectrum, size, length,
                                                                 scale);
}

/// Inverse DFT of spectrumSize(layout, N) elements to N real ones, N = 2..64.
///
/// N is the template argument, else the extent of the destination, else its size at run time.
/// \return as dftForward()
template <Layout layout, std::size_t N = dynamic, class Spectrum,
          detail::RealInverseTransform<const Spectrum &, layout, N> Destination>
Status realDftInverse(const Spectrum &spectrum, Destination &&destination, Scale scale) {
    constexpr std::size_t known = detail::lengthOf<N, Destination>;
    const std::size_t length = known == dynamic ? std::span(destination).size() : known;
    const std::size_t size = spectrumSize(layout, length);
    return detail::transform<detail::RealInverse<layout>, known>(spectrum, size, destination, length, length,
                                                                 scale);
}

/// X[k] for any k = 0..N-1, from the spectrumSize(layout, N) elements of a spectrum: what a layout does not
/// hold is the conjugate of what it holds.
template <class Spectrum>
constexpr auto bin(Layout layout, const Spectrum &spectrum, std::size_t N, std::size_t k) {
    const std::span elements(spectrum);
    using Real = typename decltype(elements)::value_type;
    const std::size_t held = std::min(k, N - k);
    const auto imaginary = imaginaryIndex(layout, N, held);
    const Real part = imaginary ? elements[*imaginary] : Real(0);
    return std::complex<Real>(elements[realIndex(layout, N, held)], k == held ? part : -part);
}

/// Memory for walshHadamard() to work in. Arrays of these stand on the 16-byte boundary that it asks for:
///
///     std::vector<zrfgen::ScratchBlock> buffer(zrfgen::walshHadamardBufferSize<float>(1024));
struct alignas(16) ScratchBlock {
    std::byte bytes[16];
};

/// The blocks that a Walsh-Hadamard transform of so many elements needs: 0 up to 128 elements, and for
/// lengths that are refused.
template <detail::FloatOrDouble Real> std::size_t walshHadamardBufferSize(std::size_t length) {
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
template <std::size_t N = dynamic, class Source,
          detail::WalshHadamardTransform<const Source &, N> Destination>
Status walshHadamard(const Source &source, Destination &&destination, Scale scale,
                     std::span<ScratchBlock> buffer = {}) {
    using Real = detail::ElementOf<Destination>;
    constexpr std::size_t known = detail::lengthOf<N, const Source &, Destination>;
    const std::span from(source);
    const std::span to(destination);
    const std::size_t length = known == dynamic ? from.size() : known;
    if (from.size() != length || to.size() != length || !std::has_single_bit(length) ||
        (!buffer.empty() && buffer.size() < walshHadamardBufferSize<Real>(length)))
        return zrfStatusSizeError;
    auto *const bytes = buffer.empty() ? nullptr : reinterpret_cast<std::uint8_t *>(buffer.data());
    const auto flag = static_cast<std::int32_t>(scale);
    if constexpr (known != dynamic)
        return detail::entry<detail::WHT, Real, known>(from.data(), to.data(), flag, bytes);
    else
        return detail::entry<detail::WHT, Real>(from.data(), to.data(), std::countr_zero(length), flag,
                                                bytes);
}

/// DCT-IV, X[k] = sum over j of x[j] cos(pi (2j+1) (2k+1) / (4N)), k = 0..N-1, by a plan of its own.
template <detail::FloatOrDouble Real> class Dct4 {
public:
    /// Plans for N elements: a power of two, from 2 to 2^26 of float or 2^25 of double. A plan that cannot be
    /// made leaves the one before.
    /// \return zrfStatusOk; zrfStatusSizeError if the length is refused; zrfStatusNullPointer if memory is
    /// exhausted
    Status plan(std::size_t length) {
        if (!std::has_single_bit(length) || length > INT32_MAX)
            return zrfStatusSizeError;
        Dct4Plan *made = nullptr;
        const Status status =
            detail::entry<detail::DCT4InitAlloc, Real>(&made, static_cast<std::int32_t>(length));
        if (status == zrfStatusOk) {
            block.reset(made);
            plannedLength = length;
        }
        return status;
    }

    std::size_t length() const { return block ? plannedLength : 0; } ///< N, or 0 without a plan
    explicit operator bool() const { return block != nullptr; }      ///< whether there is a plan

    /// Transforms N elements. The arrays are the same or do not overlap. Not const: a plan for 64 or more
    /// elements has a work table that every call writes, so threads need an object each.
    /// \return zrfStatusOk; zrfStatusNullPointer without a plan; zrfStatusSizeError if an array is not of N
    /// elements
    Status transform(std::span<const Real> source, std::span<Real> destination) {
        if (!block)
            return zrfStatusNullPointer;
        if (source.size() != plannedLength || destination.size() != plannedLength)
            return zrfStatusSizeError;
        return detail::entry<detail::DCT4, Real>(source.data(), destination.data(), block.get());
    }

private:
    struct Free {
        void operator()(Dct4Plan *plan) const { detail::entry<detail::DCT4Free, Real>(plan); }
    };
    std::unique_ptr<Dct4Plan, Free> block;
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
                   std::size_t length = N)
        : elements(array.data()), rowCount(count), rowStride(stride), rowLength(length) {
        const bool allFit =
            count == 0 || (length <= array.size() &&
                           (count == 1 || stride == 0 || count - 1 <= (array.size() - length) / stride));
        if (!allFit || (N != dynamic && length != N)) {
            rowCount = 0;
            refusal = zrfStatusSizeError;
        }
    }

    constexpr Status status() const { return refusal; } ///< zrfStatusOk, or zrfStatusSizeError if refused
    constexpr std::size_t count() const { return rowCount; }
    constexpr bool overlap() const { return rowCount > 1 && rowStride < rowLength; }
    constexpr std::span<Element, N> operator[](std::size_t i) const {
        return std::span<Element, N>(elements + i * rowStride, rowLength);
    }

private:
    Element *elements;
    std::size_t rowCount, rowStride, rowLength;
    Status refusal = zrfStatusOk;
};

/// Calls a transform for row after row with two spans, the source and the destination.
///
///     forEachRow(frames, spectra, [](auto x, auto X) { return hartley(x, X, zrfgen::Scale::None); });
///
/// \return zrfStatusOk; the first other status of the transform, which leaves out all further rows;
/// zrfStatusSizeError, with no call, if rows were refused, counts differ, or destination rows overlap
template <class From, std::size_t M, class To, std::size_t N,
          std::invocable<std::span<From, M>, std::span<To, N>> Transform>
Status forEachRow(const Rows<From, M> &sources, const Rows<To, N> &destinations, Transform &&transform) {
    if (sources.status() != zrfStatusOk || destinations.status() != zrfStatusOk ||
        sources.count() != destinations.count() || destinations.overlap())
        return zrfStatusSizeError;
    for (std::size_t i = 0; i < sources.count(); ++i)
        if (const Status status = transform(sources[i], destinations[i]); status != zrfStatusOk)
            return status;
    return zrfStatusOk;
}

/// What a status says, for a person to read.
constexpr const char *describe(Status status) {
    return status == zrfStatusOk            ? "no error"
           : status == zrfStatusPlanError   ? "the DCT-IV plan is none of this library, or was overwritten"
           : status == zrfStatusSizeError   ? "a length is out of range, or an array's size does not fit"
           : status == zrfStatusNullPointer ? "a pointer is null, no plan was made, or memory is exhausted"
           : status == zrfStatusFlagError   ? "the scale is none of the four"
                                            : "unknown status";
}

#ifdef __cpp_exceptions
/// A status other than zrfStatusOk, as an exception whose text names the cause.
class Error : public std::runtime_error {
public:
    explicit Error(Status status)
        : std::runtime_error(std::string(describe(status)) + " (zrfgen status " + std::to_string(status) +
                             ")"),
          cause(status) {}
    Status status() const { return cause; }

private:
    Status cause;
};

/// Throws an Error unless the status is zrfStatusOk: orThrow(dftForward(x, X, Scale::None)).
inline void orThrow(Status status) {
    if (status != zrfStatusOk)
        throw Error(status);
}
#endif

} // namespace typed
} // namespace zrfgen

#endif
