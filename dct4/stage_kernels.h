// The kernels of the DCT-IV that kernelgen writes. Strides and pitches are in bytes.
#pragma once

#include "vectors.h"

#include <cstddef>

namespace zrfgen {

namespace {

// The whole transform of a short length, from src to dst.
template <class Element, int length> struct Direct;

// The odd DFT of n points in each column of a vector. Points of index 0 and up stand at forward + m * pitch,
// those below at backward + (|m| - 1) * pitch, where the columns run the other way. Row 2s of dst takes the
// real part of output s, row 2s + 1 the imaginary part.
template <class Element, int n> struct Input;

// Joins the leaves of a level at one s. Rows of src are those of the leaves in turn, all real parts first.
// Results go to lower + l * step and upper + l * step, l below radix / 2, and imaginary parts a row behind.
template <class Element, int radix> struct Combine;

// A block of the output stage: 2 * radix vectors, at forward + l * step and, with their lanes in reverse
// order, at backward + l * step.
template <class Element, int radix> struct Output;

#include "dct4_combine_16_32f.inc"
#include "dct4_combine_16_64f.inc"
#include "dct4_combine_2_32f.inc"
#include "dct4_combine_2_64f.inc"
#include "dct4_combine_32_32f.inc"
#include "dct4_combine_32_64f.inc"
#include "dct4_combine_4_32f.inc"
#include "dct4_combine_4_64f.inc"
#include "dct4_combine_8_32f.inc"
#include "dct4_combine_8_64f.inc"
#include "dct4_direct_16_32f.inc"
#include "dct4_direct_16_64f.inc"
#include "dct4_direct_2_32f.inc"
#include "dct4_direct_2_64f.inc"
#include "dct4_direct_32_32f.inc"
#include "dct4_direct_32_64f.inc"
#include "dct4_direct_4_32f.inc"
#include "dct4_direct_4_64f.inc"
#include "dct4_direct_8_32f.inc"
#include "dct4_direct_8_64f.inc"
#include "dct4_input_16_32f.inc"
#include "dct4_input_16_64f.inc"
#include "dct4_input_2_32f.inc"
#include "dct4_input_2_64f.inc"
#include "dct4_input_32_32f.inc"
#include "dct4_input_32_64f.inc"
#include "dct4_input_4_32f.inc"
#include "dct4_input_4_64f.inc"
#include "dct4_input_64_32f.inc"
#include "dct4_input_64_64f.inc"
#include "dct4_input_8_32f.inc"
#include "dct4_input_8_64f.inc"
#include "dct4_output_16_32f.inc"
#include "dct4_output_16_64f.inc"
#include "dct4_output_2_64f.inc"
#include "dct4_output_32_32f.inc"
#include "dct4_output_32_64f.inc"
#include "dct4_output_4_32f.inc"
#include "dct4_output_4_64f.inc"
#include "dct4_output_8_32f.inc"
#include "dct4_output_8_64f.inc"

} // namespace

} // namespace zrfgen
