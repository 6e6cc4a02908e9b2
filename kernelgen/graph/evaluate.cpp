#include "graph/evaluate.h"

namespace zrfgen::gen {

namespace {

using Lanes = std::vector<Quad>;

// One lane of an arithmetic operation. A quad holds twice the bits of a double and more, so rounding its
// sums, differences and products of element values again gives what the narrow operation itself would.
Quad combine(Op op, Quad a, Quad b) {
    switch (op) {
    case Op::Add:
        return a + b;
    case Op::Sub:
        return a - b;
    default:
        return a * b;
    }
}

} // namespace

std::vector<Quad> evaluate(const Graph &graph, Direction direction, Precision precision,
                           const std::vector<Quad> &source, Quad scale, int destinationElements) {
    std::vector<Lanes> value(graph.size());
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        const auto operand = [&](int i) -> const Lanes & { return value[node.operands[i]]; };
        Lanes lanes(node.type.lanes, 0);
        for (int lane = 0; lane < node.type.lanes; ++lane) {
            switch (node.op) {
            case Op::Load:
                lanes[lane] = node.picks[lane] == idle ? 0 : source[node.picks[lane]];
                break;
            case Op::Constant:
                lanes[lane] = node.values[lane];
                break;
            case Op::Scale:
                lanes[lane] = scale;
                break;
            case Op::Add:
            case Op::Sub:
            case Op::Mul:
                lanes[lane] = combine(node.op, operand(0)[lane], operand(1)[lane]);
                break;
            case Op::AddSub:
                lanes[lane] = combine(lane % 2 == 0 ? Op::Sub : Op::Add, operand(0)[lane], operand(1)[lane]);
                break;
            case Op::FlipSigns:
                lanes[lane] = operand(1)[lane] < 0 ? -operand(0)[lane] : operand(0)[lane];
                break;
            case Op::Widen:
            case Op::Narrow:
                lanes[lane] = operand(0)[lane];
                break;
            case Op::Gather: {
                if (node.picks[lane] == idle)
                    break;
                const Graph::Place place = graph.placeOf(node.operands, node.picks[lane]);
                lanes[lane] = operand(place.operand)[place.lane];
                break;
            }
            case Op::ByDirection:
                lanes[lane] = operand(direction == Direction::Forward ? 0 : 1)[lane];
                break;
            }
            if (precision == Precision::Native)
                lanes[lane] = rounded(lanes[lane], node.type.element);
        }
        value[id] = std::move(lanes);
    }

    std::vector<Quad> destination(destinationElements, 0);
    for (const Store &store : graph.stores())
        for (std::size_t lane = 0; lane < store.offsets.size(); ++lane)
            if (store.offsets[lane] != idle)
                destination[store.offsets[lane]] = value[store.value][lane];
    return destination;
}

} // namespace zrfgen::gen
