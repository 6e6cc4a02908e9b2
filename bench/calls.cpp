// What a call costs: the function of a fixed length beside the any-size entry and the typed C++ interface.
#include "contest.h"

#include <zrfgen/transforms.hpp>

#include <utility>

namespace zrfgen::bench {
namespace {

template <class Element, class Real> Element *elementsOf(const Array<Real> &array) {
    return reinterpret_cast<Element *>(array.get());
}

// The C functions are constants in each loop, as where a program names them.
template <class Real, class Family, class Element, std::size_t N, class Face>
std::vector<Contender> contendersOfLength(Face face) {
    constexpr auto fixedSize = detail::entry<Family, Element, N>;
    constexpr auto anySize = detail::entry<Family, Element>;
    constexpr std::size_t outputs = std::is_same_v<Real, Element> ? spectrumSize(Layout::CCS, N) : N;
    const auto src = allocate<Real>(N), dst = allocate<Real>(N);
    fill<Real>(src, N);
    const std::size_t measured = N, outputsMeasured = outputs;
    return {contender(
                "fixed-size",
                [=] { return fixedSize(elementsOf<Element>(src), elementsOf<Element>(dst), zrfScaleNone); }),
            contender("any-size",
                      [=] {
                          return anySize(elementsOf<Element>(src), elementsOf<Element>(dst),
                                         static_cast<int32_t>(measured), zrfScaleNone);
                      }),
            contender("C++ static",
                      [=] {
                          return face(std::span<const Element, N>(elementsOf<Element>(src), N),
                                      std::span<Element, outputs>(elementsOf<Element>(dst), outputs));
                      }),
            contender("C++ run-time", [=] {
                return face(std::span<const Element>(elementsOf<Element>(src), measured),
                            std::span<Element>(elementsOf<Element>(dst), outputsMeasured));
            })};
}

template <class Real, class Family, class Element, class Face, std::size_t... N>
Contest callContest(const std::string &title, Face face, std::index_sequence<N...>) {
    return {title, false, {N...}, [=](int length) {
                std::vector<Contender> result;
                ((length == N ? void(result = contendersOfLength<Real, Family, Element, N>(face)) : void()),
                 ...);
                return result;
            }};
}

template <class Real, class Complex> std::vector<Contest> callContestsOf() {
    constexpr std::index_sequence<2, 3, 4, 8, 16, 32, 64> lengths;
    return {callContest<Real, detail::DFTFwd_CToC, Complex>(
                std::string("calls of complex DFT ") + complexSuffix<Real>,
                [](auto x, auto X) { return dftForward(x, X, Scale::None); }, lengths),
            callContest<Real, detail::DFTFwd_RToCCS, Real>(
                std::string("calls of real DFT ") + realSuffix<Real>,
                [](auto x, auto X) { return realDftForward<Layout::CCS>(x, X, Scale::None); }, lengths)};
}

} // namespace

std::vector<Contest> callContests() {
    std::vector<Contest> contests = callContestsOf<float, Complex32>();
    std::ranges::move(callContestsOf<double, Complex64>(), std::back_inserter(contests));
    return contests;
}

} // namespace zrfgen::bench
