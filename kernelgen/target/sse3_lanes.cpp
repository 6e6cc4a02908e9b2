#include "target/sse3.h"
#include "target/sse3_shuffle.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

// One lane of a node.
struct Place {
    NodeId node = noNode;
    int lane = 0;
};

NodeId gatherPlaces(Graph &graph, const std::vector<Place> &places) {
    std::vector<NodeId> sources;
    std::vector<int> picks;
    int lanes = 0;
    for (const Place &place : places) {
        picks.push_back(place.node == noNode ? idle : lanes + place.lane);
        if (place.node == noNode)
            continue;
        sources.push_back(place.node);
        lanes += graph[place.node].type.lanes;
    }
    return graph.gather(std::move(sources), std::move(picks));
}

// Brings two lanes into one vector; the places become where they stand there. Lanes of equal number are
// unpacked whole, so that the gathers of a transpose find their partners' work done.
void bringTogether(Graph &graph, Place &a, Place &b) {
    if (a.node == noNode || b.node == noNode || a.node == b.node)
        return;
    NodeId pair;
    if (a.lane == b.lane) {
        const int base = a.lane / 2 * 2;
        pair = gatherPlaces(graph, {{a.node, base}, {b.node, base}, {a.node, base + 1}, {b.node, base + 1}});
        a.lane = a.lane % 2 * 2;
        b.lane = a.lane + 1;
    } else {
        pair = gatherPlaces(graph, {{a.node, a.lane}, {a.node, a.lane}, {b.node, b.lane}, {b.node, b.lane}});
        a.lane = 0;
        b.lane = 2;
    }
    a.node = b.node = pair;
}

bool isHalfMove(int first, int second) {
    return (first == idle && second == idle) || (first != idle && second == first + 1);
}

// Loads the 8-byte units that hold two source elements into one vector and tells where they stand there.
void loadUnits(Graph &graph, Type type, int first, int second, Place places[2]) {
    const int a = first == idle ? idle : first / 2, b = second == idle ? idle : second / 2;
    int lower = a == idle ? b : a, upper = a == idle || a == b ? idle : b;
    if (upper != idle && lower == upper + 1)
        std::swap(lower, upper);
    if (lower == idle)
        return;
    const std::vector<int> elements = {2 * lower, 2 * lower + 1, upper == idle ? idle : 2 * upper,
                                       upper == idle ? idle : 2 * upper + 1};
    const NodeId node = graph.load(type, elements);
    const auto place = [&](int element) {
        return element == idle ? Place{} : Place{node, element / 2 == lower ? element % 2 : 2 + element % 2};
    };
    places[0] = place(first);
    places[1] = place(second);
}

} // namespace

NodeId Sse3::loweredGather(Graph &graph, const Node &gather) const {
    if (gather.type.lanes == 1 || singleShuffle(inRegisters(graph, gather)))
        return graph.intern(gather);
    std::vector<Place> places;
    for (const int pick : gather.picks) {
        const Graph::Place place = pick == idle ? Graph::Place{} : graph.placeOf(gather.operands, pick);
        places.push_back(pick == idle ? Place{} : Place{gather.operands[place.operand], place.lane});
    }
    if (gather.type.lanes == 2) {
        bringTogether(graph, places[0], places[1]);
        return gatherPlaces(graph, places);
    }
    if (gather.operands.size() == 2 && std::count(gather.picks.begin(), gather.picks.end(), idle) == 0) {
        // Both sources in both halves: take two lanes of each, then put them in order.
        std::vector<Place> sorted = places;
        std::stable_sort(sorted.begin(), sorted.end(), [&](const Place &a, const Place &b) {
            return a.node == gather.operands[0] && b.node != a.node;
        });
        if (sorted[1].node == gather.operands[0] && sorted[2].node == gather.operands[1]) {
            const NodeId both = gatherPlaces(graph, sorted);
            int next[2] = {0, 2};
            for (Place &place : places)
                place = {both, next[place.node == gather.operands[1]]++};
            return gatherPlaces(graph, places);
        }
    }
    bringTogether(graph, places[0], places[1]);
    bringTogether(graph, places[2], places[3]);
    return gatherPlaces(graph, places);
}

// Transposes need no case of their own: their lanes ask for the same unpacked pairs, which the graph shares.
NodeId Sse3::loweredLoad(Graph &graph, const Node &load) const {
    const std::vector<int> &picks = load.picks;
    if (isHalf(load.type) && !isHalfMove(picks[0], picks[1])) {
        const Type single{load.type.element, 1};
        const NodeId first = graph.load(single, {picks[0]});
        return graph.gather({first, graph.load(single, {picks[1]})}, {0, 1});
    }
    if (load.type.lanes < 4 || (isHalfMove(picks[0], picks[1]) && isHalfMove(picks[2], picks[3])))
        return graph.intern(load);
    std::vector<Place> places(4);
    loadUnits(graph, load.type, picks[0], picks[1], &places[0]);
    loadUnits(graph, load.type, picks[2], picks[3], &places[2]);
    return gatherPlaces(graph, places);
}

void Sse3::lowerStore(Graph &graph, const Store &store) const {
    if (!isHalf(graph[store.value].type) || isHalfMove(store.offsets[0], store.offsets[1]))
        return graph.store(store.value, store.offsets);
    for (const int lane : {0, 1})
        graph.store(graph.gather({store.value}, {lane}), {store.offsets[lane]});
}

std::vector<Move> Sse3::moves(Type type, const std::vector<int> &elements) const {
    const int half = type.lanes / 2, lower = elements[0], upper = elements[half];
    if (isHalf(type) || (lower != idle && upper == lower + half))
        return {{0, type.lanes, lower}};
    std::vector<Move> halves;
    for (const int lane : {0, half})
        if (elements[lane] != idle)
            halves.push_back({lane, half, elements[lane]});
    return halves;
}

bool Sse3::isAligned(Type type, const Move &move) const {
    return !isHalf(type) && move.lanes == type.lanes && move.element % type.lanes == 0;
}

} // namespace zrfgen::gen
