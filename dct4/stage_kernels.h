// The kernels of the DCT-IV that kernelgen writes. Strides and pitches are in bytes.
#pragma once

#include "target.h"

#include <cstddef>

namespace zrfgen {

namespace {

// The whole transform of a short length, from src to dst.
template <class Element, int length> struct Direct;

// The stages, in vectors of so many bytes.

// The odd DFT of n points in each column of a vector. Points of index 0 and up stand at forward + m * pitch,
// those below at backward + (|m| - 1) * pitch, where the columns run the other way. Row 2s of dst takes the
// real part of output s, row 2s + 1 the imaginary part.
template <class Element, int n, int vectorBytes> struct Input;

// Joins the leaves of a level at one s: real parts at src + p * leafPitch, imaginary ones leafRowPitch
// behind. Results go to lower + l * step and upper + l * step, l below radix / 2, and imaginary parts a row
// behind.
template <class Element, int radix, int vectorBytes> struct Combine;

// As many blocks of the output stage as vectors are wide: 2 * radix vectors, at forward + l * step and, with
// their lanes in reverse order, at backward + l * step.
template <class Element, int radix, int vectorBytes> struct Output;

#include "dct4_stages.inc"

} // namespace

} // namespace zrfgen
