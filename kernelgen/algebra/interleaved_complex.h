// The number model of one complex number per vector: real part in the lower lane, imaginary part in the
// upper. Additions are whole-vector operations; a quarter turn is an exchange of lanes and a sign, which
// waits until a constant or an addition can take it.
#pragma once

#include "graph/graph.h"
#include "number/quad.h"

#include <optional>
#include <vector>

namespace zrfgen::gen {

class InterleavedComplex {
public:
    // The node's value times exp(-2 pi i quarterTurns / 4) in the forward direction.
    struct Value {
        NodeId node = noNode;
        int quarterTurns = 0;
    };
    using Element = Value;
    using Column = std::vector<Element>;

    struct Group {
        int first, count;
    };

    struct Term {
        Quad factor;
        Value value;
    };

    // A rotation is taken into the last additions of the block before it.
    static constexpr bool rotatesInsideBlocks = true;

    InterleavedComplex(Graph &graph, zrfgen::gen::Element element) : graph(graph), type{element, 2} {}

    Column input(int length);
    // Scales and stores the column's element k as element k of the destination.
    void output(const Column &column);

    Value add(Value a, Value b);
    Value sub(Value a, Value b) { return add(a, negate(b)); }
    static Value negate(Value a) { return {a.node, (a.quarterTurns + 2) % 4}; }
    // The product by exp(-2 pi i / 4) in the forward direction.
    static Value quarterTurn(Value a) { return {a.node, (a.quarterTurns + 1) % 4}; }
    Value weightedSum(std::optional<Value> base, const std::vector<Term> &terms);
    // quarterTurn of the sum of factor * value; the turn goes into the constants.
    Value turnedSum(std::vector<Term> terms);
    // The product by exp(-2 pi i angle).
    Value rotate(Value a, const std::vector<Turn> &angles) { return rotate(a, angles[0]); }
    Value rotate(Value a, Turn angle);
    // The product by factor, which is positive.
    Value scaled(Value a, Quad factor);

    // How many columns a vector holds.
    static int lanes() { return 1; }

    // Runs block(rows, group) over the columns, one at a time.
    template <class Block> std::vector<Column> map(const std::vector<Column> &columns, int, Block block) {
        std::vector<Column> results;
        for (int first = 0; first < static_cast<int>(columns.size()); ++first)
            results.push_back(block(columns[first], Group{first, 1}));
        return results;
    }

    Graph &graph;

private:
    NodeId exchanged(NodeId a) { return graph.gather({a}, {1, 0}); }
    // (re, -im) lanes of a factor in the forward kernel, (-re, im) in the inverse one: what a quarter turn
    // does to exchanged lanes.
    NodeId turningFactors(Quad factor);
    NodeId resolved(Value a);

    Type type;
};

} // namespace zrfgen::gen
