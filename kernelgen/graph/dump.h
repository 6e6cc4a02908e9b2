// The graph as text, a line per node.
#pragma once

#include "graph/graph.h"

#include <string>

namespace zrfgen::gen {

// "v12 = add F32x4 v3 v7"
std::string dumped(const Graph &graph, NodeId id);
// "store v12 -> 0 1 2 3"
std::string dumped(const Store &store);
// All that the stores depend on, then the stores.
std::string dumped(const Graph &graph);

} // namespace zrfgen::gen
