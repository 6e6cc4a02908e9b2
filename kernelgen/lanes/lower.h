// Brings lanes where they are wanted by what the target can do.
#pragma once

#include "graph/graph.h"
#include "target/target.h"

namespace zrfgen::gen {

// The same kernel with every load, gather and store replaced by single instructions of the target.
Graph lowered(const Graph &graph, const Target &target);

} // namespace zrfgen::gen
