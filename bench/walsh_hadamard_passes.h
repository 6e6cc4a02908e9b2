// What the Walsh-Hadamard orders that are made of passes over the data could do at best.
#pragma once

#include "fftw.h"
#include "harness.h"

#include <cstdint>
#include <vector>

namespace zrfgen::bench {

inline constexpr int firstOrderOfPasses = 8;

// "passes": every pass alone, over all of the data again and again. "copies": the passes one after the other
// with nothing but their 16-byte loads and stores.
template <class Real> std::vector<Contender>
passContenders(int order, const Array<Real> &src, const Array<Real> &dst, const Array<std::uint8_t> &buffer);

} // namespace zrfgen::bench
