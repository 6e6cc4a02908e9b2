// What a family of transforms gives to the driver.
#pragma once

#include "emit/emit.h"
#include "graph/graph.h"
#include "target.h"

#include <functional>
#include <string>
#include <vector>

namespace zrfgen::gen {

// One kernel text and the exports that it serves.
struct KernelDefinition {
    std::vector<std::string> exports; // none if hand-written code includes the file
    std::string file;
    std::string decomposition;
    int elements; // real elements of the source, and as many of the destination
    std::function<Graph(const Target &)> build;
    // The complete text around a body.
    std::function<std::string(const Graph &, const std::string &)> wrap;
    ArrayTexts arrays = {};
};

using Family = std::vector<KernelDefinition>;

} // namespace zrfgen::gen
