// Many transforms at once: a kernel of one transform taken apart into single elements, or single complex
// numbers, each of which then stands for those of as many transforms as a vector has room for. Every element
// goes through the operations that it goes through in the kernel itself.
#pragma once

#include "graph/graph.h"
#include "target/target.h"

#include <functional>

namespace zrfgen::gen {

struct LanesAcross {
    // Neighbouring lanes that belong to one transform: 1 for kernels on elements, 2 for those on interleaved
    // complex numbers.
    int groupLanes;
    // How an element of a transform is numbered in the arrays.
    std::function<int(int element, int transform)> number;
};

// The kernel of one direction. Values of a type wider than the arrays' elements take several vectors.
Graph acrossTransforms(const Graph &kernel, Direction direction, Element element, const LanesAcross &layout,
                       const Target &target);

} // namespace zrfgen::gen
