#include "algebra/half_spectrum.h"

#include "algebra/dft.h"

namespace zrfgen::gen {

LinearMap realTransform(const Decomposition &decomposition, FormalComplex::Factors factors) {
    const int n = decomposition.length;
    LinearMap map;
    FormalComplex model(map, factors);
    FormalComplex::Column sequence;
    for (int q = 0; q < n; ++q)
        sequence.push_back({FormalComplex::Part{map.input()}, {}});
    const auto result = transform(model, decomposition, Columns<FormalComplex>{sequence})[0];
    for (int k = 0; k <= n / 2; ++k) {
        map.outputs.push_back({result[k].re->ref, result[k].re->factor});
        if (k > 0 && 2 * k < n)
            map.outputs.push_back({result[k].im->ref, result[k].im->factor});
    }
    return map;
}

} // namespace zrfgen::gen
