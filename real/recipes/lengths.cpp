#include "real/recipes/lengths.h"

#include "dft/recipes/lengths.h"
#include "dft/recipes/primes.h"

#include <iterator>

namespace zrfgen::gen {

namespace {

// Rader's convolution of 23 with the direct block of 11 on both ways: 16 additions fewer than with the
// convolution of 11 on one of them, as many products.
Decomposition direct23() {
    return realRader(PF(2, 11), PF(2, 11));
}

// The block of 27 that leaves all of its rotations to take sqrt(3)/2 up.
Decomposition early27() {
    return T(3, T(3, 3));
}

// Rotates both halves of the third block of 8 ahead of its last additions.
Decomposition split32() {
    return splitRadix(T(4, 4), T(4, 2));
}

// clang-format off
// Signs are in the choice of addition or subtraction, so the forward kernels need no negation. Inverse and Hartley
// kernels carry sqrt(3)/2 and the like to the next product. The inverse's block of 11 is a convolution, which costs 8
// additions more than the direct block and as many products.
const RealLengthRecipe *table() {
    static const RealLengthRecipe rows[] = {
        // N  forward, or all three                         inverse               Hartley
        { 2, 2},
        { 3, 3},
        { 4, T(2, 2)},
        { 5, 5},
        { 6, PF(3, 2)},
        { 7, 7},
        { 8, T(4, 2)},
        { 9, T(3, 3)},
        {10, PF(5, 2)},
        {11, 11,                                          p11(),                11},
        {12, PF(4, 3)},
        {13, p13()},
        {14, PF(2, 7)},
        {15, PF(3, 5),                                    PF(5, 3),             PF(3, 5)},
        {16, T(4, 4)},
        {17, p17()},
        {18, PF(2, T(3, 3))},
        {19, p19()},
        {20, PF(5, 4)},
        {21, PF(7, 3)},
        {22, PF(2, 11),                                   PF(2, p11()),         PF(2, 11)},
        {23, p23(),                                       direct23(),           direct23()},
        {24, PF(3, T(4, 2))},
        {25, T(5, 5)},
        {26, PF(p13(), 2)},
        {27, T(T(3, 3), 3),                               early27(),            early27()},
        {28, PF(4, 7)},
        {29, p29()},
        {30, PF(PF(5, 3), 2)},
        {31, p31()},
        {32, T(T(4, 2), 4),                               split32(),            split32()},
        {33, PF(11, 3),                                   PF(p11(), 3),         PF(p11(), 3)},
        {34, PF(2, p17())},
        {35, PF(7, 5)},
        {36, PF(T(3, 3), 4)},
        {37, p37()},
        {38, PF(p19(), 2)},
        {39, PF(p13(), 3)},
        {40, PF(T(4, 2), 5)},
        {41, p41()},
        {42, PF(PF(7, 3), 2)},
        {43, p43()},
        {44, PF(11, 4),                                   PF(p11(), 4),         PF(p11(), 4)},
        {45, PF(5, T(3, 3))},
        {46, PF(2, p23()),                                PF(2, direct23()),    PF(2, direct23())},
        {47, realRader(PF(direct23(), 2), PF(p23(), 2))},
        {48, PF(T(4, 4), 3)},
        {49, T(7, 7)},
        {50, PF(T(5, 5), 2)},
        {51, PF(p17(), 3)},
        {52, PF(p13(), 4)},
        {53, p53()},
        {54, PF(2, T(T(3, 3), 3)),                        PF(2, early27()),     PF(2, early27())},
        {55, PF(11, 5),                                   PF(p11(), 5),         PF(p11(), 5)},
        {56, PF(7, T(4, 2))},
        {57, PF(p19(), 3)},
        {58, PF(2, p29())},
        {59, p59()},
        {60, PF(PF(3, 5), 4)},
        {61, p61()},
        {62, PF(p31(), 2)},
        {63, PF(7, T(3, 3))},
        {64, T(T(4, 4), 4)},
    };
    static_assert(std::size(rows) == longestLength - shortestLength + 1);
    return rows;
}
// clang-format on

} // namespace

const RealLengthRecipe &realLengthRecipe(int length) {
    return table()[length - shortestLength];
}

} // namespace zrfgen::gen
