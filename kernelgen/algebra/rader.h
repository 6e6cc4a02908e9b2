// Prime lengths by cyclic convolution (C. M. Rader, 1968): with g a primitive root of p and m = p - 1, the
// outputs X[g^-r] - x[0] are the cyclic convolution of x[g^q] with exp(-2 pi i g^-q / p), done by transforms
// of length m.
#pragma once

#include "algebra/decomposition.h"
#include "algebra/half_spectrum.h"

namespace zrfgen::gen {

// The powers g^0 .. g^(p-2) modulo p of the smallest primitive root g.
std::vector<int> powersOfPrimitiveRoot(int p);

// The spectrum of the convolution's fixed sequence exp(-2 pi i g^-q / p), with the 1/m of the transform back
// folded in.
std::vector<ComplexQuad> raderSpectrum(const std::vector<int> &powers);

// Real lanes: the convolution is one of real sequences, so both transforms are real ones, forward and
// transposed, and the model's values go through them as if they were real numbers. Only the odd half of the
// spectrum, the sines, takes a quarter turn.
class RealLaneRader {
public:
    explicit RealLaneRader(const Decomposition &step);

    template <ComplexModel Model> Values<Model> operator()(Model &m, const Values<Model> &x) const {
        const int length = static_cast<int>(powers.size());
        Values<Model> sequence;
        for (const int power : powers)
            sequence.push_back(x[power]);
        const Values<Model> spectrum = there.apply(m, sequence);

        Values<Model> result(length + 1);
        result[0] = m.add(x[0], spectrum[0]);
        Values<Model> product;
        for (const Row &row : rows) {
            std::vector<typename Model::Term> terms;
            for (const auto &[factor, input] : row.terms)
                terms.push_back({factor, row.isOdd ? m.quarterTurn(spectrum[input]) : spectrum[input]});
            // x[0] joins entry 0 and so reaches all outputs.
            product.push_back(product.empty() ? m.weightedSum(x[0], terms) : m.weightedSum({}, terms));
        }
        const Values<Model> sums = back.apply(m, product);
        for (int r = 0; r < length; ++r)
            result[powers[(length - r) % length]] = sums[r];
        return result;
    }

private:
    // One real number of the product spectrum, as a sum over those of the sequence's spectrum.
    struct Row {
        bool isOdd;
        std::vector<std::pair<Quad, int>> terms;
    };

    std::vector<int> powers;
    LinearMap there, back; // real transforms of length m, the one back transposed
    std::vector<Row> rows;
};

} // namespace zrfgen::gen
