#include "algebra/decomposition.h"

namespace zrfgen::gen {

using Method = Decomposition::Method;

Decomposition PF(Decomposition first, Decomposition second) {
    return {Method::PrimeFactor, first.length * second.length, {first, second}};
}

Decomposition T(Decomposition first, Decomposition second) {
    return {Method::CooleyTukey, first.length * second.length, {first, second}};
}

Decomposition rader(Decomposition there, Decomposition back) {
    return {Method::Rader, there.length + 1, {there, back}};
}

std::string describe(const Decomposition &decomposition) {
    if (decomposition.method == Method::Butterfly)
        return std::to_string(decomposition.length);
    const auto factor = [](const Decomposition &part) {
        return part.method == Method::Butterfly ? describe(part) : "(" + describe(part) + ")";
    };
    const std::string stages = factor(decomposition.factors[0]) + " > " + factor(decomposition.factors[1]);
    if (decomposition.method == Method::CooleyTukey)
        return stages + " T";
    if (decomposition.method == Method::Rader)
        return "Rader " + std::to_string(decomposition.length) + ": " + stages;
    return stages;
}

} // namespace zrfgen::gen
