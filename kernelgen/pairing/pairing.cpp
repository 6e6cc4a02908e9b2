#include "pairing/pairing.h"

#include "lanes/count.h"
#include "target/target.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace zrfgen::gen {

namespace {

constexpr int operationCost = 2, conversionCost = 4; // a move costs half an operation

std::uint64_t key(NodeId x, NodeId y) {
    return static_cast<std::uint64_t>(x) << 32 | static_cast<std::uint32_t>(y);
}

bool isConversion(Op op) {
    return op == Op::Widen || op == Op::Narrow;
}

bool isElement(const Node &node) {
    return node.type.lanes == 1;
}

} // namespace

Pairing::Pairing(const Graph &graph, const InstructionSet &instructions, int widest, int shuffleCost)
    : graph(graph), instructions(instructions), shuffleCost(shuffleCost), mates(graph.size(), noNode),
      lower(graph.size(), true), exchanged(graph.size()), constant(graph.size()), classOf(graph.size()),
      levels(graph.size()), narrowUses(graph.size()), storeOf(graph.size(), -1), classes(1),
      usersOf(graph.size()), requestCounts(graph.size() * graph.size()) {
    for (int i = 0; i < static_cast<int>(graph.stores().size()); ++i)
        storeOf[graph.stores()[i].value] = i;
    // Operations are alike whose operands are alike: vectors of one width, the scale factor, or a number.
    std::map<std::tuple<Op, Type, std::vector<int>, std::vector<int>>, int> known;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        constant[id] = zrfgen::gen::isConstant(graph, id);
        if (constant[id])
            continue;
        std::vector<int> kinds;
        for (const NodeId operand : node.operands) {
            usersOf[operand].push_back(id);
            levels[id] = std::max(levels[id], levels[operand] + 1);
            const int kind = !constant[operand] ? 0 : graph[operand].op == Op::Scale ? 1 : 2;
            kinds.push_back(3 * graph[operand].type.lanes + kind);
        }
        if (node.op == Op::Load)
            continue;
        allOperations.push_back(id);
        if (!fits(node, widest))
            continue;
        Op op = node.op;
        if (isCommutative(op))
            std::ranges::sort(kinds);
        else if (op == Op::Sub && isElement(node) && kinds[0] == kinds[1])
            op = Op::Add; // one instruction does both
        const auto [place, isNew] =
            known.try_emplace({op, node.type, node.picks, kinds}, static_cast<int>(classes.size()));
        if (isNew)
            classes.emplace_back();
        classes[place->second].push_back(id);
        classOf[id] = place->second;
    }
    for (const NodeId id : allOperations) {
        total += costOfOperation(id);
        useOperands(id, 1);
    }
    for (const NodeId id : liveNodes(graph))
        total += storeCost(id);
}

// Elements go side by side in base vectors, those in all others.
bool Pairing::fits(const Node &node, int widest) const {
    if (isElement(node) != (widest == baseTarget().vectorBytes) || (isElement(node) && node.op == Op::Gather))
        return false;
    // A conversion moves between vectors of two widths.
    const Type type = twice(isConversion(node.op) ? Type{Element::Float64, node.type.lanes} : node.type);
    return bytes(type) <= widest && (node.op != Op::AddSub || instructions.hasAddSub(type));
}

bool Pairing::isPossible() const {
    return std::ranges::any_of(classes, [](const auto &alike) { return alike.size() > 1; });
}

int Pairing::costOfOperation(NodeId node) const {
    const Op op = graph[node].op;
    return op == Op::ByDirection ? 0
           : op == Op::Gather    ? shuffleCost
           : isConversion(op)    ? conversionCost
                                 : operationCost;
}

std::pair<NodeId, NodeId> Pairing::operands(NodeId a, NodeId b, int slot, bool isExchanged) const {
    return {graph[a].operands[slot], graph[b].operands[isExchanged ? 1 - slot : slot]};
}

// A move, or an instruction beside it that brings lanes where they are wanted.
int Pairing::costOf(const Graph &lowered) const {
    int cost = 0;
    for (NodeId id = 0; id < lowered.size(); ++id) {
        const Node &node = lowered[id];
        if (node.op == Op::Load) { // each move but the first also joins what it reads to the vector
            const int moves = moveCount(node.type, node.picks, instructions);
            cost += moves + shuffleCost * (moves - 1);
        } else if (node.op == Op::Gather)
            cost += isFree(lowered, id) ? 0 : shuffleCost;
    }
    for (const Store &store : lowered.stores()) {
        const int moves = moveCount(lowered[store.value].type, store.offsets, instructions);
        cost += moves + shuffleCost * (moves - 1);
    }
    return cost;
}

int Pairing::loadCost(Type type, const std::vector<int> &elements) const {
    Graph load;
    if (type.lanes == 1)
        load.load(type, elements);
    else
        instructions.loweredLoad(load, {Op::Load, type, {}, elements, {}});
    return costOf(load);
}

int Pairing::storeCost(Type type, const std::vector<int> &offsets) const {
    Graph store;
    const NodeId value = store.scale(type);
    if (type.lanes == 1)
        store.store(value, offsets);
    else
        instructions.lowerStore(store, {value, offsets});
    return costOf(store);
}

// What loads or stores of a value, or of two in one vector, cost.
int Pairing::loadCost(NodeId x, NodeId y) const {
    const auto [known, isNew] = loadCosts.try_emplace(key(x, y));
    if (isNew) {
        const Node &a = graph[x];
        known->second = y == noNode ? loadCost(a.type, a.picks)
                                    : loadCost(twice(a.type), sideBySide(a.picks, graph[y].picks));
    }
    return known->second;
}

int Pairing::storeCost(NodeId x, NodeId y) const {
    const auto [known, isNew] = storeCosts.try_emplace(key(x, y));
    if (isNew) {
        const Type type = graph[x].type;
        const auto &offsets = graph.stores()[storeOf[x]].offsets;
        known->second = y == noNode
                            ? storeCost(type, offsets)
                            : storeCost(twice(type), sideBySide(offsets, graph.stores()[storeOf[y]].offsets));
    }
    return known->second;
}

int Pairing::requestCost(NodeId x, NodeId y) const {
    if (mates[x] == y && lower[x])
        return 0;
    const Node &a = graph[x], &b = graph[y];
    if (a.op == Op::Load && b.op == Op::Load)
        return loadCost(x, y);
    return shuffleCost;
}

int Pairing::narrowCost(NodeId node) const {
    if (graph[node].op == Op::Load)
        return loadCost(node, noNode);
    return lower[node] ? 0 : shuffleCost;
}

// The store of a value by itself, or with its mate's.
int Pairing::storeCost(NodeId node) const {
    if (storeOf[node] == -1)
        return 0;
    const NodeId mate = mates[node];
    if (mate != noNode && storeOf[mate] != -1)
        return lower[node] ? storeCost(node, mate) : 0;
    return storeCost(node, noNode) + (lower[node] ? 0 : shuffleCost);
}

void Pairing::request(NodeId x, NodeId y, int change) {
    if (constant[x] && constant[y])
        return;
    int &count = requests(x, y);
    if (count == 0)
        total += requestCost(x, y);
    count += change;
    if (count == 0)
        total -= requestCost(x, y);
}

bool Pairing::isWanted(NodeId x, NodeId y) const {
    return requestCounts[x * graph.size() + y] > 0;
}

void Pairing::useNarrow(NodeId node, int change) {
    if (constant[node])
        return;
    int &count = narrowUses[node];
    if (count == 0)
        total += narrowCost(node);
    count += change;
    if (count == 0)
        total -= narrowCost(node);
}

void Pairing::useOperands(NodeId node, int change) {
    for (const NodeId operand : graph[node].operands)
        useNarrow(operand, change);
}

void Pairing::requestOperands(NodeId a, NodeId b, bool isExchanged, int change) {
    for (int slot = 0; slot < slots(a); ++slot) {
        const auto [x, y] = operands(a, b, slot, isExchanged);
        request(x, y, change);
    }
}

bool Pairing::prefersExchange(NodeId a, NodeId b) const {
    if (!isCommutative(graph[b].op))
        return false;
    int costs[2] = {};
    for (const bool isExchanged : {false, true})
        for (const int slot : {0, 1}) {
            const auto [x, y] = operands(a, b, slot, isExchanged);
            if (constant[x] != constant[y])
                costs[isExchanged] += 1000; // a number and a value make no vector
            else if (!constant[x])
                costs[isExchanged] += (isWanted(x, y) ? 0 : 4 * requestCost(x, y)) + (areAlike(x, y) ? 0 : 1);
        }
    return costs[1] < costs[0];
}

// The part of the cost that changes when the two become a pair, their operands left out.
int Pairing::costOfState(NodeId a, NodeId b) const {
    int cost = 0;
    for (const NodeId node : {a, b})
        cost += storeCost(node) + (narrowUses[node] > 0 ? narrowCost(node) : 0);
    return cost + (isWanted(a, b) ? requestCost(a, b) : 0);
}

void Pairing::link(NodeId a, NodeId b, bool isExchanged) {
    total -= costOfState(a, b) + costOfOperation(a);
    useOperands(a, -1);
    useOperands(b, -1);
    mates[a] = b;
    mates[b] = a;
    lower[b] = false;
    exchanged[a] = isExchanged;
    requestOperands(a, b, isExchanged, 1);
    total += costOfState(a, b);
}

void Pairing::unlink(NodeId a) {
    const NodeId b = mates[a];
    total -= costOfState(a, b);
    requestOperands(a, b, exchanged[a], -1);
    mates[a] = mates[b] = noNode;
    lower[b] = true;
    useOperands(a, 1);
    useOperands(b, 1);
    total += costOfState(a, b) + costOfOperation(a);
}

// Brings both to one level and their users above it. False if one of the users is one of them.
bool Pairing::raise(NodeId a, NodeId b) {
    const int level = std::max(levels[a], levels[b]);
    std::vector<NodeId> raised;
    const auto lift = [&](NodeId node, int to) {
        for (const NodeId one : {node, mates[node]})
            if (one != noNode && levels[one] < to) {
                log.push_back({Change::Kind::Level, one, levels[one], false});
                levels[one] = to;
                raised.push_back(one);
            }
    };
    lift(a, level);
    lift(b, level);
    while (!raised.empty()) {
        const NodeId node = raised.back();
        raised.pop_back();
        for (const NodeId user : usersOf[node]) {
            if (levels[user] > levels[node])
                continue;
            if (user == a || user == b || mates[user] == a || mates[user] == b)
                return false;
            lift(user, levels[node] + 1);
        }
    }
    return true;
}

void Pairing::part(NodeId node) {
    if (mates[node] == noNode)
        return;
    const NodeId a = lower[node] ? node : mates[node];
    log.push_back({Change::Kind::Parted, a, mates[a], static_cast<bool>(exchanged[a])});
    unlink(a);
}

bool Pairing::join(NodeId a, NodeId b) {
    if (graph[a].op == Op::Add && graph[b].op == Op::Sub)
        return false; // the lower lane subtracts
    part(a);
    part(b);
    // A pair's level is that of both, so a user of one at the other's level waits for it.
    mates[a] = b;
    mates[b] = a;
    const bool isOrdered = raise(a, b);
    mates[a] = mates[b] = noNode;
    if (!isOrdered)
        return false;
    const bool isExchanged = prefersExchange(a, b);
    link(a, b, isExchanged);
    log.push_back({Change::Kind::Joined, a, b, isExchanged});
    return true;
}

void Pairing::goBack(std::size_t mark) {
    while (log.size() > mark) {
        const Change change = log.back();
        log.pop_back();
        if (change.kind == Change::Kind::Joined)
            unlink(change.a);
        else if (change.kind == Change::Kind::Parted)
            link(change.a, change.b, change.isExchanged);
        else
            levels[change.a] = change.b;
    }
}

} // namespace zrfgen::gen
