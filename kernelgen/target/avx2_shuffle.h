// The shuffles with 32-byte vectors that are one instruction.
#pragma once

#include "target/halves.h"

#include <array>
#include <optional>
#include <variant>

namespace zrfgen::gen {

// The units of 8 bytes of one vector in another order.
struct UnitOrder {
    std::array<int, 4> units;
};

// One half in a vector of its own, or two side by side; the same shuffle in both; an order of units.
using WideShuffle = std::variant<std::vector<HalfSource>, Shuffle, UnitOrder>;

// The one instruction that does what a Gather asks, if there is one. An idle lane takes anything.
std::optional<WideShuffle> wideShuffle(const Graph &graph, const Node &gather);

} // namespace zrfgen::gen
