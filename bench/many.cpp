// Many transforms in one call beside a loop over single calls and FFTW's plans for many, unscaled, out of
// place: 1,000 of them and 8, as the rows of a matrix and as its columns. Times are those of all transforms
// together.
#include "tests/many.h"
#include "contest.h"

#include <algorithm>
#include <cstddef>

namespace zrfgen::bench {
namespace {

// Transforms of one length. The arrays are matrices of the elements that one transform's arrays have.
template <class Real> struct Batch {
    const Many &many;
    int length, count;
    bool areColumns;
    Array<Real> src = allocate<Real>((length + 2) * count), dst = allocate<Real>((length + 2) * count);

    Many::Strides strides(std::ptrdiff_t elements) const {
        return areColumns ? Many::Strides{count, 1} : Many::Strides{1, elements};
    }
};

template <class Real> Plan<Real> planMany(const Batch<Real> &batch) {
    using F = Fftw<Real>;
    const std::string_view family = batch.many.single.family;
    const int n = batch.length, count = batch.count;
    const Many::Strides strides = batch.strides(n);
    const int step = static_cast<int>(strides.step), distance = static_cast<int>(strides.distance);
    const int ofHalf = static_cast<int>(batch.strides(n / 2 + 1).distance);
    Real *const src = batch.src.get(), *const dst = batch.dst.get();
    auto *const complexSrc = complexElements<Real>(batch.src);
    auto *const complexDst = complexElements<Real>(batch.dst);
    const fftw_r2r_kind hartley = FFTW_DHT;
    if (batch.many.single.isComplex())
        return owned<Real>(F::planManyComplex(1, &n, count, complexSrc, nullptr, step, distance, complexDst,
                                              nullptr, step, distance, FFTW_FORWARD, FFTW_PATIENT));
    if (family == "Hartley")
        return owned<Real>(F::planManyRealToReal(1, &n, count, src, nullptr, step, distance, dst, nullptr,
                                                 step, distance, &hartley, FFTW_PATIENT));
    if (family.starts_with("DFTFwd"))
        return owned<Real>(F::planManyRealForward(1, &n, count, src, nullptr, step, distance, complexDst,
                                                  nullptr, step, ofHalf, FFTW_PATIENT));
    return owned<Real>(F::planManyRealInverse(1, &n, count, complexSrc, nullptr, step, ofHalf, dst, nullptr,
                                              step, distance, FFTW_PATIENT | FFTW_PRESERVE_INPUT));
}

// Single calls; columns are gathered and scattered element by element.
template <class Real> void loop(const Batch<Real> &batch, Export::FixedSize single) {
    const Many &many = batch.many;
    const std::ptrdiff_t parts = many.parts(), pitch = parts * batch.count;
    const std::ptrdiff_t sources = parts * many.sources(batch.length),
                         results = parts * many.results(batch.length);
    Real row[2 * zrfLongestLength + 2], result[2 * zrfLongestLength + 2];
    for (int t = 0; t < batch.count; ++t) {
        if (!batch.areColumns) {
            single(batch.src.get() + t * sources, batch.dst.get() + t * results, zrfScaleNone);
            continue;
        }
        for (std::ptrdiff_t e = 0; e < sources; e += parts)
            std::copy_n(batch.src.get() + parts * t + e / parts * pitch, parts, row + e);
        single(row, result, zrfScaleNone);
        for (std::ptrdiff_t e = 0; e < results; e += parts)
            std::copy_n(result + e, parts, batch.dst.get() + parts * t + e / parts * pitch);
    }
}

template <class Real>
std::vector<Contender> contenders(const Many &many, int length, int count, bool areColumns) {
    const Batch<Real> batch{many, length, count, areColumns};
    const auto single =
        transformOf(std::string(many.single.family), length, isSingle<Real>).template as<Export::FixedSize>();
    const Plan<Real> plan = planMany(batch); // overwrites the arrays
    fill<Real>(batch.src, (length + 2) * count);
    const Many::Strides from = batch.strides(many.sources(length)), to = batch.strides(many.results(length));
    return {contender("zrfmany",
                      [=] {
                          batch.many.call(batch.src.get(), batch.dst.get(), length, zrfScaleNone, count, from,
                                          to);
                      }),
            contender("loop", [=] { loop(batch, single); }),
            contender("FFTW", [=] { Fftw<Real>::execute(plan.get()); })};
}

template <class Real>
void addContests(std::vector<Contest> &contests, const std::string &family, const std::string &title) {
    const Many &many = *std::ranges::find_if(allOfMany(), [&](const Many &each) {
        return each.single.family == family && each.single.isSingle == isSingle<Real>;
    });
    for (const int count : {1000, 8})
        for (const bool areColumns : {false, true}) {
            contests.push_back(
                {std::to_string(count) + (areColumns ? " columns, " : " rows, ") + title +
                     (isSingle<Real> ? ", Float32" : ", Float64"),
                 false,
                 {},
                 [=, &many](int length) { return contenders<Real>(many, length, count, areColumns); }});
            for (int length = zrfShortestLength; length <= zrfLongestLength; ++length)
                contests.back().sizes.push_back(length);
        }
}

} // namespace

std::vector<Contest> manyContests() {
    std::vector<Contest> contests;
    for (const auto &[family, title] : {std::pair{"DFTFwd_CToC", "complex DFT"},
                                        {"DFTFwd_RToCCS", "real DFT forward"},
                                        {"DFTInv_CCSToR", "real DFT inverse"},
                                        {"Hartley", "Hartley"}}) {
        addContests<float>(contests, family, title);
        addContests<double>(contests, family, title);
    }
    return contests;
}

} // namespace zrfgen::bench
