// The settled way in which a transform is made of smaller ones, as data.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zrfgen::gen {

struct Decomposition {
    enum class Method {
        Butterfly,       // a block: 2 and 4 by additions, odd lengths in the direct cosine-and-sine form
        SumDifference,   // the block of 5 with two products fewer
        FirstThenOthers, // a block whose first column takes one form and whose others take another
        PrimeFactor,     // two coprime factors, no twiddle between
        CooleyTukey,     // two factors, twiddles between
        SplitRadix,      // one half of the length and two quarters, twiddles on the quarters only
        Surrounded,      // a step of the two outer factors with a coprime one run between their stages
        RealLanes,       // any decomposition, taken as a transform of real numbers until the last additions
        ComplexRader,    // a prime p by a cyclic convolution of length p - 1, with complex transforms
        RealRader,       // the same with real transforms
        Bluestein,       // any length by a convolution of a longer one, with chirps
    };
    Method method;
    int length;
    std::vector<Decomposition> factors; // in the order of execution

    // A bare number in a recipe is a butterfly of that length.
    Decomposition(int length) : method(Method::Butterfly), length(length) {}
    Decomposition(Method method, int length, std::vector<Decomposition> factors)
        : method(method), length(length), factors(std::move(factors)) {}
};

Decomposition sumDifference5();
Decomposition firstThenOthers(Decomposition first, Decomposition others);
// Prime-factor step: `first` runs first.
Decomposition PF(Decomposition first, Decomposition second);
// Prime-factor step of `inner` and T(first, last), the stages in the order of the arguments.
Decomposition surrounded(Decomposition first, Decomposition inner, Decomposition last);
// Cooley-Tukey step.
Decomposition T(Decomposition first, Decomposition second);
// Split-radix step: even elements through `half`, the two odd classes modulo 4 through `quarter`.
Decomposition splitRadix(Decomposition half, Decomposition quarter);
Decomposition realLanes(Decomposition decomposition);
// Rader's convolution for the prime after the length of the two transforms. A real one goes back through the
// transpose of `back`.
Decomposition complexRader(Decomposition there, Decomposition back);
Decomposition realRader(Decomposition there, Decomposition back);
Decomposition bluestein(int length, Decomposition there, Decomposition back);

// "4 > (3 > 2) T": stages in the order of execution, T where twiddles stand between two factors. "16 + 2 *
// 8": a split-radix step.
std::string describe(const Decomposition &decomposition);

} // namespace zrfgen::gen
