#include "target/avx2_shuffle.h"

namespace zrfgen::gen {

namespace {

std::optional<UnitOrder> asUnits(const Graph &graph, const Node &gather) {
    if (gather.operands.size() > 1 || graph[gather.operands[0]].type != gather.type)
        return {};
    const int size = gather.type.lanes / 4;
    UnitOrder order{{0, 1, 2, 3}};
    for (int unit = 0; unit < 4; ++unit) {
        int from = idle;
        for (int i = 0; i < size; ++i) {
            const int pick = gather.picks[unit * size + i];
            if (pick == idle)
                continue;
            if (pick % size != i || (from != idle && from != pick / size))
                return {};
            from = pick / size;
        }
        if (from != idle)
            order.units[unit] = from;
    }
    return order;
}

} // namespace

std::optional<WideShuffle> wideShuffle(const Graph &graph, const Node &gather) {
    if (auto halves = wholeHalves(graph, gather, 16 / bytes(gather.type.element)))
        return std::move(*halves);
    if (bytes(gather.type) != 32)
        return {};
    if (auto shuffle = shuffleInGroups(graph, gather))
        return std::move(*shuffle);
    if (const auto order = asUnits(graph, gather))
        return *order;
    return {};
}

} // namespace zrfgen::gen
