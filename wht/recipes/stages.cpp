#include "wht/recipes/stages.h"

namespace zrfgen::gen {

namespace {

void stage(Graph &graph, std::vector<NodeId> &values, std::size_t distance) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if ((i & distance) != 0)
            continue;
        const NodeId a = values[i], c = values[i + distance];
        values[i] = graph.add(a, c);
        values[i + distance] = graph.sub(a, c);
    }
}

// Lane l of vector j becomes lane j of vector l, in each run of as many vectors as they have lanes.
void transpose(Graph &graph, std::vector<NodeId> &vectors, int lanes) {
    for (std::size_t first = 0; first < vectors.size(); first += lanes) {
        const std::vector<NodeId> group(vectors.begin() + first, vectors.begin() + first + lanes);
        for (int lane = 0; lane < lanes; ++lane) {
            std::vector<int> picks;
            for (int vector = 0; vector < lanes; ++vector)
                picks.push_back(vector * lanes + lane);
            vectors[first + lane] = graph.gather(group, picks);
        }
    }
}

} // namespace

void walshHadamardStages(Graph &graph, std::vector<NodeId> &vectors) {
    const int lanes = graph[vectors[0]].type.lanes;
    if (lanes > 1) {
        transpose(graph, vectors, lanes);
        for (int distance = 1; distance < lanes; distance *= 2)
            stage(graph, vectors, distance);
        transpose(graph, vectors, lanes);
    }
    rowStages(graph, vectors);
}

void rowStages(Graph &graph, std::vector<NodeId> &rows) {
    for (std::size_t distance = 1; distance < rows.size(); distance *= 2)
        stage(graph, rows, distance);
}

} // namespace zrfgen::gen
