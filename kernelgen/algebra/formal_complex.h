// The number model that records a linear map: formal complex numbers whose parts are references into it.
// Parts that are known to be zero are absent and cost nothing, products by constants may wait for a constant
// to merge with, and since a sum and its negative are one node, the conjugate halves of a transform of real
// numbers are computed once.
#pragma once

#include "algebra/columns.h"
#include "algebra/linear_map.h"
#include "number/quad.h"

#include <optional>
#include <vector>

namespace zrfgen::gen {

class FormalComplex {
public:
    struct Part {
        LinearMap::Ref ref;
        Quad factor = 1;
    };
    struct Value {
        std::optional<Part> re, im;
    };
    using Element = Value;
    using Column = std::vector<Element>;

    struct Term {
        Quad factor;
        Value value;
    };

    // When a product by a constant is taken.
    enum class Factors {
        AtOnce,  // as the block that multiplies has it
        Carried, // later, where another product may take the constant up
    };

    // The additions after the products of a rotation by an eighth are the last ones of the block before.
    static constexpr Capabilities capabilities{.realColumns = true, .multipliesFirst = true};

    FormalComplex(LinearMap &map, Factors factors) : linearMap(map), factors(factors) {}

    Value add(const Value &a, const Value &b) { return {sum(a.re, b.re), sum(a.im, b.im)}; }
    Value sub(const Value &a, const Value &b) { return add(a, negate(b)); }
    static Value negate(const Value &a) { return {negated(a.re), negated(a.im)}; }
    static Value conjugate(const Value &a) { return {a.re, negated(a.im)}; }
    static Value quarterTurn(const Value &a) { return {a.im, negated(a.re)}; }
    Value weightedSum(const std::optional<Value> &base, const std::vector<Term> &terms);
    Value turnedSum(const std::vector<Term> &terms) { return quarterTurn(weightedSum({}, terms)); }
    Value scaled(const Value &a, Quad factor) { return {product(factor, a.re), product(factor, a.im)}; }
    Value product(const Value &a, Turn angle) {
        return weightedSum({}, {{cosine(angle), a}, {sine(angle), quarterTurn(a)}});
    }

    static int perVector() { return 1; }
    static int columnsTogether() { return 1; }
    static Value gathered(const Column &elements, int) { return elements[0]; }
    static Element element(const Value &value, int) { return value; }

    static bool isReal(const Column &column);
    static Column realPart(Column column);
    static Column imaginaryPart(Column column);

private:
    using MaybePart = std::optional<Part>;

    static MaybePart negated(const MaybePart &part);
    MaybePart sum(const MaybePart &a, const MaybePart &b);
    MaybePart partSum(const MaybePart &base, const std::vector<std::pair<Quad, MaybePart>> &terms);
    MaybePart product(Quad factor, const MaybePart &part);

    LinearMap &linearMap;
    Factors factors;
};

} // namespace zrfgen::gen
