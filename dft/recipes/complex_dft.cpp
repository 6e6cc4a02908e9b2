#include "recipes/complex_dft.h"

#include "algebra/bluestein.h"
#include "algebra/dft.h"
#include "algebra/interleaved_complex.h"
#include "algebra/rader.h"
#include "algebra/split_complex.h"
#include "emit/emit.h"
#include "recipes/lengths.h"

namespace zrfgen::gen {

namespace {

void buildSplit(Graph &graph, const LengthRecipe &recipe, const Target &target) {
    const Decomposition &decomposition = recipe.complex32;
    const bool isRader = decomposition.method == Decomposition::Method::ComplexRader;
    const bool isBluestein = decomposition.method == Decomposition::Method::Bluestein;
    const Type type =
        recipe.form == Form::SplitLanes ? target.vector(Element::Float32) : Type{Element::Float32, 1};
    SplitComplex model(graph, type, recipe.form == Form::WideScalar ? Products::Wide : Products::Narrow,
                       isRader || isBluestein ? InverseBy::Constants : InverseBy::Exchange);
    const auto x = model.input(recipe.length);
    model.output(isRader       ? raderInComplexLanes(model, decomposition, x)
                 : isBluestein ? bluesteinTransform(model, decomposition, x)
                               : transform(model, decomposition, Columns<SplitComplex>{x})[0]);
}

void buildInterleaved(Graph &graph, const LengthRecipe &recipe) {
    InterleavedComplex model(graph, Element::Float64);
    const auto x = model.input(recipe.length);
    model.output(transform(model, recipe.complex64, Columns<InterleavedComplex>{x})[0]);
}

std::string suffix(Element element) {
    return element == Element::Float32 ? "32fc" : "64fc";
}

std::string exportName(const std::string &direction, int length, Element element) {
    return "zrfgDFT" + std::string(direction == "Forward" ? "Fwd" : "Inv") + "_CToC_" +
           std::to_string(length) + "_" + suffix(element);
}

// The kernel type around the body, and its two exports.
std::string wrapped(int length, Element element, const Graph &graph, const std::string &body) {
    const std::string bits = element == Element::Float32 ? "32" : "64";
    const std::string n = std::to_string(length), type = "Dft" + n + "Complex" + bits, real = "Float" + bits;
    const auto factor = [&](Quad value) { return literal(value, element); };
    std::string text =
        "#include \"kernel.h\"\n\nnamespace zrfgen {\n\nnamespace {\n\nstruct " + type + " {\n";
    text += "    using Real = " + real + ";\n";
    text += "    static constexpr Real byN = " + factor(Quad(1) / length) +
            ", bySqrtN = " + factor(1 / squareRoot(length)) + ";\n";
    text += std::string("    static constexpr bool hasTwoPaths = ") +
            (hasAlignedMoves(graph) ? "true" : "false") + ";\n\n";
    text += "    template <Direction direction, Access access>\n"
            "    static void transform(const unsigned char *src, unsigned char *dst, Real factor) {\n" +
            body + "    }\n};\n\n} // namespace\n\n";
    for (const char *direction : {"Forward", "Inverse"})
        text += "extern \"C\" Status ZRF_CALL ZRF_BODY(" + exportName(direction, length, element) +
                ")(const Complex" + bits + " *src, Complex" + bits +
                " *dst, std::int32_t flag) {\n    return runKernel<" + type + ", Direction::" + direction +
                ">(src, dst, flag);\n}\n\n";
    return text + "} // namespace zrfgen\n";
}

} // namespace

Graph complexDft(int length, Element element, const Target &target) {
    const LengthRecipe &recipe = lengthRecipe(length);
    Graph graph;
    if (element == Element::Float32)
        buildSplit(graph, recipe, target);
    else
        buildInterleaved(graph, recipe);
    return graph;
}

Family complexDftFamily() {
    Family family;
    for (int length = shortestLength; length <= longestLength; ++length) {
        for (const Element element : {Element::Float32, Element::Float64}) {
            const LengthRecipe &recipe = lengthRecipe(length);
            family.kernels.push_back({
                .exports = {exportName("Forward", length, element), exportName("Inverse", length, element)},
                .file = "dft_" + std::to_string(length) + "_" + suffix(element) + ".cpp",
                .decomposition = describe(element == Element::Float32 ? recipe.complex32 : recipe.complex64),
                .elements = 2 * length,
                .build = [=](const Target &target) { return complexDft(length, element, target); },
                .wrap = [=](const Graph &graph,
                            const std::string &body) { return wrapped(length, element, graph, body); },
            });
        }
    }
    family.otherExports = {"zrfgDFTFwd_CToC_32fc", "zrfgDFTFwd_CToC_64fc", "zrfgDFTInv_CToC_32fc",
                           "zrfgDFTInv_CToC_64fc"};
    return family;
}

} // namespace zrfgen::gen
