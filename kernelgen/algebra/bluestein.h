// An odd length p by chirps (L. I. Bluestein, 1970): since 2jk = j^2 + k^2 - (k - j)^2, the transform is a
// product by a chirp, a convolution with its conjugate, and the product again. The convolution is done by
// transforms of a length L >= 2p - 1 that has small factors.
#pragma once

#include "algebra/decomposition.h"
#include "algebra/split_complex.h"

namespace zrfgen::gen {

// The two directions have chirps of their own, not conjugates: the forward one takes p-th roots of unity
// only. What is known to be zero on the way there and what is not wanted on the way back is not computed.
SplitComplex::Column bluesteinTransform(SplitComplex &m, const Decomposition &step,
                                        const SplitComplex::Column &x);

} // namespace zrfgen::gen
