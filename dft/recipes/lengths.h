// Which way each length of the complex DFT is made, per element type.
#pragma once

#include "algebra/decomposition.h"

#include <zrfgen/transforms.h>

namespace zrfgen::gen {

// How a Complex32 kernel holds its values.
enum class Form {
    WidePair, // one number at a time, parts side by side, with the products in Float64 to hold the error down
    SplitLanes,  // four columns of a stage in the lanes, real and imaginary parts apart
    PairedLanes, // two columns of a stage in a vector, parts side by side: nothing to sort on reading and
                 // writing
    SplitPairs,  // PairedLanes with the sums of SplitLanes, and so with their bits
};

// "SplitLanes", and the form of that name. Throws std::invalid_argument if there is none.
const char *name(Form form);
Form formNamed(const std::string &text);

struct LengthRecipe {
    int length;
    Form form;
    Decomposition complex32;
    Decomposition complex64;

    LengthRecipe(int length, Form form, Decomposition complex32, Decomposition complex64,
                 SourceLine line = SourceLine::current())
        : length(length), form(form), complex32(ofLength(length, complex32, line)),
          complex64(ofLength(length, complex64, line)) {}
};

inline constexpr int shortestLength = zrfShortestLength, longestLength = zrfLongestLength;

const LengthRecipe &lengthRecipe(int length);

} // namespace zrfgen::gen
