#include "driver/compile.h"

#include "driver/card.h"
#include "lanes/lower.h"
#include "pairing/widen.h"

#include <sstream>

namespace zrfgen::gen {

CompiledKernel compile(const KernelDefinition &definition, const Target &target) {
    CompiledKernel kernel;
    kernel.algebra = definition.build();
    auto [graph, schedule] = definition.isAcross ? ordered(lowered(kernel.algebra, target), target)
                                                 : inVectors(kernel.algebra, target);
    kernel.graph = std::move(graph);
    kernel.schedule = std::move(schedule);
    kernel.text = text(definition.text, emitBody(kernel.graph, kernel.schedule, definition.arrays, target),
                       hasAlignedMoves(kernel.graph, definition.arrays, target));
    return kernel;
}

std::string source(const KernelDefinition &definition, const Target &target) {
    const CompiledKernel kernel = compile(definition, target);
    std::string result;
    std::istringstream lines(card(definition, kernel, target));
    for (std::string line; std::getline(lines, line);)
        result += line.empty() ? "//\n" : "// " + line + "\n";
    return result + kernel.text;
}

} // namespace zrfgen::gen
