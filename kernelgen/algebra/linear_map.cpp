#include "algebra/linear_map.h"

#include <utility>

namespace zrfgen::gen {

int LinearMap::intern(const Node &node) {
    const auto [position, isNew] = known.try_emplace(node, static_cast<int>(nodes.size()));
    if (isNew)
        nodes.push_back(node);
    return position->second;
}

// The operand that was made first keeps its sign and the other one takes the difference, so that a sum, its
// negative and both orders of its operands are one node.
LinearMap::Ref LinearMap::sum(Ref a, Ref b) {
    if (a.node > b.node)
        std::swap(a, b);
    return {intern({Kind::Sum, a.node, b.node, a.isNegative != b.isNegative, 0}), a.isNegative};
}

LinearMap::Ref LinearMap::scaled(Ref a, Quad factor) {
    const bool isNegative = factor < 0;
    return {intern({Kind::Product, a.node, 0, false, isNegative ? -factor : factor}),
            a.isNegative != isNegative};
}

} // namespace zrfgen::gen
