// The machine that kernels are emitted for. What depends on its vectors stands here and in its instruction
// set, and nowhere else.
#pragma once

#include "target/instruction_set.h"

#include <string>
#include <string_view>
#include <vector>

namespace zrfgen::gen {

struct Target {
    std::string name;
    int vectorBytes;
    int registers;         // of vectors
    bool hasThreeOperands; // whether instructions leave both sources alone
    bool packsScalars;     // whether kernels on single elements are put side by side in vectors too
    std::vector<std::string> compilerOptions = {};
    std::string header = ""; // of the shipped text: the moves and intrinsics that kernels of the target use
    const InstructionSet *instructionSet = nullptr;

    // A whole vector of elements.
    Type vector(Element element) const { return {element, vectorBytes / bytes(element)}; }

    // Throws std::invalid_argument if there are none for vectors of this width.
    const InstructionSet &instructions() const;
};

const std::vector<Target> &targets();

// The library's unless another is asked for.
inline const Target &baseTarget() {
    return targets()[0];
}

// Throws std::invalid_argument, with the names that there are, if there is none of this name.
const Target &targetNamed(std::string_view name);

} // namespace zrfgen::gen
