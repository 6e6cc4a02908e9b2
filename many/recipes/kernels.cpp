#include "many/recipes/kernels.h"

#include "algebra/vectors.h"
#include "dft/recipes/complex_dft.h"
#include "dft/recipes/lengths.h"
#include "lanes/across.h"
#include "many/gain.h"
#include "real/recipes/real_dft.h"
#include "wht/recipes/kernels.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zrfgen::gen {

namespace {

std::string nameOf(const std::string &family, int length, const std::string &suffix) {
    return family + "_" + std::to_string(length) + "_" + suffix;
}

// Vectors of 16 bytes are filled by single complex kernels as well, which have half as many values and so
// keep more of them in registers. Real kernels fill them where they are put side by side.
bool hasNarrowVectors(const Target &target) {
    return target.vectorBytes == 16;
}

template <std::size_t size> bool isAmong(const int (&lengths)[size], int length) {
    return std::ranges::find(lengths, length) != std::end(lengths);
}

// All by measurement, with rows in the processor's nearest caches.
Gain gainOfComplex(int length, Element element, const Target &target) {
    constexpr int ungainedPairs[] = {23, 41}, ungainedWide[] = {16, 24, 32, 40, 44, 48, 56, 60, 61, 64},
                  ungainedWideDoubles[] = {46, 47, 58, 62};
    if (element == Element::Float64)
        return !hasNarrowVectors(target) && isAmong(ungainedWideDoubles, length) ? Gain::OffRows
                                                                                 : Gain::Everywhere;
    if (lengthRecipe(length).form == Form::SplitLanes)
        return Gain::None; // its lanes are no complex numbers
    const bool isGainedOnRows = hasNarrowVectors(target) ? length < 46 && !isAmong(ungainedPairs, length)
                                                         : !isAmong(ungainedWide, length);
    return isGainedOnRows ? Gain::Everywhere : Gain::OffRows;
}

Gain gainOfReal(int length, Element element, const Target &target) {
    constexpr int ungained[] = {43, 46, 49, 53, 55, 58, 61, 62, 63};
    if (hasNarrowVectors(target) && target.packsScalars) {
        if (length == 47 || length == 59)
            return Gain::None; // longer than the processor's cache for instructions
        if (element == Element::Float64 || isAmong(ungained, length))
            return Gain::OffRows;
    }
    return length <= 3 ? Gain::OffRows : Gain::Everywhere;
}

const char *textOf(Gain gain) {
    return gain == Gain::None ? "Gain::None" : gain == Gain::OffRows ? "Gain::OffRows" : "Gain::Everywhere";
}

// What all kernels have in common. `names` are those that hand-written code knows it by, each as what
// `constant` makes of its type.
KernelDefinition kernelOf(const std::string &type, const std::vector<std::string> &names,
                          const std::string &constant, Gain gain, int elements, Element element,
                          std::function<Graph()> build, const std::string &decomposition) {
    KernelDefinition kernel{
        .exports = {},
        .file = "many_" + names[0] + ".cpp",
        .decomposition = gain == Gain::None ? "none: one by one" : decomposition,
        .elements = elements,
        .build = gain == Gain::None ? [] { return Graph(); } : std::move(build),
        .text = {.type = type, .element = element, .function = "transform"},
        .isAcross = true,
    };
    for (const std::string &name : names) {
        kernel.exports.push_back("many_" + name);
        kernel.text.constants += "extern const " + constant + " many_" + name + " = " + constant + "::of<" +
                                 type + ">(" + textOf(gain) + ");\n";
    }
    return kernel;
}

// Complex numbers stay whole. They are read from the arrays where they lie, since a pair of numbers moves as
// one.
void addComplexKernels(Kernels &kernels, int length, Element element, const Target &target) {
    constexpr int elementsBetween = 256; // more than a transform has
    const auto address = [=](const std::string &array) {
        return [=](int first) {
            const int transform = first / elementsBetween, number = first % elementsBetween / 2;
            std::string text = array;
            if (transform > 0)
                text += " + " + std::to_string(transform) + " * " + array + "Distance";
            if (number > 0)
                text += " + " + std::to_string(number) + " * " + array + "Step";
            return text;
        };
    };
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const bool isForward = direction == Direction::Forward;
        KernelDefinition kernel = kernelOf(
            std::string(isForward ? "ManyDft" : "ManyInverseDft") + std::to_string(length) + "Complex" +
                bits(element),
            {nameOf(isForward ? "DFTFwd_CToC" : "DFTInv_CToC", length, bits(element) + "fc")},
            "StridedKernel", gainOfComplex(length, element, target),
            elementsBetween * target.vector(element).lanes / 2, element,
            [=, &target] {
                return acrossTransforms(
                    complexDft(length, element, baseTarget()), direction, element,
                    {2, [](int part, int transform) { return part + elementsBetween * transform; }}, target);
            },
            complexRecipe(length, element));
        kernel.text.header = "many/strided_kernel.h";
        kernel.text.factorsOf = length;
        kernel.text.parameters = {{"[[maybe_unused]] const unsigned char *", "src"},
                                  {"[[maybe_unused]] std::ptrdiff_t", "srcDistance"},
                                  {"[[maybe_unused]] std::ptrdiff_t", "srcStep"},
                                  {"[[maybe_unused]] unsigned char *", "dst"},
                                  {"[[maybe_unused]] std::ptrdiff_t", "dstDistance"},
                                  {"[[maybe_unused]] std::ptrdiff_t", "dstStep"},
                                  {"[[maybe_unused]] const Float" + bits(element) + " *", "factor"}};
        kernel.arrays = arraysAnywhere();
        kernel.arrays.source.address = address("src");
        kernel.arrays.destination.address = address("dst");
        kernels.push_back(std::move(kernel));
    }
}

// A kernel on blocks.
KernelDefinition blockKernel(const std::string &type, const std::vector<std::string> &names, Gain gain,
                             int vectors, Element element, std::function<Graph()> build,
                             const std::string &decomposition, const Target &target) {
    KernelDefinition kernel =
        kernelOf(type, names, "BlockKernel", gain, vectors * target.vector(element).lanes, element,
                 std::move(build), decomposition);
    kernel.text.header = "many/block_kernel.h";
    kernel.text.parameters = {{"[[maybe_unused]] const unsigned char *", "src"},
                              {"[[maybe_unused]] unsigned char *", "dst"},
                              {"[[maybe_unused]] const Float" + bits(element) + " *", "factor"}};
    kernel.text.isAlwaysInline = false;
    kernel.arrays.source.access = kernel.arrays.destination.access = "Access::Aligned";
    return kernel;
}

// One element to a lane, and whole vectors of a block to be read.
Graph acrossBlock(const Graph &kernel, Element element, const Target &target) {
    const int lanes = target.vector(element).lanes;
    return acrossTransforms(kernel, Direction::Forward, element,
                            {1, [=](int number, int transform) { return number * lanes + transform; }},
                            target);
}

// In a block, the entries of a spectrum stand as in CCS layout, whichever the array's is.
std::vector<int> spectrumVectors(const std::vector<int> &entries, int lanes) {
    std::vector<int> elements;
    for (const int entry : entries)
        elements.push_back(entry < lanes ? entry : entry + lanes);
    return elements;
}

Graph withSpectrumAsCCS(const Graph &kernel, bool isForward, int lanes) {
    return rewritten(
        kernel,
        [&](Graph &copy, Node node) {
            if (node.op == Op::Load && !isForward)
                node.picks = spectrumVectors(node.picks, lanes);
            return copy.intern(std::move(node));
        },
        [&](Graph &copy, const Store &store) {
            copy.store(store.value, isForward ? spectrumVectors(store.offsets, lanes) : store.offsets);
        });
}

void addRealKernel(Kernels &kernels, const std::string &type, const std::vector<std::string> &families,
                   int length, Element element, std::function<Graph()> build, const Target &target) {
    std::vector<std::string> names;
    for (const std::string &family : families)
        names.push_back(nameOf(family, length, bits(element) + "f"));
    kernels.push_back(blockKernel(type + std::to_string(length) + "Float" + bits(element), names,
                                  gainOfReal(length, element, target), length + 2, element, std::move(build),
                                  "that of zrfg" + names[0], target));
    kernels.back().text.factorsOf = length;
}

void addRealKernels(Kernels &kernels, int length, Element element, const Target &target) {
    const int lanes = target.vector(element).lanes;
    const auto across = [=, &target](Graph (*recipe)(int, Element)) {
        return acrossBlock(recipe(length, element), element, target);
    };
    addRealKernel(
        kernels, "ManyRealForward", {"DFTFwd_RToCCS", "DFTFwd_RToPack", "DFTFwd_RToPerm"}, length, element,
        [=] { return withSpectrumAsCCS(across(forwardRealDft), true, lanes); }, target);
    addRealKernel(
        kernels, "ManyRealInverse", {"DFTInv_CCSToR", "DFTInv_PackToR", "DFTInv_PermToR"}, length, element,
        [=] { return withSpectrumAsCCS(across(inverseRealDft), false, lanes); }, target);
    addRealKernel(
        kernels, "ManyHartley", {"Hartley"}, length, element, [=] { return across(hartley); }, target);
}

void addWalshHadamardKernel(Kernels &kernels, int order, Element element, const Target &target) {
    const std::string n = std::to_string(order), real = "Float" + bits(element);
    kernels.push_back(blockKernel(
        "ManyWht" + n + real, {nameOf("WHT", order, bits(element) + "f")},
        hasNarrowVectors(target) ? Gain::OffRows : Gain::Everywhere, 1 << order, element,
        [=, &target] {
            return acrossBlock(smallWalshHadamard(order, element, baseTarget()), element, target);
        },
        "2^" + n, target));
    kernels.back().text.base = "WhtFactors<" + real + ", " + n + ">";
}

// A square of elements transposed: rows `srcPitch` bytes apart to others `dstPitch` bytes apart.
KernelDefinition transpose(Type row) {
    const int lanes = row.lanes;
    const auto address = [=](const std::string &array, const std::string &pitch) {
        return [=](int first) {
            return first == 0 ? array : array + " + " + std::to_string(first / lanes) + " * " + pitch;
        };
    };
    return {
        .exports = {},
        .file = "many_transposes.inc",
        .decomposition = "transpose",
        .elements = lanes * lanes,
        .build =
            [=] {
                Graph graph;
                std::vector<NodeId> rows;
                for (int i = 0; i < lanes; ++i)
                    rows.push_back(loadVector(graph, row, i));
                rows = transposedByGroups(graph, rows);
                for (int i = 0; i < lanes; ++i)
                    storeVector(graph, rows[i], i);
                return graph;
            },
        .text = {.type = "Transpose<Float" + bits(row.element) + ", " + std::to_string(lanes) + ">",
                 .element = row.element,
                 .function = "run",
                 .parameters = {{"const unsigned char *", "src"},
                                {"std::ptrdiff_t", "srcPitch"},
                                {"unsigned char *", "dst"},
                                {"std::ptrdiff_t", "dstPitch"}}},
        .arrays = {{address("src", "srcPitch"), "Access::UnalignedWhole", "Access::UnalignedWhole"},
                   {address("dst", "dstPitch"), "Access::UnalignedWhole", "Access::UnalignedWhole"}},
        .isAcross = true,
    };
}

} // namespace

Kernels manyKernels(const Target &target) {
    Kernels kernels;
    for (const Element element : {Element::Float32, Element::Float64}) {
        for (int length = shortestLength; length <= longestLength; ++length) {
            addComplexKernels(kernels, length, element, target);
            addRealKernels(kernels, length, element, target);
        }
        for (int order = 1; order <= highestOrderAcross; ++order)
            addWalshHadamardKernel(kernels, order, element, target);
        for (int lanes = 16 / bytes(element); lanes <= target.vector(element).lanes; lanes *= 2)
            kernels.push_back(transpose({element, lanes}));
    }
    return kernels;
}

} // namespace zrfgen::gen
