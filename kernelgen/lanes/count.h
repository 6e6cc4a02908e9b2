// What a kernel costs, in instructions on one path of one call.
#pragma once

#include "graph/graph.h"
#include "target/target.h"

#include <map>
#include <set>

namespace zrfgen::gen {

struct Counts {
    int additions = 0, subtractions = 0, alternations = 0; // these do both in turn
    int multiplications = 0;                               // the scale step included
    int scalings = 0;                                      // the multiplications of the scale step
    int wideSums = 0, wideProducts = 0;                    // those of all these in Float64
    int signFlips = 0, conversions = 0, shuffles = 0;
    int loads = 0, stores = 0;            // of the caller's arrays
    std::map<int, int> operationsOfLanes; // sums and products, by how many elements they compute

    int sums() const { return additions + subtractions + alternations; }
};

// The instructions that move these elements of an array to or from a vector, or a number.
int moveCount(Type type, const std::vector<int> &elements, const InstructionSet &instructions);

// The graph must have been lowered to the target's own shuffles and moves.
Counts count(const Graph &graph, const Target &target);

// The distinct absolute values among the constants, 0 and 1 left out, as rounded to their element type.
std::set<double> constantCensus(const Graph &graph);

} // namespace zrfgen::gen
