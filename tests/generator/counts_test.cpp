// The cost of each kernel against the figures in counts.txt, in the graph and in the machine code.
#include "lanes/count.h"

#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "lanes/lower.h"
#include "many/recipes/kernels.h"
#include "real/recipes/lengths.h"
#include "real/recipes/real_dft.h"
#include "tests/command.h"
#include "wht/buffer_size.h"
#include "wht/recipes/kernels.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace zrfgen::gen {

namespace {

struct Cost {
    int sums = 0, products = 0, conversions = 0;
};

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
    bool isAligned = true;                   // no unaligned move of what lies on a boundary if the array does
    bool isFused = false;                    // some product with a sum, in one rounding
    bool isWide = false, clearsUpperHalves = false;
};

// The arithmetic instructions of every function of the library.
std::map<std::string, MachineCode> readMachineCode(const std::string &library = ZRFGEN_LIBRARY) {
    const std::regex arithmetic(R"(\tv?(add|sub|addsub|mul)([sp])[sd]\b)"), fused(R"(\tvfn?m)"),
        wide(R"(%[yz]mm(1[0-5]|\d)\b)"), // registers 16 and up have no upper halves to clear
        conversion(R"(\tv?cvt(ss2sd|sd2ss|ps2pd|pd2ps)\b)"), call(R"(\tcall\b(?!.*pc_thunk))"),
        unaligned(R"(\t(movu|movdqu|lddqu)\S*\s+(%xmm\d+,)?(-?0x[0-9a-f]*0)?\()"),
        header(R"(^[0-9a-f]+ <([^>]+)>:$)");
    std::map<std::string, MachineCode> functions;
    MachineCode *current = nullptr;
    for (const std::string &line : linesOf(OBJDUMP " -d --no-show-raw-insn " + library)) {
        std::smatch match;
        if (std::regex_search(line, match, header))
            current = &functions[match[1]];
        if (current == nullptr)
            continue;
        current->isWide |= std::regex_search(line, wide);
        current->clearsUpperHalves |= line.find("\tvzeroupper") != line.npos;
        if (std::regex_search(line, fused))
            current->isFused = true;
        else if (std::regex_search(line, match, arithmetic)) {
            ++(match[1] == "mul" ? current->cost.products : current->cost.sums);
            current->isScalar = current->isScalar && match[2] == "s";
        } else if (std::regex_search(line, conversion))
            ++current->cost.conversions;
        else if (std::regex_search(line, call))
            current->isStraight = false;
        else if (std::regex_search(line, unaligned))
            current->isAligned = false;
    }
    return functions;
}

TEST(Counts, OfTheGraphMeetTheFigures) {
    int rows = 0;
    forEachRow(COUNTS_TABLE, [&](int length, std::istream &fields) {
        ++rows;
        for (const Element element : {Element::Float32, Element::Float64}) {
            SCOPED_TRACE(std::to_string(length) + (element == Element::Float32 ? "_32fc" : "_64fc"));
            int sums, products;
            std::string bound;
            ASSERT_TRUE(fields >> sums >> products >> bound);
            const Cost cost = graphCost(length, element);
            EXPECT_LE(cost.products, products);
            EXPECT_LE(cost.sums, sums);
            EXPECT_TRUE(bound == "most" || (bound == "exact" && cost.sums == sums)) << cost.sums;
        }
    });
    EXPECT_EQ(rows, 59); // all lengths but 2, 3, 5 and 7
}

struct ExportCounts {
    std::string name;
    Cost cost;
};

// Of all kernels of libzrfgen for a target, by the cards that head their texts: names first, then counts.
std::vector<ExportCounts> readCards(const std::string &folder) {
    std::vector<ExportCounts> exports;
    for (const auto &file : std::filesystem::directory_iterator(folder)) {
        std::ifstream text(file.path());
        std::string names, line;
        if (file.path().extension() != ".cpp" || !std::getline(text, names) || names.starts_with("// many_"))
            continue;
        Cost cost;
        int factors = 0;
        while (std::getline(text, line) && !line.starts_with("// other")) {
            if (std::sscanf(line.c_str(),
                            "// arithmetic %d additions (%*d add, %*d sub, %*d both in turn), %d "
                            "multiplications and %d",
                            &cost.sums, &cost.products, &factors) == 3)
                cost.products += factors;
            std::sscanf(line.c_str(), "// in Float64 %*d additions, %*d multiplications; %d",
                        &cost.conversions);
        }
        std::istringstream list(names.substr(3));
        for (std::string name; std::getline(list >> std::ws, name, ',');)
            exports.push_back({name, cost});
    }
    EXPECT_EQ(exports.size(), 18 * 63 + 2 * 7u);
    return exports;
}

// Kernels laid out in vectors by the algebra, not element by element.
bool isOnVectors(const std::string &name) {
    return name.find("CToC") != name.npos || name.find("WHT") != name.npos;
}

void expectCounts(const std::map<std::string, MachineCode> &functions,
                  const std::vector<ExportCounts> &exports) {
    for (const auto &[name, expected] : exports) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(functions.contains(name + "_body"));
        const MachineCode &code = functions.at(name + "_body");
        // A lane of a result may be computed again, straight into the vector that wants just this lane.
        const int most = isOnVectors(name) ? 0 : 1;
        EXPECT_GE(code.cost.sums, expected.sums);
        EXPECT_LE(code.cost.sums, expected.sums + most);
        EXPECT_GE(code.cost.products, expected.products);
        EXPECT_LE(code.cost.products, expected.products + most);
        // Each of the three factors may be widened in a branch of its own, as a number and as a vector.
        EXPECT_LE(code.cost.conversions, expected.conversions + 4);
        EXPECT_TRUE(code.isStraight);
        EXPECT_FALSE(code.isFused);
        EXPECT_EQ(code.isWide, code.clearsUpperHalves);
    }
}

// The compiler neither adds nor drops an operation, on either path, in either direction, in any layout.
TEST(Counts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    const auto exports = readCards(BUILD "/generated");
    expectCounts(functions, exports);
    for (const auto &[name, cost] : exports) {
        SCOPED_TRACE(name);
        const MachineCode &code = functions.at(name + "_body");
        if (isOnVectors(name))
            EXPECT_TRUE(code.isAligned); // other arrays have a path of their own
        else
            EXPECT_TRUE(code.isScalar || sizeof(void *) == 8);
    }
    const std::regex unaligned(R"(unalignedPath.*Dft(\d+)Complex(32|64)E)");
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

TEST(Counts, OfTheMachineCodeOfWiderTargetsAreThoseOfTheGraph) {
    std::istringstream targets(WIDER_TARGETS);
    for (std::string target; targets >> target;) {
        const auto functions = readMachineCode(BUILD "/lib/glibc-hwcaps/" + target + "/libzrfgen.so");
        expectCounts(functions, readCards(BUILD "/generated/" + target));
        EXPECT_GT(std::ranges::count_if(functions, [](const auto &each) { return each.second.isWide; }),
                  2 * 63);
    }
}

TEST(RealCounts, OfTheGraphMeetTheFigures) {
    int rows = 0;
    forEachRow(REAL_COUNTS_TABLE, [&](int length, std::istream &fields) {
        ++rows;
        SCOPED_TRACE(length);
        for (const auto build : {forwardRealDft, inverseRealDft, hartley}) {
            int sums, products;
            fields >> sums >> products;
            for (const Element element : {Element::Float32, Element::Float64}) {
                const Cost cost = graphCost(build(length, element));
                EXPECT_LE(cost.sums, sums);
                EXPECT_LE(cost.products - length, products);
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

// Of the orders made of passes, whose loops hold each body once.
TEST(WalshHadamardCounts, OfTheMachineCodeAreThoseOfTheGraph) {
    const auto functions = readMachineCode();
    for (const Element element : {Element::Float32, Element::Float64})
        for (int order = highestOrderWithoutBuffer + 1; order <= highestOrder; ++order) {
            const bool isSingle = element == Element::Float32;
            const WhtPasses passes = whtPasses(order, isSingle ? 4 : 8);
            std::vector<Graph> parts = {walshHadamardBlock(passes.block, element, baseTarget())};
            if (passes.chunk != 0)
                parts.push_back(walshHadamardRows(passes.chunk / passes.block, false, element, baseTarget()));
            parts.push_back(walshHadamardRows(passes.lastRows(order), true, element, baseTarget()));
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
            EXPECT_TRUE(functions.at(name).isAligned) << name;
        }
}

// An operation counts as often as it has lanes.
void addOperation(Cost &cost, const Node &node, int lanes) {
    if (isArithmetic(node.op))
        (node.op == Op::Mul ? cost.products : cost.sums) += lanes;
    else if (node.op == Op::Widen || node.op == Op::Narrow)
        cost.conversions += lanes;
}

// What one transform takes, element by element: its results in one direction and all that they depend on, by
// groups of lanes. The kernel itself may do more, in lanes of its vectors that nothing reads.
Cost elementCost(const Graph &kernel, Direction direction, int groupLanes) {
    Cost cost;
    std::vector<std::set<int>> groups(kernel.size()); // that something depends on
    for (const Store &store : kernel.stores())
        for (std::size_t lane = 0; lane < store.offsets.size(); ++lane)
            if (store.offsets[lane] != idle)
                groups[store.value].insert(static_cast<int>(lane) / groupLanes);
    for (NodeId id = kernel.size() - 1; id >= 0; --id) {
        const Node &node = kernel[id];
        for (const int group : groups[id]) {
            addOperation(cost, node, groupLanes);
            if (node.op == Op::ByDirection) {
                groups[node.operands[direction == Direction::Forward ? 0 : 1]].insert(group);
            } else if (node.op == Op::Gather) {
                for (int lane = group * groupLanes; lane < (group + 1) * groupLanes; ++lane)
                    if (node.picks[lane] != idle) {
                        const Graph::Place place = kernel.placeOf(node.operands, node.picks[lane]);
                        groups[node.operands[place.operand]].insert(place.lane / groupLanes);
                    }
            } else {
                for (const NodeId operand : node.operands)
                    groups[operand].insert(group);
            }
        }
    }
    return cost;
}

// Of one transform, by the name of the kernel that does many.
std::map<std::string, Cost> costsOfSingleKernels() {
    std::map<std::string, Cost> costs;
    for (const Element element : {Element::Float32, Element::Float64}) {
        const auto add = [&](const std::string &family, int size, const Graph &kernel,
                             Direction direction = Direction::Forward, int groupLanes = 1) {
            const std::string type = bits(element) + (groupLanes == 2 ? "fc" : "f");
            costs["many_" + family + "_" + std::to_string(size) + "_" + type] =
                elementCost(kernel, direction, groupLanes);
        };
        for (int length = shortestLength; length <= longestLength; ++length) {
            const Graph complex = complexDft(length, element, baseTarget());
            add("DFTFwd_CToC", length, complex, Direction::Forward, 2);
            add("DFTInv_CToC", length, complex, Direction::Inverse, 2);
            add("DFTFwd_RToCCS", length, forwardRealDft(length, element));
            add("DFTInv_CCSToR", length, inverseRealDft(length, element));
            add("Hartley", length, hartley(length, element));
        }
        for (int order = 1; order <= highestOrderWithoutBuffer; ++order)
            add("WHT", order, smallWalshHadamard(order, element, baseTarget()));
    }
    return costs;
}

// Each kernel of many transforms, but for those of no gain, which are empty, and the transposes.
template <class Use> void forEachManyKernel(const Target &target, Use use) {
    for (const KernelDefinition &kernel : manyKernels(target)) {
        SCOPED_TRACE(target.name + " " + kernel.text.type);
        const Graph graph = lowered(kernel.build(), target);
        if (!kernel.exports.empty() && !graph.stores().empty())
            use(kernel, graph);
    }
}

bool isComplex(const KernelDefinition &kernel) {
    return kernel.exports[0].ends_with("c");
}

// As many of a transform's operations as there are transforms, no more and no fewer, on every target.
TEST(ManyCounts, OfTheGraphAreThoseOfOneTransformForEach) {
    const std::map<std::string, Cost> costs = costsOfSingleKernels();
    for (const Target &target : targets()) {
        int kernels = 0;
        forEachManyKernel(target, [&](const KernelDefinition &kernel, const Graph &graph) {
            ++kernels;
            Cost cost;
            for (const NodeId id : liveNodes(graph))
                addOperation(cost, graph[id], graph[id].type.lanes);
            const int transforms = target.vector(kernel.text.element).lanes / (isComplex(kernel) ? 2 : 1);
            const Cost &one = costs.at(kernel.exports[0]);
            EXPECT_EQ(cost.sums, transforms * one.sums);
            EXPECT_EQ(cost.products, transforms * one.products);
            EXPECT_EQ(cost.conversions, transforms * one.conversions);
        });
        EXPECT_GT(kernels, 600);
    }
}

bool isSign(const Node &node) {
    return node.op == Op::Constant && std::ranges::all_of(node.values, [&](Quad value) {
               return value == node.values[0] && (value == 1 || value == -1);
           });
}

// Products of whole vectors by 1 or -1, which the compiler leaves out. They are there since one transform's
// vectors hold other factors beside these.
int productsBySigns(const Graph &graph) {
    return static_cast<int>(std::ranges::count_if(liveNodes(graph), [&](NodeId id) {
        return graph[id].op == Op::Mul && std::ranges::any_of(graph[id].operands, [&](NodeId operand) {
                   return isSign(graph[operand]);
               });
    }));
}

// In the functions that are named by a kernel's type: two if it reads the arrays themselves, rows and others.
TEST(ManyCounts, OfTheMachineCodeAreThoseOfTheGraph) {
    std::map<std::string, std::string> libraries = {{LIBRARY_TARGET, ZRFMANY_LIBRARY}};
    std::istringstream wider(WIDER_TARGETS);
    for (std::string target; wider >> target;)
        libraries[target] = BUILD "/lib/glibc-hwcaps/" + target + "/libzrfmany.so";
    const std::regex typeName(R"(Many[A-Za-z]+\d+(Complex|Float)(32|64))");
    for (const auto &[target, library] : libraries) {
        std::map<std::string, std::vector<MachineCode>> functions;
        for (const auto &[name, code] : readMachineCode(library)) {
            std::smatch type;
            if (std::regex_search(name, type, typeName) && code.cost.sums > 0) // and not just a call of it
                functions[type[0]].push_back(code);
        }
        forEachManyKernel(targetNamed(target), [&](const KernelDefinition &kernel, const Graph &graph) {
            const Counts counts = count(graph, targetNamed(target));
            const int sums = counts.sums(), products = counts.multiplications - productsBySigns(graph);
            EXPECT_EQ(functions[kernel.text.type].size(),
                      kernel.text.header == "many/strided_kernel.h" ? 2u : 1u);
            for (const MachineCode &code : functions[kernel.text.type]) {
                const int loops = code.cost.sums == sums ? 1 : 2; // a short one may be there twice
                EXPECT_EQ(code.cost.sums, loops * sums);
                EXPECT_EQ(code.cost.products, loops * products);
                EXPECT_TRUE(code.isStraight);
                EXPECT_FALSE(code.isFused);
                EXPECT_EQ(code.isWide, code.clearsUpperHalves);
            }
        });
    }
}

} // namespace

} // namespace zrfgen::gen
