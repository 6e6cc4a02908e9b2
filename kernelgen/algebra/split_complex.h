// The number model of split lanes: a stage's columns lie in the lanes of vectors, real and imaginary parts in
// separate vectors. Multiplying by i costs nothing, and every lane works, whatever the number of lanes.
#pragma once

#include "algebra/columns.h"
#include "algebra/real.h"
#include "number/quad.h"

namespace zrfgen::gen {

class SplitComplex {
public:
    // One complex value in each lane.
    struct Value {
        Real re, im;
    };

    // One complex number: where its parts lie. A slot with noNode is element `lane` of the source array, one
    // with zeroNode is zero.
    struct Slot {
        NodeId node = noNode;
        int lane = 0;
        bool isNegative = false;
    };
    struct Element {
        Slot re, im;
    };
    using Column = std::vector<Element>;
    static Element zero() { return {{zeroNode}, {zeroNode}}; }

    struct Term {
        Quad factor;
        Value value;
    };

    static constexpr Capabilities capabilities{.sharedVectors = true, .zeroElements = true};

    SplitComplex(Graph &graph, Type type, InverseBy inverse)
        : graph(graph), real(graph, type, Products::Narrow), inverse(inverse) {}

    Column input(int length) const;
    // Scales and stores the column's element k as element k of the destination.
    void output(const Column &column);

    Value add(Value a, Value b) { return {real.add(a.re, b.re), real.add(a.im, b.im)}; }
    Value sub(Value a, Value b) { return {real.sub(a.re, b.re), real.sub(a.im, b.im)}; }
    static Value negate(Value a) { return {-a.re, -a.im}; }
    // The product by exp(-2 pi i / 4) in the forward direction.
    static Value quarterTurn(Value a) { return {a.im, -a.re}; }
    Value weightedSum(std::optional<Value> base, const std::vector<Term> &terms);
    // quarterTurn of the sum of factor * value.
    Value turnedSum(const std::vector<Term> &terms) { return quarterTurn(weightedSum({}, terms)); }
    Value scaled(Value a, Quad factor) {
        const NodeId lanes = graph.broadcast(real.type(), factor);
        return {real.scaled(a.re, lanes), real.scaled(a.im, lanes)};
    }
    // The products by exp(-2 pi i angle), with an angle for each column of the group.
    Value products(Value a, const std::vector<Turn> &angles);
    Value product(Value a, Turn angle) { return products(a, {angle}); }
    // The product by a constant.
    Value multiply(Value a, Value factor);
    // The product of each element by a constant of its own, vector by vector as the elements lie.
    Column multiplied(const Column &elements, const std::vector<ComplexQuad> &forward,
                      const std::vector<ComplexQuad> &inverse);
    // The column with the term added to its first element.
    Column addedToFirst(Column elements, const Element &term);

    // How many columns a vector holds.
    int perVector() const { return real.type().lanes; }
    int columnsTogether() const { return perVector(); }

    // The values of these elements, one in each lane from lane 0 on.
    Value gathered(const Column &elements, int = 0);
    // The element that stands in one lane of the value.
    static Element element(const Value &value, int lane) {
        return {{value.re.node, lane, value.re.isNegative}, {value.im.node, lane, value.im.isNegative}};
    }
    // A vector of complex constants, one for each lane, that may depend on the direction.
    Value constant(const std::vector<ComplexQuad> &forward, const std::vector<ComplexQuad> &inverse);

private:
    // The whole vectors in which an element stands.
    static Value vectorOf(const Element &element) {
        return {{element.re.node, element.re.isNegative}, {element.im.node, element.im.isNegative}};
    }
    Real gathered(const std::vector<Slot> &slots);

    Graph &graph;
    RealArithmetic real;
    InverseBy inverse;
};

} // namespace zrfgen::gen
