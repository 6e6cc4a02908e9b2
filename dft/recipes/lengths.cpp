#include "dft/recipes/lengths.h"

#include "dft/recipes/primes.h"

#include <iterator>

namespace zrfgen::gen {

namespace {

using enum Form;

// clang-format off

// Prime kernels in complex lanes. The transform back takes its steps in the opposite order where that costs
// nothing: its first columns are then those that the way there left in the lanes.
Decomposition R(Decomposition there, Decomposition back) { return complexRader(there, back); }

// Bluestein's chirps over a transform of a longer length.
Decomposition B(int length, Decomposition longer) { return bluestein(length, longer, longer); }

// The block of 7 in the convolution form in the first column, in the direct form in the others.
Decomposition mixed7() { return firstThenOthers(realRader(PF(2, 3), PF(2, 3)), 7); }

// Taken as a transform of real numbers until the last additions: where twiddles stand between the factors, their
// rotations then need no exchange of parts.
Decomposition L(Decomposition decomposition) { return realLanes(decomposition); }

// A length of 4 or 8 split around an odd one.
Decomposition around(int first, Decomposition inner, int last) { return surrounded(first, inner, last); }

Decomposition s5() { return sumDifference5(); }

const LengthRecipe table[] = {
    // N  form         Complex32                            Complex64
    { 2, Scalar,      2,                                   2},
    { 3, WideScalar,  3,                                   3},
    { 4, Scalar,      4,                                   4},
    { 5, WidePair,    5,                                   5},
    { 6, SplitLanes,  PF(2, 3),                            PF(2, 3)},
    { 7, SplitLanes,  R(PF(2, 3), PF(3, 2)),               7},
    { 8, SplitLanes,  T(4, 2),                             T(4, 2)},
    { 9, SplitLanes,  T(3, 3),                             T(3, 3)},
    {10, SplitLanes,  PF(5, 2),                            PF(s5(), 2)},
    {11, PairedLanes, R(PF(5, 2), PF(2, 5)),               11},
    {12, SplitLanes,  PF(4, 3),                            PF(3, 4)},
    {13, PairedLanes, R(PF(4, 3), PF(3, 4)),               p13()},
    {14, SplitLanes,  PF(2, 7),                            PF(2, 7)},
    {15, SplitLanes,  PF(5, 3),                            PF(5, 3)},
    {16, SplitLanes,  T(4, 4),                             L(T(4, 4))},
    {17, PairedLanes, R(T(4, 4), T(4, 4)),                 p17()},
    {18, SplitLanes,  T(PF(3, 2), 3),                      L(PF(T(3, 3), 2))},
    {19, PairedLanes, R(T(PF(3, 2), 3), T(PF(3, 2), 3)),   p19()},
    {20, SplitLanes,  PF(4, 5),                            PF(5, 4)},
    {21, SplitLanes,  PF(7, 3),                            PF(7, 3)},
    {22, SplitLanes,  PF(2, 11),                           PF(11, 2)},
    {23, PairedLanes, R(PF(2, 11), PF(11, 2)),             p23()},
    {24, SplitLanes,  T(4, PF(3, 2)),                      L(PF(T(4, 2), 3))},
    {25, SplitLanes,  T(5, 5),                             L(T(5, 5))},
    {26, SplitLanes,  PF(p13(), 2),                        PF(p13(), 2)},
    {27, SplitLanes,  T(T(3, 3), 3),                       L(T(3, T(3, 3)))},
    {28, PairedLanes, PF(4, 7),                            around(2, 7, 2)},
    {29, PairedLanes, R(PF(4, 7), PF(7, 4)),               p29()},
    {30, SplitLanes,  PF(PF(5, 2), 3),                     PF(PF(2, 5), 3)},
    {31, PairedLanes, R(PF(PF(5, 2), 3), PF(PF(5, 2), 3)), p31()},
    {32, PairedLanes, T(4, L(T(4, 2))),                    L(T(T(4, 2), 4))},
    {33, SplitLanes,  PF(11, 3),                           PF(11, 3)},
    {34, SplitLanes,  PF(2, p17()),                        PF(2, p17())},
    {35, SplitLanes,  PF(5, 7),                            PF(s5(), mixed7())},
    {36, SplitLanes,  PF(4, T(3, 3)),                      L(around(2, T(3, 3), 2))},
    {37, PairedLanes, R(PF(4, T(3, 3)), PF(T(3, 3), 4)),   p37()},
    {38, SplitLanes,  PF(2, p19()),                        PF(2, p19())},
    {39, SplitLanes,  PF(p13(), 3),                        PF(p13(), 3)},
    {40, SplitLanes,  T(PF(5, 2), 4),                      L(around(4, 5, 2))},
    {41, PairedLanes, R(T(PF(5, 2), 4), T(4, PF(5, 2))),   p41()},
    {42, SplitLanes,  PF(PF(7, 2), 3),                     PF(PF(2, 7), 3)},
    {43, PairedLanes, R(PF(PF(7, 2), 3), PF(PF(7, 2), 3)), p43()},
    {44, SplitLanes,  PF(4, 11),                           around(2, 11, 2)},
    {45, SplitLanes,  T(PF(5, 3), 3),                      L(PF(5, T(3, 3)))},
    {46, SplitLanes,  PF(p23(), 2),                        PF(p23(), 2)},
    {47, SplitLanes,  B(47, T(PF(3, T(4, 2)), 4)),         p47()},
    {48, PairedLanes, T(4, PF(3, 4)),                      L(PF(T(4, 4), 3))},
    {49, SplitLanes,  T(7, 7),                             L(T(7, 7))},
    {50, SplitLanes,  T(PF(5, 2), 5),                      L(PF(T(s5(), s5()), 2))},
    {51, SplitLanes,  PF(p17(), 3),                        PF(p17(), 3)},
    {52, SplitLanes,  PF(4, p13()),                        PF(p13(), 4)},
    {53, PairedLanes, R(PF(4, p13()), PF(p13(), 4)),       p53()},
    {54, SplitLanes,  PF(2, T(T(3, 3), 3)),                L(PF(2, T(3, T(3, 3))))},
    {55, SplitLanes,  PF(5, 11),                           PF(11, 5)},
    {56, SplitLanes,  T(PF(7, 2), 4),                      L(PF(7, T(4, 2)))},
    {57, SplitLanes,  PF(p19(), 3),                        PF(p19(), 3)},
    {58, SplitLanes,  PF(2, p29()),                        PF(p29(), 2)},
    {59, SplitLanes,  B(59, T(T(4, 4), T(4, 2))),          p59()},
    {60, PairedLanes, T(4, PF(5, 3)),                      PF(PF(3, s5()), 4)},
    {61, PairedLanes, R(T(4, PF(5, 3)), T(4, PF(5, 3))),   p61()},
    {62, SplitLanes,  PF(p31(), 2),                        PF(p31(), 2)},
    {63, SplitLanes,  PF(T(3, 3), 7),                      L(PF(7, T(3, 3)))},
    {64, PairedLanes, T(L(T(4, 2)), L(T(4, 2))),           L(T(T(4, 4), 4))},
};
// clang-format on
static_assert(std::size(table) == longestLength - shortestLength + 1);

} // namespace

const LengthRecipe &lengthRecipe(int length) {
    return table[length - shortestLength];
}

} // namespace zrfgen::gen
