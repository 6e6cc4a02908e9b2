// The kernels of the DCT-IV against their defining sums in quad precision.
#include "dct4/recipes/kernels.h"
#include "dct4/split.h"
#include "dft_reference.h"
#include "lanes/count.h"
#include "lanes/lower.h"

#include <gtest/gtest.h>

namespace zrfgen::gen {

namespace {

constexpr double exactness = 1e-30;

// The narrowest target that has such vectors.
const Target &targetOf(Type vector) {
    return *std::ranges::find_if(targets(),
                                 [&](const Target &target) { return target.vectorBytes >= bytes(vector); });
}

// Runs a stage whose vectors stand `distance` vectors apart in the source, and `apart` in the destination.
std::vector<Quad> run(const Graph &graph, const std::vector<Quad> &vectors, std::size_t elements, Type vector,
                      int distance = apart) {
    const int lanes = vector.lanes;
    std::vector<Quad> source(distance * vectors.size());
    for (std::size_t i = 0; i < vectors.size(); ++i)
        source[i / lanes * lanes * distance + i % lanes] = vectors[i];
    const auto spread = evaluate(lowered(graph, targetOf(vector)), Direction::Forward, Precision::Exact,
                                 source, 1, static_cast<int>(apart * elements));
    std::vector<Quad> result(elements);
    for (std::size_t i = 0; i < elements; ++i)
        result[i] = spread[i / lanes * lanes * apart + i % lanes];
    return result;
}

// Vectors of the plan and all wider ones, in either element.
template <class Check> void forEachVector(Check check) {
    for (const Element element : {Element::Float32, Element::Float64})
        for (Type vector = planVector(element); bytes(vector) <= targets().back().vectorBytes;
             vector = twice(vector)) {
            SCOPED_TRACE("Float" + bits(element) + ", " + std::to_string(bytes(vector)) + " bytes");
            check(vector);
        }
}

TEST(Dct4Kernels, InputStagesGiveTheOddDftOfEveryColumn) {
    forEachVector([](Type vector) {
        const int lanes = vector.lanes;
        for (const int n : inputLengths) {
            const auto w = randomSource(n * lanes);
            std::vector<Quad> expected(w.size(), 0);
            for (int entry = 0; entry < n; ++entry)
                for (int i = 0; i < n; ++i) {
                    const int m = i < n / 2 ? i : i - n;
                    const Turn angle(static_cast<long>(m) * (2 * (entry / 2) + 1), 2 * n);
                    for (int lane = 0; lane < lanes; ++lane) {
                        const int place = m < 0 ? lanes - 1 - lane : lane; // read backwards
                        expected[entry * lanes + lane] +=
                            (entry % 2 == 0 ? cosine(angle) : sine(angle)) * w[i * lanes + place];
                    }
                }
            const auto result = run(inputStage(n, vector), w, w.size(), vector);
            EXPECT_LT(largestDifference(result, expected), exactness) << n;
        }
    });
}

// The table's values at one s of a level with M2 = 3, whose angles are pi g / n.
std::vector<long> levelGroups(int radix, int s) {
    std::vector<long> groups;
    const LevelPasses passes = levelPasses(radix);
    for (int u = 0; u < passes.inner; ++u)
        for (int v = 1; v < passes.outer; ++v)
            groups.push_back(static_cast<long>(2 * s + 1 + 4 * 3 * u) * v);
    for (int v = 1; v < passes.inner; ++v)
        groups.push_back(static_cast<long>(passes.outer) * (2 * s + 1) * v);
    return groups;
}

TEST(Dct4Kernels, CombiningStagesJoinTheLeaves) {
    forEachVector([](Type vector) {
        const int lanes = vector.lanes;
        for (const int radix : combineRadixes) {
            const int s = 2, n = 2 * 3 * radix;
            std::vector<Quad> source = randomSource(2 * radix * lanes);
            const std::vector<Quad> parts = source;
            for (const long group : levelGroups(radix, s))
                for (const Quad value : {cosine({group, 2 * n}), sine({group, 2 * n})})
                    source.insert(source.end(), lanes, value);
            std::vector<Quad> expected(parts.size(), 0);
            for (int l = 0; l < radix; ++l)
                for (int p = 0; p < radix; ++p) {
                    // pi p (2s+1) / n and 2 pi p l / radix
                    const Turn angle(static_cast<long>(p) * (2 * s + 1 + 2 * l * (n / radix)), 2 * n);
                    const Quad c = cosine(angle), d = sine(angle), sign = l < radix / 2 ? 1 : -1;
                    for (int lane = 0; lane < lanes; ++lane) {
                        const Quad re = parts[2 * p * lanes + lane], im = parts[(2 * p + 1) * lanes + lane];
                        expected[2 * l * lanes + lane] += c * re - d * im;
                        expected[(2 * l + 1) * lanes + lane] += sign * (d * re + c * im);
                    }
                }
            const auto result = run(combiningStage(radix, vector), source, parts.size(), vector);
            EXPECT_LT(largestDifference(result, expected), exactness) << radix;
        }
    });
}

TEST(Dct4Kernels, OutputStagesRotateAndSynthesise) {
    forEachVector([](Type vector) {
        const int lanes = vector.lanes, blockLanes = planVector(vector.element).lanes;
        for (int radix = blockLanes; radix <= 32; radix *= 2) {
            const int n = 2 * radix * 2 * lanes; // s = 0 .. 2 lanes - 1, of which the first blocks
            std::vector<Quad> source = randomSource(2 * radix * lanes);
            const std::vector<Quad> rows = source;
            const auto theta = [&](int s, int c) {
                return Turn(static_cast<long>(2 * s + 1) * (2 * c + 1), 8 * n);
            };
            for (int block = 0; block < lanes; block += blockLanes)
                for (int row = 0; row < radix; ++row)
                    for (const bool isSine : {false, true})
                        for (int s = block; s < block + blockLanes; ++s) {
                            const Turn angle = theta(s, outputTableColumn(radix, row));
                            source.push_back(isSine ? sine(angle) : cosine(angle));
                        }
            std::vector<Quad> expected(rows.size(), 0);
            for (int s = 0; s < lanes; ++s)
                for (int l = 0; l < radix; ++l)
                    for (int c = 0; c < radix; ++c) {
                        const Quad e = rows[s * 2 * radix + c], o = rows[s * 2 * radix + radix + c];
                        const auto realPart = [&](long position) {
                            const Turn angle = theta(s, c) + Turn((2 * c + 1) * position, 4 * radix);
                            return e * cosine(angle) - o * sine(angle);
                        };
                        expected[l * lanes + s] += realPart(l);
                        expected[(radix + l) * lanes + lanes - 1 - s] += realPart(-l - 1);
                    }
            const auto result = run(outputStage(radix, vector), source, rows.size(), vector, 1);
            EXPECT_LT(largestDifference(result, expected), exactness) << radix;
        }
    });
}

// All kernels of a family together.
TEST(Dct4Kernels, CostNoMoreThanTheFigures) {
    for (const Element element : {Element::Float32, Element::Float64}) {
        const Type vector = planVector(element);
        int sums = 0, products = 0;
        const auto add = [&](const Graph &graph) {
            const Counts counts = count(lowered(graph, baseTarget()), baseTarget());
            sums += counts.sums();
            products += counts.multiplications;
        };
        const auto expectAtMost = [&](int mostSums, int mostProducts, const char *what) {
            EXPECT_LE(sums, mostSums) << what;
            EXPECT_LE(products, mostProducts) << what;
            sums = products = 0;
        };
        for (const int length : directLengths)
            add(directDct4(length, element));
        expectAtMost(350, 244, "direct");
        for (const int n : inputLengths)
            add(inputStage(n, vector));
        expectAtMost(731, 366, "input");
        for (const int radix : combineRadixes)
            add(combiningStage(radix, vector));
        expectAtMost(710, 368, "combining");
        for (int radix = vector.lanes; radix <= 32; radix *= 2)
            add(outputStage(radix, vector));
        expectAtMost(868, 642, "output");
    }
}

} // namespace

} // namespace zrfgen::gen
