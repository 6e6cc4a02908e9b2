#include "target/avx512.h"

namespace zrfgen::gen {

NodeId Avx512::loweredGather(Graph &graph, const Node &gather) const {
    const auto width = [&](NodeId node) { return graph[node].type.lanes; };
    if (bytes(gather.type) < 16)
        return narrower.loweredGather(graph, gather);
    if (gather.operands.size() <= 2)
        return graph.intern(gather);
    // What the first two give in their place, and then the next one.
    std::vector<int> picks = gather.picks, first(gather.picks.size(), idle);
    const int two = width(gather.operands[0]) + width(gather.operands[1]);
    const int lanes = gather.type.lanes;
    for (int lane = 0; lane < lanes; ++lane) {
        if (picks[lane] == idle)
            continue;
        const bool isOfTwo = picks[lane] < two;
        if (isOfTwo)
            first[lane] = picks[lane];
        picks[lane] = isOfTwo ? lane : picks[lane] - two + lanes;
    }
    std::vector<NodeId> operands(gather.operands.begin() + 1, gather.operands.end());
    operands[0] = loweredGather(
        graph, {Op::Gather, gather.type, {gather.operands[0], gather.operands[1]}, std::move(first), {}});
    return loweredGather(graph, {Op::Gather, gather.type, std::move(operands), std::move(picks), {}});
}

} // namespace zrfgen::gen
