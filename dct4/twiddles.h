// The tables of a plan: cosines and sines, in the order in which the kernels read them.
#pragma once

#include "records.h"

namespace zrfgen {

// Fills the table of the output stage: for each block of laneCount values of q, for each of its r rows, the
// cosines of theta(q, c) lane by lane, then the sines, with c = outputTableColumn(r, row).
template <class Element> void fillOutputTable(const OutputKernelNode *kernel);

// Fills the table of a level, of length n: groups of a cosine and a sine, in all lanes, of pi g / n. With
// M2 = n / (2 r2) and s = 0..M2-1 outside, g is (2s + 1 + 4 M2 u) v with u = 0..inner-1 and v = 1..outer-1 in
// the first part, and outer (2s+1) v with v = 1..inner-1 in the second.
template <class Element> void fillLevelTable(const SplitCombineNode *combine);

} // namespace zrfgen
