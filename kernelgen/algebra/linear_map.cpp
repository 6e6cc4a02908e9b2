#include "algebra/linear_map.h"

#include <algorithm>

namespace zrfgen::gen {

LinearMap::Ref LinearMap::input() {
    nodes.push_back({});
    return {static_cast<int>(nodes.size()) - 1};
}

// A sum whose first term is negative is the negative of another one, so that both are one node.
LinearMap::Ref LinearMap::intern(std::vector<Term> terms) {
    const bool isNegative = terms[0].factor < 0;
    if (isNegative)
        for (Term &term : terms)
            term.factor = -term.factor;
    Node node{std::move(terms)};
    const auto [position, isNew] = known.try_emplace(node, static_cast<int>(nodes.size()));
    if (isNew)
        nodes.push_back(std::move(node));
    return {position->second, isNegative};
}

LinearMap::Ref LinearMap::sum(Ref a, Ref b) {
    if (a.node > b.node)
        std::swap(a, b);
    return intern({plainTerm(a), plainTerm(b)});
}

LinearMap::Ref LinearMap::weightedSum(const Parts &parts) {
    std::optional<Ref> base;
    std::vector<Term> terms;
    for (const auto &[factor, ref] : parts) {
        const Term term{ref.node, ref.isNegative ? -factor : factor};
        if (!term.isPlain()) {
            terms.push_back(term);
        } else {
            const Ref plain{ref.node, term.factor < 0};
            base = base ? sum(*base, plain) : plain;
        }
    }
    if (terms.empty())
        return *base;
    if (base)
        terms.insert(terms.begin(), plainTerm(*base));
    return intern(std::move(terms));
}

// Values with the same factor are added up before the product: what the map shared as one product is one sum
// in its transpose.
LinearMap::Parts LinearMap::grouped(const Parts &parts) {
    Parts groups;
    for (const auto &part : parts) {
        const Quad factor = part.first;
        const auto group = std::ranges::find_if(
            groups, [factor](const auto &other) { return other.first == factor || other.first == -factor; });
        if (group == groups.end())
            groups.push_back(part);
        else
            group->second = sum(group->second, group->first == factor ? part.second : -part.second);
    }
    return groups;
}

LinearMap LinearMap::transposed() const {
    LinearMap result;
    std::vector<Parts> contributions(nodes.size());
    for (const Output &output : outputs) {
        const Ref value = result.input();
        contributions[output.ref.node].push_back({1, output.ref.isNegative ? -value : value});
    }
    for (int i = static_cast<int>(nodes.size()) - 1; i >= 0; --i) {
        if (contributions[i].empty())
            continue;                           // no output needs the node
        std::ranges::reverse(contributions[i]); // into the order in which the map has the nodes
        const Ref value = result.weightedSum(result.grouped(contributions[i]));
        for (const Term &term : nodes[i].terms)
            contributions[term.node].push_back({term.factor, value});
        if (nodes[i].terms.empty())
            result.outputs.insert(result.outputs.begin(), {value});
    }
    return result;
}

} // namespace zrfgen::gen
