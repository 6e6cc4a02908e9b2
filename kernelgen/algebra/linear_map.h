// A real linear map as a sequence of sums and of weighted sums, which a decomposition records once. It can be
// applied to the values of any number model. Its transpose costs the same: every sum becomes a fork and every
// fork a sum.
#pragma once

#include "algebra/number_model.h"

#include <map>
#include <utility>

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
        Quad factor = 1;
    };

    // Summands, each with its factor.
    using Parts = std::vector<std::pair<Quad, Ref>>;

    Ref input();
    Ref sum(Ref a, Ref b);
    // The sum of factor * value as one block: its products belong together. Values with a factor of 1 or -1
    // are added up ahead of the products.
    Ref weightedSum(const Parts &parts);

    std::vector<Output> outputs;

    // Inputs and outputs change places; factors of the outputs are left to the user, as those of the inputs.
    LinearMap transposed() const;

    // The same map with some values replaced by their negatives, so that signs end up in the choice of
    // addition or subtraction: no output, and hardly a value inside, is a negative one or a sum of negatives
    // only.
    LinearMap withSignsInDifferences() const;

    // The outputs, short of their factors, for one value per input.
    template <LinearModel Model> Values<Model> apply(Model &m, const Values<Model> &inputs) const {
        Values<Model> values;
        const auto signedValue = [&](int node, bool isNegative) {
            return isNegative ? m.negate(values[node]) : values[node];
        };
        std::size_t nextInput = 0;
        for (const Node &node : nodes) {
            if (node.terms.empty()) {
                values.push_back(inputs[nextInput++]);
            } else if (node.isPlainSum()) {
                const Term &a = node.terms[0], &b = node.terms[1];
                const auto first = signedValue(a.node, a.factor < 0);
                values.push_back(b.factor < 0 ? m.sub(first, values[b.node]) : m.add(first, values[b.node]));
            } else {
                std::optional<typename Model::Value> base;
                std::vector<typename Model::Term> products;
                for (const Term &term : node.terms) {
                    if (term.isPlain())
                        base = signedValue(term.node, term.factor < 0);
                    else
                        products.push_back({term.factor, values[term.node]});
                }
                values.push_back(m.weightedSum(base, products));
            }
        }
        Values<Model> results;
        for (const Output &output : outputs)
            results.push_back(signedValue(output.ref.node, output.ref.isNegative));
        return results;
    }

private:
    class SignSearch;

    struct Term {
        int node;
        Quad factor;

        bool isPlain() const { return factor == 1 || factor == -1; }
        friend auto operator<=>(const Term &, const Term &) = default;
    };
    // An input has no terms, a plain sum two without a product; any other node has products and at most one
    // plain term, which is the first.
    struct Node {
        std::vector<Term> terms;

        bool isPlainSum() const { return terms.size() == 2 && terms[1].isPlain(); }
        friend auto operator<=>(const Node &, const Node &) = default;
    };

    static Term plainTerm(Ref a) { return {a.node, Quad(a.isNegative ? -1 : 1)}; }

    Ref intern(std::vector<Term> terms);

    Parts grouped(const Parts &parts);

    std::vector<Node> nodes; // operands stand before their users
    std::map<Node, int> known;
};

} // namespace zrfgen::gen
