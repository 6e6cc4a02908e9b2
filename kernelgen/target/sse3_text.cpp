#include "target/sse3.h"
#include "target/sse3_shuffle.h"

#include <stdexcept>

namespace zrfgen::gen {

namespace {

bool isDouble(Type type) {
    return type.element == Element::Float64;
}

// "_mm_add" with the suffix of the type.
std::string intrinsic(const std::string &name, Type type) {
    return "_mm_" + name + (isDouble(type) ? "_pd" : "_ps");
}

std::string call(const std::string &function, const std::string &a, const std::string &b) {
    return function + "(" + a + ", " + b + ")";
}

// A function of the header, with the suffix of the type.
std::string loader(const std::string &name, Type type) {
    return name + (isDouble(type) ? "Doubles" : "Floats");
}

} // namespace

std::string Sse3::type(Type type) const {
    return isDouble(type) ? "__m128d" : "__m128";
}

std::string Sse3::constant(Type type, const std::vector<Quad> &lanes) const {
    std::string values;
    for (const Quad lane : lanes)
        values += (values.empty() ? "" : ", ") + literal(lane, type.element);
    return intrinsic("setr", type) + "(" + values + (isHalf(type) ? ", 0, 0)" : ")");
}

// An integer constant, so that no floating-point rule touches it.
std::string Sse3::signMask(Type type, const std::vector<Quad> &lanes) const {
    std::string words;
    for (const Quad lane : lanes) {
        const std::string sign = lane < 0 ? "signBit" : "0";
        words += (words.empty() ? "" : ", ") + (isDouble(type) ? "0, " + sign : sign);
    }
    return (isDouble(type) ? "_mm_castsi128_pd" : "_mm_castsi128_ps") +
           ("(_mm_setr_epi32(" + words + (isHalf(type) ? ", 0, 0))" : "))"));
}

std::string Sse3::scale(Type type) const {
    return intrinsic("load", type) + "(factor)";
}

std::string Sse3::arithmetic(const Node &node, const std::vector<std::string> &operands) const {
    switch (node.op) {
    case Op::Add:
        return call(intrinsic("add", node.type), operands[0], operands[1]);
    case Op::Sub:
        return call(intrinsic("sub", node.type), operands[0], operands[1]);
    case Op::Mul:
        return call(intrinsic("mul", node.type), operands[0], operands[1]);
    case Op::AddSub:
        return call(intrinsic("addsub", node.type), operands[0], operands[1]);
    case Op::FlipSigns:
        return call(intrinsic("xor", node.type), operands[0], operands[1]);
    case Op::Widen:
        return "_mm_cvtps_pd(" + operands[0] + ")";
    case Op::Narrow:
        return "_mm_cvtpd_ps(" + operands[0] + ")";
    default:
        throw std::logic_error("sse3: no arithmetic");
    }
}

std::string Sse3::shuffle(const Graph &graph, const Node &gather,
                          const std::vector<std::string> &operands) const {
    const Type type = gather.type;
    if (type.lanes == 1)
        return "element<" + std::to_string(gather.picks[0]) + ">(" + operands[0] + ")";
    const auto single = singleShuffle(inRegisters(graph, gather));
    if (!single)
        throw std::logic_error("sse3: a gather that was not lowered");
    const auto vector = [&](int operand) {
        const bool isElement = graph[gather.operands[operand]].type.lanes == 1;
        return isElement ? "inVector(" + operands[operand] + ")" : operands[operand];
    };
    const std::string first = vector(single->first), second = vector(single->second);
    if (single->kind == Shuffle::Kind::UnpackLow)
        return call(intrinsic("unpacklo", type), first, second);
    if (single->kind == Shuffle::Kind::UnpackHigh)
        return call(intrinsic("unpackhi", type), first, second);
    const std::vector<int> &lanes = single->lanes;
    if (isDouble(type) && single->first == single->second && lanes == std::vector{1, 0})
        return "exchanged(" + first + ")";
    if (isDouble(type))
        return "_mm_shuffle_pd(" + first + ", " + second + ", " + std::to_string(lanes[0] + 2 * lanes[1]) +
               ")";
    if (lanes == std::vector{0, 1, 0, 1})
        return call("_mm_movelh_ps", first, second);
    if (lanes == std::vector{2, 3, 2, 3})
        return call("_mm_movehl_ps", second, first);
    std::string order;
    for (int lane = 3; lane >= 0; --lane)
        order += ", " + std::to_string(lanes[lane]);
    return "_mm_shuffle_ps(" + first + ", " + second + ", _MM_SHUFFLE(" + order.substr(2) + "))";
}

std::string Sse3::load(Type type, const std::vector<MoveText> &moves) const {
    const MoveText &first = moves[0];
    if (moves.size() == 2)
        return call(loader("loadHalves", type), first.address, moves[1].address);
    if (isHalf(type) || first.move.lanes < type.lanes)
        return loader("loadLower", type) + "(" + first.address + ")";
    return loader("load", type) + "<" + first.access + ">(" + first.address + ")";
}

std::vector<std::string> Sse3::store(Type type, const std::vector<MoveText> &moves,
                                     const std::string &value) const {
    std::vector<std::string> statements;
    for (const MoveText &text : moves) {
        const bool isWhole = !isHalf(type) && text.move.lanes == type.lanes;
        const std::string function = isWhole               ? "storeVector<" + text.access + ">"
                                     : text.move.lane == 0 ? "storeLower"
                                                           : "storeUpper";
        statements.push_back(call(function, text.address, value));
    }
    return statements;
}

} // namespace zrfgen::gen
