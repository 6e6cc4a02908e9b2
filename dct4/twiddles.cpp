#include "twiddles.h"

#include "sin_pi.h"
#include "tables.h"

namespace zrfgen {
namespace {

// Even columns are the cosines and odd ones the sines of a pair.
template <class Element> Element twiddle(const TwiddleSource *source, std::int32_t row, std::int32_t column) {
    const std::int32_t index = source->rowPitch2 * row + column, pair = index / 2;
    const std::int32_t q = pair / source->radix, c = pair % source->radix;
    const std::int32_t numerator = (4 * q + 2) * (2 * c + 1);
    const Element x = static_cast<Element>(numerator) / static_cast<Element>(source->denominator);
    return index % 2 == 0 ? cosPi(x) : sinPi(x);
}

template <class Element> Element blockedTwiddle(const BlockedTwiddleView *view, std::int32_t block,
                                                std::int32_t lane, std::int32_t column) {
    return twiddle<Element>(view->source, block * laneCount<Element> + lane, column);
}

template <class Element> Element splitAngle(const SplitAngleSource *source, std::int32_t index) {
    return (static_cast<Element>(index) + static_cast<Element>(0.5)) /
           static_cast<Element>(source->transformLength / source->radix);
}

// Appends groups for v = 1..factors, times `scale`, at u = 0..turns-1.
template <class Element> Element *fillPass(Element *next, const SplitCombineNode *combine, std::int32_t turns,
                                           std::int32_t factors, std::int32_t scale) {
    const SplitAngleSource *angles = combine->angles;
    for (std::int32_t s = 0; s < combine->halfLength; ++s)
        for (std::int32_t u = 0; u < turns; ++u)
            for (std::int32_t v = 1; v <= factors; ++v) {
                // splitAngle is r2 / 2 times (2i + 1) / n. All of this is exact, as is taking a turn off.
                Element x = splitAngle<Element>(angles, s + combine->leafLength * u) *
                            static_cast<Element>(2 * scale * v) / static_cast<Element>(combine->radix);
                if (x > 1)
                    x -= 2;
                const Element cosine = cosPi(x), sine = sinPi(x);
                for (std::int32_t lane = 0; lane < laneCount<Element>; ++lane) {
                    next[lane] = cosine;
                    next[laneCount<Element> + lane] = sine;
                }
                next += 2 * laneCount<Element>;
            }
    return next;
}

} // namespace

template <class Element> void fillOutputTable(const OutputKernelNode *kernel) {
    Element *next = static_cast<Element *>(kernel->table.get());
    for (std::int32_t block = 0; block < kernel->blocks; ++block)
        for (std::int32_t row = 0; row < kernel->radix; ++row)
            for (std::int32_t part = 0; part < 2; ++part)
                for (std::int32_t lane = 0; lane < laneCount<Element>; ++lane)
                    *next++ = blockedTwiddle<Element>(kernel->view, block, lane,
                                                      2 * outputTableColumn(kernel->radix, row) + part);
}

template <class Element> void fillLevelTable(const SplitCombineNode *combine) {
    Element *table = static_cast<Element *>(combine->table.get());
    const auto [outer, inner] = levelPasses(combine->radix);
    Element *second = fillPass(table, combine, inner, outer - 1, 1);
    fillPass(second, combine, 1, inner - 1, outer);
}

template void fillOutputTable<Float32>(const OutputKernelNode *kernel);
template void fillOutputTable<Float64>(const OutputKernelNode *kernel);
template void fillLevelTable<Float32>(const SplitCombineNode *combine);
template void fillLevelTable<Float64>(const SplitCombineNode *combine);

} // namespace zrfgen
