// The cost of each kernel against the figures in counts.txt, in the graph and in the machine code.
#include "graph/count.h"

#include "lanes/lower.h"
#include "recipes/complex_dft.h"
#include "recipes/lengths.h"

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
    int sums = 0, products = 0;
    friend bool operator==(const Cost &, const Cost &) = default;
};

struct Expectation {
    Cost complex32, complex64;
    bool sumsAreExact;
};

std::map<int, Expectation> readExpectations() {
    std::map<int, Expectation> expectations;
    std::ifstream file(COUNTS_TABLE);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("#"))
            continue;
        std::istringstream fields(line);
        int length;
        std::string bound;
        Expectation row;
        fields >> length >> row.complex32.sums >> row.complex32.products >> row.complex64.sums >>
            row.complex64.products >> bound;
        row.sumsAreExact = bound == "exact";
        expectations[length] = row;
    }
    return expectations;
}

Cost graphCost(int length, Element element) {
    const Counts counts = count(lowered(complexDft(length, element, sse3)));
    return {counts.sums(), counts.multiplications};
}

// The arithmetic instructions of every function of the library.
std::map<std::string, Cost> readMachineCode() {
    const std::regex arithmetic(R"(\t(add|sub|addsub|mul)[sp][sd]\b)"), header(R"(^[0-9a-f]+ <([^>]+)>:$)");
    std::map<std::string, Cost> functions;
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(
        popen(OBJDUMP " -d --no-show-raw-insn " ZRFGEN_LIBRARY, "r"), pclose);
    Cost *current = nullptr;
    char buffer[512];
    while (std::fgets(buffer, sizeof buffer, pipe.get()) != nullptr) {
        std::string line(buffer);
        line.pop_back();
        std::smatch match;
        if (std::regex_search(line, match, header))
            current = &functions[match[1]];
        else if (current != nullptr && std::regex_search(line, match, arithmetic))
            ++(match[1] == "mul" ? current->products : current->sums);
    }
    return functions;
}

std::string bodyName(const char *direction, int length, const char *suffix) {
    return std::string("zrfgDFT") + direction + "_CToC_" + std::to_string(length) + "_" + suffix + "_body";
}

TEST(Counts, OfTheGraphMeetTheFigures) {
    const auto expectations = readExpectations();
    ASSERT_EQ(expectations.size(), 59u); // all lengths but 2, 3, 5 and 7
    for (const auto &[length, row] : expectations) {
        if (lengthRecipe(length) == nullptr)
            continue;
        for (const Element element : {Element::Float32, Element::Float64}) {
            const Cost &most = element == Element::Float32 ? row.complex32 : row.complex64;
            const Cost cost = graphCost(length, element);
            const std::string what =
                std::to_string(length) + (element == Element::Float32 ? "_32fc" : "_64fc");
            EXPECT_LE(cost.products, most.products) << what;
            if (row.sumsAreExact) {
                EXPECT_EQ(cost.sums, most.sums) << what;
            } else {
                EXPECT_LE(cost.sums, most.sums) << what;
            }
        }
    }
}

// The compiler neither adds nor drops an operation, on either path, in either direction.
TEST(Counts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    const std::regex unaligned(R"(unalignedPath.*Dft(\d+)Complex(32|64)E)");
    int kernels = 0;
    for (int length = shortestLength; length <= longestLength; ++length) {
        if (lengthRecipe(length) == nullptr)
            continue;
        for (const char *suffix : {"32fc", "64fc"}) {
            const Cost expected =
                graphCost(length, std::string(suffix) == "32fc" ? Element::Float32 : Element::Float64);
            for (const char *direction : {"Fwd", "Inv"}) {
                const std::string name = bodyName(direction, length, suffix);
                ASSERT_TRUE(functions.contains(name)) << name;
                EXPECT_EQ(functions.at(name).sums, expected.sums) << name;
                EXPECT_EQ(functions.at(name).products, expected.products) << name;
                ++kernels;
            }
        }
    }
    for (const auto &[name, cost] : functions) {
        std::smatch match;
        if (!std::regex_search(name, match, unaligned))
            continue;
        const Cost expected =
            graphCost(std::stoi(match[1]), match[2] == "32" ? Element::Float32 : Element::Float64);
        EXPECT_EQ(cost.sums, expected.sums) << name;
        EXPECT_EQ(cost.products, expected.products) << name;
    }
    EXPECT_GE(kernels, 36);
}

} // namespace

} // namespace zrfgen::gen
