// The tables of a plan: cosines and sines, in the order in which the kernels read them.
#pragma once

#include "records.h"

namespace zrfgen {

// Fills the table of the output stage: for each block of laneCount values of q, for each of its r rows, the
// cosines of theta(q, c) lane by lane, then the sines, with c = outputTableColumn(r, row).
template <class Element> void fillOutputTable(const OutputKernelNode *kernel);

// Fills the table of a level, of length n: groups of a cosine and a sine, in all lanes, of pi g / n. With
// M2 = n / (2 r2), s = 0..M2-1 outside and v innermost, g is (2s+1) v, v = 1..r2-1, for r2 up to 8. Radix 16
// or 32 is radix 4 on radix r4 = r2 / 4. What lies between the two comes first, (2s + 1 + 4 M2 u) v with u =
// 0..r4-1 and v = 1..3; then what goes into the transforms of r4 terms, 4 (2s+1) v with v = 1..r4-1.
template <class Element> void fillLevelTable(const SplitCombineNode *combine);

} // namespace zrfgen
