#include "wht/recipes/kernels.h"

#include "algebra/vectors.h"
#include "emit/kernel_file.h"
#include "wht/recipes/stages.h"

namespace zrfgen::gen {

namespace {

// What does not fill a square of vectors, or is too short to gain by it, is done one element at a time.
Type smallOrderType(int order, Element element, const Target &target) {
    const Type vector = target.vector(element);
    return order <= 2 || 1 << order < vector.lanes * vector.lanes ? Type{element, 1} : vector;
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
    const Type type = smallOrderType(order, element, target);
    return vectorGraph((1 << order) / type.lanes, type, true, walshHadamardStages);
}

Graph walshHadamardBlock(int elements, Element element, const Target &target) {
    const Type type = target.vector(element);
    return vectorGraph(elements / type.lanes, type, false, walshHadamardStages);
}

Graph walshHadamardRows(int rows, bool isLast, Element element, const Target &target) {
    return vectorGraph(rows, target.vector(element), isLast, rowStages);
}

namespace {

KernelDefinition smallOrder(int order, Element element) {
    const std::string n = std::to_string(order), real = "Float" + bits(element);
    const std::string name = "zrfgWHT_" + n + "_" + bits(element) + "f", type = "Wht" + n + real;
    return {
        .exports = {name},
        .file = "wht_" + n + "_" + bits(element) + "f.cpp",
        .decomposition = "2^" + n,
        .elements = 1 << order,
        .build = [=](const Target &target) { return smallWalshHadamard(order, element, target); },
        .wrap =
            [=](const Graph &graph, const std::string &body) {
                return text({.head = "wht/factors.h",
                             .type = type,
                             .length = 1 << order,
                             .element = element,
                             .arrayElement = real,
                             .factorsFrom = "WhtFactors<" + real + ", " + n + ">",
                             .moreParameters = ", std::uint8_t *",
                             .members = std::string("    static constexpr bool hasTwoPaths = ") +
                                        (hasAlignedMoves(graph) ? "true" : "false") + ";\n",
                             .transformParameters = "Direction, Access access",
                             .exports = {{name, "runVectorKernel<" + type + ", Direction::Both>"}}},
                            body);
            },
    };
}

// A pass body: a specialisation of a template of the loop nests. Its moves on `array` may be unaligned, on
// the other one they never are.
KernelDefinition passBody(const std::string &name, const std::string &specialisation,
                          const std::string &templateParameters, int elements, Element element,
                          std::function<Graph(const Target &)> build) {
    const std::string real = "Float" + bits(element);
    return {
        .exports = {},
        .file = "wht_" + name + "_" + bits(element) + "f.inc",
        .decomposition = name,
        .elements = elements,
        .build = build,
        .wrap =
            [=](const Graph &, const std::string &body) {
                return "template <> struct " + specialisation + " {\n    template <" + templateParameters +
                       ">\n    [[gnu::always_inline]] static void run(const unsigned char *src, unsigned "
                       "char "
                       "*dst, [[maybe_unused]] const " +
                       real + " *factor) {\n" + body + "    }\n};\n";
            },
        .arrays = {{{}, "access"}, {{}, "Access::Aligned"}},
    };
}

KernelDefinition block(int elements, Element element) {
    const std::string n = std::to_string(elements);
    return passBody("block_" + n, "Block<Float" + bits(element) + ", " + n + ">", "Access access", elements,
                    element,
                    [=](const Target &target) { return walshHadamardBlock(elements, element, target); });
}

KernelDefinition rowsOf(int rows, bool isLast, Element element, int lanes) {
    const std::string n = std::to_string(rows);
    KernelDefinition definition =
        passBody("rows_" + n + (isLast ? "_last" : ""),
                 "Rows<Float" + bits(element) + ", " + n + ", " + (isLast ? "true" : "false") + ">",
                 "int stride, Access access", rows * lanes, element,
                 [=](const Target &target) { return walshHadamardRows(rows, isLast, element, target); });
    std::swap(definition.arrays.source, definition.arrays.destination);
    const auto rowOf = [=](const std::string &array) {
        return [=](int first) {
            return array + " + " + std::to_string(bytes(element)) + " * " + std::to_string(first / lanes) +
                   " * stride";
        };
    };
    definition.arrays.source.address = rowOf("src");
    definition.arrays.destination.address = rowOf("dst");
    return definition;
}

} // namespace

Family walshHadamardFamily() {
    Family family;
    for (const Element element : {Element::Float32, Element::Float64}) {
        const bool isSingle = element == Element::Float32;
        for (int order = 1; order <= highestSmallOrder; ++order)
            family.push_back(smallOrder(order, element));
        for (const int elements : isSingle ? std::vector{32, 64} : std::vector{32, 128})
            family.push_back(block(elements, element));
        const int lanes = sse3.vector(element).lanes;
        family.push_back(rowsOf(8, false, element, lanes));
        for (const int rows : isSingle ? std::vector{8, 16, 32} : std::vector{8, 16})
            family.push_back(rowsOf(rows, true, element, lanes));
    }
    return family;
}

} // namespace zrfgen::gen
