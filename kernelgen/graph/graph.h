// The kernel as a graph of typed vector operations. Equal nodes are one node, so common subexpressions are
// shared as they are built. No rewriting happens here but the exchange of an addition's or product's
// operands, which changes no bit.
#pragma once

#include "number/element.h"

#include <map>
#include <vector>

namespace zrfgen::gen {

// A vector of lanes, or a scalar where there is one lane.
struct Type {
    Element element;
    int lanes;
    friend auto operator<=>(const Type &, const Type &) = default;
};

constexpr int bytes(Type type) {
    return type.lanes * bytes(type.element);
}

// A vector of twice the width.
constexpr Type twice(Type type) {
    return {type.element, 2 * type.lanes};
}

enum class Direction : std::uint8_t { Forward, Inverse };

enum class Op : std::uint8_t {
    Load,        // lane l is source element picks[l]
    Constant,    // lane l is values[l], rounded once to the element type
    Scale,       // the scale factor of the call in every lane
    Add,         // a + b
    Sub,         // a - b
    Mul,         // a * b
    AddSub,      // a - b in even lanes, a + b in odd ones
    FlipSigns,   // a, negated in the lanes where the constant b is -1
    Widen,       // Float32 to Float64
    Narrow,      // Float64 to Float32
    Gather,      // lane l is lane picks[l] of all operands side by side
    ByDirection, // a in the forward kernel, b in the inverse one
};

// Sums and products.
constexpr bool isArithmetic(Op op) {
    return op == Op::Add || op == Op::Sub || op == Op::Mul || op == Op::AddSub;
}

constexpr bool isCommutative(Op op) {
    return op == Op::Add || op == Op::Mul;
}

using NodeId = int;
inline constexpr NodeId noNode = -1;

// A pick that no one reads: the lane holds anything.
inline constexpr int idle = -1;

struct Node {
    Op op;
    Type type;
    std::vector<NodeId> operands;
    std::vector<int> picks;
    std::vector<Quad> values;
    friend auto operator<=>(const Node &, const Node &) = default;
};

// Lane l of the value goes to destination element offsets[l].
struct Store {
    NodeId value;
    std::vector<int> offsets;
};

class Graph {
public:
    NodeId load(Type type, std::vector<int> elements);
    NodeId constant(Type type, std::vector<Quad> lanes);
    NodeId broadcast(Type type, Quad value);
    NodeId scale(Type type);
    NodeId add(NodeId a, NodeId b);
    NodeId sub(NodeId a, NodeId b);
    NodeId mul(NodeId a, NodeId b);
    NodeId flipSigns(NodeId a, NodeId signs);
    NodeId widen(NodeId a);
    NodeId narrow(NodeId a);
    NodeId gather(std::vector<NodeId> sources, std::vector<int> picks); // a source itself where it fits
    NodeId byDirection(NodeId forward, NodeId inverse);
    void store(NodeId value, std::vector<int> offsets);

    // A node made elsewhere, over operands of this graph.
    NodeId intern(Node node);

    // Where a Gather of these operands takes what its pick says.
    struct Place {
        int operand, lane;
    };
    Place placeOf(const std::vector<NodeId> &operands, int pick) const;

    const Node &operator[](NodeId id) const { return nodes[id]; }
    const std::vector<Store> &stores() const { return storeList; }
    int size() const { return static_cast<int>(nodes.size()); }

private:
    NodeId binary(Op op, NodeId a, NodeId b);

    std::vector<Node> nodes; // operands stand before their users
    std::vector<Store> storeList;
    std::map<Node, NodeId> known;
};

// Constants and the scale factor, which come from memory wherever they are used, or a choice among them.
bool isConstant(const Graph &graph, NodeId id);

// Whether a node stands where its first operand does and costs nothing: the lower half of a vector, or a
// choice by direction.
bool isFree(const Graph &graph, NodeId id);

// The nodes that some store depends on, in the order in which they were built.
std::vector<NodeId> liveNodes(const Graph &graph);

// A copy of the graph in which each live node is what rewrite makes of it: rewrite(copy, node) gets the node
// with its operands already in the copy and returns its replacement there. rewriteStore(copy, store) stores
// there what stands in for the store.
template <class Rewrite, class RewriteStore>
Graph rewritten(const Graph &graph, Rewrite rewrite, RewriteStore rewriteStore) {
    Graph copy;
    std::vector<NodeId> image(graph.size(), noNode);
    for (const NodeId id : liveNodes(graph)) {
        Node node = graph[id];
        for (NodeId &operand : node.operands)
            operand = image[operand];
        image[id] = rewrite(copy, std::move(node));
    }
    for (const Store &store : graph.stores())
        rewriteStore(copy, Store{image[store.value], store.offsets});
    return copy;
}

} // namespace zrfgen::gen
