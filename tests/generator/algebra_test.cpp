#include "algebra/dft.h"

#include "algebra/interleaved_complex.h"
#include "algebra/split_complex.h"
#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "dft_reference.h"
#include "graph/count.h"
#include "real/recipes/real_dft.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

// Close to the last bits of quad precision: a wrong algorithm is off by far more.
constexpr double exactness = 1e-30;

void expectTransform(const Graph &graph, int length, const std::string &what) {
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const auto source = randomSource(2 * length);
        const auto result = evaluate(graph, direction, Precision::Exact, source, 1, 2 * length);
        EXPECT_LT(largestDifference(result, dftReference(source, direction)), exactness)
            << what << (direction == Direction::Forward ? " forward" : " inverse");
    }
}

// Vectors of 8 bytes hold two Float32, of 64 bytes sixteen.
TEST(Recipes, GiveTheTransformWithEveryNumberOfLanes) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        for (const int vectorBytes : {8, 16, 32, 64}) {
            const Target target{vectorBytes, {16, 8}};
            expectTransform(complexDft(length, Element::Float32, target), length,
                            std::to_string(length) + " with " + std::to_string(vectorBytes / 4) + " lanes");
        }
        expectTransform(complexDft(length, Element::Float64, sse3), length,
                        std::to_string(length) + " interleaved");
    }
}

TEST(RealRecipes, GiveTheTransforms) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        SCOPED_TRACE(length);
        const auto source = randomSource(length);
        const auto run = [&](const Graph &graph) {
            return evaluate(graph, Direction::Forward, Precision::Exact, source, 1, length);
        };
        for (const Element element : {Element::Float32, Element::Float64}) {
            EXPECT_LT(largestDifference(run(forwardRealDft(length, element)), realDftReference(source)),
                      exactness);
            EXPECT_LT(
                largestDifference(run(inverseRealDft(length, element)), inverseRealDftReference(source)),
                exactness);
            EXPECT_LT(largestDifference(run(hartley(length, element)), hartleyReference(source)), exactness);
        }
    }
}

template <class Model>
void expectDecomposition(Model &model, Graph &graph, const Decomposition &decomposition) {
    const auto x = model.input(decomposition.length);
    model.output(transform(model, decomposition, Columns<Model>{x})[0]);
    expectTransform(graph, decomposition.length, describe(decomposition));
}

// Decompositions nest in any way, in each number model, whatever the number of columns left over in the
// lanes.
TEST(Algebra, ComposesSteps) {
    const Decomposition decompositions[] = {T(2, 2),
                                            PF(5, 3),
                                            T(4, PF(5, 3)),
                                            PF(T(4, 2), 3),
                                            T(T(3, 3), 3),
                                            PF(T(3, 3), 7),
                                            T(T(4, 2), 4),
                                            T(4, T(3, 4)),
                                            T(5, 5),
                                            PF(PF(3, 5), 4),
                                            T(T(4, 2), T(4, 2)),
                                            T(PF(5, 2), 4),
                                            surrounded(2, 7, 2),
                                            surrounded(4, T(3, 3), 2)};
    for (const Decomposition &decomposition : decompositions) {
        for (const int lanes : {1, 2, 4, 8, 16}) {
            Graph graph;
            SplitComplex model(graph, {Element::Float64, lanes}, Products::Narrow, InverseBy::Exchange);
            expectDecomposition(model, graph, decomposition);
        }
        Graph graph;
        InterleavedComplex model(graph, {Element::Float64, 2}, Products::Narrow, InverseBy::Exchange);
        expectDecomposition(model, graph, decomposition);
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
    EXPECT_EQ(count(graph).sums(), 3);
}

TEST(Algebra, DescribesADecompositionInOrderOfExecution) {
    EXPECT_EQ(describe(T(4, PF(3, 2))), "4 > (3 > 2) T");
    EXPECT_EQ(describe(PF(T(4, 4), 3)), "(4 > 4 T) > 3");
    EXPECT_EQ(describe(surrounded(2, 7, 2)), "2 > 7 > 2");
    EXPECT_EQ(describe(splitRadix(T(4, 4), T(4, 2))), "(4 > 4 T) + 2 * (4 > 2 T)");
    EXPECT_EQ(describe(PF(realRader(PF(2, 11), PF(11, 2)), 2)), "Rader(2 > 11, 11 > 2) > 2");
}

} // namespace

} // namespace zrfgen::gen
