// Real arithmetic on graph nodes, the ground of all number models. Signs are carried beside the values and
// end up in the choice of addition or subtraction, which changes no bit of a nonzero result.
#pragma once

#include "algebra/number_model.h"
#include "graph/graph.h"

namespace zrfgen::gen {

// Stands for a value that is known to be zero in every lane: it costs nothing.
inline constexpr NodeId zeroNode = -2;

// The node's lanes, or their negatives.
struct Real {
    NodeId node = noNode;
    bool isNegative = false;

    Real operator-() const { return {node, !isNegative}; }
};

struct RealTerm {
    Quad factor;
    Real value;
};

// Where products by constants are computed.
enum class Products {
    Narrow, // in the element type
    Wide,   // sums of products in Float64, narrowed once; plain additions and doublings stay Float32
};

// How the inverse transform comes out of the forward graph.
enum class InverseBy {
    Exchange,  // real and imaginary parts change places on reading and on writing
    Constants, // some constants change sign
};

class RealArithmetic {
public:
    using Value = Real;
    using Term = RealTerm;

    RealArithmetic(Graph &graph, Type type, Products products)
        : graph(graph), valueType(type), products(products) {}

    Real add(Real a, Real b) { return sum(a, b); }
    Real sub(Real a, Real b) { return sum(a, -b); }
    static Real negate(Real a) { return -a; }
    // base + the sum of factor * value, added in the order given.
    Real weightedSum(std::optional<Real> base, const std::vector<RealTerm> &terms);
    // The product by a vector with a factor of its own for each lane.
    Real scaled(Real a, NodeId factors) {
        return a.node == zeroNode ? a : Real{graph.mul(a.node, factors), a.isNegative};
    }
    // A node that holds the value itself.
    NodeId resolved(Real a);
    // A node that holds the value times the factor of the call. A value that is wide is multiplied before it
    // is narrowed.
    NodeId scaledByCall(Real a);

    Type type() const { return valueType; }

private:
    Real sum(Real a, Real b);

    Graph &graph;
    Type valueType;
    Products products;
};

// The node in Float64. What was wide before it was narrowed still is.
NodeId widened(Graph &graph, NodeId a);

// A weighted sum by the Float64 twin of a model, narrowed once.
template <LinearModel Model> typename Model::Value sumInFloat64(Graph &graph, Model wide,
                                                                std::optional<typename Model::Value> base,
                                                                std::vector<typename Model::Term> terms) {
    if (base)
        base->node = widened(graph, base->node);
    for (typename Model::Term &term : terms)
        term.value.node = widened(graph, term.value.node);
    auto sum = wide.weightedSum(base, terms);
    sum.node = graph.narrow(sum.node);
    return sum;
}

} // namespace zrfgen::gen
