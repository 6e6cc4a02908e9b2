#include "dct4/recipes/odd_dft.h"

#include "algebra/dft.h"
#include "algebra/formal_complex.h"

namespace zrfgen::gen {

namespace {

Decomposition complexDecomposition(int length) {
    switch (length) {
    case 8:
        return T(4, 2);
    case 16:
        return T(4, 4);
    case 32:
        return splitRadix(T(4, 4), T(4, 2));
    default:
        return length;
    }
}

} // namespace

// A complex transform of length M does it. With u[m] = (w[m] + i w[m-M]) exp(-i pi m / n), output s' of the
// transform of u is the conjugate of E[2s'] + i O[2s'], and E[n-1-2s'] + i O[n-1-2s'] itself, of which two
// just one is wanted.
LinearMap oddDft(int n) {
    const int half = n / 2;
    LinearMap map;
    FormalComplex model(map, FormalComplex::Factors::AtOnce);
    std::vector<LinearMap::Ref> w;
    for (int i = 0; i < n; ++i)
        w.push_back(map.input());
    FormalComplex::Column column;
    for (int m = 0; m < half; ++m)
        column.push_back(
            rotated(model, {FormalComplex::Part{w[m]}, FormalComplex::Part{w[m + half]}}, {m, 2 * n}));
    if (half > 1)
        column = transform(model, complexDecomposition(half), Columns<FormalComplex>{column})[0];
    for (int s = 0; s < half; ++s) {
        const bool isConjugate = s % 2 == 0;
        const FormalComplex::Value &value = column[isConjugate ? s / 2 : (n - 1 - s) / 2];
        map.outputs.push_back({value.re->ref});
        map.outputs.push_back({isConjugate ? -value.im->ref : value.im->ref});
    }
    return map;
}

LinearMap oddSynthesis(int n) {
    LinearMap map = oddDft(n);
    for (std::size_t i = 1; i < map.outputs.size(); i += 2)
        map.outputs[i].ref = -map.outputs[i].ref;
    return map.transposed();
}

} // namespace zrfgen::gen
