#include "schedule/schedule.h"

#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "lanes/lower.h"

#include <gtest/gtest.h>

#include <set>

namespace zrfgen::gen {

namespace {

// Operands before users, loads before stores, everything once.
TEST(Schedule, IsACompleteOrderThatReadsBeforeItWrites) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        for (const Element element : {Element::Float32, Element::Float64}) {
            const Graph graph = lowered(complexDft(length, element, baseTarget()), baseTarget());
            std::set<NodeId> computed;
            std::set<int> stored;
            for (const Step &step : scheduled(graph, baseTarget())) {
                if (step.kind == Step::Kind::Store) {
                    EXPECT_TRUE(computed.contains(graph.stores()[step.index].value));
                    EXPECT_TRUE(stored.insert(step.index).second);
                    continue;
                }
                EXPECT_TRUE(computed.insert(step.index).second);
                EXPECT_FALSE(graph[step.index].op == Op::Load && !stored.empty()) << length;
                for (const NodeId operand : graph[step.index].operands)
                    EXPECT_TRUE(isConstant(graph, operand) || computed.contains(operand));
            }
            EXPECT_EQ(stored.size(), graph.stores().size());
        }
    }
}

// Three values read before any is used: with two registers the third drives one of the first two out, and
// must itself make room when these two meet.
TEST(Traffic, CountsWhatTheRegistersCannotHold) {
    Graph graph;
    Schedule schedule;
    const auto step = [&](NodeId id) { schedule.push_back({Step::Kind::Compute, id}); };
    std::vector<NodeId> values;
    for (int i = 0; i < 3; ++i) {
        values.push_back(graph.load({Element::Float32, 1}, {i}));
        step(values.back());
    }
    const NodeId sum = graph.add(values[0], values[1]), total = graph.add(sum, values[2]);
    step(sum);
    step(total);
    graph.store(total, {0});
    schedule.push_back({Step::Kind::Store, 0});
    EXPECT_EQ(traffic(graph, schedule, 3).total(), 0);
    EXPECT_EQ(traffic(graph, schedule, 3).most, 3);
    EXPECT_EQ(traffic(graph, schedule, 2).spills, 2);
    EXPECT_EQ(traffic(graph, schedule, 2).reloads, 2);
}

} // namespace

} // namespace zrfgen::gen
