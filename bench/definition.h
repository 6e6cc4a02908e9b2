// The transforms' defining sums in quad precision.
#pragma once

#include <number/quad.h>

#include <vector>

namespace zrfgen::bench {

// The coefficient of each source in each result, both taken as real numbers in the order of their arrays.
using Definition = std::vector<std::vector<gen::Quad>>; // [result][source]

Definition complexDft(int length, int sign); // of the exponent
Definition realForward(int length);          // to half a spectrum of complex elements
Definition realInverse(int length);          // from half a spectrum
Definition hartley(int length);

} // namespace zrfgen::bench
