#include "driver/compile.h"

#include "driver/card.h"
#include "emit/emit.h"
#include "lanes/lower.h"

#include <sstream>

namespace zrfgen::gen {

CompiledKernel compile(const KernelDefinition &definition, const Target &target) {
    CompiledKernel kernel;
    kernel.algebra = definition.build(target);
    kernel.graph = lowered(kernel.algebra);
    kernel.schedule = scheduled(kernel.graph, target);
    kernel.body = emitBody(kernel.graph, kernel.schedule, definition.arrays);
    return kernel;
}

std::string sourceFile(const KernelDefinition &definition, const Target &target) {
    const CompiledKernel kernel = compile(definition, target);
    std::string text;
    std::istringstream lines(card(definition, kernel, target));
    for (std::string line; std::getline(lines, line);)
        text += line.empty() ? "//\n" : "// " + line + "\n";
    return text + definition.wrap(kernel.graph, kernel.body);
}

} // namespace zrfgen::gen
