// What a target's vector instructions do, and the text for them. Scalars are no affair of it.
#pragma once

#include "graph/graph.h"

#include <string>
#include <vector>

namespace zrfgen::gen {

// Neighbouring elements of an array that one instruction moves, and the first of the lanes where they stand.
struct Move {
    int lane, lanes, element;
};

// A move with the text of its address. Its access is a constant of the text: whether the array is aligned.
struct MoveText {
    Move move;
    std::string address, access;
};

class InstructionSet {
public:
    virtual ~InstructionSet() = default;

    // A load or a gather by nodes of which each is one instruction, or one for each of its moves.
    virtual NodeId loweredLoad(Graph &graph, const Node &load) const = 0;
    virtual NodeId loweredGather(Graph &graph, const Node &gather) const = 0;
    // Stores the same by such stores.
    virtual void lowerStore(Graph &graph, const Store &store) const = 0;

    // The moves between lanes and the elements of an array that such a load or a store takes.
    virtual std::vector<Move> moves(Type type, const std::vector<int> &elements) const = 0;
    // Whether a move gains by an array that starts on a boundary of vectors.
    virtual bool isAligned(Type type, const Move &move) const = 0;
    // Whether one instruction subtracts in even lanes and adds in odd ones.
    virtual bool hasAddSub(Type type) const = 0;

    // Expressions, and the statements of a store.
    virtual std::string type(Type type) const = 0;
    virtual std::string constant(Type type, const std::vector<Quad> &lanes) const = 0;
    virtual std::string signMask(Type type, const std::vector<Quad> &lanes) const = 0;
    // The scale factor, of which `factor` points to a whole vector.
    virtual std::string scale(Type type) const = 0;
    virtual std::string arithmetic(const Node &node, const std::vector<std::string> &operands) const = 0;
    virtual std::string shuffle(const Graph &graph, const Node &gather,
                                const std::vector<std::string> &operands) const = 0;
    virtual std::string load(Type type, const std::vector<MoveText> &moves) const = 0;
    virtual std::vector<std::string> store(Type type, const std::vector<MoveText> &moves,
                                           const std::string &value) const = 0;
};

} // namespace zrfgen::gen
