// The same bits on every target: its kernels' graphs, in which operations lie side by side, give what those
// of the base target give, to the sign of a zero, and do the same arithmetic on each element.
#include "dct4/recipes/kernels.h"
#include "dft/recipes/complex_dft.h"
#include "dft_reference.h"
#include "driver/compile.h"
#include "lanes/lower.h"
#include "real/recipes/real_dft.h"
#include "wht/recipes/kernels.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

std::vector<Quad> zerosAndOnes(int elements) {
    std::vector<Quad> source;
    for (const Quad number : randomSource(elements, 2))
        source.push_back(number < -0.5 ? -1 : number < 0 ? -Quad(0) : number < 0.5 ? 0 : 1);
    return source;
}

bool areSame(Quad a, Quad b) {
    return a == b && std::signbit(static_cast<double>(a)) == std::signbit(static_cast<double>(b));
}

// Additions and products of single elements.
std::pair<int, int> elementOperations(const Graph &graph) {
    int sums = 0, products = 0;
    for (const NodeId id : liveNodes(graph)) {
        const Node &node = graph[id];
        (node.op == Op::Mul ? products : sums) += isArithmetic(node.op) ? node.type.lanes : 0;
    }
    return {sums, products};
}

void expectSameKernels(const Kernels &kernels, const Target &narrower, const Kernels &wider,
                       const Target &target) {
    ASSERT_EQ(wider.size(), kernels.size());
    for (std::size_t i = 0; i < kernels.size(); ++i) {
        SCOPED_TRACE(kernels[i].text.type);
        const Graph narrow = compile(kernels[i], narrower).graph, wide = compile(wider[i], target).graph;
        // A body of a loop over columns may have more of them, which take up the columns anew.
        const int elements = kernels[i].elements, wideElements = wider[i].elements;
        const int lanes = baseTarget().vector(kernels[i].text.element).lanes;
        const auto elementOf = [&](int place) {
            const int wideLanes = lanes * wideElements / elements;
            return place / wideLanes * lanes + place % lanes;
        };
        for (const auto &source : {randomSource(elements), zerosAndOnes(elements)}) {
            std::vector<Quad> wideSource;
            for (int place = 0; place < wideElements; ++place)
                wideSource.push_back(source[elementOf(place)]);
            for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
                const Quad scale = Quad(1) / 3;
                const auto expected = evaluate(narrow, direction, Precision::Native, source, scale, elements);
                const auto result =
                    evaluate(wide, direction, Precision::Native, wideSource, scale, wideElements);
                for (int place = 0; place < wideElements; ++place)
                    ASSERT_TRUE(areSame(result[place], expected[elementOf(place)])) << place;
            }
        }
        const auto [sums, products] = elementOperations(narrow);
        const int columns = wideElements / elements;
        EXPECT_EQ(elementOperations(wide), std::pair(columns * sums, columns * products));
    }
}

class WiderTarget : public testing::TestWithParam<std::string> {
public:
    void expectSameKernelsOf(const Family &family) {
        const Target &target = targetNamed(GetParam());
        expectSameKernels(family(baseTarget()), baseTarget(), family(target), target);
    }
};

TEST_P(WiderTarget, GivesTheBitsOfComplexDfts) {
    expectSameKernelsOf(complexDftKernels);
}

// Their scalar kernels in vectors; all of them are held to the bits of the graph as the algebra built it by
// random calls of the libraries.
Kernels someRealDftKernels(const Target &target) {
    Kernels kernels = realDftKernels(target);
    std::erase_if(kernels, [](const KernelDefinition &kernel) {
        return kernel.elements % 5 != 0 || kernel.elements > 40;
    });
    return kernels;
}

TEST(BaseTarget, GivesTheBitsOfScalarKernels) {
    const Target &scalar = targetNamed("i386");
    expectSameKernels(someRealDftKernels(scalar), scalar, someRealDftKernels(baseTarget()), baseTarget());
}

TEST_P(WiderTarget, GivesTheBitsOfRealDfts) {
    expectSameKernelsOf(someRealDftKernels);
}

// Those that every target has. Stages for wider vectors are laid out for them: they are held to what they
// compute, and the plans that they make up to the digests.
Kernels narrowDct4Kernels(const Target &target) {
    Kernels kernels = dct4Kernels(target);
    std::erase_if(kernels, [](const KernelDefinition &kernel) {
        const std::string &type = kernel.text.type;
        return !type.starts_with("Direct<") && !(type.starts_with("Output<") && type.ends_with(", 16>"));
    });
    return kernels;
}

TEST_P(WiderTarget, GivesTheBitsOfStagesAndPasses) {
    expectSameKernelsOf(walshHadamardKernels);
    expectSameKernelsOf(narrowDct4Kernels);
}

#ifdef __x86_64__ // 32-bit builds have no library for them
std::vector<std::string> widerTargets() {
    std::vector<std::string> names;
    for (const Target &target : targets())
        if (target.vectorBytes > baseTarget().vectorBytes)
            names.push_back(target.name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Targets, WiderTarget, testing::ValuesIn(widerTargets()));
#else
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(WiderTarget);
#endif

TEST(Targets, AreRefusedWhereNothingIsKnownOfThem) {
    const Target wider = {"wider", 32, 16, true, true};
    EXPECT_THROW(lowered(complexDft(8, Element::Float32, wider), wider), std::invalid_argument);
    EXPECT_THROW(targetNamed("wider"), std::invalid_argument);
}

} // namespace

} // namespace zrfgen::gen
