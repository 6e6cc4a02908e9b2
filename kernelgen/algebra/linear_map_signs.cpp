#include "algebra/linear_map.h"

#include <algorithm>
#include <random>

namespace zrfgen::gen {

// Chooses which values stand negated. A sum is violated while all of its terms come out negative. As for
// satisfiability (B. Selman, H. Kautz and B. Cohen, 1994), a violated sum is drawn time and again, and of the
// values that take part in it the one changes sign that leaves the fewest sums violated, or now and then any.
class LinearMap::SignSearch {
public:
    explicit SignSearch(const LinearMap &map)
        : nodes(map.nodes), isNegated(nodes.size()), isFixed(nodes.size()), sumsWith(nodes.size()) {
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            isFixed[i] = isInput(i);
            if (!isInput(i))
                sumsWith[i].push_back(i);
            for (const Term &term : nodes[i].terms)
                sumsWith[term.node].push_back(i);
        }
        for (const Output &output : map.outputs) {
            isNegated[output.ref.node] = output.ref.isNegative && !isInput(output.ref.node);
            isFixed[output.ref.node] = true;
        }
        for (std::size_t i = 0; i < nodes.size(); ++i)
            if (!isInput(i) && isViolated(i))
                violated.push_back(i);
    }

    std::vector<bool> run() {
        // The longest search in the library takes 209 steps for each node; the bound ends one that is in
        // vain.
        const std::size_t mostSteps = 1000 * nodes.size();
        for (std::size_t step = 0; step < mostSteps && !violated.empty(); ++step)
            mend(violated[random() % violated.size()]);
        return isNegated;
    }

private:
    bool isInput(std::size_t node) const { return nodes[node].terms.empty(); }

    bool isViolated(int sum) const {
        return std::ranges::all_of(nodes[sum].terms, [&](const Term &term) {
            return (term.factor < 0) != (isNegated[sum] != isNegated[term.node]);
        });
    }

    void mend(int sum) {
        std::vector<int> members{sum};
        for (const Term &term : nodes[sum].terms)
            members.push_back(term.node);
        std::erase_if(members, [&](int node) { return isFixed[node]; });
        if (members.empty())
            return;
        const bool takesAny = random() % 4 == 0; // out of local minima
        const int chosen = takesAny ? members[random() % members.size()]
                                    : *std::ranges::min_element(
                                          members, {}, [&](int node) { return violatedAfterChanging(node); });
        isNegated[chosen] = !isNegated[chosen];
        std::erase_if(violated, [&](int other) { return !isViolated(other); });
        for (const int other : sumsWith[chosen])
            if (isViolated(other) && std::ranges::find(violated, other) == violated.end())
                violated.push_back(other);
    }

    std::ptrdiff_t violatedAfterChanging(int node) {
        isNegated[node] = !isNegated[node];
        const auto result = std::ranges::count_if(sumsWith[node], [&](int sum) { return isViolated(sum); });
        isNegated[node] = !isNegated[node];
        return result;
    }

    const std::vector<Node> &nodes;
    std::vector<bool> isNegated, isFixed;
    std::vector<std::vector<int>> sumsWith; // the sums in which a value takes part, its own first
    std::vector<int> violated;
    std::mt19937 random{1};
};

LinearMap LinearMap::withSignsInDifferences() const {
    const std::vector<bool> isNegated = SignSearch(*this).run();
    LinearMap result = *this;
    result.known.clear();
    for (std::size_t i = 0; i < nodes.size(); ++i)
        for (Term &term : result.nodes[i].terms)
            if (isNegated[i] != isNegated[term.node])
                term.factor = -term.factor;
    for (Output &output : result.outputs)
        output.ref.isNegative = output.ref.isNegative != isNegated[output.ref.node];
    return result;
}

} // namespace zrfgen::gen
