// The compiled kernels against their graphs: since the graph rounds as the element types do, every build of
// the library on every machine must give the bits that it predicts.
#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "dft_reference.h"
#include "real/recipes/real_dft.h"

#include "registry.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

template <class Real> void expectPredictedBits(const std::string &name, int length, const Graph &graph,
                                               Direction direction, int elements) {
    const auto kernel = reinterpret_cast<Transform::Call>(exportAddress(name));
    const Real factor = static_cast<Real>(1 / squareRoot(length));
    for (unsigned seed = 0; seed < 3; ++seed) {
        const auto source = randomSource(elements, seed);
        const std::vector<Real> x(source.begin(), source.end());
        std::vector<Real> compiled(elements);
        ASSERT_EQ(kernel(x.data(), compiled.data(), zrfScaleBySqrtN), zrfStatusOk) << name;
        const auto predicted = evaluate(graph, direction, Precision::Native, source, factor, elements);
        for (int i = 0; i < elements; ++i)
            ASSERT_EQ(compiled[i], static_cast<Real>(predicted[i])) << name << " element " << i;
    }
}

// In the layout whose entries stand in the graph's own order; the other layouts are held to this one.
template <class Real> void expectPredictedBits(int length, Element element, const std::string &bits) {
    const std::string n = std::to_string(length) + "_" + bits;
    const Graph complex = complexDft(length, element, sse3);
    for (const Direction direction : {Direction::Forward, Direction::Inverse})
        expectPredictedBits<Real>(
            (direction == Direction::Forward ? "zrfgDFTFwd_CToC_" : "zrfgDFTInv_CToC_") + n + "c", length,
            complex, direction, 2 * length);
    const std::pair<const char *, Graph> realKernels[] = {
        {"zrfgDFTFwd_RToPack_", forwardRealDft(length, element)},
        {"zrfgDFTInv_PackToR_", inverseRealDft(length, element)},
        {"zrfgHartley_", hartley(length, element)}};
    for (const auto &[family, graph] : realKernels)
        expectPredictedBits<Real>(family + n, length, graph, Direction::Forward, length);
}

TEST(CompiledKernels, GiveTheBitsThatTheirGraphsPredict) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        expectPredictedBits<Float32>(length, Element::Float32, "32f");
        expectPredictedBits<Float64>(length, Element::Float64, "64f");
    }
}

} // namespace

} // namespace zrfgen::gen
