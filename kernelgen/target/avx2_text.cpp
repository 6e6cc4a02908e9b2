#include "target/avx2.h"
#include "target/avx2_shuffle.h"
#include "target/wide_text.h"

#include <algorithm>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

std::string halvesText(const Graph &graph, const Node &gather, const std::vector<HalfSource> &halves,
                       const std::vector<std::string> &operands) {
    const auto isWhole = [&](HalfSource source) {
        return has32Bytes(graph[gather.operands[source.operand]].type);
    };
    const HalfSource first = halves[0];
    const std::string &lower = operands[first.operand];
    const Type wide{gather.type.element, 32 / bytes(gather.type.element)};
    if (halves.size() == 1)
        return first.half == 0 ? wide::castDown(wide, lower)
                               : wide::call(wide::intrinsic("extractf128", wide), {lower, "1"});
    const HalfSource second = halves[1];
    const std::string &upper = operands[second.operand];
    const auto whole = [&](HalfSource source, const std::string &value) {
        return isWhole(source) ? value : wide::castUp(wide, value);
    };
    if (first.half == 0 && second.half == 0)
        return wide::call(wide::intrinsic("insertf128", wide),
                          {whole(first, lower), isWhole(second) ? wide::castDown(wide, upper) : upper, "1"});
    if (first.half == 0)
        return wide::call(wide::intrinsic("blend", wide),
                          {whole(first, lower), whole(second, upper), wide.lanes == 4 ? "12" : "240"});
    return wide::call(wide::intrinsic("permute2f128", wide),
                      {whole(first, lower), whole(second, upper), second.half == 0 ? "33" : "49"});
}

std::string unitsText(Type type, const UnitOrder &order, const std::string &operand) {
    int immediate = 0;
    for (int unit = 3; unit >= 0; --unit)
        immediate = 4 * immediate + order.units[unit];
    const bool isDouble = type.element == Element::Float64;
    const std::string result =
        wide::call("_mm256_permute4x64_pd", {isDouble ? operand : wide::call("_mm256_castps_pd", {operand}),
                                             std::to_string(immediate)});
    return isDouble ? result : wide::call("_mm256_castpd_ps", {result});
}

} // namespace

std::string Avx2::type(Type type) const {
    return has32Bytes(type) ? wide::type(type) : narrower.type(type);
}

std::string Avx2::constant(Type type, const std::vector<Quad> &lanes) const {
    return has32Bytes(type) ? wide::constant(type, lanes) : narrower.constant(type, lanes);
}

std::string Avx2::signMask(Type type, const std::vector<Quad> &lanes) const {
    return has32Bytes(type) ? wide::signMask(type, lanes) : narrower.signMask(type, lanes);
}

std::string Avx2::scale(Type type) const {
    return has32Bytes(type) ? wide::call(wide::intrinsic("load", type), {"factor"}) : narrower.scale(type);
}

std::string Avx2::arithmetic(const Node &node, const std::vector<std::string> &operands) const {
    return has32Bytes(node.type) ? wide::arithmetic(node, operands) : narrower.arithmetic(node, operands);
}

std::string Avx2::shuffle(const Graph &graph, const Node &gather,
                          const std::vector<std::string> &operands) const {
    if (!has32Bytes(gather.type) && std::ranges::none_of(gather.operands, [&](NodeId operand) {
            return has32Bytes(graph[operand].type);
        }))
        return narrower.shuffle(graph, gather, operands);
    const auto shuffle = wideShuffle(graph, gather);
    if (!shuffle)
        throw std::logic_error("avx2: a gather that was not lowered");
    if (const auto *halves = std::get_if<std::vector<HalfSource>>(&*shuffle))
        return halvesText(graph, gather, *halves, operands);
    if (const auto *inGroups = std::get_if<Shuffle>(&*shuffle))
        return wide::shuffleInGroups(gather.type, *inGroups, operands);
    return unitsText(gather.type, std::get<UnitOrder>(*shuffle), operands[0]);
}

std::string Avx2::load(Type type, const std::vector<MoveText> &moves) const {
    return has32Bytes(type) ? wide::load(type, moves) : narrower.load(type, wide::wholeFromAnywhere(moves));
}

std::vector<std::string> Avx2::store(Type type, const std::vector<MoveText> &moves,
                                     const std::string &value) const {
    return has32Bytes(type) ? wide::store(moves, value)
                            : narrower.store(type, wide::wholeFromAnywhere(moves), value);
}

} // namespace zrfgen::gen
