#include "algebra/real.h"

namespace zrfgen::gen {

Real RealArithmetic::sum(Real a, Real b) {
    if (a.node == zeroNode || b.node == zeroNode)
        return a.node == zeroNode ? b : a;
    if (a.isNegative == b.isNegative)
        return {graph.add(a.node, b.node), a.isNegative};
    return a.isNegative ? Real{graph.sub(b.node, a.node)} : Real{graph.sub(a.node, b.node)};
}

Real RealArithmetic::weightedSum(std::optional<Real> base, const std::vector<RealTerm> &terms) {
    const bool isDoubling = !base && terms.size() == 1 && (terms[0].factor == 2 || terms[0].factor == -2);
    if (products == Products::Wide && !isDoubling)
        return sumInFloat64(
            graph, RealArithmetic(graph, {Element::Float64, valueType.lanes}, Products::Narrow), base, terms);
    std::optional<Real> total = base;
    for (const RealTerm &term : terms) {
        const bool isNegative = term.factor < 0;
        Real product =
            scaled(term.value, graph.broadcast(valueType, isNegative ? -term.factor : term.factor));
        if (isNegative)
            product = -product;
        total = total ? sum(*total, product) : product;
    }
    return *total;
}

NodeId widened(Graph &graph, NodeId a) {
    return graph[a].op == Op::Narrow ? graph[a].operands[0] : graph.widen(a);
}

NodeId RealArithmetic::scaledByCall(Real a) {
    const bool isWide = graph[a.node].op == Op::Narrow;
    NodeId value = isWide ? widened(graph, a.node) : a.node;
    if (a.isNegative)
        value = graph.sub(graph.broadcast(graph[value].type, 0), value);
    const NodeId scale = graph.scale(valueType);
    return isWide ? graph.narrow(graph.mul(value, graph.widen(scale))) : graph.mul(value, scale);
}

NodeId RealArithmetic::resolved(Real a) {
    return a.isNegative ? graph.flipSigns(a.node, graph.broadcast(valueType, -1)) : a.node;
}

} // namespace zrfgen::gen
