// Which operations of a graph go side by side in vectors of twice the width (superword-level parallelism,
// S. Larsen and S. Amarasinghe, 2000, on whole vectors), and what that costs.
#pragma once

#include "graph/graph.h"
#include "target/instruction_set.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zrfgen::gen {

// What two vectors have for each lane, in one of twice the width.
template <class Item> std::vector<Item> sideBySide(std::vector<Item> lower, const std::vector<Item> &upper) {
    lower.insert(lower.end(), upper.begin(), upper.end());
    return lower;
}

// A choice of pairs over a graph in single instructions. All that a pair must respect is checked: equal
// shape, and that no pair waits for itself. The cost is kept up with every change.
//
// A wide operation takes its operands in pairs. One that stands so in a vector costs nothing; for any other,
// two halves of any vectors are brought together by one shuffle, which all operations that want it share.
// Narrow operations read lower halves where they are, and upper ones after one extraction.
class Pairing {
public:
    // For vectors of up to `widest` bytes; a shuffle costs as much as `shuffleCost` halves of an operation.
    Pairing(const Graph &graph, const InstructionSet &instructions, int widest, int shuffleCost);

    // Whether any two operations could stand side by side.
    bool isPossible() const;
    // In halves of an operation.
    int cost() const { return total; }
    int nodes() const { return graph.size(); }
    const std::vector<NodeId> &operations() const { return allOperations; }
    NodeId mate(NodeId node) const { return mates[node]; }
    bool isLower(NodeId node) const { return lower[node]; }
    // Whether the operands of a pair's upper operation stand in the other order.
    bool isExchanged(NodeId lowerNode) const { return exchanged[lowerNode]; }
    // Of equal shape: the same operation with lanes in the same places, or two elements' difference and sum.
    bool areAlike(NodeId a, NodeId b) const { return classOf[a] != 0 && classOf[a] == classOf[b]; }
    // All that are, the node itself included; none if it fits no wider vector.
    const std::vector<NodeId> &alike(NodeId node) const { return classes[classOf[node]]; }
    const std::vector<NodeId> &users(NodeId node) const { return usersOf[node]; }
    // The operands that stand in place `slot` of a pair.
    std::pair<NodeId, NodeId> operands(NodeId a, NodeId b, int slot, bool isExchanged) const;
    int slots(NodeId node) const { return static_cast<int>(graph[node].operands.size()); }
    bool isConstant(NodeId node) const { return constant[node]; }

    // Parts both from their mates and joins them, `a` in the lower half. False, and nothing is changed but
    // for the parting, if one waits for the other or they cannot stand in this order.
    bool join(NodeId a, NodeId b);
    void part(NodeId node);

    // Positions in the log of changes, to which a trial can go back.
    std::size_t mark() const { return log.size(); }
    void goBack(std::size_t mark);
    void forget() { log.clear(); }

private:
    struct Change {
        enum class Kind { Joined, Parted, Level } kind;
        NodeId a, b;
        bool isExchanged;
    };

    bool fits(const Node &node, int widest) const;
    void link(NodeId a, NodeId b, bool isExchanged);
    void unlink(NodeId a);
    int costOfState(NodeId a, NodeId b) const;
    bool raise(NodeId a, NodeId b);
    int costOfOperation(NodeId node) const;
    int requestCost(NodeId x, NodeId y) const;
    int narrowCost(NodeId node) const;
    void request(NodeId x, NodeId y, int change);
    bool isWanted(NodeId x, NodeId y) const;
    void useNarrow(NodeId node, int change);
    void useOperands(NodeId node, int change);
    void requestOperands(NodeId a, NodeId b, bool isExchanged, int change);
    bool prefersExchange(NodeId a, NodeId b) const;
    int storeCost(NodeId node) const;

    int loadCost(NodeId x, NodeId y) const;
    int loadCost(Type type, const std::vector<int> &elements) const;
    int storeCost(NodeId x, NodeId y) const;
    int storeCost(Type type, const std::vector<int> &offsets) const;
    int &requests(NodeId x, NodeId y) { return requestCounts[x * graph.size() + y]; }
    int costOf(const Graph &lowered) const;

    const Graph &graph;
    const InstructionSet &instructions;
    const int shuffleCost;
    std::vector<NodeId> allOperations, mates;
    std::vector<char> lower, exchanged, constant;
    // A node's level is above those of its operands, and both of a pair have one.
    std::vector<int> classOf, levels, narrowUses, storeOf;
    std::vector<std::vector<NodeId>> classes, usersOf; // the first class is that of none
    std::vector<int> requestCounts;                    // how many pairs want two values in one vector
    // Of a value by itself, beside no node, or of two in one vector.
    mutable std::unordered_map<std::uint64_t, int> loadCosts, storeCosts;
    std::vector<Change> log;
    int total = 0;
};

} // namespace zrfgen::gen
