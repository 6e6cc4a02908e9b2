// What a family of transforms gives to the driver.
#pragma once

#include "emit/emit.h"
#include "emit/kernel_text.h"
#include "graph/graph.h"
#include "target/target.h"

#include <functional>
#include <string>
#include <vector>

namespace zrfgen::gen {

// One kernel and the exports that it serves.
struct KernelDefinition {
    std::vector<std::string> exports; // none if hand-written code includes the file
    std::string file;                 // which several such kernels may share
    std::string decomposition;
    int elements; // real elements of the source, and as many of the destination
    std::function<Graph()> build;
    // The same transform by other words of a recipe, where recipes have words.
    std::function<Graph(const std::string &)> buildBy = {};
    KernelText text;
    ArrayTexts arrays = {};
    bool isAcross = false; // as it is built it has all that the vectors have room for
};

using Kernels = std::vector<KernelDefinition>;

// All kernels of a family for a target.
using Family = std::function<Kernels(const Target &)>;

} // namespace zrfgen::gen
