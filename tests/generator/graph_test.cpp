#include "graph/evaluate.h"
#include "lanes/count.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

constexpr Type floats{Element::Float32, 4}, doubles{Element::Float64, 1};

TEST(Graph, SharesEqualNodesAndKeepsTheOrderOfSubtraction) {
    Graph graph;
    const NodeId a = graph.load(floats, {0, 1, 2, 3}), b = graph.load(floats, {4, 5, 6, 7});
    EXPECT_EQ(graph.add(a, b), graph.add(b, a));
    EXPECT_NE(graph.sub(a, b), graph.sub(b, a));
    EXPECT_EQ(graph.gather({a, b}, {0, 1, idle, 3}), a);
    EXPECT_EQ(graph.byDirection(a, a), a);
}

TEST(Graph, CountsOnlyWhatIsStored) {
    Graph graph;
    const NodeId a = graph.load(floats, {0, 1, 6, 7}), b = graph.load(floats, {4, 5, 6, 7});
    graph.mul(a, b); // dead
    graph.store(graph.sub(graph.add(a, b), b), {0, 1, 2, 3});
    const Counts counts = count(graph, baseTarget());
    EXPECT_EQ(counts.additions, 1);
    EXPECT_EQ(counts.subtractions, 1);
    EXPECT_EQ(counts.multiplications, 0);
    EXPECT_EQ(counts.loads, 3); // two halves and a whole
    EXPECT_EQ(counts.stores, 1);
}

TEST(Evaluate, RoundsEveryNativeOperationOnce) {
    Graph graph;
    const NodeId a = graph.load(doubles, {0}), third = graph.broadcast(doubles, Quad(1) / 3);
    graph.store(graph.mul(graph.add(a, third), graph.scale(doubles)), {0});
    const double x = 0.7, scale = 1 / 7.0;
    const volatile double sum = x + 1 / 3.0;
    const auto native = evaluate(graph, Direction::Forward, Precision::Native, {x}, scale, 1);
    EXPECT_EQ(static_cast<double>(native[0]), sum * scale);
    const auto exact = evaluate(graph, Direction::Forward, Precision::Exact, {x}, scale, 1);
    EXPECT_FALSE(exact[0] == native[0]);
}

} // namespace

} // namespace zrfgen::gen
