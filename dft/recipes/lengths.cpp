#include "dft/recipes/lengths.h"

#include "dft/recipes/primes.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

using enum Form;

const char *const formNames[] = {"WidePair", "SplitLanes", "PairedLanes", "SplitPairs"};

// clang-format off
const LengthRecipe *table() {
    // Complex64 rows with twiddles are taken as transforms of real numbers until the last additions: rotations then
    // need no exchange of parts. complexRader takes its steps on the way back in the opposite order where that costs
    // nothing: its first columns are then those that the way there left in the lanes.
    static const LengthRecipe rows[] = {
        // N  form         Complex32                                       Complex64
        { 2, PairedLanes, 2,                                              2},
        { 3, WidePair,    3,                                              3},
        { 4, PairedLanes, 4,                                              4},
        { 5, WidePair,    5,                                              5},
        { 6, PairedLanes, PF(2, 3),                                       PF(2, 3)},
        { 7, PairedLanes, complexRader(PF(2, 3), PF(3, 2)),               7},
        { 8, SplitPairs,  TP(4, 2),                                       TF(4, 2)},
        { 9, SplitPairs,  TP(3, 3),                                       T(3, 3)},
        {10, SplitPairs,  PF(5, 2),                                       PF(sumDifference(5), 2)},
        {11, PairedLanes, complexRader(PF(5, 2), PF(2, 5)),               11},
        {12, PairedLanes, PF(4, 3),                                       PF(3, 4)},
        {13, PairedLanes, complexRader(PF(4, 3), PF(3, 4)),               p13()},
        {14, SplitPairs,  PF(2, 7),                                       PF(2, 7)},
        {15, SplitPairs,  PF(5, 3),                                       PF(5, 3)},
        {16, SplitPairs,  TP(4, 4),                                       realLanes(T(4, 4))},
        {17, PairedLanes, complexRader(TP(4, 4), TP(4, 4)),               p17()},
        {18, SplitPairs,  TP(PF(3, 2), 3),                                realLanes(PF(T(3, 3), 2))},
        {19, PairedLanes, complexRader(TP(PF(3, 2), 3), TP(PF(3, 2), 3)), p19()},
        {20, SplitPairs,  PF(4, 5),                                       PF(5, 4)},
        {21, SplitPairs,  PF(7, 3),                                       PF(7, 3)},
        {22, SplitPairs,  PF(2, 11),                                      PF(11, 2)},
        {23, PairedLanes, complexRader(PF(2, 11), PF(11, 2)),             p23()},
        {24, SplitPairs,  TP(4, PF(3, 2)),                                realLanes(PF(T(4, 2), 3))},
        {25, SplitPairs,  TP(5, 5),                                       realLanes(T(5, 5))},
        {26, SplitPairs,  PF(p13(), 2),                                   PF(p13(), 2)},
        {27, SplitPairs,  TP(T(3, 3), 3),                                 realLanes(T(3, T(3, 3)))},
        {28, PairedLanes, PF(4, 7),                                       PFinside(T(2, 2), 7)},
        {29, PairedLanes, complexRader(PF(4, 7), PF(7, 4)),               p29()},
        {30, SplitPairs,  PF(PF(5, 2), 3),                                PF(PF(2, 5), 3)},
        {31, PairedLanes, complexRader(PF(PF(5, 2), 3), PF(PF(5, 2), 3)), p31()},
        {32, PairedLanes, TP(4, realLanes(T(4, 2))),                      realLanes(T(T(4, 2), 4))},
        {33, SplitPairs,  PF(11, 3),                                      PF(11, 3)},
        {34, SplitPairs,  PF(2, p17()),                                   PF(2, p17())},
        {35, SplitPairs,  PF(5, 7),                                       PF(sumDifference(5), byColumn(realRader(PF(2, 3)), 7))},
        {36, SplitPairs,  PF(4, T(3, 3)),                                 realLanes(PFinside(T(2, 2), T(3, 3)))},
        {37, PairedLanes, complexRader(PF(4, T(3, 3)), PF(T(3, 3), 4)),   p37()},
        {38, SplitPairs,  PF(2, p19()),                                   PF(2, p19())},
        {39, SplitPairs,  PF(p13(), 3),                                   PF(p13(), 3)},
        {40, SplitPairs,  TP(PF(5, 2), 4),                                realLanes(PFinside(T(4, 2), 5))},
        {41, PairedLanes, complexRader(TP(PF(5, 2), 4), TP(4, PF(5, 2))), p41()},
        {42, SplitPairs,  PF(PF(7, 2), 3),                                PF(PF(2, 7), 3)},
        {43, PairedLanes, complexRader(PF(PF(7, 2), 3), PF(PF(7, 2), 3)), p43()},
        {44, SplitPairs,  PF(4, 11),                                      PFinside(T(2, 2), 11)},
        {45, SplitPairs,  TP(PF(5, 3), 3),                                realLanes(PF(5, T(3, 3)))},
        {46, SplitPairs,  PF(p23(), 2),                                   PF(p23(), 2)},
        {47, SplitLanes,  bluestein(47, TP(PF(3, T(4, 2)), 4)),           p47()},
        {48, PairedLanes, TP(4, PF(3, 4)),                                realLanes(PF(T(4, 4), 3))},
        {49, SplitPairs,  TP(7, 7),                                       realLanes(T(7, 7))},
        {50, SplitPairs,  TP(PF(5, 2), 5),                                realLanes(PF(T(sumDifference(5), sumDifference(5)), 2))},
        {51, SplitPairs,  PF(p17(), 3),                                   PF(p17(), 3)},
        {52, SplitPairs,  PF(4, p13()),                                   PF(p13(), 4)},
        {53, PairedLanes, complexRader(PF(4, p13()), PF(p13(), 4)),       p53()},
        {54, SplitLanes,  PF(2, TP(T(3, 3), 3)),                          realLanes(PF(2, T(3, T(3, 3))))},
        {55, SplitPairs,  PF(5, 11),                                      PF(11, 5)},
        {56, SplitPairs,  TP(PF(7, 2), 4),                                realLanes(PF(7, T(4, 2)))},
        {57, SplitPairs,  PF(p19(), 3),                                   PF(p19(), 3)},
        {58, SplitPairs,  PF(2, p29()),                                   PF(p29(), 2)},
        {59, SplitLanes,  bluestein(59, TP(T(4, 4), T(4, 2))),            p59()},
        {60, PairedLanes, TP(4, PF(5, 3)),                                PF(PF(3, sumDifference(5)), 4)},
        {61, PairedLanes, complexRader(TP(4, PF(5, 3)), TP(4, PF(5, 3))), p61()},
        {62, SplitPairs,  PF(p31(), 2),                                   PF(p31(), 2)},
        {63, SplitPairs,  PF(T(3, 3), 7),                                 realLanes(PF(7, T(3, 3)))},
        {64, PairedLanes, TP(realLanes(T(4, 2)), realLanes(T(4, 2))),     realLanes(T(T(4, 4), 4))},
    };
    static_assert(std::size(rows) == longestLength - shortestLength + 1);
    return rows;
}
// clang-format on

} // namespace

const char *name(Form form) {
    return formNames[static_cast<int>(form)];
}

Form formNamed(const std::string &text) {
    const auto place = std::ranges::find(formNames, text);
    if (place == std::end(formNames))
        throw std::invalid_argument("'" + text + "' is no form of a Complex32 kernel, as SplitLanes is one");
    return static_cast<Form>(place - std::begin(formNames));
}

const LengthRecipe &lengthRecipe(int length) {
    return table()[length - shortestLength];
}

} // namespace zrfgen::gen
