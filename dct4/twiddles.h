// The tables of a plan: cosines and sines, in the order in which the kernels read them.
#pragma once

#include "records.h"

namespace zrfgen {

// The generators' operations, each of one value. Even columns are the cosines and odd ones the sines of a
// pair.
template <class Element> Element twiddle(const TwiddleSource *source, std::int32_t row, std::int32_t column);
template <class Element> Element blockedTwiddle(const BlockedTwiddleView *view, std::int32_t block,
                                                std::int32_t lane, std::int32_t column);
template <class Element> Element splitAngle(const SplitAngleSource *source, std::int32_t index);

// Fills the table of the output stage: for each block of laneCount values of q, for each of its r rows, the
// cosines of theta(q, c) lane by lane, then the sines, c being outputTableColumn(r, row).
template <class Element> void fillOutputTable(const OutputKernelNode *kernel);

// Fills the table of a level, of length n: groups of a cosine and a sine in all lanes, of the angles pi g /
// n. With M2 = n / (2 r2), s = 0..M2-1 outside and v innermost, g is (2s+1) v, v = 1..r2-1, for r2 up to 8.
// Radix 16 or 32 is radix 4 on radix r4 = r2 / 4, hence two sections: (2s + 1 + 4 M2 u) v, u = 0..r4-1,
// v = 1..3; then 4 (2s+1) v, v = 1..r4-1.
template <class Element> void fillLevelTable(const SplitCombineNode *combine);

} // namespace zrfgen
