#include "dct4/recipes/kernels.h"

#include "algebra/dft.h"
#include "algebra/formal_complex.h"
#include "algebra/real.h"
#include "algebra/vectors.h"
#include "dct4/recipes/odd_dft.h"
#include "dct4/split.h"

namespace zrfgen::gen {

namespace {

// Arithmetic on whole vectors, or on single numbers where there is one lane.
class Lanes {
public:
    Lanes(Graph &graph, Type type, int sourceDistance = 1, int destinationDistance = 1)
        : graph(graph), type(type), real(graph, type, Products::Narrow), sourceDistance(sourceDistance),
          destinationDistance(destinationDistance) {}

    NodeId load(int vector) { return loadVector(graph, type, sourceDistance * vector); }
    // A vector of equal numbers, of which wider vectors than the plan's take copies.
    NodeId loadCopies(int vector) {
        const int first = sourceDistance * vector * type.lanes;
        return type == planVector(type.element) ? load(vector)
                                                : graph.load(type, std::vector<int>(type.lanes, first));
    }
    void store(Real value, int vector) {
        storeVector(graph, real.resolved(value), destinationDistance * vector);
    }
    // The product by cos + i sin, both from a table.
    std::pair<Real, Real> rotated(Real re, Real im, NodeId cosine, NodeId sine) {
        return {real.sub(real.scaled(re, cosine), real.scaled(im, sine)),
                real.add(real.scaled(re, sine), real.scaled(im, cosine))};
    }

    Graph &graph;
    const Type type;
    RealArithmetic real;

private:
    const int sourceDistance, destinationDistance; // of vectors, in vectors
};

// Two numbers at a time are rotated in three steps (I. Daubechies and W. Sweldens, 1998).
std::pair<Real, Real> lifted(RealArithmetic &real, Real x, Real y, Quad tangent, Quad sine) {
    x = real.weightedSum(x, {{-tangent, y}});
    y = real.weightedSum(y, {{sine, x}});
    x = real.weightedSum(x, {{-tangent, y}});
    return {x, y};
}

Quad tangent(Turn angle) {
    return sine(angle) / cosine(angle);
}

std::vector<Real> twoPointDct4(RealArithmetic &real, const std::vector<Real> &x) {
    const Quad c = cosine({1, 16}), s = sine({1, 16});
    return {real.weightedSum({}, {{c, x[0]}, {s, x[1]}}), real.weightedSum({}, {{s, x[0]}, {-c, x[1]}})};
}

std::vector<Real> fourPointDct4(RealArithmetic &real, const std::vector<Real> &x) {
    const auto [a, b] = lifted(real, x[1], x[2], tangent({5, 64}), sine({5, 32}));
    const auto [p, q] = lifted(real, x[0], x[3], tangent({7, 64}), sine({7, 32}));
    const Quad h = cosine({1, 8});
    const Real e = real.weightedSum({}, {{h, real.sub(q, b)}}),
               f = real.weightedSum({}, {{h, real.add(p, a)}});
    return {real.add(q, b), real.add(e, f), real.sub(e, f), real.sub(p, a)};
}

// Both stages with two rows: columns of four points, and a synthesis over all columns for s = 0 and 1.
std::vector<Real> twoStageDct4(RealArithmetic &real, const std::vector<Real> &x) {
    const int n = static_cast<int>(x.size()), radix = n / 4;
    const LinearMap input = oddDft(4).withSignsInDifferences(),
                    output = oddSynthesis(2 * radix).withSignsInDifferences();
    std::vector<std::vector<Real>> rotated(2);
    for (int c = 0; c < radix; ++c) {
        const auto e = input.apply(real, {x[c], x[2 * radix + c], x[n - 1 - c], x[2 * radix - 1 - c]});
        for (int s = 0; s < 2; ++s) {
            const Turn angle((2 * s + 1) * (2 * c + 1), 8 * n);
            const Real re = e[2 * s], im = e[2 * s + 1];
            rotated[s].push_back(real.weightedSum({}, {{cosine(angle), re}, {-sine(angle), im}}));
            rotated[s].push_back(real.weightedSum({}, {{sine(angle), re}, {cosine(angle), im}}));
        }
    }
    std::vector<Real> result(n);
    for (int s = 0; s < 2; ++s) {
        const auto sums = output.apply(real, rotated[s]);
        for (int l = 0; l < radix; ++l) {
            result[s + 4 * l] = sums[l];
            result[3 - s + 4 * l] = sums[2 * radix - 1 - l];
        }
    }
    return result;
}

// A complex number in each lane.
struct ComplexVector {
    Real re, im;
};

// D[l] = sum over p of b[p] exp(2 pi i p l / n), those with an index from firstConjugated up conjugated. The
// forward transform gives it for numbers whose parts have changed places.
std::vector<ComplexVector> backwardDft(RealArithmetic &real, const std::vector<ComplexVector> &b,
                                       int firstConjugated) {
    const int n = static_cast<int>(b.size());
    LinearMap map;
    FormalComplex model(map, FormalComplex::Factors::AtOnce);
    FormalComplex::Column column;
    std::vector<Real> inputs;
    for (const ComplexVector &value : b) {
        const LinearMap::Ref re = map.input(), im = map.input();
        column.push_back({FormalComplex::Part{im}, FormalComplex::Part{re}});
        inputs.insert(inputs.end(), {value.re, value.im});
    }
    column = transform(model, n == 8 ? T(4, 2) : Decomposition(n), Columns<FormalComplex>{column})[0];
    for (int l = 0; l < n; ++l) {
        const LinearMap::Ref im = column[l].re->ref;
        map.outputs.push_back({column[l].im->ref});
        map.outputs.push_back({l < firstConjugated ? im : -im});
    }
    const auto parts = map.withSignsInDifferences().apply(real, inputs);
    std::vector<ComplexVector> result;
    for (int l = 0; l < n; ++l)
        result.push_back({parts[2 * l], parts[2 * l + 1]});
    return result;
}

} // namespace

Type planVector(Element element) {
    return {element, planVectorBytes / bytes(element)};
}

Graph directDct4(int length, Element element) {
    Graph graph;
    Lanes lanes(graph, {element, 1});
    std::vector<Real> x;
    for (int i = 0; i < length; ++i)
        x.push_back({lanes.load(i)});
    const auto result = length == 2   ? twoPointDct4(lanes.real, x)
                        : length == 4 ? fourPointDct4(lanes.real, x)
                                      : twoStageDct4(lanes.real, x);
    for (int i = 0; i < length; ++i)
        lanes.store(result[i], i);
    return graph;
}

Graph inputStage(int n, Type vector) {
    Graph graph;
    Lanes lanes(graph, vector, apart, apart);
    std::vector<Real> w;
    for (int i = 0; i < n; ++i)
        w.push_back({i < n / 2 ? lanes.load(i) : reversed(graph, lanes.load(i))});
    const auto entries = oddDft(n).withSignsInDifferences().apply(lanes.real, w);
    for (int i = 0; i < n; ++i)
        lanes.store(entries[i], i);
    return graph;
}

Graph combiningStage(int radix, Type vector) {
    Graph graph;
    Lanes lanes(graph, vector, apart, apart);
    const auto twiddled = [&](const ComplexVector &value, int group) -> ComplexVector {
        const int first = 2 * radix + 2 * group;
        const auto [re, im] =
            lanes.rotated(value.re, value.im, lanes.loadCopies(first), lanes.loadCopies(first + 1));
        return {re, im};
    };
    std::vector<ComplexVector> parts;
    for (int p = 0; p < radix; ++p)
        parts.push_back({{lanes.load(2 * p)}, {lanes.load(2 * p + 1)}});

    // Across `inner` parts with the twiddles of the table's second part, then `outer` with those of its
    // first.
    const LevelPasses passes = levelPasses(radix);
    std::vector<std::vector<ComplexVector>> across(passes.inner);
    for (int v = 0; v < passes.outer; ++v) {
        std::vector<ComplexVector> column;
        for (int q = 0; q < passes.inner; ++q) {
            const ComplexVector &part = parts[v + passes.outer * q];
            column.push_back(q == 0 ? part : twiddled(part, passes.firstGroups() + q - 1));
        }
        if (passes.inner > 1)
            column = backwardDft(lanes.real, column, passes.inner);
        for (int u = 0; u < passes.inner; ++u)
            across[u].push_back(v == 0 ? column[u] : twiddled(column[u], (passes.outer - 1) * u + v - 1));
    }
    std::vector<ComplexVector> result(radix);
    for (int u = 0; u < passes.inner; ++u) {
        const auto column = backwardDft(lanes.real, across[u], passes.outer / 2);
        for (int l = 0; l < passes.outer; ++l)
            result[u + passes.inner * l] = column[l];
    }
    for (int l = 0; l < radix; ++l) {
        lanes.store(result[l].re, 2 * l);
        lanes.store(result[l].im, 2 * l + 1);
    }
    return graph;
}

Graph outputStage(int radix, Type vector) {
    Graph graph;
    Lanes lanes(graph, vector, apart, apart);
    const int width = planVector(vector.element).lanes, blockElements = 2 * radix * width,
              tables = vector.lanes / width * blockElements;
    // Neighbours from `first` on, the same of every block beside one another.
    const auto load = [&](int first) {
        std::vector<int> elements;
        for (int lane = 0; lane < vector.lanes; ++lane)
            elements.push_back(first + lane / width * blockElements + lane % width);
        return graph.load(vector, elements);
    };
    // The rows come with columns in the lanes and leave with s there.
    std::vector<NodeId> columns;
    for (int column = 0; column < 2 * radix; column += width) {
        std::vector<NodeId> rows;
        for (int s = 0; s < width; ++s)
            rows.push_back(load(s * 2 * radix + column));
        const auto group = transposed(graph, rows);
        columns.insert(columns.end(), group.begin(), group.end());
    }
    std::vector<Real> rotated(2 * radix);
    for (int row = 0; row < radix; ++row) {
        const int c = outputTableColumn(radix, row), table = tables + 2 * row * width;
        const auto [re, im] =
            lanes.rotated({columns[c]}, {columns[radix + c]}, load(table), load(table + width));
        rotated[2 * c] = re;
        rotated[2 * c + 1] = im;
    }
    const auto sums = oddSynthesis(2 * radix).withSignsInDifferences().apply(lanes.real, rotated);
    for (int l = 0; l < radix; ++l) {
        lanes.store(sums[l], l);
        const Real mirrored = sums[2 * radix - 1 - l];
        lanes.store({reversed(graph, mirrored.node), mirrored.isNegative}, radix + l);
    }
    return graph;
}

namespace {

// A kernel as a specialisation of a template that the execution declares.
KernelDefinition stageKernel(const std::string &name, const std::string &arguments,
                             std::vector<Parameter> parameters, int elements, Element element,
                             std::function<Graph()> build) {
    return {
        .exports = {},
        .file = "dct4_stages.inc",
        .decomposition = name + " " + arguments,
        .elements = elements,
        .build = build,
        .text = {.type = name + "<Float" + bits(element) + ", " + arguments + ">",
                 .element = element,
                 .function = "run",
                 .templateParameters = {},
                 .parameters = parameters,
                 .isAlwaysInline = false},
    };
}

// One for vectors of this type. The recipe fills those that are wider than the plan's.
KernelDefinition stageKernel(const std::string &name, int size, std::vector<Parameter> parameters,
                             int vectors, Type vector, std::function<Graph()> build) {
    KernelDefinition kernel =
        stageKernel(name, std::to_string(size) + ", " + std::to_string(bytes(vector)), std::move(parameters),
                    vectors * vector.lanes, vector.element, std::move(build));
    kernel.isAcross = vector != planVector(vector.element);
    return kernel;
}

std::string times(int factor, const std::string &stride) {
    return std::to_string(factor) + " * " + stride;
}

KernelDefinition direct(int length, Element element) {
    KernelDefinition definition = stageKernel("Direct", std::to_string(length),
                                              {{"const unsigned char *", "src"}, {"unsigned char *", "dst"}},
                                              length, element, [=] { return directDct4(length, element); });
    definition.arrays = arraysAnywhere();
    return definition;
}

KernelDefinition input(int n, Type vector) {
    const int lanes = vector.lanes;
    KernelDefinition definition = stageKernel("Input", n,
                                              {{"const unsigned char *", "forward"},
                                               {"const unsigned char *", "backward"},
                                               {"std::ptrdiff_t", "pitch"},
                                               {"unsigned char *", "dst"},
                                               {"std::ptrdiff_t", "rowPitch"}},
                                              apart * n, vector, [=] { return inputStage(n, vector); });
    definition.arrays.source = {[=](int first) {
                                    const int i = first / (apart * lanes);
                                    return i < n / 2 ? "forward + " + times(i, "pitch")
                                                     : "backward + " + times(n - 1 - i, "pitch");
                                },
                                "Access::UnalignedWhole"};
    definition.arrays.destination = {
        [=](int first) { return "dst + " + times(first / (apart * lanes), "rowPitch"); }, "Access::Aligned"};
    return definition;
}

KernelDefinition combine(int radix, Type vector) {
    const int lanes = vector.lanes, firstGroups = levelPasses(radix).firstGroups();
    KernelDefinition definition =
        stageKernel("Combine", radix,
                    {{"const unsigned char *", "src"},
                     {"std::ptrdiff_t", "leafPitch"},
                     {"std::ptrdiff_t", "leafRowPitch"},
                     {"const unsigned char *", "twiddles"},
                     {"[[maybe_unused]] const unsigned char *", "innerTwiddles"},
                     {"unsigned char *", "lower"},
                     {"unsigned char *", "upper"},
                     {"std::ptrdiff_t", "rowPitch"},
                     {"std::ptrdiff_t", "step"}},
                    apart * 2 * (2 * radix - 1), vector, [=] { return combiningStage(radix, vector); });
    definition.arrays.source = {[=](int first) -> std::string {
                                    const int vector = first / (apart * lanes), entry = vector - 2 * radix,
                                              inner = entry - 2 * firstGroups;
                                    if (entry < 0)
                                        return "src + " + times(vector / 2, "leafPitch") +
                                               (vector % 2 == 0 ? "" : " + leafRowPitch");
                                    return inner < 0
                                               ? "twiddles + " + std::to_string(planVectorBytes * entry)
                                               : "innerTwiddles + " + std::to_string(planVectorBytes * inner);
                                },
                                "Access::Aligned"};
    definition.arrays.destination = {[=](int first) {
                                         const int vector = first / (apart * lanes), l = vector / 2;
                                         const std::string part = vector % 2 == 0 ? "" : " + rowPitch";
                                         return (l < radix / 2 ? "lower + " + times(l, "step")
                                                               : "upper + " + times(radix - 1 - l, "step")) +
                                                part;
                                     },
                                     "Access::Aligned"};
    return definition;
}

KernelDefinition output(int radix, Type vector) {
    const int lanes = vector.lanes;
    KernelDefinition definition =
        stageKernel("Output", radix,
                    {{"const unsigned char *", "src"},
                     {"const unsigned char *", "twiddles"},
                     {"unsigned char *", "forward"},
                     {"unsigned char *", "backward"},
                     {"std::ptrdiff_t", "step"}},
                    apart * 2 * radix, vector, [=] { return outputStage(radix, vector); });
    definition.arrays.source = {[=](int first) {
                                    const int table = 2 * radix * lanes;
                                    const bool isTable = first >= table;
                                    return (isTable ? "twiddles + " : "src + ") +
                                           std::to_string(bytes(vector.element) *
                                                          (isTable ? first - table : first));
                                },
                                "Access::Aligned"};
    definition.arrays.destination = {[=](int first) {
                                         const int l = first / (apart * lanes);
                                         return l < radix ? "forward + " + times(l, "step")
                                                          : "backward + " + times(l - radix, "step");
                                     },
                                     "Access::UnalignedWhole"};
    return definition;
}

} // namespace

Kernels dct4Kernels(const Target &target) {
    Kernels kernels;
    for (const Element element : {Element::Float32, Element::Float64}) {
        for (const int length : directLengths)
            kernels.push_back(direct(length, element));
        for (Type vector = planVector(element); bytes(vector) <= target.vectorBytes; vector = twice(vector)) {
            for (const int n : inputLengths)
                kernels.push_back(input(n, vector));
            if (bytes(vector) == target.vectorBytes) // plans with levels have rows that are wide enough
                for (const int radix : combineRadixes)
                    kernels.push_back(combine(radix, vector));
            for (const int radix : outputRadixes)
                if (radix % planVector(element).lanes == 0)
                    kernels.push_back(output(radix, vector));
        }
    }
    return kernels;
}

} // namespace zrfgen::gen
