// The DCT-IV as its plan says: in one go up to length 32, else an input stage down the columns of the source
// into the plan's work table, and an output stage from there to the destination. So source and destination
// may be the same.
#include "entry.h"
#include "records.h"
#include "split.h"
#include "stage_kernels.h"

#include <cstring>

namespace zrfgen {

namespace {

// A line of the processor's caches. Levels take as many adjacent columns at a time as share one: so their
// work stays near, and no line of the source comes twice.
constexpr std::ptrdiff_t lineBytes = 64;

// Rows so many bytes apart, a power of two, share one place in the nearest cache. Many of them drive each
// other out before narrow vectors have filled their lines: stages then write lines side by side first, and
// move them whole.
constexpr std::ptrdiff_t farBytes = 4096;

// Points of adjacent columns, as Input has them; the columns take `width` bytes.
struct Points {
    const unsigned char *forward, *backward;
    std::ptrdiff_t pitch, width;
};

// The rows of a work table at these columns.
struct WorkRows {
    unsigned char *start;
    std::ptrdiff_t pitch;
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

template <class Element, int bytes>
void runLevel(const RecursiveSplitNode *level, const Points &points, const WorkRows &rows);

// Not inlined, as the other loops around kernels: else registers and stack are shared out among all of them,
// at a cost to each and to the short transforms.
template <class Element, int n, int bytes>
[[gnu::noinline]] void runInput(const Points &points, const WorkRows &rows) {
    for (std::ptrdiff_t column = 0; column < points.width; column += bytes)
        Input<Element, n, bytes>::run(points.forward + column, points.backward - column, points.pitch,
                                      rows.start + column, rows.pitch);
}

// One transform of the columns, of the length that the kind stands for.
template <class Element, int bytes>
void runColumns(std::int32_t kind, const ListCell *levels, const Points &points, const WorkRows &rows) {
    runKind<inputLengths>(
        kind, [&]<int n>() { runInput<Element, n, bytes>(points, rows); },
        [&] {
            if constexpr (bytes == vectorBytes) // which rows of plans with levels fill
                if (kind == splitKind)
                    runLevel<Element, bytes>(recordCast<RecursiveSplitNode>(listNth(levels, 0)), points,
                                             rows);
        });
}

// The next line in a work table, whose own boundaries are those of plans.
unsigned char *nextLine(void *work) {
    auto *const bytes = static_cast<unsigned char *>(work);
    return bytes + -reinterpret_cast<std::uintptr_t>(bytes) % lineBytes;
}

// What the leaves of a level left in its work table: the rows of each side by side, and a line between
// leaves, whose distance would else be a power of two. The columns take half of the table at most, which
// leaves room for lines.
struct Leaves {
    unsigned char *start;
    std::ptrdiff_t pitch, rowPitch;

    Leaves(const RecursiveSplitNode *level, std::int32_t leafLength, std::ptrdiff_t width)
        : start(nextLine(level->work)), pitch(leafLength * width + lineBytes), rowPitch(width) {}
    unsigned char *leaf(std::int32_t p) const { return start + p * pitch; }
};

// Where the results at one s go: those of l below radix / 2 to lower + l * step, the others likewise.
struct JoinedRows {
    unsigned char *lower, *upper;
    std::ptrdiff_t pitch, step;
};

template <class Element, int radix, int bytes> [[gnu::noinline]] void
runCombine(const SplitCombineNode *combine, const Leaves &leaves, const WorkRows &rows) {
    constexpr LevelPasses passes = levelPasses(radix);
    constexpr std::ptrdiff_t firstBytes = groupBytes * passes.firstGroups(),
                             secondBytes = groupBytes * passes.secondGroups();
    const auto *twiddles = static_cast<const unsigned char *>(combine->table.get());
    const unsigned char *innerTwiddles = twiddles + firstBytes * combine->halfLength;
    const std::ptrdiff_t pair = 2 * rows.pitch, step = pair * combine->leafLength;
    const bool isFar = bytes < lineBytes && radix >= 16 && step >= farBytes;
    unsigned char *const lines = leaves.leaf(radix);
    const JoinedRows near{lines, lines + radix * lineBytes, lineBytes, 2 * lineBytes};
    JoinedRows joined{rows.start, rows.start + step - pair, rows.pitch, step};
    const unsigned char *src = leaves.start;
    for (std::int32_t s = 0; s < combine->halfLength; ++s) {
        const JoinedRows &to = isFar ? near : joined;
        for (std::ptrdiff_t column = 0; column < leaves.rowPitch; column += bytes)
            Combine<Element, radix, bytes>::run(src + column, leaves.pitch, leaves.rowPitch, twiddles,
                                                innerTwiddles, to.lower + column, to.upper + column, to.pitch,
                                                to.step);
        if (isFar)
            for (int l = 0; l < radix / 2; ++l)
                for (const int part : {0, 1}) {
                    std::memcpy(joined.lower + l * joined.step + part * joined.pitch,
                                near.lower + l * near.step + part * near.pitch, lineBytes);
                    std::memcpy(joined.upper + l * joined.step + part * joined.pitch,
                                near.upper + l * near.step + part * near.pitch, lineBytes);
                }
        src += 2 * leaves.rowPitch;
        twiddles += firstBytes;
        innerTwiddles += secondBytes;
        joined.lower += pair;
        joined.upper -= pair;
    }
}

template <class Element, int bytes>
void runLevel(const RecursiveSplitNode *level, const Points &points, const WorkRows &rows) {
    if (level->ready != 1)
        return;
    const auto *leaf = recordCast<SplitLeafNode>(listNth(level->leaf, 0));
    const auto *combine = recordCast<SplitCombineNode>(listNth(level->combine, 0));
    const Leaves leaves(level, leaf->leafLength, points.width);
    for (std::int32_t p = 0; p < level->radix; ++p) {
        const Points subsequence{points.forward + p * points.pitch,
                                 points.backward + (level->radix - 1 - p) * points.pitch,
                                 level->radix * points.pitch, points.width};
        runColumns<Element, bytes>(leaf->kind, leaf->stages, subsequence, {leaves.leaf(p), leaves.rowPitch});
    }
    runKind<combineRadixes>(
        combine->radixKind, [&]<int radix>() { runCombine<Element, radix, bytes>(combine, leaves, rows); },
        [] {});
}

template <class Element, int bytes = vectorBytes>
void runInputStage(const InputKernelNode *kernel, const unsigned char *src, unsigned char *work) {
    constexpr std::ptrdiff_t size = sizeof(Element);
    const std::ptrdiff_t pitch = kernel->pitch * size, rowBytes = kernel->radix * size;
    if constexpr (bytes > planVectorBytes)
        if (rowBytes < bytes)
            return runInputStage<Element, bytes / 2>(kernel, src, work);
    const std::ptrdiff_t width = kernel->kind == splitKind ? lineBytes : rowBytes;
    for (std::ptrdiff_t column = 0; column < rowBytes; column += width)
        runColumns<Element, bytes>(kernel->kind, kernel->stages,
                                   {src + column, src + pitch - bytes - column, pitch, width},
                                   {work + column, rowBytes});
}

// As many blocks at a time as vectors are wide. `lines` has room for 2 * radix of them.
template <class Element, int radix, int bytes = vectorBytes>
[[gnu::noinline]] void runOutputKernel(const OutputKernelNode *kernel, const unsigned char *work,
                                       unsigned char *lines, unsigned char *dst) {
    if constexpr (bytes > planVectorBytes)
        if (kernel->blocks * planVectorBytes < bytes)
            return runOutputKernel<Element, radix, bytes / 2>(kernel, work, lines, dst);
    constexpr std::ptrdiff_t size = sizeof(Element), together = bytes / planVectorBytes;
    const std::ptrdiff_t step = kernel->inputLength * size;
    const auto *table = static_cast<const unsigned char *>(kernel->table.get());
    const bool isFar = bytes < lineBytes && step >= farBytes;
    const std::ptrdiff_t width = isFar ? lineBytes : bytes;
    unsigned char *forward = dst, *backward = dst + step - width;
    for (std::ptrdiff_t blocks = kernel->blocks * planVectorBytes; blocks > 0; blocks -= width) {
        for (std::ptrdiff_t column = 0; column < width; column += bytes) {
            Output<Element, radix, bytes>::run(work, table, isFar ? lines + column : forward,
                                               isFar ? lines + (radix + 1) * lineBytes - bytes - column
                                                     : backward,
                                               isFar ? lineBytes : step);
            work += together * kernel->blockPitch * size;
            table += together * groupBytes * radix;
        }
        if (isFar)
            for (int l = 0; l < radix; ++l) {
                std::memcpy(forward + l * step, lines + l * lineBytes, lineBytes);
                std::memcpy(backward + l * step, lines + (radix + l) * lineBytes, lineBytes);
            }
        forward += width;
        backward -= width;
    }
}

template <class Element> void runOutputStage(const OutputKernelNode *kernel, const unsigned char *work,
                                             unsigned char *lines, unsigned char *dst) {
    runKind<outputRadixes>(
        kernel->radixKind,
        [&]<int radix>() {
            if constexpr (radix % laneCount<Element> == 0)
                runOutputKernel<Element, radix>(kernel, work, lines, dst);
        },
        [] {});
}

template <class Element>
[[gnu::noinline]] void runTwoStages(const Dct4Plan *plan, const unsigned char *src, unsigned char *dst) {
    auto *const work = static_cast<unsigned char *>(plan->work.get());
    unsigned char *lines = nullptr; // rows are far apart in plans with levels alone, and their work is done
    const auto *input = recordCast<InputStageNode>(listNth(plan->inputStages, 0));
    if (input->ready == 1) {
        const auto *kernel = recordCast<InputKernelNode>(listNth(input->stages, 0));
        runInputStage<Element>(kernel, src, work);
        if (kernel->kind == splitKind)
            lines = nextLine(recordCast<RecursiveSplitNode>(listNth(kernel->stages, 0))->work);
    }
    const auto *output = recordCast<OutputStageNode>(listNth(plan->outputStages, 0));
    if (output->ready == 1)
        runOutputStage<Element>(recordCast<OutputKernelNode>(listNth(output->stages, 0)), work, lines, dst);
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
