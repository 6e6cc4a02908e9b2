// The kernels of libzrfmany: those of the families with a transform in every lane, and what brings transforms
// into that order and out of it.
#pragma once

#include "driver/family.h"

namespace zrfgen::gen {

Kernels manyKernels(const Target &target);

} // namespace zrfgen::gen
