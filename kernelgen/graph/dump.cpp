#include "graph/dump.h"

#include <cstdio>

namespace zrfgen::gen {

namespace {

const char *name(Op op) {
    switch (op) {
    case Op::Load:
        return "load";
    case Op::Constant:
        return "constant";
    case Op::Scale:
        return "scale";
    case Op::Add:
        return "add";
    case Op::Sub:
        return "sub";
    case Op::Mul:
        return "mul";
    case Op::FlipSigns:
        return "flip";
    case Op::Widen:
        return "widen";
    case Op::Narrow:
        return "narrow";
    case Op::Gather:
        return "gather";
    case Op::ByDirection:
        return "by direction";
    }
    return "";
}

std::string list(const std::vector<int> &numbers) {
    std::string text;
    for (const int number : numbers)
        text += number == idle ? " -" : " " + std::to_string(number);
    return text;
}

} // namespace

std::string dumped(const Graph &graph, NodeId id) {
    const Node &node = graph[id];
    std::string text = "v" + std::to_string(id) + " = " + name(node.op) +
                       (node.type.element == Element::Float32 ? " F32x" : " F64x") +
                       std::to_string(node.type.lanes);
    for (const NodeId operand : node.operands)
        text += " v" + std::to_string(operand);
    if (!node.picks.empty())
        text += " [" + list(node.picks) + " ]";
    for (const Quad value : node.values) {
        char number[32];
        std::snprintf(number, sizeof number, " %.17g", static_cast<double>(value));
        text += number;
    }
    return text + "\n";
}

std::string dumped(const Store &store) {
    return "store v" + std::to_string(store.value) + " ->" + list(store.offsets) + "\n";
}

std::string dumped(const Graph &graph) {
    std::string text;
    for (const NodeId id : liveNodes(graph))
        text += dumped(graph, id);
    for (const Store &store : graph.stores())
        text += dumped(store);
    return text;
}

} // namespace zrfgen::gen
