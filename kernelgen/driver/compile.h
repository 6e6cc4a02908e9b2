// All layers in a row: from a kernel's definition to its text.
#pragma once

#include "driver/family.h"
#include "schedule/schedule.h"

namespace zrfgen::gen {

struct CompiledKernel {
    Graph algebra; // as the recipe built it
    Graph graph;   // in the target's own moves and shuffles
    Schedule schedule;
    std::string text; // the body and what is around it
};

CompiledKernel compile(const KernelDefinition &definition, const Target &target);

// The kernel's text, headed by its card.
std::string source(const KernelDefinition &definition, const Target &target);

} // namespace zrfgen::gen
