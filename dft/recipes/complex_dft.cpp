#include "dft/recipes/complex_dft.h"

#include "algebra/dft.h"
#include "algebra/interleaved_complex.h"
#include "algebra/split_complex.h"
#include "dft/recipes/lengths.h"

namespace zrfgen::gen {

namespace {

template <ComplexModel Model> void build(Model model, const Decomposition &decomposition) {
    const auto x = model.input(decomposition.length);
    model.output(transform(model, decomposition, Columns<Model>{x})[0]);
}

void buildComplex32(Graph &graph, const LengthRecipe &recipe, const Target &target) {
    const Decomposition &decomposition = recipe.complex32;
    const bool convolves = decomposition.method == Decomposition::Method::ComplexRader ||
                           decomposition.method == Decomposition::Method::Bluestein;
    const InverseBy inverse = convolves ? InverseBy::Constants : InverseBy::Exchange;
    const Type vector = target.vector(Element::Float32), scalar{Element::Float32, 1},
               pair{Element::Float32, 2};
    switch (recipe.form) {
    case Form::Scalar:
        return build(SplitComplex(graph, scalar, Products::Narrow, inverse), decomposition);
    case Form::WideScalar:
        return build(SplitComplex(graph, scalar, Products::Wide, inverse), decomposition);
    case Form::WidePair:
        return build(InterleavedComplex(graph, pair, Products::Wide, inverse), decomposition);
    case Form::SplitLanes:
        return build(SplitComplex(graph, vector, Products::Narrow, inverse), decomposition);
    case Form::PairedLanes:
        return build(InterleavedComplex(graph, vector, Products::Narrow, inverse), decomposition);
    }
}

void buildComplex64(Graph &graph, const LengthRecipe &recipe, const Target &target) {
    build(InterleavedComplex(graph, target.vector(Element::Float64), Products::Narrow, InverseBy::Exchange),
          recipe.complex64);
}

std::string suffix(Element element) {
    return bits(element) + "fc";
}

std::string exportName(const std::string &direction, int length, Element element) {
    return "zrfgDFT" + std::string(direction == "Forward" ? "Fwd" : "Inv") + "_CToC_" +
           std::to_string(length) + "_" + suffix(element);
}

KernelText kernelText(int length, Element element) {
    const std::string arrayElement = "Complex" + bits(element);
    KernelText kernel{
        .header = "vector_kernel.h",
        .type = "Dft" + std::to_string(length) + arrayElement,
        .isSpecialisation = false,
        .factorsOf = length,
        .element = element,
        .tellsItsPaths = true,
        .function = "transform",
        .templateParameters = {{"KernelDirection", "direction"}, {"Access", "access"}},
        .parameters = transformParameters(element),
        .arrayElement = arrayElement,
    };
    for (const std::string direction : {"Forward", "Inverse"})
        kernel.exports.push_back(
            {exportName(direction, length, element), "runVectorKernel", {"KernelDirection::" + direction}});
    return kernel;
}

} // namespace

Graph complexDft(int length, Element element, const Target &target) {
    const LengthRecipe &recipe = lengthRecipe(length);
    Graph graph;
    if (element == Element::Float32)
        buildComplex32(graph, recipe, target);
    else
        buildComplex64(graph, recipe, target);
    return graph;
}

Kernels complexDftKernels(const Target &target) {
    Kernels kernels;
    for (int length = shortestLength; length <= longestLength; ++length) {
        for (const Element element : {Element::Float32, Element::Float64}) {
            const LengthRecipe &recipe = lengthRecipe(length);
            kernels.push_back({
                .exports = {exportName("Forward", length, element), exportName("Inverse", length, element)},
                .file = "dft_" + std::to_string(length) + "_" + suffix(element) + ".cpp",
                .decomposition = element == Element::Float32
                                     ? name(recipe.form) + (" " + describe(recipe.complex32))
                                     : describe(recipe.complex64),
                .elements = 2 * length,
                .build = [=, &target] { return complexDft(length, element, target); },
                .text = kernelText(length, element),
            });
        }
    }
    return kernels;
}

} // namespace zrfgen::gen
