#include "graph/evaluate.h"
#include "lanes/count.h"
#include "lanes/lower.h"
#include "target/sse3_shuffle.h"

#include <gtest/gtest.h>

#include <array>

namespace zrfgen::gen {

namespace {

constexpr Type floats{Element::Float32, 4};

std::vector<NodeId> loadRows(Graph &graph, int rows) {
    std::vector<NodeId> loaded;
    for (int row = 0; row < rows; ++row)
        loaded.push_back(graph.load(floats, {4 * row, 4 * row + 1, 4 * row + 2, 4 * row + 3}));
    return loaded;
}

void expectLowered(const Graph &graph) {
    const Graph machine = lowered(graph, baseTarget());
    for (const NodeId id : liveNodes(machine)) {
        if (machine[id].op == Op::Gather) {
            EXPECT_TRUE(singleShuffle(machine[id]));
        }
    }
    std::vector<Quad> source;
    for (int i = 0; i < 64; ++i)
        source.push_back(i + 1);
    const auto run = [&](const Graph &kernel) {
        return evaluate(kernel, Direction::Forward, Precision::Native, source, 1, 64);
    };
    EXPECT_TRUE(run(graph) == run(machine));
}

// Every gather of four lanes out of up to four vectors comes out right, in at most three instructions.
TEST(Lowering, BringsAnyLanesTogether) {
    for (int code = 0; code < 65536; code += 7) {
        Graph graph;
        const auto rows = loadRows(graph, 4);
        graph.store(graph.gather(rows, {code % 16, code / 16 % 16, code / 256 % 16, code / 4096}),
                    {0, 1, 2, 3});
        expectLowered(graph);
        EXPECT_LE(count(lowered(graph, baseTarget()), baseTarget()).shuffles, 3) << code;
    }
}

TEST(Lowering, TransposesFourRowsInEightShuffles) {
    Graph graph;
    const auto rows = loadRows(graph, 4);
    for (int column = 0; column < 4; ++column)
        graph.store(graph.gather(rows, {column, 4 + column, 8 + column, 12 + column}),
                    {4 * column, 4 * column + 1, 4 * column + 2, 4 * column + 3});
    expectLowered(graph);
    EXPECT_EQ(count(lowered(graph, baseTarget()), baseTarget()).shuffles, 8);
}

// Real parts of complex numbers anywhere in the source: neighbours come by one move, others by halves.
TEST(Lowering, LoadsPartsOfComplexNumbers) {
    const std::array<std::vector<int>, 6> picks = {std::vector{0, 2, 4, 6}, {2, 0, 14, 8},
                                                   {1, 7, 13, 19},          std::vector{5, idle, idle, idle},
                                                   {3, 9, 15, idle},        {4, 5, 6, 7}};
    const int loads[] = {2, 3, 4, 1, 3, 1};
    for (std::size_t i = 0; i < picks.size(); ++i) {
        Graph graph;
        std::vector<int> offsets = {0, 1, 2, 3};
        for (int lane = 0; lane < 4; ++lane)
            if (picks[i][lane] == idle)
                offsets[lane] = idle;
        graph.store(graph.load(floats, picks[i]), offsets);
        expectLowered(graph);
        EXPECT_EQ(count(lowered(graph, baseTarget()), baseTarget()).loads, loads[i]) << i;
    }
}

} // namespace

} // namespace zrfgen::gen
