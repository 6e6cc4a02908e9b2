#include "target/avx512.h"
#include "target/halves.h"

namespace zrfgen::gen {

NodeId Avx512::loweredLoad(Graph &graph, const Node &load) const {
    return has64Bytes(load.type) ? loadedByHalves(graph, load, *this) : narrower.loweredLoad(graph, load);
}

NodeId Avx512::loweredGather(Graph &graph, const Node &gather) const {
    const auto width = [&](NodeId node) { return graph[node].type.lanes; };
    if (gather.type.lanes * bytes(gather.type.element) < 16)
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

void Avx512::lowerStore(Graph &graph, const Store &store) const {
    const bool isNarrow = !has64Bytes(graph[store.value].type);
    isNarrow ? narrower.lowerStore(graph, store) : storeByHalves(graph, store, *this);
}

std::vector<Move> Avx512::moves(Type type, const std::vector<int> &elements) const {
    return has64Bytes(type) ? movesOfHalves(type, elements) : narrower.moves(type, elements);
}

} // namespace zrfgen::gen
