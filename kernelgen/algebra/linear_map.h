// A real linear map as a sequence of sums and products by constants. It can be applied to the values of any
// number model, and so can its transpose, which costs the same: every sum becomes a fork and every fork a
// sum.
#pragma once

#include "number/quad.h"

#include <map>
#include <optional>
#include <vector>

namespace zrfgen::gen {

class LinearMap {
public:
    // A node's value or its negative.
    struct Ref {
        int node;
        bool isNegative = false;

        Ref operator-() const { return {node, !isNegative}; }
    };

    // The result stands at ref, short of the product by factor, which the user of the map has to see to.
    struct Output {
        Ref ref;
        Quad factor;
    };

    Ref input() { return {intern({Kind::Input, static_cast<int>(nodes.size()), 0, false, 0})}; }
    Ref sum(Ref a, Ref b);
    Ref scaled(Ref a, Quad factor);

    std::vector<Output> outputs;

    // The outputs, short of their factors, for one value per input.
    template <class Model> std::vector<typename Model::Value>
    apply(Model &m, const std::vector<typename Model::Value> &inputs) const {
        std::vector<typename Model::Value> values;
        std::size_t nextInput = 0;
        for (const Node &node : nodes) {
            if (node.kind == Kind::Input)
                values.push_back(inputs[nextInput++]);
            else if (node.kind == Kind::Product)
                values.push_back(m.weightedSum({}, {{node.factor, values[node.a]}}));
            else
                values.push_back(node.isDifference ? m.sub(values[node.a], values[node.b])
                                                   : m.add(values[node.a], values[node.b]));
        }
        std::vector<typename Model::Value> results;
        for (const Output &output : outputs)
            results.push_back(signedValue(m, values[output.ref.node], output.ref.isNegative));
        return results;
    }

    // The transpose: one value per output, with its factor already applied, gives one value per input.
    template <class Model> std::vector<typename Model::Value>
    applyTransposed(Model &m, const std::vector<typename Model::Value> &values) const {
        std::vector<std::optional<typename Model::Value>> sums(nodes.size());
        const auto contribute = [&](int node, typename Model::Value value) {
            sums[node] = sums[node] ? m.add(*sums[node], value) : value;
        };
        for (std::size_t i = 0; i < outputs.size(); ++i)
            contribute(outputs[i].ref.node, signedValue(m, values[i], outputs[i].ref.isNegative));
        std::vector<typename Model::Value> results;
        for (std::size_t i = nodes.size(); i-- > 0;) {
            const Node &node = nodes[i];
            if (node.kind == Kind::Input) {
                results.insert(results.begin(), *sums[i]);
            } else if (sums[i]) { // else no output needs the node
                if (node.kind == Kind::Product) {
                    contribute(node.a, m.weightedSum({}, {{node.factor, *sums[i]}}));
                } else {
                    contribute(node.a, *sums[i]);
                    contribute(node.b, signedValue(m, *sums[i], node.isDifference));
                }
            }
        }
        return results;
    }

private:
    enum class Kind { Input, Sum, Product };
    struct Node {
        Kind kind;
        int a, b;          // operands; of an input, a tells it from others
        bool isDifference; // a - b rather than a + b
        Quad factor;
        friend auto operator<=>(const Node &, const Node &) = default;
    };

    template <class Model>
    static typename Model::Value signedValue(Model &m, typename Model::Value value, bool isNegative) {
        return isNegative ? m.negate(value) : value;
    }

    int intern(const Node &node);

    std::vector<Node> nodes; // operands stand before their users
    std::map<Node, int> known;
};

} // namespace zrfgen::gen
