#include "real/recipes/real_dft.h"

#include "algebra/half_spectrum.h"
#include "algebra/real.h"
#include "dft/recipes/lengths.h"
#include "real/recipes/lengths.h"

namespace zrfgen::gen {

namespace {

using enum FormalComplex::Factors;

// Whether entry i of a spectrum stands for its mirror image too.
bool isInterior(int i, int length) {
    return i > 0 && (length % 2 == 1 || i < length - 1);
}

// Outputs with their factors, and with another one.
LinearMap::Ref multiplied(LinearMap &map, const LinearMap::Output &output, Quad factor) {
    return map.weightedSum({{factor * output.factor, output.ref}});
}

LinearMap forwardMap(const Decomposition &decomposition) {
    return realTransform(decomposition, AtOnce);
}

// The transpose of the forward sums, with the doubling of the interior entries ahead.
LinearMap inverseMap(const Decomposition &decomposition) {
    const int length = decomposition.length;
    LinearMap map = realTransform(decomposition, Carried);
    for (int i = 0; i < length; ++i)
        map.outputs[i] = {multiplied(map, map.outputs[i], isInterior(i, length) ? 2 : 1)};
    return map.transposed();
}

// H[k] = R[k] - I[k] and H[n-k] = R[k] + I[k].
LinearMap hartleyMap(const Decomposition &decomposition) {
    const int length = decomposition.length;
    LinearMap map = realTransform(decomposition, Carried);
    const std::vector<LinearMap::Output> spectrum = map.outputs;
    for (int k = 1; k <= length / 2; ++k) {
        const LinearMap::Output &re = spectrum[2 * k - 1];
        if (2 * k == length) {
            map.outputs[k] = re;
            continue;
        }
        const LinearMap::Output &im = spectrum[2 * k];
        map.outputs[k] = {map.weightedSum({{re.factor, re.ref}, {-im.factor, im.ref}})};
        map.outputs[length - k] = {map.weightedSum({{re.factor, re.ref}, {im.factor, im.ref}})};
    }
    return map;
}

Graph scalarKernel(LinearMap map, Element element) {
    const int length = static_cast<int>(map.outputs.size());
    for (LinearMap::Output &output : map.outputs)
        output = {multiplied(map, output, 1)};
    map = map.withSignsInDifferences();

    Graph graph;
    const Type scalar{element, 1};
    RealArithmetic real(graph, scalar, element == Element::Float32 ? Products::Wide : Products::Narrow);
    std::vector<Real> inputs;
    for (int i = 0; i < length; ++i)
        inputs.push_back({graph.load(scalar, {i})});
    const std::vector<Real> outputs = map.apply(real, inputs);
    for (int i = 0; i < length; ++i)
        graph.store(real.scaledByCall(outputs[i]), {i});
    return graph;
}

// Entries 1 to length - 2 of a spectrum are neighbours in every layout, and the first and the last one are
// nobody's: numbers with a gap on either side of the others.
int apart(int entry, int length) {
    return entry == 0 ? 0 : length % 2 == 0 && entry == length - 1 ? length + 1 : entry + 1;
}

int entryAt(int place, int length) {
    return place == 0 ? 0 : place <= length ? place - 1 : length - 1;
}

std::vector<int> apart(std::vector<int> entries, int length) {
    for (int &entry : entries)
        entry = apart(entry, length);
    return entries;
}

// The kernel with its spectrum numbered so.
Graph withSpectrumApart(const Graph &kernel, bool isForward, int length) {
    return rewritten(
        kernel,
        [&](Graph &copy, Node node) {
            if (node.op == Op::Load && !isForward)
                node.picks = apart(std::move(node.picks), length);
            return copy.intern(std::move(node));
        },
        [&](Graph &copy, const Store &store) {
            copy.store(store.value, isForward ? apart(store.offsets, length) : store.offsets);
        });
}

// "15_64f"
std::string lengthAndSuffix(int length, Element element) {
    return std::to_string(length) + "_" + bits(element) + "f";
}

KernelText kernelText(const std::string &kind, int length, Element element) {
    return {
        .header = "real_kernel.h",
        .type = kind + std::to_string(length) + "Float" + bits(element),
        .factorsOf = length,
        .element = element,
        .function = "transform",
        .templateParameters = {{"SpectrumLayout", "layout"}},
        .parameters = transformParameters(element),
        .arrayElement = "Float" + bits(element),
    };
}

// The kernels of one direction: one text for the three layouts.
KernelDefinition spectrumKernel(const Decomposition &decomposition, bool isForward, int length,
                                Element element) {
    const std::string direction = isForward ? "Forward" : "Inverse";
    const std::string n = std::to_string(length), size = std::to_string(bytes(element));
    const auto graph = [=](const Decomposition &decomposition) {
        const LinearMap map = (isForward ? forwardMap : inverseMap)(decomposition);
        return withSpectrumApart(scalarKernel(map, element), isForward, length);
    };
    KernelDefinition kernel{
        .exports = {},
        .file = (isForward ? "real_forward_" : "real_inverse_") + lengthAndSuffix(length, element) + ".cpp",
        .decomposition = describe(decomposition) + (isForward ? "" : ", transposed: the last stage first"),
        .elements = length + 2,
        .build = [=] { return graph(decomposition); },
        .buildBy =
            [=](const std::string &words) { return graph(ofLength(length, parsedDecomposition(words))); },
        .text = kernelText("Real" + direction, length, element),
        .arrays = arraysAnywhere(), // what lies on a boundary of vectors in one layout does not in another
    };
    for (const std::string layout : {"CCS", "Pack", "Perm"}) {
        const std::string family = isForward ? "DFTFwd_RTo" + layout : "DFTInv_" + layout + "ToR";
        kernel.exports.push_back("zrfg" + family + "_" + lengthAndSuffix(length, element));
        kernel.text.exports.push_back({kernel.exports.back(),
                                       "runRealKernel",
                                       {"KernelDirection::" + direction, "SpectrumLayout::" + layout}});
    }
    if (isForward)
        kernel.text.lastStatement =
            "        storeSpectrumZeros<layout, " + kernel.text.arrayElement + ">(dst, " + n + ");\n";
    const std::string array = isForward ? "dst + " : "src + ";
    (isForward ? kernel.arrays.destination : kernel.arrays.source).address = [=](int i) {
        return array + size + " * spectrumElement<layout>(" + n + ", " + std::to_string(entryAt(i, length)) +
               ")";
    };
    return kernel;
}

KernelDefinition hartleyKernel(const Decomposition &decomposition, int length, Element element) {
    const std::string name = "zrfgHartley_" + lengthAndSuffix(length, element);
    KernelDefinition kernel{
        .exports = {name},
        .file = "hartley_" + lengthAndSuffix(length, element) + ".cpp",
        .decomposition = describe(decomposition),
        .elements = length,
        .build = [=] { return hartley(length, element); },
        .buildBy =
            [=](const std::string &words) {
                return scalarKernel(hartleyMap(ofLength(length, parsedDecomposition(words))), element);
            },
        .text = kernelText("Hartley", length, element),
        .arrays = arraysAnywhere(),
    };
    kernel.text.exports = {{name, "runRealKernel", {"KernelDirection::Both"}}};
    return kernel;
}

} // namespace

Graph forwardRealDft(int length, Element element) {
    return scalarKernel(forwardMap(realLengthRecipe(length).forward), element);
}

Graph inverseRealDft(int length, Element element) {
    return scalarKernel(inverseMap(realLengthRecipe(length).inverse), element);
}

Graph hartley(int length, Element element) {
    return scalarKernel(hartleyMap(realLengthRecipe(length).hartley), element);
}

Kernels realDftKernels(const Target &) {
    Kernels kernels;
    for (const Element element : {Element::Float32, Element::Float64}) {
        for (int length = shortestLength; length <= longestLength; ++length) {
            const RealLengthRecipe &recipe = realLengthRecipe(length);
            kernels.push_back(spectrumKernel(recipe.forward, true, length, element));
            kernels.push_back(spectrumKernel(recipe.inverse, false, length, element));
            kernels.push_back(hartleyKernel(recipe.hartley, length, element));
        }
    }
    return kernels;
}

} // namespace zrfgen::gen
