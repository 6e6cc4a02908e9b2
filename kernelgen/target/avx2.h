// Vectors of 32 bytes by AVX2. Within 16 bytes they shuffle as narrower ones do; halves and units of 8 bytes
// move across.
#pragma once

#include "target/wide.h"

namespace zrfgen::gen {

class Avx2 : public WideInstructionSet {
public:
    explicit Avx2(const InstructionSet &narrower) : WideInstructionSet(32, narrower) {}

    NodeId loweredGather(Graph &graph, const Node &gather) const override;
    std::string shuffle(const Graph &graph, const Node &gather,
                        const std::vector<std::string> &operands) const override;
};

} // namespace zrfgen::gen
