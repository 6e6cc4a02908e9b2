#include "pairing/widen.h"

#include "lanes/lower.h"
#include "pairing/pairing.h"
#include "pairing/search.h"
#include "schedule/cycles.h"

#include <numeric>

namespace zrfgen::gen {

namespace {

// Several short searches find more than one long one. One that fears shuffles less may find more pairs, and
// one that fears them more shorter ways from the source to the destination. The model of the machine says
// what is fastest.
constexpr int shuffleCosts[] = {2, 3}, seeds[] = {1, 2};
// The part of the time that vectors must come down to, to be taken. Elements in vectors take more shuffles
// and copies of registers than the model sees.
constexpr double leastGain = 0.95, leastGainOfElements = 0.8;

// Writes a graph again with the pairs of a choice in vectors of twice the width.
class Widening {
public:
    Widening(const Graph &graph, const Pairing &pairing)
        : graph(graph), pairing(pairing), image(graph.size(), noNode) {}

    Graph result() {
        for (const NodeId id : pairing.operations())
            build(id);
        for (const Store &store : graph.stores()) {
            const NodeId mate = pairing.mate(store.value);
            const Store *other = mate == noNode ? nullptr : onlyStoreOf(mate);
            if (other == nullptr || onlyStoreOf(store.value) == nullptr)
                copy.store(narrow(store.value), store.offsets);
            else if (pairing.isLower(store.value))
                copy.store(image[store.value], sideBySide(store.offsets, other->offsets));
        }
        return std::move(copy);
    }

private:
    // The store of a value, if there is just one.
    const Store *onlyStoreOf(NodeId value) const {
        const Store *only = nullptr;
        for (const Store &store : graph.stores())
            if (store.value == value) {
                if (only != nullptr)
                    return nullptr;
                only = &store;
            }
        return only;
    }

    // An operation's own vector, or the one that it shares, which is the image of the lower one.
    void build(NodeId id) {
        const NodeId a = pairing.isLower(id) ? id : pairing.mate(id), b = pairing.mate(a);
        if (image[a] != noNode)
            return;
        for (const NodeId node : {a, b})
            if (node != noNode)
                for (const NodeId operand : graph[node].operands)
                    if (graph[operand].op != Op::Load && !pairing.isConstant(operand))
                        build(operand);
        Node node = graph[a];
        if (b == noNode) {
            for (NodeId &operand : node.operands)
                operand = narrow(operand);
        } else {
            for (std::size_t slot = 0; slot < node.operands.size(); ++slot) {
                const auto [x, y] = pairing.operands(a, b, static_cast<int>(slot), pairing.isExchanged(a));
                node.operands[slot] = wide(x, y);
            }
            if (node.op != graph[b].op)
                node.op = Op::AddSub;
            node.type = twice(node.type);
            node.picks = sideBySide(picksIn(graph[a], 0), picksIn(graph[a], 1));
        }
        if (isCommutative(node.op) && node.operands[0] > node.operands[1])
            std::swap(node.operands[0], node.operands[1]);
        image[a] = copy.intern(std::move(node));
    }

    // The picks of a gather where its operands stand in one half of vectors of twice their width.
    std::vector<int> picksIn(const Node &gather, int half) const {
        std::vector<int> picks = gather.picks;
        for (int &pick : picks) {
            if (pick == idle)
                continue;
            const Graph::Place place = graph.placeOf(gather.operands, pick);
            // Operands before this one take twice as many lanes.
            pick = 2 * (pick - place.lane) + half * graph[gather.operands[place.operand]].type.lanes +
                   place.lane;
        }
        return picks;
    }

    // The value in a vector of its own.
    NodeId narrow(NodeId id) {
        const Node &node = graph[id];
        if (pairing.isConstant(id)) {
            Node constant = node;
            for (NodeId &operand : constant.operands)
                operand = narrow(operand);
            return copy.intern(std::move(constant));
        }
        if (node.op == Op::Load)
            return copy.intern(node);
        const NodeId mate = pairing.mate(id);
        if (mate == noNode)
            return image[id];
        std::vector<int> picks(node.type.lanes);
        std::iota(picks.begin(), picks.end(), pairing.isLower(id) ? 0 : node.type.lanes);
        return copy.gather({image[pairing.isLower(id) ? id : mate]}, picks);
    }

    // Both values in one vector.
    NodeId wide(NodeId x, NodeId y) {
        const Node &a = graph[x], &b = graph[y];
        if (pairing.isConstant(x) && pairing.isConstant(y))
            return wideConstant(x, y);
        if (pairing.mate(x) == y && pairing.isLower(x))
            return image[x];
        if (a.op == Op::Load && b.op == Op::Load)
            return copy.load(twice(a.type), sideBySide(a.picks, b.picks));
        std::vector<NodeId> sources;
        std::vector<int> picks;
        int lanes = 0;
        for (const NodeId id : {x, y}) {
            const bool isPaired = !pairing.isConstant(id) && pairing.mate(id) != noNode;
            const NodeId source = isPaired ? image[pairing.isLower(id) ? id : pairing.mate(id)] : narrow(id);
            for (int lane = 0; lane < a.type.lanes; ++lane)
                picks.push_back(lanes + lane + (pairing.isLower(id) ? 0 : a.type.lanes));
            sources.push_back(source);
            lanes += copy[source].type.lanes;
        }
        return copy.gather(std::move(sources), std::move(picks));
    }

    NodeId wideConstant(NodeId x, NodeId y) {
        const Node &a = graph[x], &b = graph[y];
        if (a.op == Op::ByDirection || b.op == Op::ByDirection) {
            const auto side = [&](NodeId id, int i) {
                return graph[id].op == Op::ByDirection ? graph[id].operands[i] : id;
            };
            const NodeId forward = wideConstant(side(x, 0), side(y, 0));
            return copy.byDirection(forward, wideConstant(side(x, 1), side(y, 1)));
        }
        if (a.op == Op::Scale)
            return copy.scale(twice(a.type));
        return copy.constant(twice(a.type), sideBySide(a.values, b.values));
    }

    const Graph &graph;
    const Pairing &pairing;
    std::vector<NodeId> image;
    Graph copy;
};

// What a call takes: its cycles, and the traffic between registers and memory, four moves to a cycle.
double timeOf(const OrderedGraph &kernel, const Target &target) {
    return cycles(kernel.graph, kernel.schedule, target) +
           0.25 * traffic(kernel.graph, kernel.schedule, target.registers).total();
}

// Puts the kernel into vectors of up to `bytes` if that is faster, and tells whether it was.
bool widen(OrderedGraph &kernel, int bytes, const Target &target) {
    const Graph narrow = kernel.graph;
    if (!Pairing(narrow, target.instructions(), bytes, shuffleCosts[0]).isPossible())
        return false;
    double leastTime =
        timeOf(kernel, target) * (bytes == baseTarget().vectorBytes ? leastGainOfElements : leastGain);
    bool isFaster = false;
    for (const int shuffleCost : shuffleCosts)
        for (const int seed : seeds) {
            Pairing pairing(narrow, target.instructions(), bytes, shuffleCost);
            search(pairing, seed);
            OrderedGraph wide = ordered(lowered(Widening(narrow, pairing).result(), target), target);
            const double time = timeOf(wide, target);
            if (time < leastTime) {
                leastTime = time;
                kernel = std::move(wide);
                isFaster = true;
            }
        }
    return isFaster;
}

} // namespace

OrderedGraph inVectors(const Graph &algebra, const Target &target) {
    OrderedGraph kernel = ordered(lowered(algebra, target), target);
    int bytes = baseTarget().vectorBytes;
    if (target.packsScalars)
        widen(kernel, bytes, target);
    do
        bytes *= 2;
    while (bytes <= target.vectorBytes && widen(kernel, bytes, target));
    return kernel;
}

} // namespace zrfgen::gen
