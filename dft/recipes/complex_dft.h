// The complex DFT kernels: graphs made by the recipes, and the text around their bodies.
#pragma once

#include "driver/family.h"

namespace zrfgen::gen {

// The kernel of a length for a target, as a graph over arrays of 2 * length real elements.
Graph complexDft(int length, Element element, const Target &target);

// How it is made, in the words of a card.
std::string complexRecipe(int length, Element element);

Kernels complexDftKernels(const Target &target);

} // namespace zrfgen::gen
