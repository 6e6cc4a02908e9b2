#include "algebra/formal_complex.h"

#include <algorithm>

namespace zrfgen::gen {

using Value = FormalComplex::Value;

std::optional<FormalComplex::Part> FormalComplex::negated(const MaybePart &part) {
    return part ? MaybePart(Part{-part->ref, part->factor}) : part;
}

std::optional<FormalComplex::Part> FormalComplex::product(Quad factor, const MaybePart &part) {
    return part ? MaybePart(Part{linearMap.weightedSum({{factor * part->factor, part->ref}})}) : part;
}

std::optional<FormalComplex::Part> FormalComplex::sum(const MaybePart &a, const MaybePart &b) {
    if (!a || !b)
        return a ? a : b;
    if (a->factor == b->factor)
        return Part{linearMap.sum(a->ref, b->ref), a->factor};
    return Part{linearMap.sum(product(1, a)->ref, product(1, b)->ref)};
}

std::optional<FormalComplex::Part>
FormalComplex::partSum(const MaybePart &base, const std::vector<std::pair<Quad, MaybePart>> &terms) {
    LinearMap::Parts parts;
    const auto include = [&](Quad factor, const MaybePart &part) {
        if (part)
            parts.push_back({factor * part->factor, part->ref});
    };
    include(1, base);
    for (const auto &[factor, part] : terms)
        include(factor, part);
    if (parts.empty())
        return {};
    if (parts.size() == 1 && factors == Factors::Carried)
        return Part{parts[0].second, parts[0].first};
    return Part{linearMap.weightedSum(parts)};
}

Value FormalComplex::weightedSum(const std::optional<Value> &base, const std::vector<Term> &terms) {
    std::vector<std::pair<Quad, MaybePart>> re, im;
    for (const Term &term : terms) {
        re.push_back({term.factor, term.value.re});
        im.push_back({term.factor, term.value.im});
    }
    const Value start = base.value_or(Value{});
    return {partSum(start.re, re), partSum(start.im, im)};
}

bool FormalComplex::isReal(const Column &column) {
    return std::none_of(column.begin(), column.end(),
                        [](const Value &value) { return value.im.has_value(); });
}

FormalComplex::Column FormalComplex::realPart(Column column) {
    for (Value &value : column)
        value = {value.re, {}};
    return column;
}

FormalComplex::Column FormalComplex::imaginaryPart(Column column) {
    for (Value &value : column)
        value = {value.im, {}};
    return column;
}

} // namespace zrfgen::gen
