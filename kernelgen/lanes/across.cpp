#include "lanes/across.h"

#include "algebra/vectors.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

// What the lanes of a group hold in all transforms: a vector or several, or their negatives. Signs end up in
// the choice of additions and subtractions, which changes no bit.
struct Across {
    std::vector<NodeId> parts;
    bool isNegative = false;
};

using Groups = std::vector<std::optional<Across>>; // none where all lanes are idle

class AcrossTransforms {
public:
    AcrossTransforms(const Graph &kernel, Direction direction, Element element, const LanesAcross &layout,
                     const Target &target)
        : kernel(kernel), direction(direction), layout(layout), groupLanes(layout.groupLanes), target(target),
          lanes(target.vector(element).lanes) {}

    Graph result() {
        std::vector<Groups> images(kernel.size());
        for (const NodeId id : liveNodes(kernel)) {
            const Node &node = kernel[id];
            if (node.op == Op::ByDirection) {
                images[id] = images[node.operands[direction == Direction::Forward ? 0 : 1]];
                continue;
            }
            for (int first = 0; first < node.type.lanes; first += groupLanes)
                images[id].push_back(node.op == Op::Gather ? gathered(node, first, images)
                                                           : computed(node, first, images));
        }
        for (const Store &store : kernel.stores())
            for (std::size_t first = 0; first < store.offsets.size(); first += groupLanes)
                if (store.offsets[first] != idle)
                    graph.store(resolved(*images[store.value][first / groupLanes]).parts[0],
                                numbersOf(store.offsets, static_cast<int>(first)));
        return std::move(graph);
    }

private:
    // The lanes of one group in every transform: `lane(t, l)` for lane l of the group in transform t.
    template <class Lane> auto repeated(int vectorLanes, Lane lane) const {
        std::vector<decltype(lane(0, 0))> all;
        for (int i = 0; i < vectorLanes; ++i)
            all.push_back(lane(i / groupLanes, i % groupLanes));
        return all;
    }

    std::vector<int> numbersOf(const std::vector<int> &elements, int first) const {
        return repeated(lanes, [&](int transform, int lane) {
            const int element = elements[first + lane];
            return element == idle ? idle : layout.number(element, transform);
        });
    }

    std::optional<Across> gathered(const Node &gather, int first, const std::vector<Groups> &images) {
        std::vector<const Across *> sources(groupLanes, nullptr);
        std::vector<int> laneInGroup(groupLanes, idle);
        const Across *source = nullptr;
        for (int lane = 0; lane < groupLanes; ++lane) {
            if (gather.picks[first + lane] == idle)
                continue;
            const Graph::Place place = kernel.placeOf(gather.operands, gather.picks[first + lane]);
            const std::optional<Across> &group =
                images[gather.operands[place.operand]][place.lane / groupLanes];
            if (!group)
                continue;
            sources[lane] = source = &*group;
            laneInGroup[lane] = place.lane % groupLanes;
        }
        if (source == nullptr)
            return std::nullopt;
        if (groupLanes == 1)
            return *source;
        std::vector<Across> values;
        for (const Across *other : sources)
            values.push_back(other == nullptr ? *source : *other);
        const bool haveOneSign = std::ranges::all_of(
            values, [&](const Across &value) { return value.isNegative == source->isNegative; });
        if (!haveOneSign)
            for (Across &value : values)
                value = resolved(value);
        Across result{{}, haveOneSign && source->isNegative};
        for (std::size_t part = 0; part < values[0].parts.size(); ++part) {
            std::vector<NodeId> operands;
            for (const Across &value : values)
                operands.push_back(value.parts[part]);
            const int width = graph[operands[0]].type.lanes;
            result.parts.push_back(graph.gather(operands, repeated(width, [&](int transform, int lane) {
                                                    return laneInGroup[lane] == idle
                                                               ? idle
                                                               : lane * width + transform * groupLanes +
                                                                     laneInGroup[lane];
                                                })));
        }
        return result;
    }

    std::optional<Across> computed(const Node &node, int first, const std::vector<Groups> &images) {
        const Type vector = target.vector(node.type.element);
        std::vector<Across> operands;
        for (const NodeId operand : node.operands) {
            if (!images[operand][first / groupLanes])
                return std::nullopt;
            operands.push_back(*images[operand][first / groupLanes]);
        }
        switch (node.op) {
        case Op::Load:
            if (node.picks[first] == idle) // it is loaded as zero, and a convolution may be padded by it
                return Across{copies(graph.broadcast(vector, 0))};
            return Across{{graph.load(vector, numbersOf(node.picks, first))}};
        case Op::Constant:
            return Across{copies(graph.constant(
                vector, repeated(vector.lanes, [&](int, int lane) { return node.values[first + lane]; })))};
        case Op::Scale:
            return Across{copies(graph.scale(vector))};
        case Op::Add:
            return sum(operands[0], operands[1]);
        case Op::Sub:
            return sum(operands[0], negated(operands[1]));
        case Op::Mul:
            return Across{eachPart(&Graph::mul, operands[0], operands[1]),
                          operands[0].isNegative != operands[1].isNegative};
        case Op::FlipSigns:
            return flipped(operands[0], operands[1]);
        case Op::Widen:
            return widened(operands[0]);
        case Op::Narrow:
            return narrowed(operands[0]);
        default:
            throw std::logic_error("no such operation in a kernel as the algebra builds it");
        }
    }

    static Across negated(Across value) {
        value.isNegative = !value.isNegative;
        return value;
    }

    Across flipped(const Across &value, const Across &signs) {
        const std::vector<Quad> &lanes = graph[signs.parts[0]].values;
        if (std::ranges::all_of(lanes, [&](Quad sign) { return sign == lanes[0]; }))
            return lanes[0] < 0 ? negated(value) : value;
        return {eachPart(&Graph::flipSigns, value, signs), value.isNegative};
    }

    Across sum(const Across &a, const Across &b) {
        if (a.isNegative && b.isNegative)
            return sum(resolved(a), b); // the negative of a + b would be another zero
        if (a.isNegative || b.isNegative)
            return {a.isNegative ? eachPart(&Graph::sub, b, a) : eachPart(&Graph::sub, a, b)};
        return {eachPart(&Graph::add, a, b)};
    }

    // A value that is no negative.
    Across resolved(const Across &value) {
        Across result{value.parts};
        if (value.isNegative)
            for (NodeId &part : result.parts)
                part = graph.flipSigns(part, graph.broadcast(graph[part].type, -1));
        return result;
    }

    std::vector<NodeId> eachPart(NodeId (Graph::*operation)(NodeId, NodeId), const Across &a,
                                 const Across &b) {
        std::vector<NodeId> results;
        for (std::size_t part = 0; part < a.parts.size(); ++part)
            results.push_back((graph.*operation)(a.parts[part], b.parts[part]));
        return results;
    }

    Across widened(const Across &value) {
        Across wide{{}, value.isNegative};
        const int perPart = target.vector(Element::Float64).lanes;
        for (int first = 0; first < lanes; first += perPart)
            wide.parts.push_back(graph.widen(graph.gather({value.parts[0]}, consecutive(first, perPart))));
        return wide;
    }

    Across narrowed(const Across &value) {
        std::vector<NodeId> parts;
        for (const NodeId part : value.parts)
            parts.push_back(graph.narrow(part));
        return {{graph.gather(parts, consecutive(0, lanes))}, value.isNegative};
    }

    std::vector<NodeId> copies(NodeId vector) const {
        return std::vector<NodeId>(lanes / graph[vector].type.lanes, vector);
    }

    const Graph &kernel;
    Direction direction;
    const LanesAcross &layout;
    int groupLanes;
    const Target &target;
    int lanes; // of a vector of the arrays' elements
    Graph graph;
};

} // namespace

Graph acrossTransforms(const Graph &kernel, Direction direction, Element element, const LanesAcross &layout,
                       const Target &target) {
    return AcrossTransforms(kernel, direction, element, layout, target).result();
}

} // namespace zrfgen::gen
