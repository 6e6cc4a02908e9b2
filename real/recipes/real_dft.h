// The real DFT and Hartley kernels: graphs made by the recipes, and the text around their bodies.
#pragma once

#include "driver/family.h"

namespace zrfgen::gen {

// Graphs over arrays of `length` real elements. A spectrum stands in the order R[0], R[1], I[1], R[2] ...
// ending with R[length/2] where the length is even; what a layout makes of it is the text's affair.
Graph forwardRealDft(int length, Element element);
Graph inverseRealDft(int length, Element element);
Graph hartley(int length, Element element);

Kernels realDftKernels(const Target &target);

} // namespace zrfgen::gen
