#include "algebra/dft.h"

#include "algebra/interleaved_complex.h"
#include "algebra/split_complex.h"
#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "dft_reference.h"
#include "lanes/count.h"
#include "real/recipes/lengths.h"
#include "real/recipes/real_dft.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numeric>
#include <random>
#include <sstream>

namespace zrfgen::gen {

namespace {

// Close to the last bits of quad precision: a wrong algorithm is off by far more.
constexpr double exactness = 1e-30;

void expectTransform(const Graph &graph, int length, const std::string &what) {
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const auto source = randomSource(2 * length);
        const auto result = evaluate(graph, direction, Precision::Exact, source, 1, 2 * length);
        const char *const family = direction == Direction::Forward ? "DFTFwd_CToC" : "DFTInv_CToC";
        EXPECT_LT(largestDifference(result, defined(family, length, source)), exactness)
            << what << ", " << family;
    }
}

TEST(Recipes, GiveTheTransform) {
    for (int length = shortestLength; length <= longestLength; ++length)
        for (const Element element : {Element::Float32, Element::Float64})
            expectTransform(complexDft(length, element, baseTarget()), length, std::to_string(length));
}

TEST(RealRecipes, GiveTheTransforms) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        SCOPED_TRACE(length);
        const auto source = randomSource(length);
        const auto expectDefined = [&](const Graph &graph, const char *family) {
            const auto result = evaluate(graph, Direction::Forward, Precision::Exact, source, 1, length);
            EXPECT_LT(largestDifference(result, defined(family, length, source)), exactness) << family;
        };
        for (const Element element : {Element::Float32, Element::Float64}) {
            expectDefined(forwardRealDft(length, element), "DFTFwd_RToPack");
            expectDefined(inverseRealDft(length, element), "DFTInv_PackToR");
            expectDefined(hartley(length, element), "Hartley");
        }
    }
}

template <ComplexModel Model>
void expectDecomposition(Model model, const Graph &graph, const Decomposition &decomposition) {
    const auto x = model.input(decomposition.length);
    model.output(transform(model, decomposition, Columns<Model>{x})[0]);
    expectTransform(graph, decomposition.length, describe(decomposition));
}

constexpr Type doubles(int lanes) {
    return {Element::Float64, lanes};
}

// A decomposition of each method that may stand inside others, of pairwise different lengths.
const Decomposition parts[] = {2,
                               4,
                               7,
                               sumDifference(5),
                               byColumn(realRader(PF(5, 2)), 11),
                               PF(5, 3),
                               PFinside(T(2, 2), 3),
                               T(3, 3),
                               TF(4, 2),
                               realLanes(T(2, 3)),
                               realRader(PF(3, 4))};

// Every method inside every other, in each number model, whatever the number of columns left over in the
// lanes.
TEST(Algebra, ComposesEveryMethodWithEveryOther) {
    const auto inComplexLanes = [](const Decomposition &whole, InverseBy inverse) {
        for (const int lanes : {2, 4}) {
            Graph graph;
            expectDecomposition(SplitComplex(graph, doubles(lanes), inverse), graph, whole);
        }
        for (const int lanes : {2, 8})
            for (const Turns turns : {Turns::InConstants, Turns::AfterSums}) {
                Graph graph;
                expectDecomposition(
                    InterleavedComplex(graph, doubles(lanes), Products::Narrow, inverse, turns), graph,
                    whole);
            }
    };
    const auto inRealLanes = [&](const Decomposition &whole) {
        inComplexLanes(realLanes(whole), InverseBy::Exchange);
    };
    for (const Decomposition &part : parts) {
        int coprime = 3;
        while (std::gcd(coprime, part.length) != 1)
            coprime += 2;
        for (const Decomposition &whole : {T(part, 2), TP(3, part), TF(4, part), PF(part, coprime),
                                           PF(coprime, part), PFinside(TP(part, 2), coprime)})
            inComplexLanes(whole, InverseBy::Exchange);
        if (part.length % 2 == 1)
            inComplexLanes(PFinside(T(2, 2), part), InverseBy::Exchange);
        inRealLanes(T(part, 3));
        inRealLanes(PF(part, coprime));
        for (const Decomposition &half : parts)
            if (half.length == 2 * part.length)
                inRealLanes(splitRadix(half, part));
    }
    // Convolutions run one transform there and one back.
    for (const Decomposition &part : {PF(3, 4), TP(3, 4), PFinside(T(2, 2), 3), realLanes(T(4, 3))}) {
        inComplexLanes(complexRader(part, PF(4, 3)), InverseBy::Constants);
        Graph graph;
        expectDecomposition(SplitComplex(graph, doubles(4), InverseBy::Constants), graph, bluestein(5, part));
    }
}

// On zeros and numbers that cancel, periods of them or in turn with their negatives: the sign of a zero tells
// how it came about.
TEST(Algebra, GivesSplitPairsTheBitsOfSplitLanes) {
    const auto sameBits = [](Quad a, Quad b) {
        return a == b && std::signbit(static_cast<double>(a)) == std::signbit(static_cast<double>(b));
    };
    const std::string form = "SplitPairs";
    std::mt19937 random(1);
    for (const KernelDefinition &kernel : complexDftKernels(baseTarget())) {
        if (!kernel.decomposition.starts_with(form))
            continue;
        const Graph pairs = kernel.build(),
                    split = kernel.buildBy("SplitLanes" + kernel.decomposition.substr(form.size()));
        for (int round = 0; round < 3 * kernel.elements; ++round) {
            const int period = 2 + round / 6 * 2;
            if (kernel.elements % period != 0)
                continue;
            std::vector<Quad> source(kernel.elements);
            for (int i = 0; i < kernel.elements; ++i)
                source[i] = i < period ? std::array<Quad, 4>{0, -Quad(0), 1, -1}[random() % (2 + round % 3)]
                                       : (round % 2 == 0 ? 1 : -1) * source[i - period];
            for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
                const auto bits = [&](const Graph &graph) {
                    return evaluate(graph, direction, Precision::Native, source, 1, kernel.elements);
                };
                EXPECT_TRUE(std::ranges::equal(bits(split), bits(pairs), sameBits)) << kernel.decomposition;
            }
        }
    }
}

// -x[0], x[0] - x[1] and its negative in one map: the differences take their signs in, the plain value is
// subtracted from zero.
TEST(Algebra, PutsSignsIntoDifferences) {
    LinearMap map;
    const auto a = map.input(), b = map.input(), difference = map.sum(a, -b);
    map.outputs = {{-a}, {-difference}, {map.sum(difference, b)}};
    const LinearMap settled = map.withSignsInDifferences();

    Graph graph;
    const Type scalar{Element::Float64, 1};
    RealArithmetic real(graph, scalar, Products::Narrow);
    const auto outputs = settled.apply(real, {{graph.load(scalar, {0})}, {graph.load(scalar, {1})}});
    for (int i = 0; i < 3; ++i)
        graph.store(real.scaledByCall(outputs[i]), {i});
    EXPECT_EQ(evaluate(graph, Direction::Forward, Precision::Native, {5, 3}, 2, 3),
              (std::vector<Quad>{-10, -4, 10}));
    EXPECT_EQ(count(graph, baseTarget()).sums(), 3);
}

// The words that describe a decomposition are those of a recipe, and tell all of it.
TEST(Algebra, DescribesADecompositionInTheWordsOfARecipe) {
    EXPECT_EQ(describe(T(4, PF(3, 2))), "T(4, PF(3, 2))");
    EXPECT_EQ(describe(byColumn(realRader(PF(2, 3)), 7)), "byColumn(realRader(PF(2, 3), PF(2, 3)), 7)");
    for (int length = shortestLength; length <= longestLength; ++length)
        for (const Decomposition &row : {lengthRecipe(length).complex32, lengthRecipe(length).complex64,
                                         realLengthRecipe(length).hartley})
            EXPECT_EQ(parsedDecomposition(describe(row)), row) << describe(row);
}

template <class Recipe> std::string refusal(Recipe recipe) {
    try {
        recipe();
    } catch (const DecompositionError &error) {
        return error.what();
    }
    return "accepted";
}

TEST(Algebra, RefusesRecipesThatMeanNoTransform) {
    const int line = __LINE__ + 1;
    const std::string message = refusal([] { return LengthRecipe(8, Form::SplitLanes, PF(2, 4), T(4, 2)); });
    EXPECT_NE(message.find("algebra_test.cpp:" + std::to_string(line) + ": PF(2, 4): the factors"),
              message.npos)
        << message;
    EXPECT_NE(refusal([] {
                  return LengthRecipe(9, Form::SplitLanes, T(4, 2), T(3, 3));
              }).find("is not of length 9"),
              std::string::npos);
    std::istringstream recipes(
        "6;1;sumDifference(7);byColumn(5, 7);byColumn(T(3, 3), 9);PFinside(T(2, 2), 2);"
        "PFinside(PF(2, 3), 5);TF(2, 4);splitRadix(4, 4);realRader(T(2, 4));"
        "complexRader(8, 8);complexRader(PF(2, 3), 4);bluestein(6, T(4, 4));"
        "bluestein(9, T(4, 4));PF(complexRader(PF(5, 2), PF(2, 5)), 2);"
        "T(bluestein(3, 5), 2);PF(5 3);PF(5, 3) 2;rader(4);PF(5, 3;;");
    for (std::string wrong; std::getline(recipes, wrong, ';');)
        EXPECT_NE(refusal([&] { return parsedDecomposition(wrong); }), "accepted") << wrong;
    // Sound, but not in every number model.
    Graph graph;
    const auto run = [&](auto model, const char *text) {
        return refusal([&] { expectDecomposition(model, graph, parsedDecomposition(text)); });
    };
    const SplitComplex split(graph, doubles(4), InverseBy::Exchange);
    const InterleavedComplex interleaved(graph, doubles(4), Products::Narrow, InverseBy::Exchange);
    EXPECT_NE(run(split, "PF(splitRadix(4, 2), 3)"), "accepted");
    EXPECT_NE(run(split, "realLanes(TP(2, 2))"), "accepted");
    EXPECT_NE(run(interleaved, "bluestein(3, 5)"), "accepted");
}

} // namespace

} // namespace zrfgen::gen
