#include "target/halves.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace zrfgen::gen {

namespace {

// The first elements of the units of 8 bytes in which elements move; none if they do not lie in such units.
std::vector<int> unitsOf(Type type, const std::vector<int> &elements) {
    const int size = 8 / bytes(type.element);
    std::vector<int> units;
    for (int lane = 0; lane < type.lanes; lane += size) {
        for (int i = 0; i < size; ++i)
            if (elements[lane] == idle || elements[lane + i] != elements[lane] + i)
                return {};
        units.push_back(elements[lane]);
    }
    return units;
}

bool isRun(const std::vector<int> &elements, int first, int count) {
    for (int lane = first; lane < first + count; ++lane)
        if (elements[lane] == idle || elements[lane] != elements[first] + lane - first)
            return false;
    return true;
}

// Whether one element goes to all lanes.
bool isCopied(const std::vector<int> &elements) {
    return std::ranges::all_of(elements, [&](int element) { return element == elements[0]; });
}

bool areRuns(const std::vector<int> &elements) {
    const int half = static_cast<int>(elements.size()) / 2;
    return isRun(elements, 0, half) && isRun(elements, half, half);
}

// Another order of the units, in which both halves are runs of neighbours.
struct Sorting {
    std::vector<int> elements; // in the new order
    std::vector<int> places;   // of each lane there
};

std::optional<Sorting> sorting(Type type, const std::vector<int> &elements) {
    const int size = 8 / bytes(type.element);
    const std::vector<int> units = unitsOf(type, elements);
    std::vector<int> sorted = units;
    std::ranges::sort(sorted);
    Sorting result;
    for (const int unit : sorted)
        for (int i = 0; i < size; ++i)
            result.elements.push_back(unit + i);
    if (units.empty() || !areRuns(result.elements))
        return {};
    for (const int unit : units)
        for (int i = 0; i < size; ++i)
            result.places.push_back(
                static_cast<int>(std::ranges::find(sorted, unit) - sorted.begin()) * size + i);
    return result;
}

std::vector<int> halfOf(const std::vector<int> &list, int half) {
    const auto middle = list.begin() + list.size() / 2;
    return half == 0 ? std::vector(list.begin(), middle) : std::vector(middle, list.end());
}

} // namespace

NodeId halfOf(Graph &graph, NodeId value, int half) {
    std::vector<int> picks(graph[value].type.lanes / 2);
    std::iota(picks.begin(), picks.end(), half * static_cast<int>(picks.size()));
    return graph.gather({value}, picks);
}

NodeId joined(Graph &graph, NodeId lower, NodeId upper) {
    std::vector<int> picks(2 * graph[lower].type.lanes);
    std::iota(picks.begin(), picks.end(), 0);
    return graph.gather({lower, upper}, picks);
}

NodeId loadedByHalves(Graph &graph, const Node &load, const InstructionSet &narrower) {
    if (areRuns(load.picks) || isCopied(load.picks))
        return graph.intern(load);
    if (const auto sorted = sorting(load.type, load.picks))
        return graph.gather({graph.load(load.type, sorted->elements)}, sorted->places);
    const Type type{load.type.element, load.type.lanes / 2};
    const NodeId lower = narrower.loweredLoad(graph, {Op::Load, type, {}, halfOf(load.picks, 0), {}});
    return joined(graph, lower, narrower.loweredLoad(graph, {Op::Load, type, {}, halfOf(load.picks, 1), {}}));
}

void storeByHalves(Graph &graph, const Store &store, const InstructionSet &narrower) {
    const Type type = graph[store.value].type;
    if (areRuns(store.offsets))
        return graph.store(store.value, store.offsets);
    if (const auto sorted = sorting(type, store.offsets)) {
        std::vector<int> picks(type.lanes);
        for (int lane = 0; lane < type.lanes; ++lane)
            picks[sorted->places[lane]] = lane;
        return graph.store(graph.gather({store.value}, picks), sorted->elements);
    }
    for (const int half : {0, 1})
        narrower.lowerStore(graph, {halfOf(graph, store.value, half), halfOf(store.offsets, half)});
}

std::vector<Move> movesOfHalves(Type type, const std::vector<int> &elements) {
    const int half = type.lanes / 2;
    if (isCopied(elements))
        return {{0, 1, elements[0]}};
    if (isRun(elements, 0, type.lanes))
        return {{0, type.lanes, elements[0]}};
    return {{0, half, elements[0]}, {half, half, elements[half]}};
}

std::optional<std::vector<HalfSource>> wholeHalves(const Graph &graph, const Node &gather, int lanes) {
    std::vector<HalfSource> sources;
    for (int first = 0; first < gather.type.lanes; first += lanes) {
        std::optional<HalfSource> source;
        for (int lane = 0; lane < lanes; ++lane) {
            if (gather.picks[first + lane] == idle)
                continue;
            const Graph::Place place = graph.placeOf(gather.operands, gather.picks[first + lane]);
            const int half = place.lane / lanes;
            if (place.lane % lanes != lane || half > 1 ||
                (source && (source->operand != place.operand || source->half != half)))
                return {};
            source = {place.operand, half};
        }
        sources.push_back(source.value_or(HalfSource{}));
    }
    return sources;
}

std::optional<Shuffle> shuffleInGroups(const Graph &graph, const Node &gather) {
    for (const NodeId operand : gather.operands)
        if (graph[operand].type != gather.type)
            return {};
    const int lanes = 16 / bytes(gather.type.element);
    Node group = gather;
    group.type.lanes = lanes;
    group.picks.assign(lanes, idle);
    for (int lane = 0; lane < gather.type.lanes; ++lane) {
        if (gather.picks[lane] == idle)
            continue;
        const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
        int &pick = group.picks[lane % lanes];
        const int wanted = place.operand * lanes + place.lane % lanes;
        if (place.lane / lanes != lane / lanes || (pick != idle && pick != wanted))
            return {};
        pick = wanted;
    }
    return singleShuffle(group);
}

} // namespace zrfgen::gen
