// The transforms that the library under test exports.
#pragma once

#include <zrfgen/transforms.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// What the numbers of an array are: complex elements, real elements, or half the spectrum of real elements.
enum class Layout { Complex, Real, CCS, Pack, Perm };

enum class Direction { Forward, Inverse, Both };

struct Transform {
    // Arrays may lie at any address, so the tests pass them without an element type.
    using Call = Status(ZRF_CALL *)(const void *src, void *dst, int32_t flag);
    using AnySizeCall = Status(ZRF_CALL *)(const void *src, void *dst, int32_t N, int32_t flag);

    std::string family, name, anySizeName;
    Direction direction;
    Layout srcLayout, dstLayout;
    int length;
    bool isSingle; // Float32 numbers, else Float64
    Call call;
    AnySizeCall anySize; // the any-size entry of the same family

    // Numbers in the arrays; a complex element is two.
    std::size_t srcCount() const { return count(srcLayout); }
    std::size_t dstCount() const { return count(dstLayout); }
    std::size_t srcBytes() const { return srcCount() * numberBytes(); }
    std::size_t dstBytes() const { return dstCount() * numberBytes(); }

private:
    std::size_t count(Layout layout) const;
    std::size_t numberBytes() const { return isSingle ? sizeof(Float32) : sizeof(Float64); }
};

// How GoogleTest names a case.
inline void PrintTo(const Transform &transform, std::ostream *stream) {
    *stream << transform.name;
}

// Throws if the library exports no such name.
void *exportAddress(const std::string &name);

// Those of all families, lengths and element types. Throws if one is missing.
const std::vector<Transform> &builtTransforms();

// Throws if there is none.
const Transform &builtTransform(const std::string &family, int length, bool isSingle);

// The transform of the same length and element type that leads back.
const Transform &oppositeOf(const Transform &transform);

class EachTransform : public testing::TestWithParam<Transform> {};

#define INSTANTIATE_FOR_EACH_TRANSFORM(Suite)                                                                \
    INSTANTIATE_TEST_SUITE_P(Library, Suite, testing::ValuesIn(builtTransforms()),                           \
                             testing::PrintToStringParamName())
