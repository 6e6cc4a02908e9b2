// Which way each length of the real DFT and of the Hartley transform is made.
#pragma once

#include "algebra/decomposition.h"

namespace zrfgen::gen {

struct RealLengthRecipe {
    int length;
    Decomposition forward;
    Decomposition inverse; // as a forward transform: the inverse kernel is its transpose, last stage first
    Decomposition hartley;

    // The same way for all three.
    RealLengthRecipe(int length, Decomposition all) : RealLengthRecipe(length, all, all, all) {}
    RealLengthRecipe(int length, Decomposition forward, Decomposition inverse, Decomposition hartley)
        : length(length), forward(forward), inverse(inverse), hartley(hartley) {}
};

const RealLengthRecipe &realLengthRecipe(int length);

} // namespace zrfgen::gen
