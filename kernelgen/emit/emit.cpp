#include "emit/emit.h"

#include "lanes/shuffle.h"

#include <cstdio>
#include <map>
#include <stdexcept>

namespace zrfgen::gen {

int bytes(Element element) {
    return element == Element::Float32 ? 4 : 8;
}

std::string bits(Element element) {
    return std::to_string(8 * bytes(element));
}

std::string literal(Quad value, Element element) {
    char text[64];
    const bool isSingle = element == Element::Float32;
    std::snprintf(text, sizeof text, isSingle ? "%af" : "%a",
                  isSingle ? static_cast<double>(static_cast<float>(value)) : static_cast<double>(value));
    return text;
}

namespace {

// Two floats lie in the lower half of a vector.
bool isHalf(Type type) {
    return type.element == Element::Float32 && type.lanes == 2;
}

// Where a vector's elements lie in the caller's array: one run, or two halves of which one may be missing.
struct Move {
    bool isWhole;
    int lower, upper; // first element of each half, or idle
};

Move asMove(const std::vector<int> &elements) {
    const int half = static_cast<int>(elements.size()) / 2, lower = elements[0], upper = elements[half];
    return {lower != idle && upper == lower + half, lower, upper};
}

bool isAligned(Type type, const Move &move) {
    return !isHalf(type) && move.isWhole && move.lower % type.lanes == 0;
}

class Emitter {
public:
    Emitter(const Graph &graph, const ArrayTexts &arrays) : graph(graph), arrays(arrays) {}

    std::string body(const Schedule &schedule) {
        std::string code;
        for (const Step &step : schedule)
            code +=
                "        " +
                (step.kind == Step::Kind::Store ? store(graph.stores()[step.index]) : compute(step.index)) +
                ";\n";
        return constants + code;
    }

private:
    bool isDouble(Type type) const { return type.element == Element::Float64; }

    std::string cType(Type type) const {
        if (type.lanes == 1)
            return isDouble(type) ? "Float64" : "Float32";
        return isDouble(type) ? "__m128d" : "__m128";
    }

    // "_mm_add" with the suffix of the type.
    std::string intrinsic(const char *name, Type type) const {
        return std::string("_mm_") + name + (isDouble(type) ? "_pd" : "_ps");
    }

    std::string call(const std::string &function, const std::string &a, const std::string &b) const {
        return function + "(" + a + ", " + b + ")";
    }

    std::string vectorConstant(const Node &node) const {
        if (node.type.lanes == 1) {
            const std::string number = literal(node.values[0], node.type.element);
            return node.values[0] == 2 ? "unknownToCompiler(" + number + ")" : number;
        }
        std::string lanes;
        for (const Quad value : node.values)
            lanes += (lanes.empty() ? "" : ", ") + literal(value, node.type.element);
        if (isHalf(node.type))
            lanes += ", 0, 0";
        return intrinsic("setr", node.type) + "(" + lanes + ")";
    }

    // An integer constant, so that no floating-point rule touches it.
    std::string signMask(const Node &node) const {
        std::string words;
        for (const Quad value : node.values) {
            const std::string sign = value < 0 ? "signBit" : "0";
            words += (words.empty() ? "" : ", ") + (isDouble(node.type) ? "0, " + sign : sign);
        }
        if (isHalf(node.type))
            words += ", 0, 0";
        return (isDouble(node.type) ? "_mm_castsi128_pd" : "_mm_castsi128_ps") +
               ("(_mm_setr_epi32(" + words + "))");
    }

    // The name of a constant, declared at the top of the text on first use.
    std::string constant(NodeId id, bool asMask) {
        const auto [name, isNew] =
            constantNames.try_emplace({id, asMask}, std::to_string(constantNames.size()));
        if (!isNew)
            return name->second;
        const Node &node = graph[id];
        std::string value;
        if (node.op == Op::ByDirection)
            value = byDirection(constant(node.operands[0], asMask), constant(node.operands[1], asMask));
        else if (node.op == Op::Scale)
            value = node.type.lanes == 1  ? "*factor"
                    : isDouble(node.type) ? "_mm_load_pd(factor)"
                                          : "_mm_set1_ps(*factor)";
        else
            value = asMask ? signMask(node) : vectorConstant(node);
        const std::string declared = (node.op == Op::Scale ? "scale" : (asMask ? "s" : "k") + name->second);
        constants += "        const " + cType(node.type) + " " + declared + " = " + value + ";\n";
        return constantNames[{id, asMask}] = declared;
    }

    std::string operand(NodeId id) {
        return isConstant(graph, id) ? constant(id, false) : "v" + std::to_string(id);
    }

    static std::string byDirection(const std::string &forward, const std::string &inverse) {
        return "direction == Direction::Forward ? " + forward + " : " + inverse;
    }

    std::string compute(NodeId id) {
        return "const " + cType(graph[id].type) + " v" + std::to_string(id) + " = " + expression(graph[id]);
    }

    std::string expression(const Node &node) {
        const auto a = [&] { return operand(node.operands[0]); };
        const auto b = [&] { return operand(node.operands[1]); };
        const bool isScalar = node.type.lanes == 1;
        switch (node.op) {
        case Op::Load:
            return load(node);
        case Op::Add:
            return isScalar ? a() + " + " + b() : call(intrinsic("add", node.type), a(), b());
        case Op::Sub:
            return isScalar ? a() + " - " + b() : call(intrinsic("sub", node.type), a(), b());
        case Op::Mul:
            return isScalar ? a() + " * " + b() : call(intrinsic("mul", node.type), a(), b());
        case Op::FlipSigns:
            return isScalar ? "-" + a()
                            : call(intrinsic("xor", node.type), a(), constant(node.operands[1], true));
        case Op::Widen:
        case Op::Narrow:
            if (isScalar)
                return "static_cast<" + cType(node.type) + ">(" + a() + ")";
            return (node.op == Op::Widen ? "_mm_cvtps_pd(" : "_mm_cvtpd_ps(") + a() + ")";
        case Op::Gather:
            return shuffle(node);
        case Op::ByDirection:
            return byDirection(a(), b());
        case Op::Constant:
        case Op::Scale:
            break;
        }
        throw std::logic_error("emit: a constant has no statement");
    }

    std::string shuffle(const Node &node) {
        const auto single = singleShuffle(node);
        if (!single)
            throw std::logic_error("emit: a gather that was not lowered");
        const std::string first = operand(node.operands[single->first]),
                          second = operand(node.operands[single->second]);
        if (single->kind == Shuffle::Kind::UnpackLow)
            return call(intrinsic("unpacklo", node.type), first, second);
        if (single->kind == Shuffle::Kind::UnpackHigh)
            return call(intrinsic("unpackhi", node.type), first, second);
        std::vector<int> lanes = single->lanes;
        if (isDouble(node.type) && single->first == single->second && lanes == std::vector{1, 0})
            return "exchanged(" + first + ")";
        if (isDouble(node.type))
            return "_mm_shuffle_pd(" + first + ", " + second + ", " +
                   std::to_string(lanes[0] + 2 * lanes[1]) + ")";
        if (isHalf(node.type))
            lanes.insert(lanes.end(), {2, 3}); // of one source: halves have nothing to mix yet
        if (lanes == std::vector{0, 1, 0, 1})
            return call("_mm_movelh_ps", first, second);
        if (lanes == std::vector{2, 3, 2, 3})
            return call("_mm_movehl_ps", second, first);
        std::string order;
        for (int lane = 3; lane >= 0; --lane)
            order += ", " + std::to_string(lanes[lane]);
        return "_mm_shuffle_ps(" + first + ", " + second + ", _MM_SHUFFLE(" + order.substr(2) + "))";
    }

    static std::string address(const char *name, const ArrayText &array, int element, Element type) {
        if (array.address)
            return array.address(element);
        return element == 0 ? name : name + (" + " + std::to_string(element * bytes(type)));
    }

    std::string source(int element, Element type) const {
        return address("src", arrays.source, element, type);
    }

    std::string destination(int element, Element type) const {
        return address("dst", arrays.destination, element, type);
    }

    static std::string access(const ArrayText &array, Type type, const Move &move) {
        return "<" + (isAligned(type, move) ? array.access : "Access::Unaligned") + ">";
    }

    std::string load(const Node &node) const {
        const Element element = node.type.element;
        if (node.type.lanes == 1)
            return "loadElement<" + cType(node.type) + ">(" + source(node.picks[0], element) + ")";
        const Move move = asMove(node.picks);
        const std::string suffix = isDouble(node.type) ? "Doubles" : "Floats";
        if (isHalf(node.type) || move.upper == idle)
            return "loadLower" + suffix + "(" + source(move.lower, element) + ")";
        if (move.isWhole)
            return "load" + suffix + access(arrays.source, node.type, move) + "(" +
                   source(move.lower, element) + ")";
        return call("loadHalves" + suffix, source(move.lower, element), source(move.upper, element));
    }

    std::string store(const Store &store) {
        const Type type = graph[store.value].type;
        const std::string value = operand(store.value);
        if (type.lanes == 1)
            return call("storeElement", destination(store.offsets[0], type.element), value);
        const Move move = asMove(store.offsets);
        if (!isHalf(type) && move.isWhole)
            return call("storeVector" + access(arrays.destination, type, move),
                        destination(move.lower, type.element), value);
        std::string text = call("storeLower", destination(move.lower, type.element), value);
        if (!isHalf(type) && move.upper != idle)
            text += ";\n        " + call("storeUpper", destination(move.upper, type.element), value);
        return text;
    }

    const Graph &graph;
    const ArrayTexts &arrays;
    std::map<std::pair<NodeId, bool>, std::string> constantNames;
    std::string constants;
};

} // namespace

std::string emitBody(const Graph &graph, const Schedule &schedule, const ArrayTexts &arrays) {
    return Emitter(graph, arrays).body(schedule);
}

bool hasAlignedMoves(const Graph &graph) {
    for (const NodeId id : liveNodes(graph))
        if (graph[id].op == Op::Load && graph[id].type.lanes > 1 &&
            isAligned(graph[id].type, asMove(graph[id].picks)))
            return true;
    for (const Store &store : graph.stores())
        if (store.offsets.size() > 1 && isAligned(graph[store.value].type, asMove(store.offsets)))
            return true;
    return false;
}

} // namespace zrfgen::gen
