#include "target/avx2.h"
#include "target/avx2_shuffle.h"
#include "target/halves.h"

namespace zrfgen::gen {

namespace {

// A shuffle inside of 16 bytes of a vector whose halves have changed places, where that is all there is to
// do.
std::optional<NodeId> afterTurn(Graph &graph, const Node &gather) {
    if (gather.operands.size() > 1 || graph[gather.operands[0]].type != gather.type)
        return {};
    const int half = gather.type.lanes / 2;
    std::vector<int> turned, picks;
    for (int lane = 0; lane < gather.type.lanes; ++lane) {
        turned.push_back(lane ^ half);
        picks.push_back(gather.picks[lane] == idle ? idle : gather.picks[lane] ^ half);
    }
    const NodeId operand = graph.gather(gather.operands, turned);
    Node shuffle{Op::Gather, gather.type, {operand}, picks, {}};
    if (!shuffleInGroups(graph, shuffle))
        return {};
    return graph.intern(std::move(shuffle));
}

} // namespace

NodeId Avx2::loweredGather(Graph &graph, const Node &gather) const {
    if (!hasWide(graph, gather))
        return narrower.loweredGather(graph, gather);
    if (wideShuffle(graph, gather))
        return graph.intern(gather);
    if (isWide(gather.type))
        if (const auto shuffle = afterTurn(graph, gather))
            return *shuffle;
    // Half by half.
    const int lanes = isWide(gather.type) ? gather.type.lanes / 2 : gather.type.lanes;
    std::vector<NodeId> halves;
    for (int first = 0; first < gather.type.lanes; first += lanes) {
        std::vector<NodeId> sources;
        std::vector<int> picks;
        int lanesBefore = 0;
        for (int lane = first; lane < first + lanes; ++lane) {
            if (gather.picks[lane] == idle) {
                picks.push_back(idle);
                continue;
            }
            const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
            const NodeId operand = gather.operands[place.operand];
            picks.push_back(lanesBefore + place.lane % lanes);
            sources.push_back(isWide(graph[operand].type) ? halfOf(graph, operand, place.lane / lanes)
                                                          : operand);
            lanesBefore += graph[sources.back()].type.lanes;
        }
        const NodeId half = graph.gather(std::move(sources), std::move(picks));
        halves.push_back(graph[half].op == Op::Gather ? loweredGather(graph, Node(graph[half])) : half);
    }
    return halves.size() == 1 ? halves[0] : joined(graph, halves[0], halves[1]);
}

} // namespace zrfgen::gen
