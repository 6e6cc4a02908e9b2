#include "schedule/schedule.h"

#include <algorithm>
#include <map>
#include <set>

namespace zrfgen::gen {

bool isConstant(const Graph &graph, NodeId id) {
    const Node &node = graph[id];
    if (node.op == Op::ByDirection)
        return isConstant(graph, node.operands[0]);
    return node.op == Op::Constant || node.op == Op::Scale;
}

namespace {

// Builds an order by placing nodes with all that they need before them. Loads and shuffles so come just
// before their first use, stores as soon as their value is there and nothing is left to load.
class Placement {
public:
    explicit Placement(const Graph &graph) : graph(graph), isPlaced(graph.size()) {
        for (const NodeId id : liveNodes(graph))
            loadsLeft += graph[id].op == Op::Load;
        for (int i = 0; i < static_cast<int>(graph.stores().size()); ++i)
            storesOf[graph.stores()[i].value].push_back(i);
    }

    void place(NodeId id) {
        if (isPlaced[id] || isConstant(graph, id))
            return;
        isPlaced[id] = true;
        for (const NodeId operand : graph[id].operands)
            place(operand);
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
    std::map<NodeId, std::vector<int>> storesOf;
    std::vector<int> waiting;
    int loadsLeft = 0;
};

// Stage by stage, as the algebra built it.
Schedule inOrderOfCreation(const Graph &graph) {
    Placement placement(graph);
    for (const NodeId id : liveNodes(graph)) {
        const Op op = graph[id].op;
        if (op != Op::Load && op != Op::Gather && op != Op::ByDirection)
            placement.place(id);
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

// The nodes whose registers an operand occupies; choosing by direction costs nothing.
NodeId registerOf(const Graph &graph, NodeId id) {
    while (graph[id].op == Op::ByDirection)
        id = graph[id].operands[0];
    return id;
}

} // namespace

Schedule scheduled(const Graph &graph, const Target &target) {
    const Schedule candidates[] = {inOrderOfCreation(graph), inOrderOfStores(graph)};
    const auto cost = [&](const Schedule &schedule) {
        return std::pair{traffic(graph, schedule, target.registers[0]).total(),
                         traffic(graph, schedule, target.registers[1]).total()};
    };
    return *std::min_element(std::begin(candidates), std::end(candidates),
                             [&](const Schedule &a, const Schedule &b) { return cost(a) < cost(b); });
}

Traffic traffic(const Graph &graph, const Schedule &schedule, int registers) {
    const auto operands = [&](const Step &step) {
        std::set<NodeId> values;
        if (step.kind == Step::Kind::Store)
            values.insert(registerOf(graph, graph.stores()[step.index].value));
        else if (graph[step.index].op != Op::ByDirection)
            for (const NodeId operand : graph[step.index].operands)
                if (!isConstant(graph, operand))
                    values.insert(registerOf(graph, operand));
        return values;
    };
    // The steps at which each value is used, the next one last.
    std::map<NodeId, std::vector<int>> uses;
    for (int i = static_cast<int>(schedule.size()) - 1; i >= 0; --i)
        for (const NodeId value : operands(schedule[i]))
            uses[value].push_back(i);

    Traffic result;
    std::set<NodeId> inRegister, inMemory, live;
    const auto makeRoom = [&](const std::set<NodeId> &needed) {
        while (static_cast<int>(inRegister.size()) >= registers) {
            NodeId victim = noNode;
            for (const NodeId value : inRegister)
                if (!needed.contains(value) && (victim == noNode || uses[value].back() > uses[victim].back()))
                    victim = value;
            inRegister.erase(victim);
            if (inMemory.insert(victim).second)
                ++result.spills;
        }
    };
    for (const Step &step : schedule) {
        const std::set<NodeId> needed = operands(step);
        for (const NodeId value : needed) {
            if (!inRegister.contains(value)) {
                makeRoom(needed);
                inRegister.insert(value);
                ++result.reloads;
            }
        }
        for (const NodeId value : needed) {
            uses[value].pop_back();
            if (uses[value].empty()) {
                inRegister.erase(value);
                live.erase(value);
            }
        }
        if (step.kind == Step::Kind::Compute && graph[step.index].op != Op::ByDirection) {
            makeRoom({});
            inRegister.insert(step.index);
            live.insert(step.index);
            result.most = std::max(result.most, static_cast<int>(live.size()));
        }
    }
    return result;
}

} // namespace zrfgen::gen
