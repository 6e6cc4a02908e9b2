#include "schedule/schedule.h"

#include <algorithm>
#include <map>
#include <set>

namespace zrfgen::gen {

namespace {

// Work is what stands in the order by itself; loads, shuffles and choices by direction come just before the
// first work that needs them.
bool isWork(const Graph &graph, NodeId id) {
    const Op op = graph[id].op;
    return op != Op::Load && op != Op::Gather && op != Op::ByDirection && !isConstant(graph, id);
}

// Builds an order by placing nodes with all that they need before them. Stores follow as soon as their value
// is there and nothing is left to load.
class Placement {
public:
    explicit Placement(const Graph &graph) : graph(graph), isPlaced(graph.size()), usesLeft(graph.size()) {
        for (const NodeId id : liveNodes(graph)) {
            loadsLeft += graph[id].op == Op::Load;
            for (const NodeId operand : graph[id].operands)
                ++usesLeft[operand];
        }
        for (int i = 0; i < static_cast<int>(graph.stores().size()); ++i)
            storesOf[graph.stores()[i].value].push_back(i);
    }

    bool needsNoWork(NodeId id) const {
        for (const NodeId operand : graph[id].operands)
            if (!isPlaced[operand] && !isConstant(graph, operand) &&
                (isWork(graph, operand) || !needsNoWork(operand)))
                return false;
        return true;
    }

    // How many more values wait for their use once the node is placed.
    int growth(NodeId id) const {
        int values = storesOf.contains(id) ? 0 : 1;
        for (const NodeId operand : graph[id].operands) {
            if (isConstant(graph, operand))
                continue;
            if (!isPlaced[operand])
                values += growth(operand);
            values -= usesLeft[operand] == 1;
        }
        return values;
    }

    void place(NodeId id) {
        if (isPlaced[id] || isConstant(graph, id))
            return;
        isPlaced[id] = true;
        for (const NodeId operand : graph[id].operands) {
            place(operand);
            --usesLeft[operand];
        }
        schedule.push_back({Step::Kind::Compute, id});
        loadsLeft -= graph[id].op == Op::Load;
        const auto stores = storesOf.find(id);
        if (stores != storesOf.end())
            waiting.insert(waiting.end(), stores->second.begin(), stores->second.end());
        if (loadsLeft == 0) {
            for (const int store : waiting)
                schedule.push_back({Step::Kind::Store, store});
            waiting.clear();
        }
    }

    Schedule schedule;

private:
    const Graph &graph;
    std::vector<bool> isPlaced;
    std::vector<int> usesLeft;
    std::map<NodeId, std::vector<int>> storesOf;
    std::vector<int> waiting;
    int loadsLeft = 0;
};

// In the order in which the algebra built it, but of the next `window` pieces of work always the one after
// which the fewest values wait. A window of one is the order of the algebra itself.
Schedule inOrderOfCreation(const Graph &graph, std::size_t window) {
    Placement placement(graph);
    std::set<NodeId> stored; // in its place too, be it work or not
    for (const Store &store : graph.stores())
        stored.insert(store.value);
    std::vector<NodeId> work;
    for (const NodeId id : liveNodes(graph))
        if (isWork(graph, id) || stored.contains(id))
            work.push_back(id);
    while (!work.empty()) {
        auto best = work.begin();
        int leastGrowth = placement.growth(*best);
        for (auto next = best; next != work.begin() + std::min(window, work.size()); ++next) {
            if (!placement.needsNoWork(*next))
                continue;
            const int growth = placement.growth(*next);
            if (growth < leastGrowth) {
                best = next;
                leastGrowth = growth;
            }
        }
        placement.place(*best);
        work.erase(best);
    }
    return placement.schedule;
}

// Output by output, each with what it still needs.
Schedule inOrderOfStores(const Graph &graph) {
    Placement placement(graph);
    for (const Store &store : graph.stores())
        placement.place(store.value);
    return placement.schedule;
}

// The node whose register an operand occupies.
NodeId registerOf(const Graph &graph, NodeId id) {
    while (isFree(graph, id))
        id = graph[id].operands[0];
    return id;
}

} // namespace

Schedule scheduled(const Graph &graph, const Target &target) {
    std::vector<Schedule> candidates{inOrderOfStores(graph)};
    for (const std::size_t window : {1, 4, 8, 16, 32, 64, 128, 256, 512, 4096})
        candidates.push_back(inOrderOfCreation(graph, window));
    // Those that do best, and of these the one that would with fewer registers.
    for (const int registers : {target.registers, target.registers / 2}) {
        std::vector<int> costs;
        for (const Schedule &schedule : candidates)
            costs.push_back(traffic(graph, schedule, registers).total());
        const int least = std::ranges::min(costs);
        std::vector<Schedule> best;
        for (std::size_t i = 0; i < costs.size(); ++i)
            if (costs[i] == least)
                best.push_back(std::move(candidates[i]));
        candidates = std::move(best);
        if (candidates.size() == 1)
            break;
    }
    return candidates[0];
}

OrderedGraph ordered(Graph graph, const Target &target) {
    Schedule schedule = scheduled(graph, target);
    return {std::move(graph), std::move(schedule)};
}

Traffic traffic(const Graph &graph, const Schedule &schedule, int registers) {
    // The values that each step uses, in order and each once, and the steps at which each value is used, the
    // next one last.
    std::vector<std::vector<NodeId>> operands(schedule.size());
    std::vector<std::vector<int>> uses(graph.size());
    for (int i = static_cast<int>(schedule.size()) - 1; i >= 0; --i) {
        const Step &step = schedule[i];
        std::vector<NodeId> &values = operands[i];
        if (step.kind == Step::Kind::Store)
            values.push_back(registerOf(graph, graph.stores()[step.index].value));
        else if (!isFree(graph, step.index))
            for (const NodeId operand : graph[step.index].operands)
                if (!isConstant(graph, operand))
                    values.push_back(registerOf(graph, operand));
        std::ranges::sort(values);
        values.erase(std::unique(values.begin(), values.end()), values.end());
        for (const NodeId value : values)
            uses[value].push_back(i);
    }

    Traffic result;
    int live = 0;
    std::vector<bool> isInMemory(graph.size());
    std::vector<NodeId> inRegister; // in order
    const auto isIn = [](const std::vector<NodeId> &values, NodeId value) {
        return std::ranges::binary_search(values, value);
    };
    const auto take = [&](NodeId value, const std::vector<NodeId> &needed) {
        while (static_cast<int>(inRegister.size()) >= registers) {
            auto victim = inRegister.end();
            for (auto place = inRegister.begin(); place != inRegister.end(); ++place)
                if (!isIn(needed, *place) &&
                    (victim == inRegister.end() || uses[*place].back() > uses[*victim].back()))
                    victim = place;
            result.spills += !isInMemory[*victim];
            isInMemory[*victim] = true;
            inRegister.erase(victim);
        }
        inRegister.insert(std::ranges::lower_bound(inRegister, value), value);
    };
    for (std::size_t i = 0; i < schedule.size(); ++i) {
        for (const NodeId value : operands[i]) {
            if (!isIn(inRegister, value)) {
                take(value, operands[i]);
                ++result.reloads;
            }
        }
        for (const NodeId value : operands[i]) {
            uses[value].pop_back();
            if (uses[value].empty()) {
                inRegister.erase(std::ranges::lower_bound(inRegister, value));
                --live;
            }
        }
        const Step &step = schedule[i];
        // A value that only the inverse direction uses may have no use here.
        if (step.kind == Step::Kind::Compute && !isFree(graph, step.index) && !uses[step.index].empty()) {
            take(step.index, {});
            result.most = std::max(result.most, ++live);
        }
    }
    return result;
}

} // namespace zrfgen::gen
