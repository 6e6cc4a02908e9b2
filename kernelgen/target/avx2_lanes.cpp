#include "target/avx2.h"
#include "target/avx2_shuffle.h"
#include "target/halves.h"

namespace zrfgen::gen {

NodeId Avx2::loweredGather(Graph &graph, const Node &gather) const {
    if (!hasWide(graph, gather))
        return narrower.loweredGather(graph, gather);
    if (wideShuffle(graph, gather))
        return graph.intern(gather);
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
