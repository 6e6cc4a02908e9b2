#include "target/avx2_shuffle.h"
#include "target/avx512.h"
#include "target/halves.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

// Any lanes of one or two vectors, by their numbers, in vectors of the widest type, into which others are
// cast.
std::string permutation(const Graph &graph, const Node &gather, const std::vector<std::string> &operands,
                        Type type) {
    const auto cast = [&](int operand) {
        std::string value = operands[operand];
        const int lanes = std::max(graph[gather.operands[operand]].type.lanes, 16 / bytes(type.element));
        for (Type from{type.element, lanes}; from.lanes < type.lanes; from.lanes *= 2)
            value = wide::castUp({type.element, 2 * from.lanes}, value);
        return value;
    };
    std::vector<std::string> numbers;
    for (int lane = 0; lane < type.lanes; ++lane) {
        int number = 0;
        if (lane < gather.type.lanes && gather.picks[lane] != idle) {
            const Graph::Place place = graph.placeOf(gather.operands, gather.picks[lane]);
            number = place.operand * type.lanes + place.lane;
        }
        if (type.element == Element::Float64)
            numbers.insert(numbers.end(), {std::to_string(number), "0"});
        else
            numbers.push_back(std::to_string(number));
    }
    const int bits = 8 * bytes(type);
    const std::string prefix = bits == 128 ? "_mm_" : "_mm" + std::to_string(bits) + "_",
                      suffix = type.element == Element::Float64 ? "pd" : "ps",
                      index = wide::call(prefix + "setr_epi32", numbers);
    std::string result = operands.size() == 2
                             ? wide::call(prefix + "permutex2var_" + suffix, {cast(0), index, cast(1)})
                             : wide::call(prefix + "permutexvar_" + suffix, {index, cast(0)});
    for (; type.lanes > gather.type.lanes; type.lanes /= 2)
        result = wide::castDown(type, result);
    return result;
}

// One half in a vector of its own, or two side by side.
std::string halvesText(const Graph &graph, const Node &gather, const std::vector<HalfSource> &halves,
                       const std::vector<std::string> &operands) {
    const bool isDouble = gather.type.element == Element::Float64;
    const Type whole{gather.type.element, 64 / bytes(gather.type.element)};
    const auto isWhole = [&](HalfSource source) {
        return bytes(graph[gather.operands[source.operand]].type) == 64;
    };
    const auto value = [&](HalfSource source) {
        const std::string &operand = operands[source.operand];
        return isWhole(source) ? operand : wide::castUp(whole, operand);
    };
    const HalfSource first = halves[0];
    if (halves.size() == 1)
        return first.half == 0 ? wide::castDown(whole, value(first))
                               : wide::call(isDouble ? "_mm512_extractf64x4_pd" : "_mm512_extractf32x8_ps",
                                            {value(first), "1"});
    const HalfSource second = halves[1];
    if (first.half == 0 && second.half == 0) {
        const std::string &upper = operands[second.operand];
        return wide::call(isDouble ? "_mm512_insertf64x4" : "_mm512_insertf32x8",
                          {value(first), isWhole(second) ? wide::castDown(whole, upper) : upper, "1"});
    }
    const int immediate = (first.half == 0 ? 0x4 : 0xe) + 16 * (second.half == 0 ? 0x4 : 0xe);
    return wide::call(isDouble ? "_mm512_shuffle_f64x2" : "_mm512_shuffle_f32x4",
                      {value(first), value(second), std::to_string(immediate)});
}

} // namespace

std::string Avx512::shuffle(const Graph &graph, const Node &gather,
                            const std::vector<std::string> &operands) const {
    Type widest = gather.type;
    for (const NodeId operand : gather.operands)
        widest.lanes = std::max(widest.lanes, graph[operand].type.lanes);
    if (isWide(widest)) {
        if (const auto halves = wholeHalves(graph, gather, 32 / bytes(gather.type.element)))
            return halvesText(graph, gather, *halves, operands);
        if (const auto inGroups = shuffleInGroups(graph, gather))
            return wide::shuffleInGroups(gather.type, *inGroups, operands);
    } else if (bytes(gather.type) < 16 ||
               (bytes(widest) == 32 ? wideShuffle(graph, gather).has_value()
                                    : singleShuffle(inRegisters(graph, gather)).has_value())) {
        return narrower.shuffle(graph, gather, operands);
    }
    return permutation(graph, gather, operands, widest);
}

} // namespace zrfgen::gen
