// Prime lengths by cyclic convolution (C. M. Rader, 1968).
#pragma once

#include "algebra/decomposition.h"
#include "algebra/split_complex.h"

namespace zrfgen::gen {

// Complex lanes: both transforms of length p - 1 are complex ones. The inverse kernel is the same sequence
// with the signs of the odd spectrum constants changed, so the model must take the direction from constants.
SplitComplex::Column raderInComplexLanes(SplitComplex &m, const Decomposition &step,
                                         const SplitComplex::Column &x);

} // namespace zrfgen::gen
