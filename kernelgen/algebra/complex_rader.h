// Rader's convolution in complex lanes, for a kernel of prime length.
#pragma once

#include "algebra/decomposition.h"
#include "algebra/number_model.h"
#include "algebra/rader.h"

namespace zrfgen::gen {

// Both transforms of length m = p - 1 are complex ones, with their columns side by side. The inverse kernel
// is the same sequence with the signs of the odd spectrum constants changed, so the model must take the
// direction from constants.
template <ComplexModel Model> typename Model::Column raderInComplexLanes(Model &m, const Decomposition &step,
                                                                         const typename Model::Column &x) {
    using Column = typename Model::Column;
    const std::vector<int> powers = powersOfPrimitiveRoot(step.length);
    const int length = step.length - 1;
    const std::vector<ComplexQuad> forward = raderSpectrum(powers);
    std::vector<ComplexQuad> inverse = forward;
    for (int k = 1; k < length; k += 2)
        inverse[k] = {-forward[k].re, -forward[k].im};

    Column sequence;
    for (const int power : powers)
        sequence.push_back(x[power]);
    const Column there = transform(m, step.factors[0], Columns<Model>{sequence})[0];
    Column result(step.length);
    result[0] = m.addedToFirst(there, x[0])[0];

    // x[0] joins entry 0, and so reaches every output of the transform back. Entry r of that is entry m - r
    // of a transform there.
    const Column product = m.addedToFirst(m.multiplied(there, forward, inverse), x[0]);
    const Column back = transform(m, step.factors[1], Columns<Model>{product})[0];
    for (int r = 0; r < length; ++r)
        result[powers[(length - r) % length]] = back[(length - r) % length];
    return result;
}

} // namespace zrfgen::gen
