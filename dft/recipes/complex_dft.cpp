#include "dft/recipes/complex_dft.h"

#include "algebra/dft.h"
#include "algebra/interleaved_complex.h"
#include "algebra/split_complex.h"
#include "dft/recipes/lengths.h"

#include <algorithm>

namespace zrfgen::gen {

namespace {

template <ComplexModel Model> void build(Model model, const Decomposition &decomposition) {
    const auto x = model.input(decomposition.length);
    model.output(transform(model, decomposition, Columns<Model>{x})[0]);
}

Graph complexDft(Form form, const Decomposition &decomposition, Element element, const Target &target) {
    const bool convolves = decomposition.method == Decomposition::Method::ComplexRader ||
                           decomposition.method == Decomposition::Method::Bluestein;
    const InverseBy inverse = convolves ? InverseBy::Constants : InverseBy::Exchange;
    const Type vector = target.vector(element);
    Graph graph;
    if (form == Form::SplitLanes)
        build(SplitComplex(graph, vector, inverse), decomposition);
    else if (form == Form::WidePair)
        build(InterleavedComplex(graph, {element, 2}, Products::Wide, inverse), decomposition);
    else
        build(InterleavedComplex(graph, vector, Products::Narrow, inverse,
                                 form == Form::SplitPairs ? Turns::AfterSums : Turns::InConstants),
              decomposition);
    return graph;
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
        .factorsOf = length,
        .element = element,
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

KernelDefinition kernel(int length, Element element, const Target &target) {
    const bool hasForms = element == Element::Float32;
    return {
        .exports = {exportName("Forward", length, element), exportName("Inverse", length, element)},
        .file = "dft_" + std::to_string(length) + "_" + suffix(element) + ".cpp",
        .decomposition = complexRecipe(length, element),
        .elements = 2 * length,
        .build = [=, &target] { return complexDft(length, element, target); },
        .buildBy =
            [=, &target](const std::string &words) {
                const auto blank = hasForms ? words.find(' ') : 0;
                const Form form = hasForms ? formNamed(words.substr(0, blank)) : Form::PairedLanes;
                const auto decomposition = parsedDecomposition(words.substr(std::min(blank, words.size())));
                return complexDft(form, ofLength(length, decomposition), element, target);
            },
        .text = kernelText(length, element),
    };
}

} // namespace

Graph complexDft(int length, Element element, const Target &target) {
    const LengthRecipe &recipe = lengthRecipe(length);
    return element == Element::Float32 ? complexDft(recipe.form, recipe.complex32, element, target)
                                       : complexDft(Form::PairedLanes, recipe.complex64, element, target);
}

std::string complexRecipe(int length, Element element) {
    const LengthRecipe &recipe = lengthRecipe(length);
    return element == Element::Float32 ? name(recipe.form) + (" " + describe(recipe.complex32))
                                       : describe(recipe.complex64);
}

// Laid out for the base target on all of them: wider vectors are filled by pairing, which keeps the bits.
Kernels complexDftKernels(const Target &) {
    Kernels kernels;
    for (int length = shortestLength; length <= longestLength; ++length)
        for (const Element element : {Element::Float32, Element::Float64})
            kernels.push_back(kernel(length, element, baseTarget()));
    return kernels;
}

} // namespace zrfgen::gen
