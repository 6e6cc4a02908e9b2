#include "wht/recipes/stages.h"

#include "algebra/vectors.h"

#include <algorithm>

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

void transposeGroups(Graph &graph, std::vector<NodeId> &vectors, int lanes) {
    for (auto first = vectors.begin(); first != vectors.end(); first += lanes)
        std::ranges::copy(transposed(graph, {first, first + lanes}), first);
}

} // namespace

void walshHadamardStages(Graph &graph, std::vector<NodeId> &vectors) {
    const int lanes = graph[vectors[0]].type.lanes;
    if (lanes > 1) {
        transposeGroups(graph, vectors, lanes);
        for (int distance = 1; distance < lanes; distance *= 2)
            stage(graph, vectors, distance);
        transposeGroups(graph, vectors, lanes);
    }
    stagesBetweenVectors(graph, vectors);
}

void stagesBetweenVectors(Graph &graph, std::vector<NodeId> &rows) {
    for (std::size_t distance = 1; distance < rows.size(); distance *= 2)
        stage(graph, rows, distance);
}

} // namespace zrfgen::gen
