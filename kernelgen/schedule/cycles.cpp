#include "schedule/cycles.h"

#include "lanes/count.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

enum Unit { Adder, Multiplier, Shuffler, Logic, Loader, Storer, units };

// A typical processor with vectors of 32 bytes: how many instructions of a kind start in a cycle, and when a
// result is there.
constexpr int unitsOf[units] = {2, 2, 2, 4, 2, 1}, latencies[units] = {3, 3, 1, 1, 7, 1};
constexpr int crossingLatency = 4; // from one group of lanes, as wide as a base vector, to another
constexpr int arithmeticPorts = 4, width = 6, waiting = 96, inFlight = 448;
constexpr int callCycles = 2; // in which nothing else starts
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
    for (const Step &step : schedule) {
        if (step.kind == Step::Kind::Store) {
            const Store &store = graph.stores()[step.index];
            for (int i = moveCount(graph[store.value].type, store.offsets, set); i > 0; --i)
                add(Storer, latencies[Storer], {maker[store.value]});
            continue;
        }
        const Node &node = graph[step.index];
        int &made = maker[step.index];
        std::vector<int> inputs;
        for (const NodeId operand : node.operands)
            inputs.push_back(maker[operand]);
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
        int left[units];
        std::ranges::copy(unitsOf, left);
        int ports = arithmeticPorts;
        std::erase_if(waitingNow, [&](int i) {
            const Instruction &instruction = program[i % length];
            const bool takesPort = instruction.unit != Loader && instruction.unit != Storer;
            const bool isReady = std::ranges::all_of(instruction.inputs, [&](int input) {
                return input == -1 || doneAt[i / length * length + input] <= cycle;
            });
            if (!isReady || left[instruction.unit] == 0 || (takesPort && ports == 0))
                return false;
            --left[instruction.unit];
            ports -= takesPort;
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
