#include "algebra/interleaved_complex.h"

#include <algorithm>
#include <array>
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

NodeId InterleavedComplex::turningFactors(const std::vector<int> &turns, const std::vector<Quad> &factors) {
    // -i (a + i b) = b - i a, and the mirror image of that where the inverse turns the other way.
    std::vector<Quad> even, odd;
    for (std::size_t i = 0; i < turns.size(); ++i) {
        even.push_back(turns[i] < 2 ? factors[i] : -factors[i]);
        odd.push_back(turns[i] == 0 || turns[i] == 3 ? factors[i] : -factors[i]);
    }
    const NodeId forward = constant(even, odd);
    return inverse == InverseBy::Exchange ? graph.byDirection(forward, constant(odd, even)) : forward;
}

NodeId InterleavedComplex::turningFactors(int turns, Quad factor) {
    return turningFactors(std::vector{turns}, std::vector{factor});
}

NodeId InterleavedComplex::exchanged(NodeId a) {
    std::vector<int> picks;
    for (int lane = 0; lane < type.lanes; ++lane)
        picks.push_back(lane ^ 1);
    return graph.gather({a}, picks);
}

NodeId InterleavedComplex::resolved(Value a) {
    if (a.quarterTurns == 0)
        return a.node;
    return graph.flipSigns(a.quarterTurns % 2 == 0 ? a.node : exchanged(a.node),
                           turningFactors(a.quarterTurns, 1));
}

Value InterleavedComplex::gathered(const Column &elements) {
    if (elements[0].node == noNode) {
        std::vector<int> picks(type.lanes, idle);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            picks[2 * i] = 2 * elements[i].place;
            picks[2 * i + 1] = 2 * elements[i].place + 1;
        }
        return {graph.load(type, picks)};
    }
    const int turns = elements[0].quarterTurns;
    const bool isUniform = std::all_of(elements.begin(), elements.end(),
                                       [&](const Element &element) { return element.quarterTurns == turns; });
    std::vector<NodeId> sources;
    std::vector<int> picks(type.lanes, idle), ownTurns;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        // Turns that differ are done here: the exchange of parts comes with the shuffle.
        const int even = isUniform ? 0 : elements[i].quarterTurns % 2;
        const int base = static_cast<int>(i) * type.lanes + 2 * elements[i].place;
        picks[2 * i] = base + even;
        picks[2 * i + 1] = base + 1 - even;
        sources.push_back(elements[i].node);
        ownTurns.push_back(elements[i].quarterTurns);
    }
    const NodeId node = graph.gather(sources, picks);
    if (isUniform)
        return {node, turns};
    return {graph.flipSigns(node, turningFactors(ownTurns, std::vector<Quad>(ownTurns.size(), 1)))};
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
    if (factor < 0) {
        a = negate(a);
        factor = -factor;
    }
    if (a.quarterTurns % 2 == 0)
        return {graph.mul(a.node, turningFactors(0, factor)), a.quarterTurns};
    return {graph.mul(exchanged(a.node), turningFactors(1, factor)), a.quarterTurns - 1};
}

Value InterleavedComplex::weightedSum(std::optional<Value> base, const std::vector<Term> &terms) {
    if (constantProducts == Products::Wide) {
        InterleavedComplex wide(graph, {zrfgen::gen::Element::Float64, type.lanes}, Products::Narrow,
                                inverse);
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
    for (Term &term : terms)
        term.value = quarterTurn(term.value);
    return weightedSum({}, terms);
}

Value InterleavedComplex::products(Value a, const std::vector<Turn> &angles) {
    std::vector<ComplexQuad> forward, mirrored;
    for (const Turn own : angles) {
        const Quad c = cosine(own), s = sine(own);
        forward.push_back({c, 0 - s}); // +0 where the sine is 0
        mirrored.push_back({c, inverse == InverseBy::Exchange ? s : 0 - s});
    }
    return multiply(a, forward, mirrored);
}

Value InterleavedComplex::multiply(Value a, const std::vector<ComplexQuad> &forward,
                                   const std::vector<ComplexQuad> &inverseFactors) {
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
    return {graph.add(graph.mul(a.node, re), graph.mul(exchanged(a.node), im)), a.quarterTurns};
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
        const Value product =
            multiply({node, elements[indices[0]].quarterTurns}, forwardPlaces, inversePlaces);
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
    const Value sum = add({first.node, first.quarterTurns}, {alone, term.quarterTurns});
    for (Element &other : elements)
        if (other.node == first.node)
            other = element(sum, other.place);
    return elements;
}

} // namespace zrfgen::gen
