// The graph run on numbers, so that a kernel is proven right before any C++ is written.
#pragma once

#include "graph/graph.h"

namespace zrfgen::gen {

enum class Precision {
    Native, // every node rounded to its element type: bit for bit what the compiled kernel computes
    Exact,  // quad precision throughout, constants unrounded: what the algorithm computes
};

// Runs the graph on a source of real elements with the given scale factor. The result has destinationElements
// entries; those that no store writes stay 0.
std::vector<Quad> evaluate(const Graph &graph, Direction direction, Precision precision,
                           const std::vector<Quad> &source, Quad scale, int destinationElements);

} // namespace zrfgen::gen
