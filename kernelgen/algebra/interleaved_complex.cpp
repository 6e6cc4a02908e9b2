#include "algebra/interleaved_complex.h"

#include <algorithm>
#include <functional>
#include <map>

namespace zrfgen::gen {

using Column = InterleavedComplex::Column;
using Value = InterleavedComplex::Value;

namespace {

// The elements of a column by the vector in which they lie, in the order of their places there.
std::map<NodeId, std::vector<int>> byVector(const Column &elements) {
    std::map<NodeId, std::vector<int>> vectors;
    for (int i = 0; i < static_cast<int>(elements.size()); ++i)
        vectors[elements[i].node].push_back(i);
    for (auto &[node, indices] : vectors)
        std::sort(indices.begin(), indices.end(),
                  [&](int i, int j) { return elements[i].place < elements[j].place; });
    return vectors;
}

Quad sign(bool isNegative) {
    return isNegative ? -1 : 1;
}

// Constants 0 and -0 are one node.
bool isNonzeroConstant(const Graph &graph, NodeId id) {
    const Node &node = graph[graph[id].op == Op::ByDirection ? graph[id].operands[0] : id];
    return node.op == Op::Constant && std::ranges::any_of(node.values, [](Quad x) { return x != 0; });
}

} // namespace

Column InterleavedComplex::input(int length) {
    Column column;
    for (int j = 0; j < length; ++j)
        column.push_back({noNode, j});
    return column;
}

void InterleavedComplex::output(const Column &column) {
    for (const auto &[node, indices] : byVector(column)) {
        Column elements;
        std::vector<int> offsets(type.lanes, idle);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            elements.push_back(column[indices[i]]);
            offsets[2 * i] = 2 * indices[i];
            offsets[2 * i + 1] = 2 * indices[i] + 1;
        }
        graph.store(graph.mul(resolved(gathered(elements)), graph.scale(type)), offsets);
    }
}

NodeId InterleavedComplex::constant(const std::vector<Quad> &even, const std::vector<Quad> &odd) {
    std::vector<Quad> lanes;
    for (int place = 0; place < perVector(); ++place) {
        // Idle places repeat the first one's constant.
        const std::size_t own = place < static_cast<int>(even.size()) ? place : 0;
        lanes.push_back(even[own]);
        lanes.push_back(odd[own]);
    }
    return graph.constant(type, lanes);
}

NodeId InterleavedComplex::factors(const std::vector<std::array<Quad, 2>> &parts) {
    std::vector<Quad> re, im;
    for (const auto &[first, second] : parts) {
        re.push_back(first);
        im.push_back(second);
    }
    const NodeId forward = constant(re, im);
    return inverse == InverseBy::Exchange ? graph.byDirection(forward, constant(im, re)) : forward;
}

NodeId InterleavedComplex::exchanged(NodeId a) {
    std::vector<int> picks;
    for (int lane = 0; lane < type.lanes; ++lane)
        picks.push_back(lane ^ 1);
    return graph.gather({a}, picks);
}

Value InterleavedComplex::negate(Value a) {
    const auto [re, im] = a.pose.isNegative;
    return {a.node, {a.pose.isExchanged, {!re, !im}}};
}

Value InterleavedComplex::quarterTurn(Value a) { // -i (a + i b) = b - i a
    const auto [re, im] = a.pose.isNegative;
    return {a.node, {!a.pose.isExchanged, {im, !re}}};
}

NodeId InterleavedComplex::signedConstant(NodeId a, NodeId signs) {
    const auto inDirection = [&](std::size_t direction) {
        const auto values = [&](NodeId id) {
            return graph[graph[id].op == Op::ByDirection ? graph[id].operands[direction] : id].values;
        };
        std::vector<Quad> lanes = values(a);
        std::ranges::transform(lanes, values(signs), lanes.begin(), std::multiplies<>());
        return graph.constant(type, lanes);
    };
    return graph.byDirection(inDirection(0), inDirection(1));
}

NodeId InterleavedComplex::resolved(Value a) {
    const auto inOrder = [&](NodeId node) { return a.pose.isExchanged ? exchanged(node) : node; };
    auto [re, im] = a.pose.isNegative;
    if (!re && !im)
        return inOrder(a.node);
    const Node node = graph[a.node];
    for (const int i : {0, 1}) {
        if (node.op == Op::Mul && isNonzeroConstant(graph, node.operands[i])) { // it takes the signs
            if (a.pose.isExchanged)
                std::swap(re, im);
            const NodeId factor = signedConstant(node.operands[i], factors({{sign(re), sign(im)}}));
            return inOrder(graph.mul(node.operands[1 - i], factor));
        }
    }
    return graph.flipSigns(inOrder(a.node), factors({{sign(re), sign(im)}}));
}

Value InterleavedComplex::gathered(const Column &elements, int first) {
    const int count = std::min(perVector(), static_cast<int>(elements.size()) - first);
    const auto own = elements.begin() + first;
    std::vector<int> picks(type.lanes, idle);
    if (own->node == noNode) {
        for (int i = 0; i < count; ++i) {
            picks[2 * i] = 2 * own[i].place;
            picks[2 * i + 1] = 2 * own[i].place + 1;
        }
        return {graph.load(type, picks)};
    }
    // What all poses have in common waits. Else the exchange comes with the shuffle, and the signs after it.
    Pose common{true, {true, true}};
    for (int i = 0; i < count; ++i)
        common.isExchanged = common.isExchanged && own[i].pose.isExchanged;
    for (const Element &element : elements)
        for (const int part : {0, 1})
            common.isNegative[part] = common.isNegative[part] && element.pose.isNegative[part];
    std::vector<NodeId> sources;
    std::vector<std::array<Quad, 2>> signs;
    bool allWait = true;
    for (int i = 0; i < count; ++i) {
        const Pose &pose = own[i].pose;
        const int even = pose.isExchanged != common.isExchanged, base = i * type.lanes + 2 * own[i].place;
        picks[2 * i] = base + even;
        picks[2 * i + 1] = base + 1 - even;
        sources.push_back(own[i].node);
        std::array<Quad, 2> &lanes = signs.emplace_back();
        for (const int part : {0, 1})
            lanes[part != common.isExchanged] = sign(pose.isNegative[part] != common.isNegative[part]);
        allWait = allWait && lanes == std::array<Quad, 2>{1, 1};
    }
    const NodeId node = graph.gather(sources, picks);
    return {allWait ? node : graph.flipSigns(node, factors(signs)), common};
}

Value InterleavedComplex::add(Value a, Value b) {
    // For each part a sum or a difference of what the nodes hold. Just the sum of two negatives is one.
    enum Kind { Sum, Difference, Reverse } kinds[2];
    Pose pose{a.pose.isExchanged && b.pose.isExchanged, {}};
    for (const int part : {0, 1}) {
        const bool first = a.pose.isNegative[part], second = b.pose.isNegative[part];
        kinds[part] = first == second ? Sum : second ? Difference : Reverse;
        pose.isNegative[part] = first && second;
    }
    if (kinds[0] != kinds[1] || a.pose.isExchanged != b.pose.isExchanged) {
        // The kind of the real parts is done to both, so imaginary parts change signs where theirs is
        // another.
        const auto inOrder = [&](Value value, Kind negates) {
            const bool changes = kinds[0] != kinds[1] && (kinds[0] == negates || kinds[1] == negates);
            return resolved({value.node, {value.pose.isExchanged, {false, changes}}});
        };
        a.node = inOrder(a, Reverse);
        b.node = inOrder(b, Difference);
        pose.isExchanged = false;
    }
    return {kinds[0] == Sum          ? graph.add(a.node, b.node)
            : kinds[0] == Difference ? graph.sub(a.node, b.node)
                                     : graph.sub(b.node, a.node),
            pose};
}

Value InterleavedComplex::scaled(Value a, Quad factor) {
    if (factor < 0) {
        a = negate(a);
        factor = -factor;
    }
    const auto [re, im] = a.pose.isNegative;
    if (!a.pose.isExchanged || turns == Turns::AfterSums)
        return {graph.mul(a.node, factors({{factor, factor}})), a.pose};
    return {graph.mul(exchanged(a.node), factors({{factor, re == im ? factor : -factor}})),
            {false, {re, re}}};
}

Value InterleavedComplex::weightedSum(std::optional<Value> base, const std::vector<Term> &terms) {
    if (constantProducts == Products::Wide) {
        InterleavedComplex wide(graph, {zrfgen::gen::Element::Float64, type.lanes}, Products::Narrow, inverse,
                                turns);
        return sumInFloat64(graph, wide, base, terms);
    }
    std::optional<Value> total = base;
    for (const Term &term : terms) {
        const Value product = scaled(term.value, term.factor);
        total = total ? add(*total, product) : product;
    }
    return *total;
}

Value InterleavedComplex::turnedSum(std::vector<Term> terms) {
    if (turns == Turns::AfterSums)
        return quarterTurn(weightedSum({}, terms));
    for (Term &term : terms)
        term.value = quarterTurn(term.value);
    return weightedSum({}, terms);
}

Value InterleavedComplex::products(Value a, const std::vector<Turn> &angles) {
    const auto minusSine = [](Turn angle) { return 0 - sine(angle); }; // +0 where the sine is 0
    if (turns == Turns::InConstants) {
        std::vector<ComplexQuad> forward, mirrored;
        for (const Turn own : angles) {
            forward.push_back({cosine(own), minusSine(own)});
            mirrored.push_back({cosine(own), inverse == InverseBy::Exchange ? sine(own) : minusSine(own)});
        }
        return multiply(a, forward, mirrored);
    }
    std::vector<std::array<Quad, 2>> cosines, sines;
    for (const Turn own : angles) {
        cosines.push_back({cosine(own), cosine(own)});
        sines.push_back({minusSine(own), minusSine(own)});
    }
    const Value turned = negate(quarterTurn(a)); // i a
    const NodeId parts = turned.pose.isExchanged ? exchanged(a.node) : a.node;
    const Value product{graph.mul(parts, factors(sines)), {false, turned.pose.isNegative}};
    return add({graph.mul(a.node, factors(cosines)), a.pose}, {resolved(product)});
}

Value InterleavedComplex::multiply(Value a, const std::vector<ComplexQuad> &forward,
                                   const std::vector<ComplexQuad> &inverseFactors) {
    // A turn may wait on, but no other exchange or sign: that is no product by a number.
    if (a.pose.isExchanged != (a.pose.isNegative[0] != a.pose.isNegative[1]))
        a = {resolved(a)};
    // (a + i b)(c + i d) = (a c - b d) + i (b c + a d)
    const auto parts = [](const std::vector<ComplexQuad> &factors) {
        std::vector<Quad> re, im, minusIm;
        for (const ComplexQuad &factor : factors) {
            re.push_back(factor.re);
            im.push_back(factor.im);
            minusIm.push_back(-factor.im);
        }
        return std::array{re, im, minusIm};
    };
    const auto f = parts(forward), i = parts(inverseFactors);
    const NodeId re = graph.byDirection(constant(f[0], f[0]), constant(i[0], i[0]));
    const NodeId im = graph.byDirection(constant(f[2], f[1]), constant(i[2], i[1]));
    return {graph.add(graph.mul(a.node, re), graph.mul(exchanged(a.node), im)), a.pose};
}

Column InterleavedComplex::multiplied(const Column &elements, const std::vector<ComplexQuad> &forward,
                                      const std::vector<ComplexQuad> &inverseFactors) {
    Column results(elements.size());
    for (const auto &[node, indices] : byVector(elements)) {
        std::vector<ComplexQuad> forwardPlaces(perVector()), inversePlaces(perVector());
        for (const int i : indices) {
            forwardPlaces[elements[i].place] = forward[i];
            inversePlaces[elements[i].place] = inverseFactors[i];
        }
        const Value product = multiply({node, elements[indices[0]].pose}, forwardPlaces, inversePlaces);
        for (const int i : indices)
            results[i] = element(product, elements[i].place);
    }
    return results;
}

Column InterleavedComplex::addedToFirst(Column elements, const Element &term) {
    const Element first = elements[0];
    std::vector<int> picks;
    for (int lane = 0; lane < type.lanes; ++lane)
        picks.push_back(lane / 2 == first.place ? lane % 2 : type.lanes + lane);
    const NodeId alone = graph.gather({gathered({term}).node, graph.broadcast(type, 0)}, picks);
    const Value sum = add({first.node, first.pose}, {alone, term.pose});
    for (Element &other : elements)
        if (other.node == first.node)
            other = element(sum, other.place);
    return elements;
}

} // namespace zrfgen::gen
