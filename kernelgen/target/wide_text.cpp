#include "target/wide_text.h"

#include <stdexcept>

namespace zrfgen::gen::wide {

namespace {

int bitsOf(Type type) {
    return 8 * type.lanes * bytes(type.element);
}

std::string suffix(Type type) {
    return type.element == Element::Float64 ? "pd" : "ps";
}

} // namespace

std::string call(const std::string &function, const std::vector<std::string> &arguments) {
    std::string list;
    for (const std::string &argument : arguments)
        list += (list.empty() ? "" : ", ") + argument;
    return function + "(" + list + ")";
}

std::string intrinsic(const std::string &name, Type type) {
    return "_mm" + std::to_string(bitsOf(type)) + "_" + name + "_" + suffix(type);
}

std::string type(Type type) {
    return "__m" + std::to_string(bitsOf(type)) + (type.element == Element::Float64 ? "d" : "");
}

std::string constant(Type type, const std::vector<Quad> &lanes) {
    std::vector<std::string> values;
    for (const Quad lane : lanes)
        values.push_back(literal(lane, type.element));
    return call(intrinsic("setr", type), values);
}

std::string signMask(Type type, const std::vector<Quad> &lanes) {
    std::vector<std::string> words;
    for (const Quad lane : lanes) {
        if (type.element == Element::Float64)
            words.push_back("0");
        words.push_back(lane < 0 ? "signBit" : "0");
    }
    const std::string bits = std::to_string(bitsOf(type)), prefix = "_mm" + bits + "_";
    return call(prefix + "castsi" + bits + "_" + suffix(type), {call(prefix + "setr_epi32", words)});
}

std::string arithmetic(const Node &node, const std::vector<std::string> &operands) {
    switch (node.op) {
    case Op::Add:
        return call(intrinsic("add", node.type), operands);
    case Op::Sub:
        return call(intrinsic("sub", node.type), operands);
    case Op::Mul:
        return call(intrinsic("mul", node.type), operands);
    case Op::FlipSigns:
        return call(intrinsic("xor", node.type), operands);
    default:
        throw std::logic_error("no arithmetic on wide vectors");
    }
}

std::string shuffleInGroups(Type type, const Shuffle &shuffle, const std::vector<std::string> &operands) {
    const std::string &a = operands[shuffle.first], &b = operands[shuffle.second];
    if (shuffle.kind == Shuffle::Kind::UnpackLow)
        return call(intrinsic("unpacklo", type), {a, b});
    if (shuffle.kind == Shuffle::Kind::UnpackHigh)
        return call(intrinsic("unpackhi", type), {a, b});
    int immediate = 0;
    if (type.element == Element::Float64) // a bit for each lane
        for (int lane = type.lanes - 1; lane >= 0; --lane)
            immediate = 2 * immediate + shuffle.lanes[lane % 2];
    else
        for (int lane = 3; lane >= 0; --lane)
            immediate = 4 * immediate + shuffle.lanes[lane];
    if (a == b)
        return call(intrinsic("permute", type), {a, std::to_string(immediate)});
    return call(intrinsic("shuffle", type), {a, b, std::to_string(immediate)});
}

std::string castUp(Type type, const std::string &value) {
    const std::string s = suffix(type), bits = std::to_string(bitsOf(type));
    return call("_mm" + bits + "_cast" + s + std::to_string(bitsOf(type) / 2) + "_" + s + bits, {value});
}

std::string castDown(Type type, const std::string &value) {
    const std::string s = suffix(type), bits = std::to_string(bitsOf(type));
    return call("_mm" + bits + "_cast" + s + bits + "_" + s + std::to_string(bitsOf(type) / 2), {value});
}

std::string load(Type type, const std::vector<MoveText> &moves) {
    const std::string vector =
        std::to_string(bitsOf(type)) + (type.element == Element::Float64 ? "Doubles" : "Floats");
    return moves.size() == 1 ? call("load" + vector, {moves[0].address})
                             : call("loadHalves" + vector, {moves[0].address, moves[1].address});
}

std::vector<std::string> store(const std::vector<MoveText> &moves, const std::string &value) {
    if (moves.size() == 1)
        return {call("storeWide", {moves[0].address, value})};
    return {call("storeHalves", {moves[0].address, moves[1].address, value})};
}

std::vector<MoveText> wholeFromAnywhere(std::vector<MoveText> moves) {
    for (MoveText &move : moves)
        move.access = "Access::UnalignedWhole";
    return moves;
}

} // namespace zrfgen::gen::wide
