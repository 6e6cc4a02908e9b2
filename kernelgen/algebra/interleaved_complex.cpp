#include "algebra/interleaved_complex.h"

namespace zrfgen::gen {

using Column = InterleavedComplex::Column;
using Value = InterleavedComplex::Value;

Column InterleavedComplex::input(int length) {
    Column column;
    for (int j = 0; j < length; ++j)
        column.push_back({graph.load(type, {2 * j, 2 * j + 1})});
    return column;
}

void InterleavedComplex::output(const Column &column) {
    for (int k = 0; k < static_cast<int>(column.size()); ++k)
        graph.store(graph.mul(resolved(column[k]), graph.scale(type)), {2 * k, 2 * k + 1});
}

NodeId InterleavedComplex::turningFactors(Quad factor) {
    return graph.byDirection(graph.constant(type, {factor, -factor}),
                             graph.constant(type, {-factor, factor}));
}

NodeId InterleavedComplex::resolved(Value a) {
    switch (a.quarterTurns) {
    case 0:
        return a.node;
    case 2:
        return graph.flipSigns(a.node, graph.broadcast(type, -1));
    default:
        return graph.flipSigns(exchanged(a.node), turningFactors(a.quarterTurns == 1 ? 1 : -1));
    }
}

Value InterleavedComplex::add(Value a, Value b) {
    switch ((b.quarterTurns - a.quarterTurns + 4) % 4) {
    case 0:
        return {graph.add(a.node, b.node), a.quarterTurns};
    case 2:
        if (a.quarterTurns >= 2) // b has the smaller turn: keep the difference unturned where possible
            return {graph.sub(b.node, a.node), b.quarterTurns};
        return {graph.sub(a.node, b.node), a.quarterTurns};
    case 1:
        return {graph.add(a.node, resolved({b.node, 1})), a.quarterTurns};
    default:
        return {graph.sub(a.node, resolved({b.node, 1})), a.quarterTurns};
    }
}

Value InterleavedComplex::scaled(Value a, Quad factor) {
    if (a.quarterTurns % 2 == 0)
        return {graph.mul(a.node, graph.broadcast(type, factor)), a.quarterTurns};
    return {graph.mul(exchanged(a.node), turningFactors(factor)), a.quarterTurns - 1};
}

Value InterleavedComplex::weightedSum(std::optional<Value> base, const std::vector<Term> &terms) {
    std::optional<Value> total = base;
    for (const Term &term : terms) {
        Value product = scaled(term.value, term.factor < 0 ? -term.factor : term.factor);
        if (term.factor < 0)
            product.quarterTurns = (product.quarterTurns + 2) % 4;
        total = total ? add(*total, product) : product;
    }
    return *total;
}

Value InterleavedComplex::turnedSum(std::vector<Term> terms) {
    for (Term &term : terms)
        term.value = quarterTurn(term.value);
    return weightedSum({}, terms);
}

Value InterleavedComplex::rotate(Value a, Turn angle) {
    if (angle.isMultipleOf(4))
        return {a.node, static_cast<int>(a.quarterTurns + 4 * angle.numerator / angle.denominator) % 4};
    if (angle.isMultipleOf(8)) {
        a.quarterTurns = (a.quarterTurns + static_cast<int>(angle.numerator / 2)) % 4;
        return scaled(add(a, quarterTurn(a)), cosine({1, 8}));
    }
    return weightedSum({}, {{cosine(angle), a}, {sine(angle), quarterTurn(a)}});
}

} // namespace zrfgen::gen
