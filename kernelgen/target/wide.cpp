#include "target/wide.h"

#include "target/halves.h"

#include <algorithm>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

int bitsOf(Type type) {
    return 8 * bytes(type);
}

std::string suffix(Type type) {
    return type.element == Element::Float64 ? "pd" : "ps";
}

} // namespace

namespace wide {

std::string call(const std::string &function, const std::vector<std::string> &arguments) {
    std::string list;
    for (const std::string &argument : arguments)
        list += (list.empty() ? "" : ", ") + argument;
    return function + "(" + list + ")";
}

std::string intrinsic(const std::string &name, Type type) {
    return "_mm" + std::to_string(bitsOf(type)) + "_" + name + "_" + suffix(type);
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

} // namespace wide

NodeId WideInstructionSet::loweredLoad(Graph &graph, const Node &load) const {
    return isWide(load.type) ? loadedByHalves(graph, load, *this) : narrower.loweredLoad(graph, load);
}

void WideInstructionSet::lowerStore(Graph &graph, const Store &store) const {
    isWide(graph[store.value].type) ? storeByHalves(graph, store, *this) : narrower.lowerStore(graph, store);
}

std::vector<Move> WideInstructionSet::moves(Type type, const std::vector<int> &elements) const {
    return isWide(type) ? movesOfHalves(type, elements) : narrower.moves(type, elements);
}

bool WideInstructionSet::hasWide(const Graph &graph, const Node &gather) const {
    return isWide(gather.type) ||
           std::ranges::any_of(gather.operands, [&](NodeId operand) { return isWide(graph[operand].type); });
}

std::string WideInstructionSet::type(Type type) const {
    if (!isWide(type))
        return narrower.type(type);
    return "__m" + std::to_string(bitsOf(type)) + (type.element == Element::Float64 ? "d" : "");
}

std::string WideInstructionSet::constant(Type type, const std::vector<Quad> &lanes) const {
    if (!isWide(type))
        return narrower.constant(type, lanes);
    std::vector<std::string> values;
    for (const Quad lane : lanes)
        values.push_back(literal(lane, type.element));
    return wide::call(wide::intrinsic("setr", type), values);
}

// An integer constant, so that no floating-point rule touches it.
std::string WideInstructionSet::signMask(Type type, const std::vector<Quad> &lanes) const {
    if (!isWide(type))
        return narrower.signMask(type, lanes);
    std::vector<std::string> words;
    for (const Quad lane : lanes) {
        if (type.element == Element::Float64)
            words.push_back("0");
        words.push_back(lane < 0 ? "signBit" : "0");
    }
    const std::string bits = std::to_string(bitsOf(type)), prefix = "_mm" + bits + "_";
    return wide::call(prefix + "castsi" + bits + "_" + suffix(type),
                      {wide::call(prefix + "setr_epi32", words)});
}

std::string WideInstructionSet::scale(Type type) const {
    return isWide(type) ? wide::call(wide::intrinsic("load", type), {"factor"}) : narrower.scale(type);
}

std::string WideInstructionSet::arithmetic(const Node &node, const std::vector<std::string> &operands) const {
    // The wider type of a conversion says how wide it is.
    if (node.op == Op::Narrow && isWide({Element::Float64, node.type.lanes}))
        return wide::call("_mm" + std::to_string(8 * width) + "_cvtpd_ps", operands);
    if (!isWide(node.type))
        return narrower.arithmetic(node, operands);
    switch (node.op) {
    case Op::Add:
        return wide::call(wide::intrinsic("add", node.type), operands);
    case Op::Sub:
        return wide::call(wide::intrinsic("sub", node.type), operands);
    case Op::Mul:
        return wide::call(wide::intrinsic("mul", node.type), operands);
    case Op::AddSub:
        return wide::call(wide::intrinsic("addsub", node.type), operands);
    case Op::Widen:
        return wide::call("_mm" + std::to_string(8 * width) + "_cvtps_pd", operands);
    case Op::FlipSigns:
        return wide::call(wide::intrinsic("xor", node.type), operands);
    default:
        throw std::logic_error("no arithmetic on wide vectors");
    }
}

namespace {

// Narrower vectors move whole as well.
std::vector<MoveText> fromAnywhere(std::vector<MoveText> moves) {
    for (MoveText &move : moves)
        move.access = "Access::UnalignedWhole";
    return moves;
}

} // namespace

std::string WideInstructionSet::load(Type type, const std::vector<MoveText> &moves) const {
    if (!isWide(type))
        return narrower.load(type, fromAnywhere(moves));
    const std::string vector =
        std::to_string(bitsOf(type)) + (type.element == Element::Float64 ? "Doubles" : "Floats");
    if (moves[0].move.lanes == 1)
        return wide::call("copiesOf" + vector, {moves[0].address});
    return moves.size() == 1 ? wide::call("load" + vector, {moves[0].address})
                             : wide::call("loadHalves" + vector, {moves[0].address, moves[1].address});
}

std::vector<std::string> WideInstructionSet::store(Type type, const std::vector<MoveText> &moves,
                                                   const std::string &value) const {
    if (!isWide(type))
        return narrower.store(type, fromAnywhere(moves), value);
    if (moves.size() == 1)
        return {wide::call("storeWide", {moves[0].address, value})};
    return {wide::call("storeHalves", {moves[0].address, moves[1].address, value})};
}

} // namespace zrfgen::gen
