#include "algebra/dft.h"

#include "algebra/interleaved_complex.h"
#include "algebra/split_complex.h"
#include "dft_reference.h"
#include "recipes/complex_dft.h"
#include "recipes/lengths.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

// Close to the last bits of quad precision: a wrong algorithm is off by far more.
constexpr double exactness = 1e-30;

void expectTransform(const Graph &graph, int length, const std::string &what) {
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const auto source = randomSource(length);
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

TEST(Algebra, DescribesADecompositionInOrderOfExecution) {
    EXPECT_EQ(describe(T(4, PF(3, 2))), "4 > (3 > 2) T");
    EXPECT_EQ(describe(PF(T(4, 4), 3)), "(4 > 4 T) > 3");
    EXPECT_EQ(describe(surrounded(2, 7, 2)), "2 > 7 > 2");
}

} // namespace

} // namespace zrfgen::gen
