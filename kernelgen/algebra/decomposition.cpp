#include "algebra/decomposition.h"

namespace zrfgen::gen {

using Method = Decomposition::Method;

Decomposition sumDifference5() {
    return {Method::SumDifference, 5, {}};
}

Decomposition firstThenOthers(Decomposition first, Decomposition others) {
    return {Method::FirstThenOthers, first.length, {first, others}};
}

Decomposition PF(Decomposition first, Decomposition second) {
    return {Method::PrimeFactor, first.length * second.length, {first, second}};
}

Decomposition surrounded(Decomposition first, Decomposition inner, Decomposition last) {
    return {Method::Surrounded, first.length * inner.length * last.length, {first, inner, last}};
}

Decomposition T(Decomposition first, Decomposition second) {
    return {Method::CooleyTukey, first.length * second.length, {first, second}};
}

Decomposition splitRadix(Decomposition half, Decomposition quarter) {
    return {Method::SplitRadix, 2 * half.length, {half, quarter}};
}

Decomposition realLanes(Decomposition decomposition) {
    return {Method::RealLanes, decomposition.length, {decomposition}};
}

Decomposition complexRader(Decomposition there, Decomposition back) {
    return {Method::ComplexRader, there.length + 1, {there, back}};
}

Decomposition realRader(Decomposition there, Decomposition back) {
    return {Method::RealRader, there.length + 1, {there, back}};
}

Decomposition bluestein(int length, Decomposition there, Decomposition back) {
    return {Method::Bluestein, length, {there, back}};
}

std::string describe(const Decomposition &decomposition) {
    if (decomposition.method == Method::RealLanes)
        return describe(decomposition.factors[0]);
    if (decomposition.method == Method::RealRader || decomposition.method == Method::ComplexRader) {
        const std::string there = describe(decomposition.factors[0]),
                          back = describe(decomposition.factors[1]);
        return "Rader(" + there + (there == back ? "" : ", " + back) + ")";
    }
    if (decomposition.method == Method::SplitRadix)
        return "(" + describe(decomposition.factors[0]) + ") + 2 * (" + describe(decomposition.factors[1]) +
               ")";
    const auto isStep = [](const Decomposition &part) {
        return part.method == Method::PrimeFactor || part.method == Method::CooleyTukey ||
               part.method == Method::Surrounded;
    };
    if (!isStep(decomposition))
        return std::to_string(decomposition.length);
    const auto factor = [&](const Decomposition &part) {
        return isStep(part) ? "(" + describe(part) + ")" : describe(part);
    };
    std::string stages;
    for (const Decomposition &part : decomposition.factors)
        stages += (stages.empty() ? "" : " > ") + factor(part);
    if (decomposition.method == Method::CooleyTukey)
        return stages + " T";
    return stages;
}

} // namespace zrfgen::gen
