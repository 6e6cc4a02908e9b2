// Vectors of 64 bytes by AVX-512. One instruction takes any lanes of two vectors.
#pragma once

#include "target/wide.h"

namespace zrfgen::gen {

class Avx512 : public WideInstructionSet {
public:
    explicit Avx512(const InstructionSet &narrower) : WideInstructionSet(64, narrower) {}

    NodeId loweredGather(Graph &graph, const Node &gather) const override;
    std::string shuffle(const Graph &graph, const Node &gather,
                        const std::vector<std::string> &operands) const override;
};

} // namespace zrfgen::gen
