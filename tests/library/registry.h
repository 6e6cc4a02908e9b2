// The transforms that the library under test exports, found at run time: a length that joins the library
// joins the tests.
#pragma once

#include <zrfgen/transforms.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

struct Transform {
    // Arrays may lie at any address, so the tests pass them without an element type.
    using Call = Status(ZRF_CALL *)(const void *src, void *dst, int32_t flag);
    using AnySizeCall = Status(ZRF_CALL *)(const void *src, void *dst, int32_t N, int32_t flag);

    std::string name;
    Call call;
    AnySizeCall anySize; // the any-size entry of the same family
    int length;
    bool isForward;
    bool isSingle; // Float32 parts, else Float64

    std::size_t components() const { return 2 * static_cast<std::size_t>(length); }
    std::size_t bytes() const { return components() * (isSingle ? sizeof(Float32) : sizeof(Float64)); }
};

// How GoogleTest names a case.
inline void PrintTo(const Transform &transform, std::ostream *stream) {
    *stream << transform.name;
}

// Throws if the library exports no such name.
void *exportAddress(const std::string &name);

// Throws if there is none.
const std::vector<Transform> &builtTransforms();

// The transform of the same length and element type in the other direction.
const Transform &oppositeOf(const Transform &transform);

class EachTransform : public testing::TestWithParam<Transform> {};

#define INSTANTIATE_FOR_EACH_TRANSFORM(Suite)                                                                \
    INSTANTIATE_TEST_SUITE_P(Library, Suite, testing::ValuesIn(builtTransforms()),                           \
                             testing::PrintToStringParamName())
