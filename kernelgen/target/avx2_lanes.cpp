#include "target/avx2.h"
#include "target/avx2_shuffle.h"
#include "target/halves.h"

#include <algorithm>

namespace zrfgen::gen {

NodeId Avx2::loweredLoad(Graph &graph, const Node &load) const {
    return has32Bytes(load.type) ? loadedByHalves(graph, load, narrower) : narrower.loweredLoad(graph, load);
}

NodeId Avx2::loweredGather(Graph &graph, const Node &gather) const {
    const bool hasWideOperand =
        std::ranges::any_of(gather.operands, [&](NodeId operand) { return has32Bytes(graph[operand].type); });
    if (!has32Bytes(gather.type) && !hasWideOperand)
        return narrower.loweredGather(graph, gather);
    if (wideShuffle(graph, gather))
        return graph.intern(gather);
    // Half by half.
    const int lanes = has32Bytes(gather.type) ? gather.type.lanes / 2 : gather.type.lanes;
    std::vector<NodeId> halves;
    for (int first = 0; first < gather.type.lanes; first += lanes) {
        std::vector<NodeId> sources;
        std::vector<int> picks;
        for (int lane = first; lane < first + lanes; ++lane) {
            if (gather.picks[lane] == idle) {
                picks.push_back(idle);
                continue;
            }
            const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
            const NodeId operand = gather.operands[place.operand];
            picks.push_back(static_cast<int>(sources.size()) * lanes + place.lane % lanes);
            sources.push_back(has32Bytes(graph[operand].type) ? halfOf(graph, operand, place.lane / lanes)
                                                              : operand);
        }
        const NodeId half = graph.gather(std::move(sources), std::move(picks));
        halves.push_back(graph[half].op == Op::Gather ? loweredGather(graph, Node(graph[half])) : half);
    }
    return halves.size() == 1 ? halves[0] : joined(graph, halves[0], halves[1]);
}

void Avx2::lowerStore(Graph &graph, const Store &store) const {
    const bool isNarrow = !has32Bytes(graph[store.value].type);
    isNarrow ? narrower.lowerStore(graph, store) : storeByHalves(graph, store, narrower);
}

std::vector<Move> Avx2::moves(Type type, const std::vector<int> &elements) const {
    return has32Bytes(type) ? movesOfHalves(type, elements) : narrower.moves(type, elements);
}

} // namespace zrfgen::gen
