#include "wht/recipes/kernels.h"

#include "algebra/vectors.h"
#include "wht/buffer_size.h"
#include "wht/recipes/stages.h"

#include <set>

namespace zrfgen::gen {

namespace {

// Stages inside of vectors need a square of them. What does not fill one, or is too short to gain by it, is
// done one element at a time.
Type typeFor(int elements, Element element, const Target &target) {
    const Type vector = target.vector(element);
    return elements <= 4 || elements < vector.lanes * vector.lanes ? Type{element, 1} : vector;
}

// Vectors of consecutive elements on the way in and out.
template <class Stages> Graph vectorGraph(int vectors, Type type, bool isScaled, Stages stages) {
    Graph graph;
    std::vector<NodeId> values;
    for (int i = 0; i < vectors; ++i)
        values.push_back(loadVector(graph, type, i));
    stages(graph, values);
    for (int i = 0; i < vectors; ++i)
        storeVector(graph, isScaled ? graph.mul(values[i], graph.scale(type)) : values[i], i);
    return graph;
}

} // namespace

Graph smallWalshHadamard(int order, Element element, const Target &target) {
    const Type type = typeFor(1 << order, element, target);
    return vectorGraph((1 << order) / type.lanes, type, true, walshHadamardStages);
}

Graph walshHadamardBlock(int elements, Element element, const Target &target) {
    const Type type = typeFor(elements, element, target);
    return vectorGraph(elements / type.lanes, type, false, walshHadamardStages);
}

Graph walshHadamardRows(int rows, bool isLast, Element element, const Target &target) {
    return vectorGraph(rows, target.vector(element), isLast, stagesBetweenVectors);
}

namespace {

// No order of these reads the buffer. It is passed on all the same, since the unaligned path takes what the
// export does.
KernelDefinition smallOrder(int order, Element element, const Target &target) {
    std::vector<Parameter> parameters = transformParameters(element);
    parameters.push_back({"std::uint8_t *", ""});
    const std::string n = std::to_string(order), real = "Float" + bits(element);
    const std::string name = "zrfgWHT_" + n + "_" + bits(element) + "f";
    return {
        .exports = {name},
        .file = "wht_" + n + "_" + bits(element) + "f.cpp",
        .decomposition = "2^" + n,
        .elements = 1 << order,
        .build = [=, &target] { return smallWalshHadamard(order, element, target); },
        .text = {.header = "wht/factors.h",
                 .type = "Wht" + n + real,
                 .base = "WhtFactors<" + real + ", " + n + ">",
                 .element = element,
                 .function = "transform",
                 .templateParameters = {{"KernelDirection", ""}, {"Access", "access"}},
                 .parameters = parameters,
                 .arrayElement = real,
                 .moreParameters = {{"std::uint8_t *", "buffer"}},
                 .exports = {{name, "runVectorKernel", {"KernelDirection::Both"}}}},
    };
}

// A pass body: a specialisation of a template of the loop nests. Its moves on one array may be unaligned, on
// the other one, the buffer, they never are.
KernelDefinition passBody(const std::string &type, const std::string &arguments,
                          std::vector<Parameter> templateParameters, int elements, Element element) {
    return {
        .exports = {},
        .file = "wht_passes.inc",
        .decomposition = type + " " + arguments,
        .elements = elements,
        .build = {},
        .text = {.type = type + "<Float" + bits(element) + ", " + arguments + ">",
                 .element = element,
                 .function = "run",
                 .templateParameters = templateParameters,
                 .parameters = transformParameters(element)},
    };
}

KernelDefinition blockStages(int elements, Element element, const Target &target) {
    KernelDefinition kernel =
        passBody("BlockStages", std::to_string(elements), {{"Access", "access"}}, elements, element);
    kernel.build = [=, &target] { return walshHadamardBlock(elements, element, target); };
    kernel.arrays.destination.access = "Access::Aligned";
    return kernel;
}

KernelDefinition rowStages(int rows, bool isLast, Element element, const Target &target) {
    const int lanes = target.vector(element).lanes;
    KernelDefinition kernel = passBody("RowStages", std::to_string(rows) + (isLast ? ", true" : ", false"),
                                       {{"int", "stride"}, {"Access", "access"}}, rows * lanes, element);
    kernel.build = [=, &target] { return walshHadamardRows(rows, isLast, element, target); };
    const auto rowOf = [=](const std::string &array) {
        return [=](int first) {
            return array + " + " + std::to_string(bytes(element)) + " * " + std::to_string(first / lanes) +
                   " * stride";
        };
    };
    kernel.arrays = {{rowOf("src"), "Access::Aligned"}, {rowOf("dst")}};
    return kernel;
}

} // namespace

Kernels walshHadamardKernels(const Target &target) {
    Kernels kernels;
    for (const Element element : {Element::Float32, Element::Float64}) {
        for (int order = 1; order <= highestOrderWithoutBuffer; ++order)
            kernels.push_back(smallOrder(order, element, baseTarget()));
        // The bodies of which the passes of all orders are made.
        std::set<int> blocks;
        std::set<std::pair<int, bool>> rows;
        for (int order = highestOrderWithoutBuffer + 1; order <= highestOrder; ++order) {
            const WhtPasses passes = whtPasses(order, bytes(element));
            blocks.insert(passes.block);
            if (passes.chunk != 0)
                rows.insert({passes.chunk / passes.block, false});
            rows.insert({passes.lastRows(order), true});
        }
        for (const int elements : blocks)
            kernels.push_back(blockStages(elements, element, baseTarget()));
        for (const auto &[count, isLast] : rows)
            kernels.push_back(rowStages(count, isLast, element, target));
    }
    return kernels;
}

} // namespace zrfgen::gen
