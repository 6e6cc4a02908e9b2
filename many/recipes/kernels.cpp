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

// What follows is settled by measurement, with arrays in the processor's nearest caches.

// Whether complex numbers go through blocks, or are moved one by one between the arrays and the lanes: that
// takes as many moves as a vector has numbers, and no shuffles of whole vectors.
bool isInBlocks(int length, Element element, const Target &target) {
    switch (target.vectorBytes / (2 * bytes(element))) { // the numbers in a vector
    case 8:
        return length >= 7;
    case 4:
        return length >= (element == Element::Float32 ? 28 : 43);
    default:
        return false;
    }
}

Gain gainOfComplex(int length, Element element, const Target &target) {
    constexpr int narrow[] = {23, 40, 41}, narrowDoubles[] = {47, 49, 55, 57, 62}, halfWide[] = {24, 56, 61},
                  halfWideDoubles[] = {42, 46, 47, 58, 59, 62}, wide[] = {16, 32, 48, 60, 64};
    if (element == Element::Float32 && lengthRecipe(length).form == Form::SplitLanes)
        return Gain::None; // its lanes are no complex numbers
    const bool isDouble = element == Element::Float64;
    bool isUngained = !isDouble && isAmong(wide, length); // on rows
    if (hasNarrowVectors(target))
        isUngained = isDouble ? isAmong(narrowDoubles, length) : length >= 46 || isAmong(narrow, length);
    else if (target.vectorBytes == 32)
        isUngained = isUngained || (isDouble ? isAmong(halfWideDoubles, length) : isAmong(halfWide, length));
    return isUngained ? Gain::OffRows : Gain::Everywhere;
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

// What all kernels have in common. `names` are those that hand-written code knows it by, each as the
// result of the function `constant`.
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
        kernel.text.constants +=
            "extern const ManyKernel many_" + name + " = " + constant + "(" + textOf(gain) + ");\n";
    }
    return kernel;
}

// A kernel on blocks.
KernelDefinition blockKernel(const std::string &type, const std::vector<std::string> &names, int numberLanes,
                             Gain gain, int vectors, Element element, std::function<Graph()> build,
                             const std::string &decomposition, const Target &target) {
    KernelDefinition kernel = kernelOf(
        type, names, "blockKernel<" + type + ", " + std::to_string(numberLanes * bytes(element)) + ">", gain,
        vectors * target.vector(element).lanes, element, std::move(build), decomposition);
    kernel.text.header = "many/block_kernel.h";
    kernel.text.parameters = {{"[[maybe_unused]] const unsigned char *", "src"},
                              {"[[maybe_unused]] unsigned char *", "dst"},
                              {"[[maybe_unused]] const Float" + bits(element) + " *", "factor"}};
    kernel.text.isAlwaysInline = false;
    kernel.arrays.source.access = kernel.arrays.destination.access = "Access::Aligned";
    return kernel;
}

// Complex numbers stay whole.
Graph acrossNumbers(int length, Element element, Direction direction, const LanesAcross &layout,
                    const Target &target) {
    return acrossTransforms(complexDft(length, element, baseTarget()), direction, element, layout, target);
}

// Reads numbers from the arrays where they lie.
KernelDefinition stridedKernel(const std::string &type, const std::string &name, Gain gain, int length,
                               Element element, Direction direction, const Target &target) {
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
    KernelDefinition kernel = kernelOf(
        type, {name}, "stridedKernel<" + type + ">", gain, elementsBetween * target.vector(element).lanes / 2,
        element,
        [=, &target] {
            return acrossNumbers(
                length, element, direction,
                {2, [](int part, int transform) { return part + elementsBetween * transform; }}, target);
        },
        complexRecipe(length, element));
    kernel.text.header = "many/strided_kernel.h";
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
    return kernel;
}

void addComplexKernels(Kernels &kernels, int length, Element element, const Target &target) {
    for (const Direction direction : {Direction::Forward, Direction::Inverse}) {
        const bool isForward = direction == Direction::Forward;
        const std::string type = std::string(isForward ? "ManyDft" : "ManyInverseDft") +
                                 std::to_string(length) + "Complex" + bits(element),
                          name =
                              nameOf(isForward ? "DFTFwd_CToC" : "DFTInv_CToC", length, bits(element) + "fc");
        const Gain gain = gainOfComplex(length, element, target);
        const int lanes = target.vector(element).lanes;
        const auto inBlock = [=](int part, int transform) {
            return part / 2 * lanes + 2 * transform + part % 2;
        };
        kernels.push_back(
            isInBlocks(length, element, target)
                ? blockKernel(
                      type, {name}, 2, gain, length, element,
                      [=, &target] {
                          return acrossNumbers(length, element, direction, {2, inBlock}, target);
                      },
                      complexRecipe(length, element), target)
                : stridedKernel(type, name, gain, length, element, direction, target));
        kernels.back().text.factorsOf = length;
    }
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
    kernels.push_back(blockKernel(type + std::to_string(length) + "Float" + bits(element), names, 1,
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
        "ManyWht" + n + real, {nameOf("WHT", order, bits(element) + "f")}, 1,
        hasNarrowVectors(target) ? Gain::OffRows : Gain::Everywhere, 1 << order, element,
        [=, &target] {
            return acrossBlock(smallWalshHadamard(order, element, baseTarget()), element, target);
        },
        "2^" + n, target));
    kernels.back().text.base = "WhtFactors<" + real + ", " + n + ">";
}

// A square of numbers of so many lanes transposed: rows `srcPitch` bytes apart to others `dstPitch` bytes
// apart.
KernelDefinition transpose(Type row, int numberLanes) {
    const int lanes = row.lanes, numbers = lanes / numberLanes;
    const auto address = [=](const std::string &array, const std::string &pitch) {
        return [=](int first) {
            return first == 0 ? array : array + " + " + std::to_string(first / lanes) + " * " + pitch;
        };
    };
    return {
        .exports = {},
        .file = "many_transposes.inc",
        .decomposition = "transpose",
        .elements = numbers * lanes,
        .build =
            [=] {
                Graph graph;
                std::vector<NodeId> rows;
                for (int i = 0; i < numbers; ++i)
                    rows.push_back(loadVector(graph, row, i));
                rows = transposedByGroups(graph, rows);
                for (int i = 0; i < numbers; ++i)
                    storeVector(graph, rows[i], i);
                return graph;
            },
        .text = {.type = "Transpose<" + std::to_string(numberLanes * bytes(row.element)) + ", " +
                         std::to_string(numbers) + ">",
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
        for (Type row = baseTarget().vector(element); bytes(row) <= target.vectorBytes; row = twice(row))
            kernels.push_back(transpose(row, 1));
    }
    for (Type row = twice(baseTarget().vector(Element::Float64)); bytes(row) <= target.vectorBytes;
         row = twice(row))
        kernels.push_back(transpose(row, 2));
    return kernels;
}

} // namespace zrfgen::gen
