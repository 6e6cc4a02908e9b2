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
    RealLengthRecipe(int length, Decomposition all, SourceLine line = SourceLine::current())
        : RealLengthRecipe(length, all, all, all, line) {}
    RealLengthRecipe(int length, Decomposition forward, Decomposition inverse, Decomposition hartley,
                     SourceLine line = SourceLine::current())
        : length(length), forward(ofLength(length, forward, line)), inverse(ofLength(length, inverse, line)),
          hartley(ofLength(length, hartley, line)) {}
};

const RealLengthRecipe &realLengthRecipe(int length);

} // namespace zrfgen::gen
