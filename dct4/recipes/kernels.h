// The kernels of the DCT-IV: those of the short lengths, and the stages of which longer ones are made.
// Numbers of array elements are those that the addresses in the family's text make sense of.
#pragma once

#include "driver/family.h"

namespace zrfgen::gen {

// The vectors that plans are laid out for on every target. Stages take these or wider ones: more columns, and
// more blocks of the output stage.
Type planVector(Element element);

// Vectors that the text finds each by an address of its own are numbered with a gap behind each, so that no
// two are taken for neighbours: vector i of the stages' arrays begins at lane apart * i * lanes. The output
// stage's source has no gaps.
inline constexpr int apart = 2;

// A whole transform of 2, 4, 8, 16 or 32 elements, one number at a time.
Graph directDct4(int length, Element element);

// Input stage: the odd DFT of n points down each of as many adjacent columns as a vector has lanes. Vector i
// of the source is point i of w[0] .. w[n/2-1], w[-n/2] .. w[-1], those of negative index in reverse order;
// vector i of the destination is entry i of E[0], O[0], E[1] ...
Graph inputStage(int n, Type vector);

// Recursive level: joins `radix` odd DFTs of subsequences to a complex transform across them. Vectors 2p and
// 2p + 1 of the source are the parts of A[p], and the twiddles follow in the order of the level's table,
// cosine and sine. Vector 2l of the destination is the real part of D[l], vector 2l + 1 that of its imaginary
// part, which entries of the upper half have conjugated.
Graph combiningStage(int radix, Type vector);

// Output stage for as many adjacent s as a vector has lanes: rotation and odd synthesis of 2 * radix points.
// Row s of the source holds E and O of all columns, row after row; the twiddles follow in the order of the
// output table, block after block. Vector l of the destination is that of group l, vector radix + l its
// mirrored one in reverse order.
Graph outputStage(int radix, Type vector);

Kernels dct4Kernels(const Target &target);

} // namespace zrfgen::gen
