// Width puts more columns side by side and changes no bit: every kernel's graph, as it would be for wider
// vectors.
#include "dct4/recipes/kernels.h"
#include "dft/recipes/complex_dft.h"
#include "dft_reference.h"
#include "lanes/lower.h"
#include "wht/recipes/kernels.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

// Those with vectors; real kernels are scalar.
const Family families[] = {complexDftKernels, walshHadamardKernels, dct4Kernels};

Target withVectorsOf(int bytes) {
    return {"wider", bytes, {16, 8}};
}

TEST(Width, ChangesNoBit) {
    for (const Family &family : families) {
        const Kernels kernels = family(baseTarget());
        for (const int bytes : {32, 64}) {
            const Target target = withVectorsOf(bytes);
            const Kernels wider = family(target);
            ASSERT_EQ(wider.size(), kernels.size());
            for (std::size_t i = 0; i < kernels.size(); ++i) {
                const int elements = kernels[i].elements, wideElements = wider[i].elements;
                // A kernel over whole vectors of columns has more of them, which take up the columns anew.
                const int lanes = baseTarget().vector(kernels[i].text.element).lanes;
                const auto element = [&](int wide) {
                    const int wideLanes = lanes * wideElements / elements;
                    return wide / wideLanes * lanes + wide % lanes;
                };
                const std::vector<Quad> source = randomSource(elements);
                std::vector<Quad> wideSource;
                for (int wide = 0; wide < wideElements; ++wide)
                    wideSource.push_back(source[element(wide)]);
                for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
                    const auto expected = evaluate(kernels[i].build(), direction, Precision::Native, source,
                                                   Quad(1) / 3, elements);
                    const auto result = evaluate(wider[i].build(), direction, Precision::Native, wideSource,
                                                 Quad(1) / 3, wideElements);
                    for (int wide = 0; wide < wideElements; ++wide)
                        ASSERT_TRUE(result[wide] == expected[element(wide)])
                            << kernels[i].text.type << " with " << bytes << " bytes";
                }
            }
        }
    }
}

TEST(Width, IsRefusedWhereNoInstructionsAreKnown) {
    const Target wider = withVectorsOf(32);
    const Graph graph = complexDft(8, Element::Float32, wider);
    EXPECT_THROW(lowered(graph, wider), std::invalid_argument);
    EXPECT_THROW(targetNamed("wider"), std::invalid_argument);
}

} // namespace

} // namespace zrfgen::gen
