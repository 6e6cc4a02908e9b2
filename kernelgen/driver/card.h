// A kernel's card: what it is made of and what it costs.
#pragma once

#include "driver/compile.h"

namespace zrfgen::gen {

std::string card(const KernelDefinition &definition, const CompiledKernel &kernel, const Target &target);

} // namespace zrfgen::gen
