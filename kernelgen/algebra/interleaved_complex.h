// The number model of whole complex numbers in vectors, as many as fit: real parts in the even lanes,
// imaginary parts in the odd ones. Additions are whole-vector operations and nothing need be sorted on
// reading or writing; a quarter turn is an exchange of lanes and a sign, which wait until a constant or an
// addition can take them.
#pragma once

#include "algebra/columns.h"
#include "algebra/real.h"
#include "number/quad.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace zrfgen::gen {

// Who takes the quarter turn of a sum of products.
enum class Turns {
    InConstants, // its constants: there remains an exchange of parts
    AfterSums,   // who adds it to others, as in split lanes: all bits are theirs, the sign of a zero included
};

class InterleavedComplex {
public:
    // How a number stands in its place: its parts in order or exchanged, each as it is or negated.
    struct Pose {
        bool isExchanged = false;
        std::array<bool, 2> isNegative{}; // real part, imaginary part
    };
    struct Value {
        NodeId node = noNode;
        Pose pose = {};
    };

    // One complex number: where it lies in a vector, or in the source array if there is no node.
    struct Element {
        NodeId node = noNode;
        int place = 0;
        Pose pose = {};
    };
    using Column = std::vector<Element>;

    struct Term {
        Quad factor;
        Value value;
    };

    static constexpr Capabilities capabilities{.sharedVectors = true};

    InterleavedComplex(Graph &graph, Type type, Products products, InverseBy inverse,
                       Turns turns = Turns::InConstants)
        : graph(graph), type(type), constantProducts(products), inverse(inverse), turns(turns) {}

    static Column input(int length);
    // Scales and stores the column's element k as element k of the destination.
    void output(const Column &column);

    Value add(Value a, Value b);
    Value sub(Value a, Value b) { return add(a, negate(b)); }
    static Value negate(Value a);
    // The product by exp(-2 pi i / 4).
    static Value quarterTurn(Value a);
    Value weightedSum(std::optional<Value> base, const std::vector<Term> &terms);
    // quarterTurn of the sum of factor * value.
    Value turnedSum(std::vector<Term> terms);
    Value scaled(Value a, Quad factor);
    // The products by exp(-2 pi i angle), with an angle for each column of the group.
    Value products(Value a, const std::vector<Turn> &angles);
    Value product(Value a, Turn angle) { return products(a, {angle}); }

    // The product of each element by a constant of its own, vector by vector as the elements lie.
    Column multiplied(const Column &elements, const std::vector<ComplexQuad> &forward,
                      const std::vector<ComplexQuad> &inverse);
    // The column with the term added to its first element.
    Column addedToFirst(Column elements, const Element &term);

    // How many columns a vector holds.
    int perVector() const { return type.lanes / 2; }
    // As in split lanes where it has their bits: signs are those of four columns there.
    int columnsTogether() const { return turns == Turns::AfterSums ? std::max(4, perVector()) : perVector(); }

    // The vector of the elements from `first` on, side by side.
    Value gathered(const Column &elements, int first = 0);
    // The element that stands in one place of the value.
    static Element element(Value value, int place) { return {value.node, place, value.pose}; }

private:
    // The node with the real and imaginary part of each number exchanged.
    NodeId exchanged(NodeId a);
    // A node that holds the value itself.
    NodeId resolved(Value a);
    Value multiply(Value a, const std::vector<ComplexQuad> &forward, const std::vector<ComplexQuad> &inverse);

    // A factor for the real and one for the imaginary part of each number, in the order in which the
    // direction has them.
    NodeId factors(const std::vector<std::array<Quad, 2>> &parts);
    // The constant with signs, themselves a constant.
    NodeId signedConstant(NodeId a, NodeId signs);
    NodeId constant(const std::vector<Quad> &even, const std::vector<Quad> &odd);

    Graph &graph;
    Type type;
    Products constantProducts;
    InverseBy inverse;
    Turns turns;
};

} // namespace zrfgen::gen
