/// \file
/// Many transforms in one call from C++20: the functions of many.h over Rows, and two dimensions.
///
///     zrfgen::Rows<const std::complex<float>, 64> symbols(samples, 1000, 80); // each behind a prefix of 16
///     zrfgen::Rows<std::complex<float>, 64> carriers(grid, 1000);
///     zrfStatus status = zrfgen::dftForward(symbols, carriers, zrfgen::Scale::None);
///
/// A transform of rows gives what the function of the same name in transforms.hpp gives for each row, bit by
/// bit. Programs that include this header link libzrfmany (in CMake zrfgen::zrfmany).
#ifndef ZRFGEN_MANY_HPP
#define ZRFGEN_MANY_HPP

#include "many.h"
#include "transforms.hpp"

namespace zrfgen {
inline namespace typed {
namespace detail { // what the functions are made of: not for use

template <class Family, class Element> inline constexpr auto manyEntry = nullptr;

#define ZRF_BIND(family, Element, function)                                                                  \
    template <> inline constexpr auto manyEntry<struct family, Element> = function;
#define ZRF_SIZED_FAMILY(family, suffix, Element) ZRF_BIND(family, Element, zrfm##family##_##suffix)
#define ZRF_WHT_FAMILY(suffix, Element) ZRF_BIND(WHT, Element, zrfmWHT_##suffix)
#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include "families.inc"
#undef ZRF_BIND

// Transforms that lie apart by `distance`, their elements by `step`.
template <class Element> struct Lines {
    Element *data;
    std::size_t length, count;
    std::ptrdiff_t step, distance;
};

template <class Element, std::size_t N> Lines<Element> rowsOf(const Rows<Element, N> &rows) noexcept {
    return {rows.data(), rows.length(), rows.count(), 1, static_cast<std::ptrdiff_t>(rows.stride())};
}

template <class Element, std::size_t N> Lines<Element> columnsOf(const Rows<Element, N> &rows) noexcept {
    return {rows.data(), rows.count(), rows.length(), static_cast<std::ptrdiff_t>(rows.stride()), 1};
}

// Rows of complex numbers as the numbers that they are made of, for families whose spectra count these.
template <class Element, std::size_t N> auto partRowsOf(const Rows<Element, N> &rows) noexcept {
    const auto row = partsOf(std::span(rows.data(), rows.length()));
    constexpr std::size_t parts = sizeof(Element) / sizeof(row[0]);
    return Lines<typename decltype(row)::element_type>{
        row.data(), row.size(), rows.count(), 1, static_cast<std::ptrdiff_t>(parts * rows.stride())};
}

template <class Family, class From, class To, class... More>
zrfStatus runMany(const Lines<From> &sources, const Lines<To> &destinations, std::size_t size, Scale scale,
                  More... more) noexcept {
    using Element = typename InC<To>::Type;
    return manyEntry<Family, Element>(reinterpret_cast<const Element *>(sources.data),
                                      reinterpret_cast<Element *>(destinations.data),
                                      static_cast<std::int32_t>(size), static_cast<std::int32_t>(scale),
                                      static_cast<std::ptrdiff_t>(sources.count), sources.step,
                                      sources.distance, destinations.step, destinations.distance, more...);
}

// Whether rows of these lengths can be transformed, and what forEachRow() says if not.
template <class Sources, class Destinations>
constexpr bool areRowsFit(const Sources &sources, const Destinations &destinations) noexcept {
    return sources.status() == zrfStatusOk && destinations.status() == zrfStatusOk &&
           sources.count() == destinations.count() && !destinations.overlap();
}

template <class Family, class From, std::size_t M, class To, std::size_t N>
zrfStatus transformRows(const Rows<From, M> &sources, const Rows<To, N> &destinations, Scale scale) noexcept {
    if (!areRowsFit(sources, destinations) || sources.length() != destinations.length() ||
        sources.length() > zrfLongestLength)
        return zrfStatusSizeError;
    return runMany<Family>(rowsOf(sources), rowsOf(destinations), sources.length(), scale);
}

constexpr bool isLengthOfTransform(std::size_t length) noexcept {
    return zrfShortestLength <= length && length <= zrfLongestLength;
}

// The second half of two dimensions: once the rows are transformed, every column where it stands.
template <class Family, class Element, std::size_t N>
zrfStatus thenColumns(zrfStatus statusOfRows, const Rows<Element, N> &rows, Scale scale) noexcept {
    const Lines<Element> columns = columnsOf(rows);
    return statusOfRows != zrfStatusOk ? statusOfRows
                                       : runMany<Family>(columns, columns, columns.length, scale);
}

template <class To, class From>
concept SameElement = !std::is_const_v<To> && std::same_as<To, std::remove_const_t<From>>;
template <class To, class From>
concept ComplexRows = SameElement<To, From> && ComplexElement<To>;
template <class To, class From>
concept RealRows = SameElement<To, From> && FloatOrDouble<To>;
template <class Spectrum, class Real, Layout layout>
concept SpectrumRows = FloatOrDouble<std::remove_const_t<Real>> &&
    (std::same_as<std::remove_const_t<Spectrum>, std::remove_const_t<Real>> ||
     (layout == Layout::CCS &&
      std::same_as<std::remove_const_t<Spectrum>, std::complex<std::remove_const_t<Real>>>));

} // namespace detail

/// dftForward() of every row.
/// \return as forEachRow(); zrfStatusSizeError also if the lengths of rows differ or there is no such
/// transform
template <class From, std::size_t M, detail::ComplexRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
dftForward(const Rows<From, M> &sources, const Rows<To, N> &destinations, Scale scale) noexcept {
    return detail::transformRows<detail::DFTFwd_CToC>(sources, destinations, scale);
}

/// dftInverse() of every row.
template <class From, std::size_t M, detail::ComplexRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
dftInverse(const Rows<From, M> &sources, const Rows<To, N> &destinations, Scale scale) noexcept {
    return detail::transformRows<detail::DFTInv_CToC>(sources, destinations, scale);
}

/// hartley() of every row.
template <class From, std::size_t M, detail::RealRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
hartley(const Rows<From, M> &sources, const Rows<To, N> &destinations, Scale scale) noexcept {
    return detail::transformRows<detail::Hartley>(sources, destinations, scale);
}

/// realDftForward() of every row. In CCS layout the spectra may be rows of std::complex.
template <Layout layout, class From, std::size_t M, detail::SpectrumRows<From, layout> To, std::size_t N>
[[nodiscard]] zrfStatus realDftForward(const Rows<From, M> &sources, const Rows<To, N> &spectra,
                                       Scale scale) noexcept {
    const auto to = detail::partRowsOf(spectra);
    if (!detail::areRowsFit(sources, spectra) || to.length != spectrumSize(layout, sources.length()) ||
        sources.length() > zrfLongestLength)
        return zrfStatusSizeError;
    return detail::runMany<detail::RealForward<layout>>(detail::rowsOf(sources), to, sources.length(), scale);
}

/// realDftInverse() of every row.
template <Layout layout, class From, std::size_t M, class To, std::size_t N>
requires(detail::SpectrumRows<From, To, layout> && !std::is_const_v<To>) [[nodiscard]] zrfStatus
    realDftInverse(const Rows<From, M> &spectra, const Rows<To, N> &destinations, Scale scale) noexcept {
    const auto from = detail::partRowsOf(spectra);
    if (!detail::areRowsFit(spectra, destinations) ||
        from.length != spectrumSize(layout, destinations.length()) ||
        destinations.length() > zrfLongestLength)
        return zrfStatusSizeError;
    return detail::runMany<detail::RealInverse<layout>>(from, detail::rowsOf(destinations),
                                                        destinations.length(), scale);
}

/// Forward DFT in two dimensions: of every row, and in the result, where it stands, of every column. So the
/// destination holds the rows' transforms between the two, rounded to its elements, and the scale counts
/// twice: by the length of a row and by their number, both 2 to 64. Source and destination may be the same.
/// \return as dftForward() of rows; zrfStatusSizeError also if there is no transform of a column's length
template <class From, std::size_t M, detail::ComplexRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
dftForward2D(const Rows<From, M> &source, const Rows<To, N> &destination, Scale scale) noexcept {
    if (!detail::isLengthOfTransform(source.count()))
        return zrfStatusSizeError;
    return detail::thenColumns<detail::DFTFwd_CToC>(dftForward(source, destination, scale), destination,
                                                    scale);
}

/// Inverse DFT in two dimensions, as dftForward2D().
template <class From, std::size_t M, detail::ComplexRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
dftInverse2D(const Rows<From, M> &source, const Rows<To, N> &destination, Scale scale) noexcept {
    if (!detail::isLengthOfTransform(source.count()))
        return zrfStatusSizeError;
    return detail::thenColumns<detail::DFTInv_CToC>(dftInverse(source, destination, scale), destination,
                                                    scale);
}

/// Forward DFT of real elements in two dimensions: realDftForward() of every row to complex numbers, X[0] to
/// X[N/2], and in the result, where it stands, dftForward() of every column. \return as dftForward2D()
template <class From, std::size_t M, class Real, std::size_t N>
requires(std::same_as<Real, std::remove_const_t<From>> &&detail::FloatOrDouble<Real>) [[nodiscard]] zrfStatus
    realDftForward2D(const Rows<From, M> &source, const Rows<std::complex<Real>, N> &spectrum,
                     Scale scale) noexcept {
    if (!detail::isLengthOfTransform(source.count()))
        return zrfStatusSizeError;
    return detail::thenColumns<detail::DFTFwd_CToC>(realDftForward<Layout::CCS>(source, spectrum, scale),
                                                    spectrum, scale);
}

/// Its inverse: dftInverse() of every column of the spectrum, where it stands, and realDftInverse() of every
/// row of the result. The spectrum is overwritten by what lies between the two. \return as dftForward2D()
template <class Real, std::size_t M, class To, std::size_t N>
requires(std::same_as<Real, To> &&detail::FloatOrDouble<Real>) [[nodiscard]] zrfStatus
    realDftInverse2D(const Rows<std::complex<Real>, M> &spectrum, const Rows<To, N> &destination,
                     Scale scale) noexcept {
    if (!detail::areRowsFit(spectrum, destination) || !detail::isLengthOfTransform(spectrum.count()) ||
        !detail::isLengthOfTransform(destination.length()) ||
        2 * spectrum.length() != spectrumSize(Layout::CCS, destination.length()) || spectrum.overlap())
        return zrfStatusSizeError;
    const auto columns = detail::columnsOf(spectrum);
    const zrfStatus status = detail::runMany<detail::DFTInv_CToC>(columns, columns, columns.length, scale);
    return status != zrfStatusOk ? status : realDftInverse<Layout::CCS>(spectrum, destination, scale);
}

/// Walsh-Hadamard transform of every row and then, in the result, where it stands, of every column. Both
/// lengths are powers of two from 2 to 128; for longer ones see walshHadamard() and zrfmWHT_32f(). \return as
/// dftForward2D()
template <class From, std::size_t M, detail::RealRows<From> To, std::size_t N> [[nodiscard]] zrfStatus
walshHadamard2D(const Rows<From, M> &source, const Rows<To, N> &destination, Scale scale) noexcept {
    const auto isLength = [](std::size_t length) {
        return std::has_single_bit(length) && 2 <= length && length <= 128;
    };
    if (!detail::areRowsFit(source, destination) || source.length() != destination.length() ||
        !isLength(source.length()) || !isLength(source.count()))
        return zrfStatusSizeError;
    const auto columns = detail::columnsOf(destination);
    const auto order = [](std::size_t length) { return static_cast<std::size_t>(std::countr_zero(length)); };
    const zrfStatus status = detail::runMany<detail::WHT>(detail::rowsOf(source), detail::rowsOf(destination),
                                                          order(source.length()), scale, nullptr);
    return status != zrfStatusOk
               ? status
               : detail::runMany<detail::WHT>(columns, columns, order(columns.length), scale, nullptr);
}

} // namespace typed
} // namespace zrfgen

#endif
