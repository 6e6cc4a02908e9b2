#include "algebra/vectors.h"

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

std::vector<NodeId> transposed(Graph &graph, const std::vector<NodeId> &vectors) {
    const int lanes = static_cast<int>(vectors.size());
    std::vector<NodeId> result;
    for (int lane = 0; lane < lanes; ++lane) {
        std::vector<int> picks;
        for (int vector = 0; vector < lanes; ++vector)
            picks.push_back(vector * lanes + lane);
        result.push_back(graph.gather(vectors, picks));
    }
    return result;
}

NodeId reversed(Graph &graph, NodeId value) {
    const std::vector<int> forward = consecutive(0, graph[value].type.lanes);
    return graph.gather({value}, {forward.rbegin(), forward.rend()});
}

} // namespace zrfgen::gen
