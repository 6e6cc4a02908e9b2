// What the contests of all families are made of.
#pragma once

#include "families.h"
#include "fftw.h"
#include "library.h"
#include "tests/exports.h"
#include "tests/random.h"

#include <stdexcept>

namespace zrfgen::bench {

template <class Real> constexpr bool isSingle = std::is_same_v<Real, float>;
template <class Real> constexpr const char *realSuffix = isSingle<Real> ? "32f" : "64f";
template <class Real> constexpr const char *complexSuffix = isSingle<Real> ? "32fc" : "64fc";

template <class Work> Contender contender(std::string label, Work work) {
    return {std::move(label), [=](std::int64_t times) {
                for (; times > 0; --times)
                    work();
            }};
}

template <class Real>
Contender fftwContender(std::string label, Plan<Real> plan, Array<Real> src, Array<Real> dst) {
    // The arrays live as long as the plan that points to them.
    return contender(std::move(label), [plan, src, dst] { Fftw<Real>::execute(plan.get()); });
}

template <class Real> void fill(const Array<Real> &array, int length) {
    std::ranges::copy(randomElements<Real>(2 * length), array.get());
}

template <class Real>
using Peers = std::vector<Contender> (*)(int size, const Array<Real> &src, const Array<Real> &dst);

// All contenders of a size work on the same two arrays. Ours is the call that prepare(size, src, dst, of)
// returns, where of(export) is the export itself, or the same of another library that this machine runs.
template <class Real, class Prepare> Contest contest(const std::string &title, bool byOrder, int firstSize,
                                                     int lastSize, Peers<Real> peers, Prepare prepare) {
    Contest result{
        title, byOrder, {}, [=](int size) {
            const int length = byOrder ? 1 << size : size;
            const auto src = allocate<Real>(length), dst = allocate<Real>(length);
            std::vector<Contender> contenders = peers(size, src, dst);
            fill<Real>(src, length); // after the planning, which overwrites it
            const auto call = prepare(size, src, dst, [](const Export &entry) { return entry; });
            for (const OtherLibrary &library : otherLibraries())
                contenders.insert(contenders.begin(),
                                  contender(library.target, prepare(size, src, dst, [&](const Export &entry) {
                                                return library.the(entry);
                                            })));
            if (const Status status = call(); status != zrfStatusOk)
                throw std::runtime_error("zrfgen refused size " + std::to_string(size) + " with status " +
                                         std::to_string(status) + "; run the tests before the benchmark");
            contenders.insert(contenders.begin(), contender("zrfgen", call));
            return contenders;
        }};
    for (int size = firstSize; size <= lastSize; ++size)
        result.sizes.push_back(size);
    return result;
}

// Of all lengths of a DFT or Hartley transform.
template <class Real>
Contest contestOfLengths(const std::string &title, const std::string &family, Peers<Real> peers) {
    const char *suffix = family.ends_with("CToC") ? complexSuffix<Real> : realSuffix<Real>;
    return contest<Real>(
        title + " " + suffix, false, zrfShortestLength, zrfLongestLength, peers,
        [=](int length, const Array<Real> &src, const Array<Real> &dst, auto of) {
            const auto transform =
                of(transformOf(family, length, isSingle<Real>)).template as<Export::FixedSize>();
            return [=] { return transform(src.get(), dst.get(), zrfScaleNone); };
        });
}

} // namespace zrfgen::bench
