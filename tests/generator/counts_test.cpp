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
    Cost cost;
    bool sumsAreExact;
};

using Expectations = std::map<std::pair<int, Element>, Expectation>;

Expectations readExpectations() {
    Expectations expectations;
    std::ifstream file(COUNTS_TABLE);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("#"))
            continue;
        std::istringstream fields(line);
        int length;
        fields >> length;
        for (const Element element : {Element::Float32, Element::Float64}) {
            Expectation row;
            std::string bound;
            fields >> row.cost.sums >> row.cost.products >> bound;
            row.sumsAreExact = bound == "exact";
            expectations[{length, element}] = row;
        }
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
                EXPECT_EQ(functions.at(name).sums, expected.sums) << name;
                EXPECT_EQ(functions.at(name).products, expected.products) << name;
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
}

} // namespace

} // namespace zrfgen::gen
