// How many bytes a plan takes.
#pragma once

#include <cstdint>

namespace zrfgen {

// The bytes that a plan of the length takes at most, in a block at any address, or zrfStatusSizeError if the
// length has no plan. The sums wrap around: above longestPlan the result may be positive and too small.
template <class Element> std::int32_t planBytes(std::int32_t length);

// At 2^28 bytes of elements, a table and the work of the root and of three levels take 5 * 2^28 bytes. At
// twice that, the sum would not fit 31 bits. One more than the power of two is accepted as everywhere.
template <class Element> constexpr std::int32_t longestPlan = (1 << 28) / sizeof(Element) + 1;

} // namespace zrfgen
