// The Walsh-Hadamard kernels of orders 1 to 7, and the pass bodies of which the orders above are made.
#pragma once

#include "driver/family.h"

namespace zrfgen::gen {

// Orders 1 to 7: 2^order elements, scaled.
Graph smallWalshHadamard(int order, Element element, const Target &target);

// All stages of a block of consecutive elements.
Graph walshHadamardBlock(int elements, Element element, const Target &target);

// The stages between rows, one vector of each. Element lanes * r of either array stands for row r.
Graph walshHadamardRows(int rows, bool isLast, Element element, const Target &target);

Kernels walshHadamardKernels(const Target &target);

} // namespace zrfgen::gen
