// The compiled kernels against their graphs: since the graph rounds as the element types do, every build of
// the library on every machine must give the bits that it predicts.
#include "dft_reference.h"
#include "recipes/complex_dft.h"
#include "recipes/lengths.h"

#include "registry.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

template <class Real>
std::vector<Real> runCompiled(const std::string &name, const std::vector<Quad> &source) {
    const auto kernel = reinterpret_cast<Transform::Call>(exportAddress(name));
    std::vector<Real> x(source.begin(), source.end()), result(x.size());
    EXPECT_EQ(kernel(x.data(), result.data(), zrfScaleBySqrtN), zrfStatusOk) << name;
    return result;
}

template <class Real> void expectPredictedBits(int length, Element element, const std::string &suffix) {
    const Graph graph = complexDft(length, element, sse3);
    const Real factor = static_cast<Real>(1 / squareRoot(length));
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const std::string name = std::string("zrfgDFT") + (direction == Direction::Forward ? "Fwd" : "Inv") +
                                 "_CToC_" + std::to_string(length) + "_" + suffix;
        for (unsigned seed = 0; seed < 3; ++seed) {
            const auto source = randomSource(length, seed);
            const auto compiled = runCompiled<Real>(name, source);
            const auto predicted = evaluate(graph, direction, Precision::Native, source, factor, 2 * length);
            for (int i = 0; i < 2 * length; ++i)
                ASSERT_EQ(compiled[i], static_cast<Real>(predicted[i])) << name << " element " << i;
        }
    }
}

TEST(CompiledKernels, GiveTheBitsThatTheirGraphsPredict) {
    for (int length = shortestLength; length <= longestLength; ++length) {
        expectPredictedBits<Float32>(length, Element::Float32, "32fc");
        expectPredictedBits<Float64>(length, Element::Float64, "64fc");
    }
}

} // namespace

} // namespace zrfgen::gen
