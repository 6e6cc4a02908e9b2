// Brings lanes where they are wanted by what the target can do: moves of whole vectors and of halves, and
// two-source shuffles.
#pragma once

#include "graph/graph.h"

namespace zrfgen::gen {

// The same kernel with every load and gather replaced by single instructions of a 16-byte target. Transposes
// need no case of their own: their lanes ask for the same unpacked pairs, which the graph shares.
Graph lowered(const Graph &graph);

} // namespace zrfgen::gen
