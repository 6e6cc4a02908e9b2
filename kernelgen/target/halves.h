// Vectors that an instruction moves whole, or as two halves from anywhere: those of 32 bytes and more.
#pragma once

#include "target/instruction_set.h"
#include "target/sse3_shuffle.h"

#include <optional>
#include <vector>

namespace zrfgen::gen {

// A load or store of such a vector by what moves so, and by changes of the order of units of 8 bytes; where
// that does not do, each half by itself, as the instructions for narrower vectors have it.
NodeId loadedByHalves(Graph &graph, const Node &load, const InstructionSet &narrower);
void storeByHalves(Graph &graph, const Store &store, const InstructionSet &narrower);

std::vector<Move> movesOfHalves(Type type, const std::vector<int> &elements);

// One half of a vector, and two halves in a vector of twice their width.
NodeId halfOf(Graph &graph, NodeId value, int half);
NodeId joined(Graph &graph, NodeId lower, NodeId upper);

// The half of an operand; of one of half the width, all of it.
struct HalfSource {
    int operand = 0, half = 0;
};
// Where a gather takes its halves of `lanes` lanes, if it takes whole ones in order. An idle lane takes
// anything.
std::optional<std::vector<HalfSource>> wholeHalves(const Graph &graph, const Node &gather, int lanes);

// The shuffle of 16-byte vectors that a gather does in each 16 bytes of its operands, if that is all it does.
std::optional<Shuffle> shuffleInGroups(const Graph &graph, const Node &gather);

} // namespace zrfgen::gen
