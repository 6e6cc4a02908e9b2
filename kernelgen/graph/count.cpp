#include "graph/count.h"

#include <cmath>

namespace zrfgen::gen {

int moves(const std::vector<int> &elements) {
    const int half = static_cast<int>(elements.size()) / 2;
    if (half == 0)
        return 1;
    const bool lower = elements[0] != idle, upper = elements[half] != idle;
    return lower && upper && elements[half] != elements[0] + half ? 2 : 1;
}

namespace {

bool isScale(const Graph &graph, NodeId id) {
    return graph[id].op == Op::Scale || (graph[id].op == Op::Widen && isScale(graph, graph[id].operands[0]));
}

} // namespace

Counts count(const Graph &graph) {
    Counts counts;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        const bool isWide = node.type.element == Element::Float64;
        switch (node.op) {
        case Op::Load:
            counts.loads += moves(node.picks);
            break;
        case Op::Add:
            ++counts.additions;
            counts.wideSums += isWide;
            break;
        case Op::Sub:
            ++counts.subtractions;
            counts.wideSums += isWide;
            break;
        case Op::Mul:
            ++counts.multiplications;
            counts.scalings += isScale(graph, node.operands[0]) || isScale(graph, node.operands[1]);
            counts.wideProducts += isWide;
            break;
        case Op::FlipSigns:
            ++counts.signFlips;
            break;
        case Op::Widen:
        case Op::Narrow:
            ++counts.conversions;
            break;
        case Op::Gather:
            ++counts.shuffles;
            break;
        case Op::Constant:
        case Op::Scale:
        case Op::ByDirection:
            break;
        }
    }
    for (const Store &store : graph.stores())
        counts.stores += moves(store.offsets);
    return counts;
}

std::set<double> constantCensus(const Graph &graph) {
    std::set<double> census;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        if (node.op != Op::Constant)
            continue;
        for (const Quad value : node.values) {
            const double rounded = node.type.element == Element::Float32 ? static_cast<float>(value)
                                                                         : static_cast<double>(value);
            if (rounded != 0 && std::abs(rounded) != 1)
                census.insert(std::abs(rounded));
        }
    }
    return census;
}

} // namespace zrfgen::gen
