// Whole vectors of consecutive elements.
#pragma once

#include "graph/graph.h"

namespace zrfgen::gen {

std::vector<int> consecutive(int first, int count);

// Vector i of an array.
NodeId loadVector(Graph &graph, Type type, int i);
void storeVector(Graph &graph, NodeId value, int i);

// As many vectors as they have lanes, or as a group of lanes has: lane l of vector j becomes lane j of vector
// l, in each group. Every shuffle is of two vectors, which have been transposed in units of so many lanes.
std::vector<NodeId> transposed(Graph &graph, const std::vector<NodeId> &vectors, int unit = 1);

// The same of numbers, which have as many lanes as make the vectors a square of them. They change places in
// groups of 16 bytes first, as instructions do, and then whole groups.
std::vector<NodeId> transposedByGroups(Graph &graph, std::vector<NodeId> vectors);

NodeId reversed(Graph &graph, NodeId value);

} // namespace zrfgen::gen
