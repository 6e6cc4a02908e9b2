// The settled way in which a transform is made of smaller ones, as data.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace zrfgen::gen {

// A line of source: where a recipe stands.
struct SourceLine {
    const char *file = "";
    int line = 0;

    static constexpr SourceLine current(const char *file = __builtin_FILE(), int line = __builtin_LINE()) {
        return {file, line};
    }
};

// A recipe that means no transform. The message has the line that it stands in and the part that is wrong.
struct DecompositionError : std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

struct Decomposition {
    enum class Method {
        Butterfly,         // a block: 2 and 4 by additions, odd lengths in the direct cosine-and-sine form
        SumDifference,     // the block of 5 with two products fewer
        ByColumn,          // a block whose first column takes one form and whose others take another
        PrimeFactor,       // two coprime factors, no twiddle between
        PrimeFactorInside, // the same with the second factor run between the two stages of the first
        CooleyTukey,       // two factors, twiddles between
        SplitRadix,        // one half of the length and two quarters, twiddles on the quarters only
        RealLanes,         // any decomposition, taken as a transform of real numbers until the last additions
        RealRader,         // a prime p by a cyclic convolution of length p - 1, with real transforms
        ComplexRader,      // the same with complex transforms, for a whole kernel
        Bluestein,         // an odd length by a convolution of a longer one, with chirps, for a whole kernel
    };
    // How a Cooley-Tukey step multiplies by its twiddles. The forms differ in their last bits.
    enum class Twiddles {
        Shortest, // a vector holds columns of one angle: quarter turns are free, eighths take a sum
        Products, // columns of any angles share a vector: every twiddle is a product, be it 1
        Folded,   // taken into the last additions of the blocks of 4 before them
    };
    Method method;
    int length;
    std::vector<Decomposition> factors; // in the order of execution
    Twiddles twiddles = Twiddles::Shortest;

    // A bare number in a recipe is a butterfly of that length.
    Decomposition(int length, SourceLine line = SourceLine::current());
    // Refuses, with a DecompositionError, what no transform can be made of.
    Decomposition(Method method, int length, std::vector<Decomposition> factors, SourceLine line,
                  Twiddles twiddles = Twiddles::Shortest);

    friend bool operator==(const Decomposition &, const Decomposition &) = default;
};

// The words of a recipe. Factors run in the order in which they stand.
Decomposition sumDifference(int length, SourceLine line = SourceLine::current());
Decomposition byColumn(Decomposition first, Decomposition others, SourceLine line = SourceLine::current());
Decomposition PF(Decomposition first, Decomposition second, SourceLine line = SourceLine::current());
// `outer` is a Cooley-Tukey step.
Decomposition PFinside(Decomposition outer, Decomposition inner, SourceLine line = SourceLine::current());
// Cooley-Tukey steps with the shortest twiddles, with products throughout, and with folded twiddles.
Decomposition T(Decomposition first, Decomposition second, SourceLine line = SourceLine::current());
Decomposition TP(Decomposition first, Decomposition second, SourceLine line = SourceLine::current());
Decomposition TF(Decomposition first, Decomposition second, SourceLine line = SourceLine::current());
// Even elements go through `half`, the two odd classes modulo 4 through `quarter`.
Decomposition splitRadix(Decomposition half, Decomposition quarter, SourceLine line = SourceLine::current());
Decomposition realLanes(Decomposition decomposition, SourceLine line = SourceLine::current());
// Rader's convolution for the prime after the length of the two transforms. A real one goes back through the
// transpose of `back`.
Decomposition realRader(Decomposition there, Decomposition back, SourceLine line = SourceLine::current());
Decomposition realRader(Decomposition both, SourceLine line = SourceLine::current());
Decomposition complexRader(Decomposition there, Decomposition back, SourceLine line = SourceLine::current());
// A transform of the length `longer` goes there and back.
Decomposition bluestein(int length, Decomposition longer, SourceLine line = SourceLine::current());

// A row's decomposition. Refuses, with a DecompositionError, one of another length.
Decomposition ofLength(int length, Decomposition decomposition, SourceLine line);

// The decomposition in the words of a recipe: "T(4, PF(3, 2))".
std::string describe(const Decomposition &decomposition);

// The decomposition that a text in these words means. Refuses others with a DecompositionError.
Decomposition parsedDecomposition(const std::string &text);

} // namespace zrfgen::gen
