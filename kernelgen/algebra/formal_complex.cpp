#include "algebra/formal_complex.h"

#include <algorithm>

namespace zrfgen::gen {

using Value = FormalComplex::Value;

std::optional<FormalComplex::Part> FormalComplex::negated(const MaybePart &part) {
    return part ? MaybePart(Part{-part->ref, part->factor}) : part;
}

LinearMap::Ref FormalComplex::resolved(const Part &part) {
    return part.factor == 1 ? part.ref : linearMap.scaled(part.ref, part.factor);
}

std::optional<FormalComplex::Part> FormalComplex::sum(const MaybePart &a, const MaybePart &b) {
    if (!a || !b)
        return a ? a : b;
    if (a->factor == b->factor)
        return Part{linearMap.sum(a->ref, b->ref), a->factor};
    return Part{linearMap.sum(resolved(*a), resolved(*b))};
}

std::optional<FormalComplex::Part>
FormalComplex::partSum(MaybePart base, const std::vector<std::pair<Quad, MaybePart>> &terms) {
    for (const auto &[factor, part] : terms)
        if (part)
            base = sum(base, Part{part->ref, factor * part->factor});
    return base;
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

Value FormalComplex::rotate(Value a, const std::vector<Turn> &angles) {
    const Turn angle = angles[0];
    if (angle.isMultipleOf(8)) {
        for (long eighth = 8 * angle.numerator / angle.denominator; eighth >= 2; eighth -= 2)
            a = quarterTurn(a);
        if (angle.isMultipleOf(4))
            return a;
        // The products first: the additions after them are then the last ones of the block before.
        const Quad h = cosine({1, 8});
        const auto product = [&](const MaybePart &part) {
            return part ? MaybePart(Part{linearMap.scaled(part->ref, h * part->factor)}) : part;
        };
        a = {product(a.re), product(a.im)};
        return add(a, quarterTurn(a));
    }
    const Quad c = cosine(angle), s = sine(angle);
    return {partSum({}, {{c, a.re}, {s, a.im}}), partSum({}, {{c, a.im}, {-s, a.re}})};
}

bool FormalComplex::isReal(const Column &column) {
    return std::none_of(column.begin(), column.end(),
                        [](const Value &value) { return value.im.has_value(); });
}

} // namespace zrfgen::gen
