// The DCT-IV as its plan says: in one go up to length 32, else an input stage down the columns of the source
// into the plan's work table, and an output stage from there to the destination. So source and destination
// may be the same.
#include "entry.h"
#include "records.h"
#include "split.h"
#include "stage_kernels.h"

#include <algorithm>

namespace zrfgen {

namespace {

constexpr std::ptrdiff_t vectorBytes = planVectorBytes;

// Adjacent columns, whole vectors of them, go through a stage side by side: as many as share two lines of the
// cache, so that lines are not fetched anew for each of their vectors.
constexpr std::int32_t mostVectors = 8;

// The points of the columns in the first vector, as Input has them.
struct Points {
    const unsigned char *forward, *backward;
    std::ptrdiff_t pitch;
    std::int32_t vectors;
};

// Rows of a table at the columns in the first vector.
struct Rows {
    unsigned char *table;
    std::ptrdiff_t offset, pitch;

    unsigned char *begin() const { return table + offset; }
};

template <class Element> constexpr std::ptrdiff_t bytes(std::int32_t elements) {
    return static_cast<std::ptrdiff_t>(elements) * static_cast<std::ptrdiff_t>(sizeof(Element));
}

template <class Element>
Status runLevel(const RecursiveSplitNode *level, const Points &points, const Rows &rows);

template <class Element, int n> Status runInput(const Points &points, const Rows &rows) {
    for (std::ptrdiff_t v = 0; v < points.vectors * vectorBytes; v += vectorBytes)
        Input<Element, n>::run(points.forward + v, points.backward - v, points.pitch, rows.begin() + v,
                               rows.pitch);
    return zrfStatusOk;
}

// One transform of the columns, of the length that the kind stands for.
template <class Element>
Status runColumns(std::int32_t kind, const ListCell *levels, const Points &points, const Rows &rows) {
    switch (kind) {
    case 1:
        return runInput<Element, 2>(points, rows);
    case 2:
        return runInput<Element, 4>(points, rows);
    case 3:
        return runInput<Element, 8>(points, rows);
    case 4:
        return runInput<Element, 16>(points, rows);
    case 5:
        return runInput<Element, 32>(points, rows);
    case 6:
        return runInput<Element, 64>(points, rows);
    case splitKind:
        return runLevel<Element>(recordCast<RecursiveSplitNode>(listNth(levels, 0)), points, rows);
    default:
        return zrfStatusPlanError;
    }
}

template <class Element, int radix> Status runCombine(const SplitCombineNode *combine,
                                                      const unsigned char *src, const Rows &rows,
                                                      std::int32_t vectors) {
    constexpr int groups = levelPasses(radix).firstGroups(), innerGroups = levelPasses(radix).secondGroups();
    const auto *twiddles = static_cast<const unsigned char *>(combine->table.get());
    const unsigned char *innerTwiddles = twiddles + std::ptrdiff_t(groupBytes) * groups * combine->halfLength;
    const std::ptrdiff_t pair = 2 * rows.pitch, step = pair * combine->leafLength;
    unsigned char *lower = rows.begin(), *upper = lower + step - pair;
    for (std::int32_t s = 0; s < combine->halfLength; ++s) {
        for (std::ptrdiff_t v = 0; v < vectors * vectorBytes; v += vectorBytes)
            Combine<Element, radix>::run(src + v, rows.pitch, twiddles, innerTwiddles, lower + v, upper + v,
                                         rows.pitch, step);
        src += bytes<Element>(combine->blockStride);
        twiddles += groupBytes * groups;
        innerTwiddles += groupBytes * innerGroups;
        lower += pair;
        upper -= pair;
    }
    return zrfStatusOk;
}

template <class Element>
Status runLevel(const RecursiveSplitNode *level, const Points &points, const Rows &rows) {
    if (level->ready != 1)
        return zrfStatusPlanError;
    const auto *leaf = recordCast<SplitLeafNode>(listNth(level->leaf, 0));
    const auto *combine = recordCast<SplitCombineNode>(listNth(level->combine, 0));
    auto *const work = static_cast<unsigned char *>(level->work.get());
    for (std::int32_t p = 0; p < level->radix; ++p) {
        const Points subsequence{points.forward + p * points.pitch,
                                 points.backward + (level->radix - 1 - p) * points.pitch,
                                 bytes<Element>(leaf->leafInputStride), points.vectors};
        const Rows leafRows{work, rows.offset + p * rows.pitch, bytes<Element>(leaf->leafOutputStride)};
        const Status status = runColumns<Element>(leaf->kind, leaf->stages, subsequence, leafRows);
        if (status != zrfStatusOk)
            return status;
    }
    const unsigned char *const src = work + rows.offset;
    switch (combine->radixKind) {
    case 1:
        return runCombine<Element, 2>(combine, src, rows, points.vectors);
    case 2:
        return runCombine<Element, 4>(combine, src, rows, points.vectors);
    case 3:
        return runCombine<Element, 8>(combine, src, rows, points.vectors);
    case 4:
        return runCombine<Element, 16>(combine, src, rows, points.vectors);
    case 5:
        return runCombine<Element, 32>(combine, src, rows, points.vectors);
    default:
        return zrfStatusPlanError;
    }
}

template <class Element>
void runInputStage(const InputKernelNode *kernel, const unsigned char *src, unsigned char *work) {
    const std::ptrdiff_t pitch = bytes<Element>(kernel->pitch);
    for (std::int32_t block = 0; block < kernel->columnBlocks; block += mostVectors) {
        const std::ptrdiff_t column = block * vectorBytes;
        const std::int32_t vectors = std::min(mostVectors, kernel->columnBlocks - block);
        runColumns<Element>(kernel->kind, kernel->stages,
                            {src + column, src + pitch - vectorBytes - column, pitch, vectors},
                            {work, column, bytes<Element>(kernel->radix)});
    }
}

template <class Element, int radix>
Status runOutputKernel(const OutputKernelNode *kernel, const unsigned char *work, unsigned char *dst) {
    const std::ptrdiff_t step = bytes<Element>(kernel->inputLength);
    const auto *table = static_cast<const unsigned char *>(kernel->table.get());
    for (std::int32_t block = 0; block < kernel->blocks; ++block)
        Output<Element, radix>::run(work + block * bytes<Element>(kernel->blockPitch),
                                    table + block * std::ptrdiff_t(groupBytes) * radix,
                                    dst + block * vectorBytes, dst + step - (block + 1) * vectorBytes, step);
    return zrfStatusOk;
}

template <class Element>
Status runOutputStage(const OutputKernelNode *kernel, const unsigned char *work, unsigned char *dst) {
    switch (kernel->radixKind) {
    case 2:
        // A radix is a multiple of the lanes.
        if constexpr (laneCount<Element> == 2)
            return runOutputKernel<Element, 2>(kernel, work, dst);
        return zrfStatusPlanError;
    case 3:
        return runOutputKernel<Element, 4>(kernel, work, dst);
    case 4:
        return runOutputKernel<Element, 8>(kernel, work, dst);
    case 5:
        return runOutputKernel<Element, 16>(kernel, work, dst);
    case 6:
        return runOutputKernel<Element, 32>(kernel, work, dst);
    default:
        return zrfStatusPlanError;
    }
}

template <class Element>
void runTwoStages(const Dct4Plan *plan, const unsigned char *src, unsigned char *dst) {
    auto *const work = static_cast<unsigned char *>(plan->work.get());
    const auto *input = recordCast<InputStageNode>(listNth(plan->inputStages, 0));
    if (input->ready == 1)
        runInputStage<Element>(recordCast<InputKernelNode>(listNth(input->stages, 0)), src, work);
    const auto *output = recordCast<OutputStageNode>(listNth(plan->outputStages, 0));
    if (output->ready == 1)
        runOutputStage<Element>(recordCast<OutputKernelNode>(listNth(output->stages, 0)), work, dst);
}

template <class Element> Status transform(const Element *source, Element *destination, const Dct4Plan *plan) {
    if (plan == nullptr || source == nullptr || destination == nullptr)
        return zrfStatusNullPointer;
    const auto *src = reinterpret_cast<const unsigned char *>(source);
    auto *dst = reinterpret_cast<unsigned char *>(destination);
    switch (plan->kind) {
    case 1:
        Direct<Element, 2>::run(src, dst);
        return zrfStatusOk;
    case 2:
        Direct<Element, 4>::run(src, dst);
        return zrfStatusOk;
    case 3:
        Direct<Element, 8>::run(src, dst);
        return zrfStatusOk;
    case 4:
        Direct<Element, 16>::run(src, dst);
        return zrfStatusOk;
    case 5:
        Direct<Element, 32>::run(src, dst);
        return zrfStatusOk;
    case twoStageKind:
        runTwoStages<Element>(plan, src, dst);
        return zrfStatusOk;
    default:
        return zrfStatusPlanError;
    }
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
