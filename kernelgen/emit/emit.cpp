#include "emit/emit.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

namespace zrfgen::gen {

namespace {

class Emitter {
public:
    Emitter(const Graph &graph, const ArrayTexts &arrays, const InstructionSet &vectors)
        : graph(graph), arrays(arrays), vectors(vectors) {}

    std::string body(const Schedule &schedule) {
        std::string code;
        for (const Step &step : schedule)
            if (step.kind == Step::Kind::Store)
                store(code, graph.stores()[step.index]);
            else
                addLine(code, compute(step.index));
        return constants + code;
    }

private:
    static void addLine(std::string &code, const std::string &statement) {
        code += "        " + statement + ";\n";
    }

    std::string cType(Type type) const {
        return type.lanes == 1 ? "Float" + bits(type.element) : vectors.type(type);
    }

    std::string constantValue(const Node &node, bool asMask) const {
        const bool isVector = node.type.lanes > 1;
        if (asMask)
            return vectors.signMask(node.type, node.values);
        if (node.op == Op::Scale)
            return isVector ? vectors.scale(node.type) : "*factor";
        const std::string value =
            isVector ? vectors.constant(node.type, node.values) : literal(node.values[0], node.type.element);
        const bool isTwo = std::ranges::all_of(node.values, [](Quad lane) { return lane == 2; });
        return isTwo ? "unknownToCompiler(" + value + ")" : value;
    }

    // There may be vectors of several widths, and each asks once.
    std::string scaleName(Type type) {
        return std::exchange(hasScale, true) ? "scale" + std::to_string(type.lanes) : "scale";
    }

    // The name of a constant, declared at the top of the text on first use.
    std::string constant(NodeId id, bool asMask) {
        const auto [name, isNew] =
            constantNames.try_emplace({id, asMask}, std::to_string(constantNames.size()));
        if (!isNew)
            return name->second;
        const Node &node = graph[id];
        const std::string value = node.op == Op::ByDirection ? byDirection(constant(node.operands[0], asMask),
                                                                           constant(node.operands[1], asMask))
                                                             : constantValue(node, asMask);
        const std::string declared =
            node.op == Op::Scale ? scaleName(node.type) : (asMask ? "s" : "k") + name->second;
        addLine(constants, "const " + cType(node.type) + " " + declared + " = " + value);
        return constantNames[{id, asMask}] = declared;
    }

    std::string operand(NodeId id) {
        return isConstant(graph, id) ? constant(id, false) : "v" + std::to_string(id);
    }

    static std::string byDirection(const std::string &forward, const std::string &inverse) {
        return "direction == KernelDirection::Forward ? " + forward + " : " + inverse;
    }

    std::string compute(NodeId id) {
        return "const " + cType(graph[id].type) + " v" + std::to_string(id) + " = " + expression(graph[id]);
    }

    std::string expression(const Node &node) {
        std::vector<std::string> operands;
        for (const NodeId id : node.operands) {
            const bool isMask = node.op == Op::FlipSigns && !operands.empty();
            if (!isMask || node.type.lanes > 1)
                operands.push_back(isMask ? constant(id, true) : operand(id));
        }
        if (node.op == Op::Load)
            return load(node);
        if (node.op == Op::ByDirection)
            return byDirection(operands[0], operands[1]);
        if (node.op == Op::Gather)
            return vectors.shuffle(graph, node, operands);
        return node.type.lanes == 1 ? scalarArithmetic(node, operands) : vectors.arithmetic(node, operands);
    }

    std::string scalarArithmetic(const Node &node, const std::vector<std::string> &operands) const {
        switch (node.op) {
        case Op::Add:
            return operands[0] + " + " + operands[1];
        case Op::Sub:
            return operands[0] + " - " + operands[1];
        case Op::Mul:
            return operands[0] + " * " + operands[1];
        case Op::FlipSigns:
            return "-" + operands[0];
        case Op::Widen:
        case Op::Narrow:
            return "static_cast<" + cType(node.type) + ">(" + operands[0] + ")";
        default:
            throw std::logic_error("emit: no arithmetic");
        }
    }

    static std::string address(const char *name, const ArrayText &array, int element, Element type) {
        if (array.address)
            return array.address(element);
        return element == 0 ? name : name + (" + " + std::to_string(element * bytes(type)));
    }

    std::vector<MoveText> moves(const char *name, const ArrayText &array, Type type,
                                const std::vector<int> &elements) const {
        std::vector<MoveText> texts;
        for (const Move &move : vectors.moves(type, elements))
            texts.push_back({move, address(name, array, move.element, type.element),
                             vectors.isAligned(type, move) ? array.access : array.accessElsewhere});
        return texts;
    }

    std::string load(const Node &node) const {
        const Type type = node.type;
        if (type.lanes == 1)
            return "loadElement<" + cType(type) + ">(" +
                   address("src", arrays.source, node.picks[0], type.element) + ")";
        return vectors.load(type, moves("src", arrays.source, type, node.picks));
    }

    void store(std::string &code, const Store &store) {
        const Type type = graph[store.value].type;
        const std::string value = operand(store.value);
        if (type.lanes == 1)
            return addLine(code, "storeElement(" +
                                     address("dst", arrays.destination, store.offsets[0], type.element) +
                                     ", " + value + ")");
        for (const std::string &statement :
             vectors.store(type, moves("dst", arrays.destination, type, store.offsets), value))
            addLine(code, statement);
    }

    const Graph &graph;
    const ArrayTexts &arrays;
    const InstructionSet &vectors;
    std::map<std::pair<NodeId, bool>, std::string> constantNames;
    bool hasScale = false;
    std::string constants;
};

} // namespace

ArrayTexts arraysAnywhere() {
    const ArrayText anywhere{{}, "Access::UnalignedWhole", "Access::UnalignedWhole"};
    return {anywhere, anywhere};
}

std::string emitBody(const Graph &graph, const Schedule &schedule, const ArrayTexts &arrays,
                     const Target &target) {
    return Emitter(graph, arrays, target.instructions()).body(schedule);
}

bool hasAlignedMoves(const Graph &graph, const ArrayTexts &arrays, const Target &target) {
    const auto hasOne = [&](const ArrayText &array, Type type, const std::vector<int> &elements) {
        return array.access == ArrayText{}.access && type.lanes > 1 &&
               std::ranges::any_of(target.instructions().moves(type, elements), [&](const Move &move) {
                   return target.instructions().isAligned(type, move);
               });
    };
    return std::ranges::any_of(liveNodes(graph),
                               [&](NodeId id) {
                                   const Node &node = graph[id];
                                   return node.op == Op::Load && hasOne(arrays.source, node.type, node.picks);
                               }) ||
           std::ranges::any_of(graph.stores(), [&](const Store &store) {
               return hasOne(arrays.destination, graph[store.value].type, store.offsets);
           });
}

} // namespace zrfgen::gen
