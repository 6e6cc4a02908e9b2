// The order of a kernel's operations. The compiler keeps the order of the text by and large, so few values
// must be live at any point of it.
#pragma once

#include "graph/graph.h"
#include "target/target.h"

namespace zrfgen::gen {

// An operation in its place: a node, or a store of the graph.
struct Step {
    enum class Kind { Compute, Store } kind;
    int index;
};
using Schedule = std::vector<Step>; // constants have no place in it

// The best of a few orders, by the traffic on the target's registers. Every load stands before the first
// store, so that source and destination may overlap.
Schedule scheduled(const Graph &graph, const Target &target);

struct OrderedGraph {
    Graph graph;
    Schedule schedule;
};
OrderedGraph ordered(Graph graph, const Target &target);

// What an order costs beyond the caller's arrays when evictions are optimal (L. A. Belady, 1966).
struct Traffic {
    int spills = 0, reloads = 0;
    int most = 0; // values live at once

    int total() const { return spills + reloads; }
};
Traffic traffic(const Graph &graph, const Schedule &schedule, int registers);

} // namespace zrfgen::gen
