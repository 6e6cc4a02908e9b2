// The number model of whole complex numbers in vectors, as many as fit: real parts in the even lanes,
// imaginary parts in the odd ones. Additions are whole-vector operations and nothing need be sorted on
// reading or writing; a quarter turn is an exchange of lanes and a sign, which waits until a constant or an
// addition can take it.
#pragma once

#include "algebra/columns.h"
#include "algebra/real.h"
#include "number/quad.h"

#include <optional>
#include <vector>

namespace zrfgen::gen {

class InterleavedComplex {
public:
    // The node's complex numbers times exp(-2 pi i quarterTurns / 4).
    struct Value {
        NodeId node = noNode;
        int quarterTurns = 0;
    };

    // One complex number: where it lies in a vector, or in the source array if there is no node.
    struct Element {
        NodeId node = noNode;
        int place = 0;
        int quarterTurns = 0;
    };
    using Column = std::vector<Element>;

    struct Term {
        Quad factor;
        Value value;
    };

    static constexpr Capabilities capabilities{.sharedVectors = true};

    InterleavedComplex(Graph &graph, Type type, Products products, InverseBy inverse)
        : graph(graph), type(type), constantProducts(products), inverse(inverse) {}

    static Column input(int length);
    // Scales and stores the column's element k as element k of the destination.
    void output(const Column &column);

    Value add(Value a, Value b);
    Value sub(Value a, Value b) { return add(a, negate(b)); }
    static Value negate(Value a) { return {a.node, (a.quarterTurns + 2) % 4}; }
    // The product by exp(-2 pi i / 4).
    static Value quarterTurn(Value a) { return {a.node, (a.quarterTurns + 1) % 4}; }
    Value weightedSum(std::optional<Value> base, const std::vector<Term> &terms);
    // quarterTurn of the sum of factor * value; the turn goes into the constants.
    Value turnedSum(std::vector<Term> terms);
    Value scaled(Value a, Quad factor);
    // The products by exp(-2 pi i angle), with an angle for each column of the group.
    Value products(Value a, const std::vector<Turn> &angles);
    Value product(Value a, Turn angle) {
        return weightedSum({}, {{cosine(angle), a}, {sine(angle), quarterTurn(a)}});
    }

    // The product of each element by a constant of its own, vector by vector as the elements lie.
    Column multiplied(const Column &elements, const std::vector<ComplexQuad> &forward,
                      const std::vector<ComplexQuad> &inverse);
    // The column with the term added to its first element.
    Column addedToFirst(Column elements, const Element &term);

    // How many columns a vector holds.
    int perVector() const { return type.lanes / 2; }

    // The vector of these elements, side by side.
    Value gathered(const Column &elements);
    // The element that stands in one place of the value.
    static Element element(Value value, int place) { return {value.node, place, value.quarterTurns}; }

private:
    // The node with the real and imaginary part of each number exchanged.
    NodeId exchanged(NodeId a);
    // A node that holds the value itself.
    NodeId resolved(Value a);
    Value multiply(Value a, const std::vector<ComplexQuad> &forward, const std::vector<ComplexQuad> &inverse);

    // What a quarter turn by `turns`, times a factor for each number, does to parts, exchanged or not as the
    // turn has it.
    NodeId turningFactors(const std::vector<int> &turns, const std::vector<Quad> &factors);
    NodeId turningFactors(int turns, Quad factor);
    NodeId constant(const std::vector<Quad> &even, const std::vector<Quad> &odd);

    Graph &graph;
    Type type;
    Products constantProducts;
    InverseBy inverse;
};

} // namespace zrfgen::gen
