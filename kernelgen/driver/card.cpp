#include "driver/card.h"

#include "graph/evaluate.h"
#include "lanes/count.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

namespace zrfgen::gen {

namespace {

std::string row(const char *name, const std::string &text) {
    char head[32];
    std::snprintf(head, sizeof head, "%-14s ", name);
    return head + text + "\n";
}

std::string number(int count, const char *what) {
    return std::to_string(count) + " " + what;
}

std::string shortest(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.8g", value);
    return text;
}

// The relative root-mean-square error over random inputs: the kernel's own arithmetic against the same graph
// in quad precision.
double predictedError(const KernelDefinition &definition, const Graph &graph) {
    std::mt19937 random(1);
    double error = 0, total = 0;
    for (int round = 0; round < 4; ++round) {
        std::vector<Quad> source;
        for (int i = 0; i < definition.elements; ++i) // 24 bits and a sign: exact in either element type
            source.push_back(static_cast<Quad>(static_cast<std::int32_t>(random()) >> 7) / (1 << 24));
        const auto run = [&](Precision precision) {
            return evaluate(graph, Direction::Forward, precision, source, 1, definition.elements);
        };
        const auto native = run(Precision::Native), exact = run(Precision::Exact);
        for (int i = 0; i < definition.elements; ++i) {
            const double difference = static_cast<double>(native[i] - exact[i]),
                         value = static_cast<double>(exact[i]);
            error += difference * difference;
            total += value * value;
        }
    }
    return total == 0 ? 0 : std::sqrt(error / total); // one that does nothing makes none
}

std::string constants(const Graph &graph) {
    const std::set<double> census = constantCensus(graph);
    std::string text = number(static_cast<int>(census.size()), "distinct");
    const char *separator = ": ";
    for (const double value : census) {
        text += separator + shortest(value);
        separator = " ";
    }
    return text;
}

// The elements of the source that are first combined with one another, where they are taken one by one.
std::string firstPairs(const Graph &graph) {
    std::string text;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        if (node.op != Op::Add || node.type.lanes > 1)
            continue;
        const Node &a = graph[node.operands[0]], &b = graph[node.operands[1]];
        if (a.op == Op::Load && b.op == Op::Load)
            text += (text.empty() ? "(" : " (") + std::to_string(std::min(a.picks[0], b.picks[0])) + ", " +
                    std::to_string(std::max(a.picks[0], b.picks[0])) + ")";
    }
    return text;
}

// How many operations there are on how many elements.
std::string lanes(const Counts &counts) {
    std::string text;
    for (const auto &[lanes, operations] : counts.operationsOfLanes)
        text += text.empty() ? number(operations, "operations on ") +
                                   number(lanes, lanes == 1 ? "element" : "elements")
                             : ", " + number(operations, "on ") + std::to_string(lanes);
    return text;
}

std::string registers(const CompiledKernel &kernel, const Target &target) {
    const Traffic cost = traffic(kernel.graph, kernel.schedule, target.registers);
    return row("registers", number(cost.most, "values live at most, of ") +
                                number(target.registers, "registers: ") + number(cost.spills, "spills, ") +
                                number(cost.reloads, "reloads"));
}

} // namespace

std::string card(const KernelDefinition &definition, const CompiledKernel &kernel, const Target &target) {
    const Counts counts = count(kernel.graph, target);
    std::string names = definition.exports.empty() ? definition.text.type : "";
    for (const std::string &name : definition.exports)
        names += (names.empty() ? "" : ", ") + name;
    std::string text = names + "\n" + row("decomposition", definition.decomposition);
    const std::string pairs = firstPairs(kernel.algebra);
    if (!pairs.empty())
        text += row("first pairs", pairs);
    text += row("arithmetic", number(counts.sums(), "additions (") + number(counts.additions, "add, ") +
                                  number(counts.subtractions, "sub, ") +
                                  number(counts.alternations, "both in turn), ") +
                                  number(counts.multiplications - counts.scalings, "multiplications and ") +
                                  number(counts.scalings, "for the scale"));
    if (counts.conversions > 0)
        text += row("in Float64", number(counts.wideSums, "additions, ") +
                                      number(counts.wideProducts, "multiplications; ") +
                                      number(counts.conversions, "conversions"));
    return text + row("lanes", lanes(counts)) +
           row("other", number(counts.shuffles, "shuffles, ") + number(counts.signFlips, "sign flips")) +
           row("memory", number(counts.loads, "loads, ") + number(counts.stores, "stores")) +
           row("constants", constants(kernel.graph)) + registers(kernel, target) +
           row("error", shortest(predictedError(definition, kernel.graph)) + " relative RMS, predicted");
}

} // namespace zrfgen::gen
