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
    Twiddles twiddles = Twiddles::Shortest;
    std::vector<Decomposition> factors = {}; // in the order of execution
    int length;

    // A bare number in a recipe is a butterfly of that length.
    Decomposition(int length, SourceLine line = SourceLine::current());
    // Refuses, with a DecompositionError, factors that no transform can be made of.
    Decomposition(Method method, Twiddles twiddles, std::vector<Decomposition> factors, SourceLine line);

    friend bool operator==(const Decomposition &, const Decomposition &) = default;
};

// A word of recipes, which makes a decomposition of others.
struct RecipeWord {
    const char *text;
    Decomposition::Method method;
    Decomposition::Twiddles twiddles = Decomposition::Twiddles::Shortest;

    Decomposition operator()(Decomposition only, SourceLine line = SourceLine::current()) const {
        return {method, twiddles, {only}, line};
    }
    Decomposition operator()(Decomposition first, Decomposition second,
                             SourceLine line = SourceLine::current()) const {
        return {method, twiddles, {first, second}, line};
    }
};

inline constexpr RecipeWord PF{"PF", Decomposition::Method::PrimeFactor};
// Of a Cooley-Tukey step and what runs inside it.
inline constexpr RecipeWord PFinside{"PFinside", Decomposition::Method::PrimeFactorInside};
inline constexpr RecipeWord T{"T", Decomposition::Method::CooleyTukey};
inline constexpr RecipeWord TP{"TP", Decomposition::Method::CooleyTukey, Decomposition::Twiddles::Products};
inline constexpr RecipeWord TF{"TF", Decomposition::Method::CooleyTukey, Decomposition::Twiddles::Folded};
// Of the half, which takes the even elements, and the quarter, which takes the odd classes modulo 4.
inline constexpr RecipeWord splitRadix{"splitRadix", Decomposition::Method::SplitRadix};
inline constexpr RecipeWord realLanes{"realLanes", Decomposition::Method::RealLanes};
// Of the transforms there and back. A real one goes back through the transpose.
inline constexpr RecipeWord realRader{"realRader", Decomposition::Method::RealRader};
inline constexpr RecipeWord complexRader{"complexRader", Decomposition::Method::ComplexRader};
// Of a block, whose length it takes, and the longer transform that goes there and back.
inline constexpr RecipeWord bluestein{"bluestein", Decomposition::Method::Bluestein};
// Of blocks: in another form, and in one form for the first column and in another for the others.
inline constexpr RecipeWord sumDifference{"sumDifference", Decomposition::Method::SumDifference};
inline constexpr RecipeWord byColumn{"byColumn", Decomposition::Method::ByColumn};

// A row's decomposition. Refuses, with a DecompositionError, one of another length.
Decomposition ofLength(int length, Decomposition decomposition, SourceLine line = {});

// The decomposition in the words of a recipe: "T(4, PF(3, 2))".
std::string describe(const Decomposition &decomposition);

// The decomposition that a text in these words means. Refuses others with a DecompositionError.
Decomposition parsedDecomposition(const std::string &text);

} // namespace zrfgen::gen
