#include "graph/graph.h"

#include <utility>

namespace zrfgen::gen {

NodeId Graph::intern(Node node) {
    const auto [position, isNew] = known.try_emplace(std::move(node), size());
    if (isNew)
        nodes.push_back(position->first);
    return position->second;
}

NodeId Graph::load(Type type, std::vector<int> elements) {
    return intern({Op::Load, type, {}, std::move(elements), {}});
}

NodeId Graph::constant(Type type, std::vector<Quad> lanes) {
    return intern({Op::Constant, type, {}, {}, std::move(lanes)});
}

NodeId Graph::broadcast(Type type, Quad value) {
    return constant(type, std::vector<Quad>(type.lanes, value));
}

NodeId Graph::scale(Type type) {
    return intern({Op::Scale, type, {}, {}, {}});
}

NodeId Graph::binary(Op op, NodeId a, NodeId b) {
    if (op != Op::Sub && a > b)
        std::swap(a, b);
    return intern({op, nodes[a].type, {a, b}, {}, {}});
}

NodeId Graph::add(NodeId a, NodeId b) {
    return binary(Op::Add, a, b);
}

NodeId Graph::sub(NodeId a, NodeId b) {
    return binary(Op::Sub, a, b);
}

NodeId Graph::mul(NodeId a, NodeId b) {
    return binary(Op::Mul, a, b);
}

NodeId Graph::flipSigns(NodeId a, NodeId signs) {
    return intern({Op::FlipSigns, nodes[a].type, {a, signs}, {}, {}});
}

NodeId Graph::widen(NodeId a) {
    return intern({Op::Widen, {Element::Float64, nodes[a].type.lanes}, {a}, {}, {}});
}

NodeId Graph::narrow(NodeId a) {
    return intern({Op::Narrow, {Element::Float32, nodes[a].type.lanes}, {a}, {}, {}});
}

Graph::Place Graph::placeOf(const std::vector<NodeId> &operands, int pick) const {
    int operand = 0;
    while (pick >= nodes[operands[operand]].type.lanes)
        pick -= nodes[operands[operand++]].type.lanes;
    return {operand, pick};
}

NodeId Graph::gather(std::vector<NodeId> sources, std::vector<int> picks) {
    const int lanes = static_cast<int>(picks.size());
    // Number the sources in the order in which the lanes first name them, each once.
    std::vector<NodeId> used;
    int lanesUsed = 0;
    std::map<NodeId, int> firstLane;
    for (int &pick : picks) {
        if (pick == idle)
            continue;
        const Place place = placeOf(sources, pick);
        const NodeId source = sources[place.operand];
        const auto [first, isNew] = firstLane.try_emplace(source, lanesUsed);
        if (isNew) {
            used.push_back(source);
            lanesUsed += nodes[source].type.lanes;
        }
        pick = first->second + place.lane;
    }
    bool isIdentity = nodes[used[0]].type.lanes == lanes;
    for (int lane = 0; lane < lanes; ++lane)
        isIdentity = isIdentity && (picks[lane] == idle || picks[lane] == lane);
    if (isIdentity)
        return used[0];
    return intern({Op::Gather, {nodes[used[0]].type.element, lanes}, std::move(used), std::move(picks), {}});
}

NodeId Graph::byDirection(NodeId forward, NodeId inverse) {
    if (forward == inverse)
        return forward;
    return intern({Op::ByDirection, nodes[forward].type, {forward, inverse}, {}, {}});
}

void Graph::store(NodeId value, std::vector<int> offsets) {
    storeList.push_back({value, std::move(offsets)});
}

bool isConstant(const Graph &graph, NodeId id) {
    const Node &node = graph[id];
    if (node.op == Op::ByDirection)
        return isConstant(graph, node.operands[0]);
    return node.op == Op::Constant || node.op == Op::Scale;
}

bool isFree(const Graph &graph, NodeId id) {
    const Node &node = graph[id];
    if (node.op == Op::ByDirection)
        return true;
    if (node.op != Op::Gather || graph[node.operands[0]].type.lanes <= node.type.lanes)
        return false;
    for (int lane = 0; lane < node.type.lanes; ++lane)
        if (node.picks[lane] != idle && node.picks[lane] != lane)
            return false;
    return true;
}

std::vector<NodeId> liveNodes(const Graph &graph) {
    std::vector<bool> isLive(graph.size());
    for (const Store &store : graph.stores())
        isLive[store.value] = true;
    for (NodeId id = graph.size() - 1; id >= 0; --id)
        if (isLive[id])
            for (const NodeId operand : graph[id].operands)
                isLive[operand] = true;
    std::vector<NodeId> live;
    for (NodeId id = 0; id < graph.size(); ++id)
        if (isLive[id])
            live.push_back(id);
    return live;
}

} // namespace zrfgen::gen
