// The number model of split lanes: a stage's columns lie in the lanes of vectors, real and imaginary parts in
// separate vectors. Multiplying by i costs nothing, and every lane works, whatever the number of lanes. With
// one lane it is plain scalar arithmetic.
#pragma once

#include "algebra/real.h"
#include "number/quad.h"

namespace zrfgen::gen {

// How the inverse transform comes out of the forward graph.
enum class InverseBy {
    Exchange,  // real and imaginary parts change places on reading and on writing
    Constants, // some constants change sign
};

class SplitComplex {
public:
    // One complex value in each lane.
    struct Value {
        Real re, im;
    };

    // One complex number: where its parts lie. A slot with noNode is element `lane` of the source array.
    struct Slot {
        NodeId node = noNode;
        int lane = 0;
        bool isNegative = false;
    };
    struct Element {
        Slot re, im;
    };
    using Column = std::vector<Element>;

    // The columns that stand in the lanes of one vector.
    struct Group {
        int first, count;
    };

    struct Term {
        Quad factor;
        Value value;
    };

    // Rotations are applied to whole vectors, after the block, with other lanes' factors beside.
    static constexpr bool rotatesInsideBlocks = false;

    SplitComplex(Graph &graph, Type type, Products products, InverseBy inverse)
        : graph(graph), real(graph, type, products), inverse(inverse) {}

    Column input(int length) const;
    // Scales and stores the column's element k as element k of the destination.
    void output(const Column &column);

    Value add(Value a, Value b) { return {real.add(a.re, b.re), real.add(a.im, b.im)}; }
    Value sub(Value a, Value b) { return {real.sub(a.re, b.re), real.sub(a.im, b.im)}; }
    // The product by exp(-2 pi i / 4) in the forward direction.
    static Value quarterTurn(Value a) { return {a.im, -a.re}; }
    Value weightedSum(std::optional<Value> base, const std::vector<Term> &terms);
    // quarterTurn of the sum of factor * value.
    Value turnedSum(const std::vector<Term> &terms) { return quarterTurn(weightedSum({}, terms)); }
    // The product by exp(-2 pi i angle), with an angle for each column of the group.
    Value rotate(Value a, const std::vector<Turn> &angles);
    // The product by re + i im, lane by lane; each part is a node, so that it may depend on the direction.
    Value multiply(Value a, NodeId re, NodeId im);

    // Runs block(rows, group) over the columns, as many at a time as there are lanes, and returns its outputs
    // as columns. A row holds the group's columns side by side.
    template <class Block> std::vector<Column> map(const std::vector<Column> &columns, Block block) {
        std::vector<Column> results(columns.size());
        const int lanes = real.type().lanes, total = static_cast<int>(columns.size());
        for (int first = 0; first < total; first += lanes) {
            const Group group{first, std::min(lanes, total - first)};
            std::vector<Value> rows;
            for (std::size_t row = 0; row < columns[first].size(); ++row)
                rows.push_back(gathered(columns, group, row));
            for (const Value &value : block(rows, group))
                for (int lane = 0; lane < group.count; ++lane)
                    results[first + lane].push_back({{value.re.node, lane, value.re.isNegative},
                                                     {value.im.node, lane, value.im.isNegative}});
        }
        return results;
    }

    // The values of these elements, one in each lane from lane 0 on.
    Value gathered(const Column &elements);
    // A vector with the element in one lane and zero in the others.
    Value alone(const Element &element, int lane);

    Graph &graph;
    RealArithmetic real;

private:
    Value gathered(const std::vector<Column> &columns, Group group, std::size_t row);
    Real gathered(const std::vector<Slot> &slots);

    InverseBy inverse;
};

} // namespace zrfgen::gen
