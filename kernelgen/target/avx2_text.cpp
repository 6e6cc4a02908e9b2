#include "target/avx2.h"
#include "target/avx2_shuffle.h"

#include <stdexcept>

namespace zrfgen::gen {

namespace {

std::string halvesText(const Graph &graph, const Node &gather, const std::vector<HalfSource> &halves,
                       const std::vector<std::string> &operands) {
    const auto isWhole = [&](HalfSource source) {
        return bytes(graph[gather.operands[source.operand]].type) == 32;
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

std::string Avx2::shuffle(const Graph &graph, const Node &gather,
                          const std::vector<std::string> &operands) const {
    if (!hasWide(graph, gather))
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

} // namespace zrfgen::gen
