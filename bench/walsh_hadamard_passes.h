// What the Walsh-Hadamard orders that are made of passes over the data could do at best.
#pragma once

#include "contest.h"

namespace zrfgen::bench {

inline constexpr int firstOrderOfPasses = 8;

template <class Real> Array<std::uint8_t> allocateBuffer(int order) {
    const int32_t bytes = whtBufferBytes(order, isSingle<Real>);
    return {static_cast<std::uint8_t *>(Fftw<Real>::malloc(bytes)), Fftw<Real>::free};
}

// "passes": every pass alone, over all of the data again and again. "copies": the passes one after the other
// with nothing but their 16-byte loads and stores.
template <class Real>
std::vector<Contender> passContenders(int order, const Array<Real> &src, const Array<Real> &dst);

} // namespace zrfgen::bench
