#include "graph/dump.h"

#include <cstdio>

namespace zrfgen::gen {

namespace {

// In the order of Op.
const char *const names[] = {"load",   "constant", "scale", "add",    "sub",    "mul",
                             "addsub", "flip",     "widen", "narrow", "gather", "by direction"};

std::string list(const std::vector<int> &numbers) {
    std::string text;
    for (const int number : numbers)
        text += number == idle ? " -" : " " + std::to_string(number);
    return text;
}

} // namespace

std::string dumped(const Graph &graph, NodeId id) {
    const Node &node = graph[id];
    std::string text = "v" + std::to_string(id) + " = " + names[static_cast<int>(node.op)] +
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
