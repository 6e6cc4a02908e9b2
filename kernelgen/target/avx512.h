// Vectors of 64 bytes by AVX-512, and the narrower ones of AVX2. One instruction takes any lanes of two
// vectors.
#pragma once

#include "target/avx2.h"

namespace zrfgen::gen {

inline bool has64Bytes(Type type) {
    return type.lanes * bytes(type.element) == 64;
}

class Avx512 : public InstructionSet {
public:
    NodeId loweredLoad(Graph &graph, const Node &load) const override;
    NodeId loweredGather(Graph &graph, const Node &gather) const override;
    void lowerStore(Graph &graph, const Store &store) const override;

    std::vector<Move> moves(Type type, const std::vector<int> &elements) const override;
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
    Avx2 narrower;
};

} // namespace zrfgen::gen
