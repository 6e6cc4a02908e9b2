// The machine that kernels are emitted for.
#pragma once

#include "graph/graph.h"

namespace zrfgen::gen {

struct Target {
    int vectorBytes;
    int registers[2]; // vector registers of the 64-bit and of the 32-bit machine

    Type vector(Element element) const {
        return {element, vectorBytes / (element == Element::Float32 ? 4 : 8)};
    }
};

inline constexpr Target sse3{16, {16, 8}};

} // namespace zrfgen::gen
