// The cost of each kernel against the figures in counts.txt, in the graph and in the machine code.
#include "lanes/count.h"

#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "lanes/lower.h"
#include "real/recipes/lengths.h"
#include "real/recipes/real_dft.h"
#include "wht/buffer_size.h"
#include "wht/recipes/kernels.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <sstream>

namespace zrfgen::gen {

namespace {

struct Cost {
    int sums = 0, products = 0, conversions = 0;
};

struct Expectation {
    Cost cost;
    bool sumsAreExact;
};

using Expectations = std::map<std::pair<int, Element>, Expectation>;

// Each row of a table, comments left out: row(length, the fields behind it).
template <class Row> void forEachRow(const char *table, Row row) {
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("#"))
            continue;
        std::istringstream fields(line);
        int length;
        fields >> length;
        row(length, fields);
    }
}

Expectations readExpectations() {
    Expectations expectations;
    forEachRow(COUNTS_TABLE, [&](int length, std::istream &fields) {
        for (const Element element : {Element::Float32, Element::Float64}) {
            Expectation row;
            std::string bound;
            fields >> row.cost.sums >> row.cost.products >> bound;
            row.sumsAreExact = bound == "exact";
            expectations[{length, element}] = row;
        }
    });
    return expectations;
}

Cost graphCost(const Graph &graph) {
    const Counts counts = count(graph, baseTarget());
    return {counts.sums(), counts.multiplications, counts.conversions};
}

Cost graphCost(int length, Element element) {
    return graphCost(lowered(complexDft(length, element, baseTarget()), baseTarget()));
}

struct MachineCode {
    Cost cost;
    bool isScalar = true, isStraight = true; // no packed arithmetic; no calls but for the program counter
};

// The arithmetic instructions of every function of the library.
std::map<std::string, MachineCode> readMachineCode() {
    const std::regex arithmetic(R"(\t(add|sub|addsub|mul)([sp])[sd]\b)"),
        conversion(R"(\tcvt(ss2sd|sd2ss)\b)"), call(R"(\tcall\b(?!.*pc_thunk))"),
        header(R"(^[0-9a-f]+ <([^>]+)>:$)");
    std::map<std::string, MachineCode> functions;
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(
        popen(OBJDUMP " -d --no-show-raw-insn " ZRFGEN_LIBRARY, "r"), pclose);
    MachineCode *current = nullptr;
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe.get()) != nullptr) {
        std::string line(buffer);
        line.pop_back();
        std::smatch match;
        if (std::regex_search(line, match, header))
            current = &functions[match[1]];
        else if (current == nullptr)
            continue;
        else if (std::regex_search(line, match, arithmetic)) {
            ++(match[1] == "mul" ? current->cost.products : current->cost.sums);
            current->isScalar = current->isScalar && match[2] == "s";
        } else if (std::regex_search(line, conversion))
            ++current->cost.conversions;
        else if (std::regex_search(line, call))
            current->isStraight = false;
    }
    return functions;
}

std::string bodyName(const char *direction, int length, const char *suffix) {
    return std::string("zrfgDFT") + direction + "_CToC_" + std::to_string(length) + "_" + suffix + "_body";
}

TEST(Counts, OfTheGraphMeetTheFigures) {
    const Expectations expectations = readExpectations();
    ASSERT_EQ(expectations.size(), 2 * 59u); // all lengths but 2, 3, 5 and 7
    for (const auto &[kernel, expected] : expectations) {
        const auto [length, element] = kernel;
        const std::string what = std::to_string(length) + (element == Element::Float32 ? "_32fc" : "_64fc");
        const Cost cost = graphCost(length, element);
        EXPECT_LE(cost.products, expected.cost.products) << what;
        EXPECT_LE(cost.sums, expected.cost.sums) << what;
        if (expected.sumsAreExact) {
            EXPECT_EQ(cost.sums, expected.cost.sums) << what;
        }
    }
}

// The compiler neither adds nor drops an operation, on either path, in either direction.
TEST(Counts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    const std::regex unaligned(R"(unalignedPath.*Dft(\d+)Complex(32|64)E)");
    for (int length = shortestLength; length <= longestLength; ++length) {
        for (const char *suffix : {"32fc", "64fc"}) {
            const Cost expected =
                graphCost(length, std::string(suffix) == "32fc" ? Element::Float32 : Element::Float64);
            for (const char *direction : {"Fwd", "Inv"}) {
                const std::string name = bodyName(direction, length, suffix);
                ASSERT_TRUE(functions.contains(name)) << name;
                EXPECT_EQ(functions.at(name).cost.sums, expected.sums) << name;
                EXPECT_EQ(functions.at(name).cost.products, expected.products) << name;
            }
        }
    }
    for (const auto &[name, code] : functions) {
        std::smatch match;
        if (!std::regex_search(name, match, unaligned))
            continue;
        const Cost expected =
            graphCost(std::stoi(match[1]), match[2] == "32" ? Element::Float32 : Element::Float64);
        EXPECT_EQ(code.cost.sums, expected.sums) << name;
        EXPECT_EQ(code.cost.products, expected.products) << name;
    }
}

struct RealKernel {
    const char *family;
    Graph (*build)(int length, Element element);
};
const RealKernel realKernels[] = {
    {"DFTFwd_RTo%", forwardRealDft}, {"DFTInv_%ToR", inverseRealDft}, {"Hartley", hartley}};

TEST(RealCounts, OfTheGraphMeetTheFigures) {
    int rows = 0;
    forEachRow(REAL_COUNTS_TABLE, [&](int length, std::istream &fields) {
        ++rows;
        SCOPED_TRACE(length);
        for (const RealKernel &kernel : realKernels) {
            int sums, products;
            fields >> sums >> products;
            for (const Element element : {Element::Float32, Element::Float64}) {
                const Cost cost = graphCost(kernel.build(length, element));
                EXPECT_LE(cost.sums, sums) << kernel.family;
                EXPECT_LE(cost.products - length, products) << kernel.family;
            }
        }
        int singleSums, singleProducts, wideSums, wideProducts, conversions;
        ASSERT_TRUE(fields >> singleSums >> singleProducts >> wideSums >> wideProducts >> conversions);
        const Counts counts = count(forwardRealDft(length, Element::Float32), baseTarget());
        EXPECT_LE(counts.sums(), singleSums + wideSums);
        EXPECT_LE(counts.multiplications, singleProducts + wideProducts);
        EXPECT_LE(counts.wideSums, wideSums);
        EXPECT_LE(counts.conversions, conversions);
    });
    EXPECT_EQ(rows, longestLength - shortestLength + 1);
}

// No twiddle stands between coprime factors.
TEST(RealCounts, OfPrimeFactorStepsAreThoseOfTheirFactors) {
    const auto products = [](int length) {
        const Counts counts = count(forwardRealDft(length, Element::Float64), baseTarget());
        return counts.multiplications - counts.scalings;
    };
    for (int length = shortestLength; length <= longestLength; ++length) {
        const Decomposition &form = realLengthRecipe(length).forward;
        if (form.method != Decomposition::Method::PrimeFactor)
            continue;
        const int a = form.factors[0].length, b = form.factors[1].length;
        EXPECT_EQ(products(length), a * products(b) + b * products(a)) << length;
    }
}

TEST(RealCounts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    for (const RealKernel &kernel : realKernels) {
        const std::string family = kernel.family;
        const auto place = family.find('%');
        for (int length = shortestLength; length <= longestLength; ++length) {
            for (const Element element : {Element::Float32, Element::Float64}) {
                const Cost expected = graphCost(kernel.build(length, element));
                for (const char *layout : {"CCS", "Pack", "Perm"}) {
                    std::string name = "zrfg" + family;
                    if (place != std::string::npos)
                        name.replace(name.find('%'), 1, layout);
                    name += "_" + std::to_string(length) + (element == Element::Float32 ? "_32f" : "_64f") +
                            "_body";
                    ASSERT_TRUE(functions.contains(name)) << name;
                    const MachineCode &code = functions.at(name);
                    EXPECT_EQ(code.cost.sums, expected.sums) << name;
                    EXPECT_EQ(code.cost.products, expected.products) << name;
                    // Each of the three factors may be widened in a branch of its own.
                    EXPECT_LE(code.cost.conversions, expected.conversions + 2) << name;
                    EXPECT_TRUE(code.isScalar && code.isStraight) << name;
                }
            }
        }
    }
}

struct WalshHadamardCost {
    int sums, products; // butterflies are as many additions as subtractions
};

TEST(WalshHadamardCounts, OfTheGraphMeetTheFigures) {
    const std::map<Element, std::vector<WalshHadamardCost>> orders = {
        {Element::Float32, {{2, 2}, {8, 4}, {24, 8}, {16, 4}, {40, 8}, {96, 16}, {224, 32}}},
        {Element::Float64, {{2, 2}, {8, 4}, {12, 4}, {32, 8}, {80, 16}, {192, 32}, {448, 64}}}};
    for (const auto &[element, costs] : orders)
        for (int order = 1; order <= highestOrderWithoutBuffer; ++order) {
            const Counts counts =
                count(lowered(smallWalshHadamard(order, element, baseTarget()), baseTarget()), baseTarget());
            EXPECT_EQ(counts.additions, counts.subtractions) << order;
            EXPECT_EQ(counts.sums(), costs[order - 1].sums) << order;
            EXPECT_EQ(counts.multiplications, costs[order - 1].products) << order;
        }
    const auto blockSums = [](int elements, Element element) {
        return graphCost(walshHadamardBlock(elements, element, baseTarget())).sums;
    };
    EXPECT_EQ(blockSums(32, Element::Float32), 40);
    EXPECT_EQ(blockSums(64, Element::Float32), 96);
    EXPECT_EQ(blockSums(32, Element::Float64), 80);
    EXPECT_EQ(blockSums(128, Element::Float64), 448);
    for (const auto &[rows, sums] : {std::pair(8, 24), {16, 64}, {32, 160}})
        for (const bool isLast : {false, true}) {
            const Cost cost = graphCost(walshHadamardRows(rows, isLast, Element::Float32, baseTarget()));
            EXPECT_EQ(cost.sums, sums);
            EXPECT_EQ(cost.products, isLast ? rows : 0);
        }
}

// The loops over passes hold each body once.
TEST(WalshHadamardCounts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    for (const Element element : {Element::Float32, Element::Float64})
        for (int order = 1; order <= highestOrder; ++order) {
            const bool isSingle = element == Element::Float32;
            std::vector<Graph> parts;
            if (order <= highestOrderWithoutBuffer) {
                parts.push_back(smallWalshHadamard(order, element, baseTarget()));
            } else {
                const WhtPasses passes = whtPasses(order, isSingle ? 4 : 8);
                parts.push_back(walshHadamardBlock(passes.block, element, baseTarget()));
                if (passes.chunk != 0)
                    parts.push_back(
                        walshHadamardRows(passes.chunk / passes.block, false, element, baseTarget()));
                parts.push_back(walshHadamardRows(passes.lastRows(order), true, element, baseTarget()));
            }
            Cost expected;
            for (const Graph &part : parts) {
                expected.sums += graphCost(part).sums;
                expected.products += graphCost(part).products;
            }
            const std::string name =
                "zrfgWHT_" + std::to_string(order) + (isSingle ? "_32f_body" : "_64f_body");
            ASSERT_TRUE(functions.contains(name)) << name;
            EXPECT_EQ(functions.at(name).cost.sums, expected.sums) << name;
            EXPECT_EQ(functions.at(name).cost.products, expected.products) << name;
        }
}

} // namespace

} // namespace zrfgen::gen
