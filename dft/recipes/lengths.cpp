#include "recipes/lengths.h"

namespace zrfgen::gen {

namespace {

using enum Form;

// clang-format off
const LengthRecipe table[] = {
    // N  form        Complex32                   Complex64
    { 2, Scalar,      2,                          2},
    { 3, WideScalar,  3,                          3},
    { 4, Scalar,      4,                          4},
    { 5, WideScalar,  5,                          5},
    { 6, SplitLanes,  PF(2, 3),                   PF(2, 3)},
    { 7, SplitLanes,  rader(PF(2, 3), PF(3, 2)),  7},
    { 8, SplitLanes,  T(4, 2),                    T(4, 2)},
    { 9, SplitLanes,  T(3, 3),                    T(3, 3)},
    {16, SplitLanes,  T(4, 4),                    T(4, 4)},
};
// clang-format on

} // namespace

const LengthRecipe *lengthRecipe(int length) {
    for (const LengthRecipe &row : table)
        if (row.length == length)
            return &row;
    return nullptr;
}

} // namespace zrfgen::gen
