// A transform as that of two real sequences side by side. With R[k] and I[k] the cosine and the negative sine
// sums of x, taken as if x were real, X[k] = R[k] + i I[k] and X[n-k] = R[k] - i I[k]: rotations need no
// exchange of parts, and a quarter turn comes just with the last addition of each pair of outputs.
#pragma once

#include "algebra/decomposition.h"
#include "algebra/formal_complex.h"
#include "algebra/linear_map.h"

namespace zrfgen::gen {

// The transform of n real numbers as a map to R[0], R[1], I[1], R[2] ... R[n/2].
LinearMap realTransform(const Decomposition &decomposition, FormalComplex::Factors factors);

class HalfSpectrumTransform {
public:
    explicit HalfSpectrumTransform(const Decomposition &decomposition)
        : length(decomposition.length), sums(realTransform(decomposition, FormalComplex::Factors::Carried)) {}

    template <ComplexModel Model> Values<Model> operator()(Model &m, const Values<Model> &x) const {
        auto value = sums.apply(m, x);
        for (std::size_t i = 0; i < value.size(); ++i)
            if (sums.outputs[i].factor != 1)
                value[i] = m.weightedSum({}, {{sums.outputs[i].factor, value[i]}});
        Values<Model> result(length);
        result[0] = value[0];
        if (length % 2 == 0)
            result[length / 2] = value[length - 1];
        for (int k = 1; 2 * k < length; ++k) {
            const auto turned = m.quarterTurn(value[2 * k]); // -i I[k]
            result[k] = m.sub(value[2 * k - 1], turned);
            result[length - k] = m.add(value[2 * k - 1], turned);
        }
        return result;
    }

private:
    int length;
    LinearMap sums;
};

} // namespace zrfgen::gen
