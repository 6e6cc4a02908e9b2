// Vectors of 16 bytes, up to the SSE3 level. Two Float32 lie in the lower half of one.
#pragma once

#include "target/instruction_set.h"

namespace zrfgen::gen {

class Sse3 : public InstructionSet {
public:
    NodeId loweredLoad(Graph &graph, const Node &load) const override;
    NodeId loweredGather(Graph &graph, const Node &gather) const override;
    void lowerStore(Graph &graph, const Store &store) const override;

    // One run of neighbours, or two halves of which one may be missing.
    std::vector<Move> moves(Type type, const std::vector<int> &elements) const override;
    bool isAligned(Type type, const Move &move) const override;
    bool hasAddSub(Type) const override { return true; }

    std::string type(Type type) const override;
    std::string constant(Type type, const std::vector<Quad> &lanes) const override;
    std::string signMask(Type type, const std::vector<Quad> &lanes) const override;
    std::string scale(Type type) const override;
    std::string arithmetic(const Node &node, const std::vector<std::string> &operands) const override;
    std::string shuffle(const Graph &graph, const Node &gather,
                        const std::vector<std::string> &operands) const override;
    std::string load(Type type, const std::vector<MoveText> &moves) const override;
    std::vector<std::string> store(Type type, const std::vector<MoveText> &moves,
                                   const std::string &value) const override;
};

} // namespace zrfgen::gen
