#include "lanes/count.h"

#include <cmath>

namespace zrfgen::gen {

namespace {

bool isScale(const Graph &graph, NodeId id) {
    return graph[id].op == Op::Scale || (graph[id].op == Op::Widen && isScale(graph, graph[id].operands[0]));
}

} // namespace

int moveCount(Type type, const std::vector<int> &elements, const InstructionSet &instructions) {
    return type.lanes == 1 ? 1 : static_cast<int>(instructions.moves(type, elements).size());
}

Counts count(const Graph &graph, const Target &target) {
    const InstructionSet &instructions = target.instructions();
    Counts counts;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        const bool isWide = node.type.element == Element::Float64;
        if (isArithmetic(node.op))
            ++counts.operationsOfLanes[node.type.lanes];
        switch (node.op) {
        case Op::Load:
            counts.loads += moveCount(node.type, node.picks, instructions);
            break;
        case Op::Add:
            ++counts.additions;
            counts.wideSums += isWide;
            break;
        case Op::Sub:
            ++counts.subtractions;
            counts.wideSums += isWide;
            break;
        case Op::AddSub:
            ++counts.alternations;
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
            counts.shuffles += !isFree(graph, id);
            break;
        case Op::Constant:
        case Op::Scale:
        case Op::ByDirection:
            break;
        }
    }
    for (const Store &store : graph.stores())
        counts.stores += moveCount(graph[store.value].type, store.offsets, instructions);
    return counts;
}

std::set<double> constantCensus(const Graph &graph) {
    std::set<double> census;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        if (node.op != Op::Constant)
            continue;
        for (const Quad value : node.values) {
            const double magnitude = std::abs(static_cast<double>(rounded(value, node.type.element)));
            if (magnitude != 0 && magnitude != 1)
                census.insert(magnitude);
        }
    }
    return census;
}

} // namespace zrfgen::gen
