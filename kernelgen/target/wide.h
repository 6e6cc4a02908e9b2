// Vectors of 32 bytes or more: what differs between the widths in the prefix of the intrinsics alone.
#pragma once

#include "target/instruction_set.h"
#include "target/sse3_shuffle.h"

namespace zrfgen::gen {

// Instructions on vectors of one such width, over those on narrower ones. An array's alignment is nothing to
// them: whole vectors move as fast from anywhere, in one run of neighbours or in two halves.
class WideInstructionSet : public InstructionSet {
public:
    WideInstructionSet(int width, const InstructionSet &narrower) : width(width), narrower(narrower) {}

    NodeId loweredLoad(Graph &graph, const Node &load) const override;
    void lowerStore(Graph &graph, const Store &store) const override;
    std::vector<Move> moves(Type type, const std::vector<int> &elements) const override;
    bool isAligned(Type, const Move &) const override { return false; }
    bool hasAddSub(Type type) const override { return isWide(type) ? width == 32 : narrower.hasAddSub(type); }

    std::string type(Type type) const override;
    std::string constant(Type type, const std::vector<Quad> &lanes) const override;
    std::string signMask(Type type, const std::vector<Quad> &lanes) const override;
    std::string scale(Type type) const override;
    std::string arithmetic(const Node &node, const std::vector<std::string> &operands) const override;
    std::string load(Type type, const std::vector<MoveText> &moves) const override;
    std::vector<std::string> store(Type type, const std::vector<MoveText> &moves,
                                   const std::string &value) const override;

protected:
    bool isWide(Type type) const { return bytes(type) == width; }
    // Whether a gather or one of its operands is.
    bool hasWide(const Graph &graph, const Node &gather) const;

    const int width; // in bytes
    const InstructionSet &narrower;
};

// Text for a vector type of any such width.
namespace wide {

std::string call(const std::string &function, const std::vector<std::string> &arguments);
// "_mm256_add_ps"
std::string intrinsic(const std::string &name, Type type);
// The same shuffle in each 16 bytes.
std::string shuffleInGroups(Type type, const Shuffle &shuffle, const std::vector<std::string> &operands);
// A value of half the width as the lower half of one of this type, and back; neither costs an instruction.
std::string castUp(Type type, const std::string &value);
std::string castDown(Type type, const std::string &value);

} // namespace wide

} // namespace zrfgen::gen
