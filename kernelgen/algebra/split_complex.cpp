#include "algebra/split_complex.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace zrfgen::gen {

using Column = SplitComplex::Column;
using Value = SplitComplex::Value;

Column SplitComplex::input(int length) const {
    Column column;
    for (int j = 0; j < length; ++j)
        column.push_back({{noNode, 2 * j}, {noNode, 2 * j + 1}});
    return column;
}

Real SplitComplex::gathered(const std::vector<Slot> &slots) {
    const Type type = real.type();
    const auto isZero = [](const Slot &slot) { return slot.node == zeroNode; };
    if (std::all_of(slots.begin(), slots.end(), isZero))
        return {zeroNode};
    if (slots[0].node == noNode) {
        std::vector<int> forward(type.lanes, idle), exchanged(type.lanes, idle);
        for (std::size_t lane = 0; lane < slots.size(); ++lane) {
            forward[lane] = slots[lane].lane;
            exchanged[lane] = slots[lane].lane ^ 1;
        }
        const NodeId loaded = graph.load(type, forward);
        return {inverse == InverseBy::Exchange ? graph.byDirection(loaded, graph.load(type, exchanged))
                                               : loaded};
    }
    std::vector<NodeId> sources;
    std::vector<int> picks(type.lanes, idle);
    std::vector<Quad> signs(type.lanes, 1);
    bool sameSign = true;
    for (std::size_t lane = 0; lane < slots.size(); ++lane) {
        picks[lane] = static_cast<int>(sources.size()) * type.lanes + slots[lane].lane;
        sources.push_back(isZero(slots[lane]) ? graph.broadcast(type, 0) : slots[lane].node);
        signs[lane] = slots[lane].isNegative ? -1 : 1;
        sameSign = sameSign && slots[lane].isNegative == slots[0].isNegative;
    }
    const NodeId node = graph.gather(sources, picks);
    if (sameSign)
        return {node, slots[0].isNegative};
    return {graph.flipSigns(node, graph.constant(type, signs))};
}

Value SplitComplex::gathered(const Column &elements, int) {
    std::vector<Slot> re, im;
    for (const Element &element : elements) {
        re.push_back(element.re);
        im.push_back(element.im);
    }
    return {gathered(re), gathered(im)};
}

Column SplitComplex::addedToFirst(Column elements, const Element &term) {
    const int lanes = real.type().lanes, lane = elements[0].re.lane;
    const NodeId zero = graph.broadcast(real.type(), 0), first = elements[0].re.node;
    std::vector<int> picks(lanes);
    for (int other = 0; other < lanes; ++other)
        picks[other] = other == lane ? 0 : lanes + other;
    const Value value = gathered(Column{term});
    const Value alone{{graph.gather({value.re.node, zero}, picks), value.re.isNegative},
                      {graph.gather({value.im.node, zero}, picks), value.im.isNegative}};
    const Value sum = add(alone, vectorOf(elements[0]));
    for (Element &other : elements)
        if (other.re.node == first)
            other = element(sum, other.re.lane);
    return elements;
}

Value SplitComplex::weightedSum(std::optional<Value> base, const std::vector<Term> &terms) {
    std::vector<RealTerm> re, im;
    for (const Term &term : terms) {
        re.push_back({term.factor, term.value.re});
        im.push_back({term.factor, term.value.im});
    }
    if (!base)
        return {real.weightedSum({}, re), real.weightedSum({}, im)};
    return {real.weightedSum(base->re, re), real.weightedSum(base->im, im)};
}

Value SplitComplex::products(Value a, const std::vector<Turn> &angles) {
    std::vector<ComplexQuad> factors;
    for (const Turn own : angles)
        factors.push_back({cosine(own), 0 - sine(own)}); // +0 where the sine is 0
    return multiply(a, constant(factors, factors));
}

Value SplitComplex::multiply(Value a, Value factor) {
    const NodeId re = factor.re.node, im = factor.im.node;
    return {real.sub(real.scaled(a.re, re), real.scaled(a.im, im)),
            real.add(real.scaled(a.re, im), real.scaled(a.im, re))};
}

Column SplitComplex::multiplied(const Column &elements, const std::vector<ComplexQuad> &forward,
                                const std::vector<ComplexQuad> &inverse) {
    std::map<NodeId, std::vector<int>> vectors;
    for (int i = 0; i < static_cast<int>(elements.size()); ++i)
        vectors[elements[i].re.node].push_back(i);
    Column results(elements.size());
    for (const auto &[node, indices] : vectors) {
        std::vector<ComplexQuad> forwardLanes(real.type().lanes), inverseLanes(real.type().lanes);
        for (const int i : indices) {
            forwardLanes[elements[i].re.lane] = forward[i];
            inverseLanes[elements[i].re.lane] = inverse[i];
        }
        const Value product = multiply(vectorOf(elements[indices[0]]), constant(forwardLanes, inverseLanes));
        for (const int i : indices)
            results[i] = element(product, elements[i].re.lane);
    }
    return results;
}

Value SplitComplex::constant(const std::vector<ComplexQuad> &forward,
                             const std::vector<ComplexQuad> &inverse) {
    const auto part = [&](const std::vector<ComplexQuad> &values, Quad ComplexQuad::*member) {
        std::vector<Quad> lanes;
        for (int lane = 0; lane < real.type().lanes; ++lane) // idle lanes repeat the first one's constant
            lanes.push_back(values[lane < static_cast<int>(values.size()) ? lane : 0].*member);
        return graph.constant(real.type(), lanes);
    };
    const auto both = [&](Quad ComplexQuad::*member) {
        return Real{graph.byDirection(part(forward, member), part(inverse, member))};
    };
    return {both(&ComplexQuad::re), both(&ComplexQuad::im)};
}

void SplitComplex::output(const Column &column) {
    const Type type = real.type();
    const NodeId scale = graph.scale(type);
    const int length = static_cast<int>(column.size());
    // The two parts in the order in which the direction writes them.
    const auto parts = [&](const Element &element) {
        const NodeId re = real.resolved({element.re.node, element.re.isNegative});
        const NodeId im = real.resolved({element.im.node, element.im.isNegative});
        if (inverse == InverseBy::Constants)
            return std::pair{re, im};
        return std::pair{graph.byDirection(re, im), graph.byDirection(im, re)};
    };
    // Neighbouring lanes of a vector pair fill one interleaved vector: that many complex numbers fit.
    const int perVector = type.lanes / 2;
    std::map<std::tuple<NodeId, NodeId, int>, std::vector<int>> vectors;
    for (int k = 0; k < length; ++k) {
        const Element &element = column[k];
        vectors[{element.re.node, element.im.node, element.re.lane / perVector}].push_back(k);
    }
    for (const auto &[place, indices] : vectors) {
        const auto [first, second] = parts(column[indices[0]]);
        std::vector<int> picks(type.lanes, idle), offsets(type.lanes, idle);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            const int lane = column[indices[i]].re.lane;
            picks[2 * i] = lane;
            picks[2 * i + 1] = type.lanes + lane;
            offsets[2 * i] = 2 * indices[i];
            offsets[2 * i + 1] = 2 * indices[i] + 1;
        }
        graph.store(graph.mul(graph.gather({first, second}, picks), scale), offsets);
    }
}

} // namespace zrfgen::gen
