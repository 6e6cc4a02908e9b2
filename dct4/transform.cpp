// The DCT-IV as its plan says: in one go up to length 32, else an input stage down the columns of the source
// into the plan's work table, and an output stage from there to the destination. So source and destination
// may be the same.
#include "entry.h"
#include "records.h"
#include "split.h"
#include "stage_kernels.h"

namespace zrfgen {

namespace {

// Adjacent columns, whole vectors of them, go through a stage side by side: as many as share two lines of the
// cache, so that lines are not fetched anew for each of their vectors.
constexpr std::int32_t mostVectors = 8;

// The points of the columns in the first vector, as Input has them.
struct Points {
    const unsigned char *forward, *backward;
    std::ptrdiff_t pitch;
    std::int32_t vectors;
};

// The rows of a work table at the columns in the first vector.
struct WorkRows {
    unsigned char *work;
    std::ptrdiff_t offset, pitch;

    unsigned char *begin() const { return work + offset; }
};

// run<size>() with the size that the kind has in the list, or other() at a kind that stands for none of them.
template <const auto &sizes, std::int32_t first = 1, class Run, class Other>
[[gnu::always_inline]] inline auto runKind(std::int32_t kind, const Run &run, const Other &other) {
    if constexpr (first <= std::ssize(sizes)) {
        if (kind == first)
            return run.template operator()<sizes[first - 1]>();
        return runKind<sizes, first + 1>(kind, run, other);
    } else {
        return other();
    }
}

template <class Element> constexpr std::ptrdiff_t bytes(std::int32_t elements) {
    return static_cast<std::ptrdiff_t>(elements) * static_cast<std::ptrdiff_t>(sizeof(Element));
}

template <class Element>
void runLevel(const RecursiveSplitNode *level, const Points &points, const WorkRows &rows);

// Not inlined, as the other loops around kernels: else registers and stack are shared out among all of them,
// at a cost to each and to the short transforms.
template <class Element, int n> [[gnu::noinline]] void runInput(const Points &points, const WorkRows &rows) {
    for (std::ptrdiff_t v = 0; v < points.vectors * planVectorBytes; v += planVectorBytes)
        Input<Element, n>::run(points.forward + v, points.backward - v, points.pitch, rows.begin() + v,
                               rows.pitch);
}

// One transform of the columns, of the length that the kind stands for.
template <class Element>
void runColumns(std::int32_t kind, const ListCell *levels, const Points &points, const WorkRows &rows) {
    runKind<inputLengths>(
        kind, [&]<int n>() { runInput<Element, n>(points, rows); },
        [&] {
            if (kind == splitKind)
                runLevel<Element>(recordCast<RecursiveSplitNode>(listNth(levels, 0)), points, rows);
        });
}

template <class Element, int radix>
[[gnu::noinline]] void runCombine(const SplitCombineNode *combine, const unsigned char *src,
                                  const WorkRows &rows, std::int32_t vectors) {
    constexpr LevelPasses passes = levelPasses(radix);
    constexpr std::ptrdiff_t firstBytes = groupBytes * passes.firstGroups(),
                             secondBytes = groupBytes * passes.secondGroups();
    const auto *twiddles = static_cast<const unsigned char *>(combine->table.get());
    const unsigned char *innerTwiddles = twiddles + firstBytes * combine->halfLength;
    const std::ptrdiff_t pair = 2 * rows.pitch, step = pair * combine->leafLength;
    unsigned char *lower = rows.begin(), *upper = lower + step - pair;
    for (std::int32_t s = 0; s < combine->halfLength; ++s) {
        for (std::ptrdiff_t v = 0; v < vectors * planVectorBytes; v += planVectorBytes)
            Combine<Element, radix>::run(src + v, rows.pitch, twiddles, innerTwiddles, lower + v, upper + v,
                                         rows.pitch, step);
        src += bytes<Element>(combine->blockStride);
        twiddles += firstBytes;
        innerTwiddles += secondBytes;
        lower += pair;
        upper -= pair;
    }
}

template <class Element>
void runLevel(const RecursiveSplitNode *level, const Points &points, const WorkRows &rows) {
    if (level->ready != 1)
        return;
    const auto *leaf = recordCast<SplitLeafNode>(listNth(level->leaf, 0));
    const auto *combine = recordCast<SplitCombineNode>(listNth(level->combine, 0));
    auto *const work = static_cast<unsigned char *>(level->work.get());
    for (std::int32_t p = 0; p < level->radix; ++p) {
        const Points subsequence{points.forward + p * points.pitch,
                                 points.backward + (level->radix - 1 - p) * points.pitch,
                                 bytes<Element>(leaf->leafInputStride), points.vectors};
        const WorkRows leafRows{work, rows.offset + p * rows.pitch, bytes<Element>(leaf->leafOutputStride)};
        runColumns<Element>(leaf->kind, leaf->stages, subsequence, leafRows);
    }
    runKind<combineRadixes>(
        combine->radixKind,
        [&]<int radix>() { runCombine<Element, radix>(combine, work + rows.offset, rows, points.vectors); },
        [] {});
}

template <class Element>
void runInputStage(const InputKernelNode *kernel, const unsigned char *src, unsigned char *work) {
    const std::ptrdiff_t pitch = bytes<Element>(kernel->pitch);
    for (std::int32_t block = 0; block < kernel->columnBlocks; block += mostVectors) {
        const std::ptrdiff_t column = block * planVectorBytes;
        const std::int32_t vectors = std::min(mostVectors, kernel->columnBlocks - block);
        runColumns<Element>(kernel->kind, kernel->stages,
                            {src + column, src + pitch - planVectorBytes - column, pitch, vectors},
                            {work, column, bytes<Element>(kernel->radix)});
    }
}

template <class Element, int radix> [[gnu::noinline]] void
runOutputKernel(const OutputKernelNode *kernel, const unsigned char *work, unsigned char *dst) {
    const std::ptrdiff_t step = bytes<Element>(kernel->inputLength),
                         blockPitch = bytes<Element>(kernel->blockPitch);
    const auto *table = static_cast<const unsigned char *>(kernel->table.get());
    unsigned char *forward = dst, *backward = dst + step - planVectorBytes;
    for (std::int32_t block = kernel->blocks; block > 0; --block) {
        Output<Element, radix>::run(work, table, forward, backward, step);
        work += blockPitch;
        table += groupBytes * radix;
        forward += planVectorBytes;
        backward -= planVectorBytes;
    }
}

template <class Element>
void runOutputStage(const OutputKernelNode *kernel, const unsigned char *work, unsigned char *dst) {
    runKind<outputRadixes>(
        kernel->radixKind,
        [&]<int radix>() {
            if constexpr (radix % laneCount<Element> == 0)
                runOutputKernel<Element, radix>(kernel, work, dst);
        },
        [] {});
}

template <class Element>
[[gnu::noinline]] void runTwoStages(const Dct4Plan *plan, const unsigned char *src, unsigned char *dst) {
    auto *const work = static_cast<unsigned char *>(plan->work.get());
    const auto *input = recordCast<InputStageNode>(listNth(plan->inputStages, 0));
    if (input->ready == 1)
        runInputStage<Element>(recordCast<InputKernelNode>(listNth(input->stages, 0)), src, work);
    const auto *output = recordCast<OutputStageNode>(listNth(plan->outputStages, 0));
    if (output->ready == 1)
        runOutputStage<Element>(recordCast<OutputKernelNode>(listNth(output->stages, 0)), work, dst);
}

// A plan of a direct length, or with 0 of any other. The export jumps here, having looked at the plan alone:
// so it needs no frame, and each length has one that suits it. `used` keeps the compiler from passing the
// arguments in another way than the export gets them.
template <class Element, int n> [[gnu::noinline, gnu::used]] Status ZRF_CALL runPlan(const Element *source,
                                                                                     Element *destination,
                                                                                     const Dct4Plan *plan) {
    if (source == nullptr || destination == nullptr)
        return zrfStatusNullPointer;
    const auto *src = reinterpret_cast<const unsigned char *>(source);
    auto *dst = reinterpret_cast<unsigned char *>(destination);
    if constexpr (n > 0)
        Direct<Element, n>::run(src, dst);
    else if (isPlanOf<Element>(plan) && plan->kind == twoStageKind)
        runTwoStages<Element>(plan, src, dst);
    else
        return zrfStatusPlanError;
    return zrfStatusOk;
}

template <class Element>
inline Status transform(const Element *source, Element *destination, const Dct4Plan *plan) {
    if (plan == nullptr)
        return zrfStatusNullPointer;
    return runKind<directLengths>(
        isPlanOf<Element>(plan) ? plan->kind : 0,
        [&]<int n>() { return runPlan<Element, n>(source, destination, plan); },
        [&] { return runPlan<Element, 0>(source, destination, plan); });
}

} // namespace

} // namespace zrfgen

extern "C" {

Status ZRF_CALL ZRF_BODY(zrfgDCT4_32f)(const Float32 *source, Float32 *destination, const Dct4Plan *plan) {
    return zrfgen::transform(source, destination, plan);
}

Status ZRF_CALL ZRF_BODY(zrfgDCT4_64f)(const Float64 *source, Float64 *destination, const Dct4Plan *plan) {
    return zrfgen::transform(source, destination, plan);
}
}
