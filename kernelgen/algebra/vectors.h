// Whole vectors of consecutive elements.
#pragma once

#include "graph/graph.h"

namespace zrfgen::gen {

std::vector<int> consecutive(int first, int count);

// Vector i of an array.
NodeId loadVector(Graph &graph, Type type, int i);
void storeVector(Graph &graph, NodeId value, int i);

// As many vectors as they have lanes: lane l of vector j becomes lane j of vector l.
std::vector<NodeId> transposed(Graph &graph, const std::vector<NodeId> &vectors);

// The same, of numbers that have as many lanes as the vectors' width leaves them. They change places in
// groups of 16 bytes first, as instructions do, and then whole groups.
std::vector<NodeId> transposedByGroups(Graph &graph, std::vector<NodeId> vectors);

// Vectors of several such squares side by side.
std::vector<NodeId> transposedInGroups(Graph &graph, std::vector<NodeId> vectors);

NodeId reversed(Graph &graph, NodeId value);

} // namespace zrfgen::gen
