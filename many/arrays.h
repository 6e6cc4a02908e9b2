// Where the transforms of a call lie.
#pragma once

#include <zrfgen/transforms.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace zrfgen {

// Between the elements of a transform and between transforms, in elements of the array.
struct Strides {
    std::ptrdiff_t step, distance;
};

// Whether each element of count transforms has an address, and in its transform one of its own.
template <class Element>
bool haveAddresses(const Element *start, Strides strides, std::ptrdiff_t count, std::ptrdiff_t elements) {
    constexpr std::ptrdiff_t size = sizeof(Element);
    std::ptrdiff_t alongTransform, alongCount, lowest = 0, highest = size;
    if (strides.step == 0 || __builtin_mul_overflow(strides.step, (elements - 1) * size, &alongTransform) ||
        __builtin_mul_overflow(strides.distance, size, &alongCount) ||
        __builtin_mul_overflow(alongCount, count - 1, &alongCount))
        return false;
    for (const std::ptrdiff_t way : {alongTransform, alongCount})
        if (way < 0 ? __builtin_add_overflow(lowest, way, &lowest)
                    : __builtin_add_overflow(highest, way, &highest))
            return false;
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    std::uintptr_t end;
    return !__builtin_add_overflow(address, lowest, &end) && !__builtin_add_overflow(address, highest, &end);
}

// Element e of transform t is at start + t * distance + e * step, in bytes.
template <class Byte> struct Lattice {
    Byte *start;
    std::ptrdiff_t step, distance;

    Byte *at(std::ptrdiff_t transform, std::ptrdiff_t element) const {
        return start + transform * distance + element * step;
    }
    Lattice from(std::ptrdiff_t transform) const { return {at(transform, 0), step, distance}; }
};
using Sources = Lattice<const unsigned char>;
using Destinations = Lattice<unsigned char>;

template <class Element> Sources latticeOf(const Element *start, Strides strides) {
    constexpr std::ptrdiff_t size = sizeof(Element);
    return {reinterpret_cast<const unsigned char *>(start), strides.step * size, strides.distance * size};
}

template <class Element> Destinations latticeOf(Element *start, Strides strides) {
    constexpr std::ptrdiff_t size = sizeof(Element);
    return {reinterpret_cast<unsigned char *>(start), strides.step * size, strides.distance * size};
}

// Which vectors of a block the elements of an array are: neighbours from `first` on. One vector may stand
// elsewhere than in the array, where it is the element of vector 1; or vector 1 is zero, and perhaps a last
// one.
struct Contents {
    int elements;
    int first = 0;
    int insteadOf1 = 1;
    int lastZero = 0;
};

// Transforms all from number t on by `single(src, dst)` on rows. Where the elements of a transform do not lie
// side by side, the row is `spare`, which has room for either side.
template <class Element, class Single> void oneByOne(Sources from, int sources, Destinations to, int results,
                                                     std::ptrdiff_t t, std::ptrdiff_t count,
                                                     unsigned char *spare, Single single) {
    constexpr std::ptrdiff_t size = sizeof(Element);
    for (; t < count; ++t) {
        const unsigned char *row = from.at(t, 0);
        unsigned char *result = to.step == size ? to.at(t, 0) : spare;
        if (from.step != size) {
            for (int e = 0; e < sources; ++e)
                std::memcpy(spare + e * size, from.at(t, e), size);
            row = spare;
        }
        single(reinterpret_cast<const Element *>(row), reinterpret_cast<Element *>(result));
        if (to.step != size)
            for (int e = 0; e < results; ++e)
                std::memcpy(to.at(t, e), spare + e * size, size);
    }
}

} // namespace zrfgen
