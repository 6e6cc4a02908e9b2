// The butterfly graph of the Walsh-Hadamard transform over vectors of consecutive elements.
#pragma once

#include "graph/graph.h"

#include <vector>

namespace zrfgen::gen {

// Replaces (a, c) by (a + c, a - c) for each pair of elements that differ in one index bit, bit by bit from
// the lowest up. Vector i holds elements lanes * i and on. Bits that lie within the vectors need as many
// vectors as there are lanes, or a multiple.
void walshHadamardStages(Graph &graph, std::vector<NodeId> &vectors);

// The same over whole rows: each vector is a row's, and no stage works inside of one.
void stagesBetweenVectors(Graph &graph, std::vector<NodeId> &rows);

} // namespace zrfgen::gen
