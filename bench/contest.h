// What the contests of all families are made of.
#pragma once

#include "exports.h"
#include "families.h"
#include "fftw.h"

#include <random>
#include <stdexcept>

namespace zrfgen::bench {

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

template <class Call> Contender zrfgenContender(const std::string &size, Call call) {
    if (const Status status = call(); status != zrfStatusOk)
        throw std::runtime_error("zrfgen refused " + size + " with status " + std::to_string(status) +
                                 "; run the tests before the benchmark");
    return contender("zrfgen", call);
}

template <class Real> void fill(const Array<Real> &array, int length) {
    std::mt19937 generator;
    std::uniform_real_distribution<Real> value(-1, 1);
    for (int i = 0; i < 2 * length; ++i)
        array[i] = value(generator);
}

template <class Real>
using Peers = std::vector<Contender> (*)(int length, const Array<Real> &src, const Array<Real> &dst);

// All contenders of a length work on the same two arrays.
template <class Real> Contest contest(const std::string &title, const std::string &family,
                                      const std::string &suffix, Peers<Real> peers) {
    Contest result{title + " " + suffix, false, {}, [=](int length) {
                       const auto src = allocate<Real>(length), dst = allocate<Real>(length);
                       std::vector<Contender> contenders = peers(length, src, dst);
                       fill<Real>(src, length); // after the planning, which overwrites it
                       const Transform transform = findExport(family, length, suffix);
                       contenders.insert(contenders.begin(),
                                         zrfgenContender("length " + std::to_string(length), [=] {
                                             return transform(src.get(), dst.get(), zrfScaleNone);
                                         }));
                       return contenders;
                   }};
    for (int length = 2; length <= 64; ++length)
        if (findExport(family, length, suffix) != nullptr)
            result.lengths.push_back(length);
    return result;
}

} // namespace zrfgen::bench
