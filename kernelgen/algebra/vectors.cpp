#include "algebra/vectors.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace zrfgen::gen {

std::vector<int> consecutive(int first, int count) {
    std::vector<int> elements(count);
    std::iota(elements.begin(), elements.end(), first);
    return elements;
}

NodeId loadVector(Graph &graph, Type type, int i) {
    return graph.load(type, consecutive(i * type.lanes, type.lanes));
}

void storeVector(Graph &graph, NodeId value, int i) {
    const int lanes = graph[value].type.lanes;
    graph.store(value, consecutive(i * lanes, lanes));
}

namespace {

// Units of lanes from a and b in turn, out of one half of every span of lanes.
NodeId inTurn(Graph &graph, NodeId a, NodeId b, int unit, int span, int half) {
    const int lanes = graph[a].type.lanes;
    std::vector<int> picks;
    for (int first = half * span / 2; first < lanes; first += span)
        for (int from = first; from < first + span / 2; from += unit)
            for (const int operand : {0, lanes})
                for (int lane = from; lane < from + unit; ++lane)
                    picks.push_back(operand + lane);
    return graph.gather({a, b}, picks);
}

// A transpose of units inside of spans: as many perfect shuffles of the vectors as there are bits in their
// number, for every set of vectors that lie `stride` apart.
void transposeUnits(Graph &graph, std::vector<NodeId> &vectors, int unit, int span, int first, int stride) {
    const int count = span / unit;
    for (int stage = 1; stage < count; stage *= 2) {
        std::vector<NodeId> next(count);
        for (int i = 0; i < count / 2; ++i)
            for (const int half : {0, 1})
                next[2 * i + half] = inTurn(graph, vectors[first + stride * i],
                                            vectors[first + stride * (i + count / 2)], unit, span, half);
        for (int i = 0; i < count; ++i)
            vectors[first + stride * i] = next[i];
    }
}

} // namespace

std::vector<NodeId> transposedByGroups(Graph &graph, std::vector<NodeId> vectors) {
    const Type type = graph[vectors[0]].type;
    const int count = static_cast<int>(vectors.size()), lanes = type.lanes / count,
              groupLanes = 16 / bytes(type.element), group = groupLanes / lanes;
    for (int first = 0; first < count; first += group)
        transposeUnits(graph, vectors, lanes, groupLanes, first, 1);
    for (int first = 0; first < group; ++first)
        transposeUnits(graph, vectors, groupLanes, type.lanes, first, group);
    return vectors;
}

std::vector<NodeId> transposed(Graph &graph, const std::vector<NodeId> &vectors, int unit) {
    if (vectors.size() == 1)
        return vectors;
    const int span = unit * static_cast<int>(vectors.size());
    std::vector<NodeId> result;
    for (const int half : {0, 1}) {
        std::vector<NodeId> ofHalf;
        for (std::size_t i = 0; i < vectors.size(); i += 2)
            ofHalf.push_back(inTurn(graph, vectors[i], vectors[i + 1], unit, span, half));
        std::ranges::copy(transposed(graph, ofHalf, 2 * unit), std::back_inserter(result));
    }
    return result;
}

NodeId reversed(Graph &graph, NodeId value) {
    const std::vector<int> forward = consecutive(0, graph[value].type.lanes);
    return graph.gather({value}, {forward.rbegin(), forward.rend()});
}

} // namespace zrfgen::gen
