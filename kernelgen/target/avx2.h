// Vectors of 32 bytes by AVX2, and the narrower ones of SSE3 in the same encoding.
#pragma once

#include "target/sse3.h"

namespace zrfgen::gen {

class Avx2 : public InstructionSet {
public:
    NodeId loweredLoad(Graph &graph, const Node &load) const override;
    NodeId loweredGather(Graph &graph, const Node &gather) const override;
    void lowerStore(Graph &graph, const Store &store) const override;

    // One run of neighbours, or two halves of the vector; narrower vectors as in Sse3.
    std::vector<Move> moves(Type type, const std::vector<int> &elements) const override;
    // Whole vectors move as fast from anywhere.
    bool isAligned(Type, const Move &) const override { return false; }

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

private:
    Sse3 narrower;
};

} // namespace zrfgen::gen
