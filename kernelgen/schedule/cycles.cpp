#include "schedule/cycles.h"

#include "lanes/count.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

enum Unit { Adder, Multiplier, Shuffler, Logic, Loader, Storer, Renamer, units };

// A typical processor with vectors of 32 bytes: the ports that take instructions of a kind, the first that is
// free, and when a result is there. Copies of registers take none.
const std::vector<int> portsOf[units] = {{3, 2}, {0, 1}, {1, 2}, {0, 1, 2, 3}, {4, 5}, {6}, {}};
constexpr int latencies[units] = {3, 3, 1, 1, 7, 1, 0};
constexpr int crossingLatency = 4; // from one group of lanes, as wide as a base vector, to another
constexpr int ports = 7, width = 6, waiting = 96, inFlight = 448;
constexpr int callCycles = 4; // in which nothing else starts
constexpr int calls = 6, warmUp = 2;

struct Instruction {
    Unit unit;
    int latency;
    std::vector<int> inputs; // instructions of the same call
};

int groupOf(Element element, int lane) {
    return lane / baseTarget().vector(element).lanes;
}

bool crosses(const Graph &graph, const Node &gather) {
    for (int lane = 0; lane < gather.type.lanes; ++lane) {
        if (gather.picks[lane] == idle)
            continue;
        const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
        if (groupOf(gather.type.element, place.lane) != groupOf(gather.type.element, lane))
            return true;
    }
    return false;
}

std::vector<Instruction> instructionsOf(const Graph &graph, const Schedule &schedule, const Target &target) {
    std::vector<Instruction> instructions;
    std::vector<int> maker(graph.size(), -1); // -1 where nothing need be waited for
    const auto add = [&](Unit unit, int latency, std::vector<int> inputs) {
        instructions.push_back({unit, latency, std::move(inputs)});
        return static_cast<int>(instructions.size()) - 1;
    };
    const InstructionSet &set = target.instructions();
    std::vector<int> usesLeft(graph.size());
    for (const Step &step : schedule)
        if (step.kind == Step::Kind::Compute)
            for (const NodeId operand : graph[step.index].operands)
                ++usesLeft[operand];
        else
            ++usesLeft[graph.stores()[step.index].value];
    for (const Step &step : schedule) {
        if (step.kind == Step::Kind::Store) {
            const Store &store = graph.stores()[step.index];
            for (int i = moveCount(graph[store.value].type, store.offsets, set); i > 0; --i)
                add(Storer, latencies[Storer], {maker[store.value]});
            --usesLeft[store.value];
            continue;
        }
        const Node &node = graph[step.index];
        int &made = maker[step.index];
        std::vector<int> inputs;
        for (const NodeId operand : node.operands)
            inputs.push_back(maker[operand]);
        // A result takes the place of a source that no one else wants, or of a copy.
        bool needsCopy = !target.hasThreeOperands;
        for (std::size_t i = 0; i < node.operands.size(); ++i)
            if (--usesLeft[node.operands[i]] == 0 && (i == 0 || isCommutative(node.op)))
                needsCopy = false;
        if (isFree(graph, step.index))
            made = inputs[0];
        else if (node.op == Op::Load) {
            made = add(Loader, latencies[Loader], {});
            for (int i = moveCount(node.type, node.picks, set); i > 1; --i)
                made = add(Shuffler, latencies[Shuffler], {made, add(Loader, latencies[Loader], {})});
        } else {
            const Unit unit = node.op == Op::Mul         ? Multiplier
                              : node.op == Op::Gather    ? Shuffler
                              : node.op == Op::FlipSigns ? Logic
                                                         : Adder;
            if (needsCopy)
                add(Renamer, latencies[Renamer], {});
            const bool isSlow = unit == Shuffler && crosses(graph, node);
            made = add(unit, isSlow ? crossingLatency : latencies[unit], std::move(inputs));
        }
    }
    return instructions;
}

} // namespace

double cycles(const Graph &graph, const Schedule &schedule, const Target &target) {
    const std::vector<Instruction> program = instructionsOf(graph, schedule, target);
    const int length = static_cast<int>(program.size()), end = calls * length;
    constexpr int never = INT32_MAX;
    std::vector<int> doneAt(end, never), waitingNow;
    int next = 0, retired = 0, pause = 0, start = 0;
    for (int cycle = 0;; ++cycle) {
        bool isTaken[ports] = {};
        std::erase_if(waitingNow, [&](int i) {
            const Instruction &instruction = program[i % length];
            const bool isReady = std::ranges::all_of(instruction.inputs, [&](int input) {
                return input == -1 || doneAt[i / length * length + input] <= cycle;
            });
            const auto &usable = portsOf[instruction.unit];
            const auto port = std::ranges::find_if(usable, [&](int port) { return !isTaken[port]; });
            if (!isReady || (port == usable.end() && !usable.empty()))
                return false;
            if (!usable.empty())
                isTaken[*port] = true;
            doneAt[i] = cycle + instruction.latency;
            return true;
        });
        while (retired < end && doneAt[retired] <= cycle)
            if (++retired == warmUp * length)
                start = cycle;
        if (retired == end)
            return static_cast<double>(cycle - start) / (calls - warmUp);
        if (pause > 0) {
            --pause;
            continue;
        }
        for (int i = 0; i < width && pause == 0 && next < end && next - retired < inFlight &&
                        static_cast<int>(waitingNow.size()) < waiting;
             ++i) {
            waitingNow.push_back(next++);
            if (next % length == 0)
                pause = callCycles;
        }
    }
}

} // namespace zrfgen::gen
