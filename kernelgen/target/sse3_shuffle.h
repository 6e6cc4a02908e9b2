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

// The one instruction that does what a Gather node asks, if there is one. An idle lane takes anything.
std::optional<Shuffle> singleShuffle(const Node &gather);

} // namespace zrfgen::gen
