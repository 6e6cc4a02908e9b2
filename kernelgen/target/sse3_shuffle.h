// The shuffles of 16-byte vectors that are one instruction.
#pragma once

#include "graph/graph.h"

#include <optional>

namespace zrfgen::gen {

// Two floats lie in the lower half of a vector.
inline bool isHalf(Type type) {
    return type.element == Element::Float32 && type.lanes == 2;
}

struct Shuffle {
    enum class Kind {
        Select,     // the lower half of the lanes from `first`, the upper half from `second`
        UnpackLow,  // the lower halves of both, lane by lane in turn
        UnpackHigh, // the upper halves
    };
    Kind kind;
    int first, second;      // operand indices
    std::vector<int> lanes; // of Select: the lane taken for each result lane
};

// The one instruction that does what a Gather asks of whole vectors, if there is one. An idle lane takes
// anything.
std::optional<Shuffle> singleShuffle(const Node &gather);

// A Gather of vectors of up to 16 bytes as one of the whole vectors in whose lowest lanes they lie.
Node inRegisters(const Graph &graph, const Node &gather);

} // namespace zrfgen::gen
