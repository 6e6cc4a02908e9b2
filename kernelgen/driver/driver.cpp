#include "driver/driver.h"

#include "driver/card.h"
#include "driver/compile.h"
#include "graph/dump.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

const char usage[] =
    "usage: kernelgen emit DIRECTORY           write the library's generated files\n"
    "       kernelgen explain EXPORT           print a kernel's card\n"
    "       kernelgen dump LAYER EXPORT        print a layer: algebra, graph, schedule or text\n"
    "       kernelgen exports [built]          list the exports: all, or those that are built\n";

// What is wrong with the command line, in one line.
struct CommandError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Driver {
public:
    Driver(const std::vector<Family> &families, const std::vector<std::string> &exports)
        : families(families), exports(exports) {}

    void run(const std::vector<std::string> &arguments) const {
        const std::string command = arguments.empty() ? "" : arguments[0];
        if (command == "emit" && arguments.size() == 2)
            emit(arguments[1]);
        else if (command == "explain" && arguments.size() == 2)
            explain(arguments[1]);
        else if (command == "dump" && arguments.size() == 3)
            dump(arguments[1], arguments[2]);
        else if (command == "exports" && arguments.size() == 1)
            list(exports);
        else if (command == "exports" && arguments.size() == 2 && arguments[1] == "built")
            list(builtExports());
        else
            throw CommandError(usage);
    }

private:
    static void list(const std::vector<std::string> &names) {
        for (const std::string &name : names)
            std::cout << name << "\n";
    }

    // In export order.
    std::vector<std::string> builtExports() const {
        std::set<std::string> built;
        for (const Family &family : families) {
            built.insert(family.otherExports.begin(), family.otherExports.end());
            for (const KernelDefinition &kernel : family.kernels)
                built.insert(kernel.exports.begin(), kernel.exports.end());
        }
        std::vector<std::string> names;
        std::copy_if(exports.begin(), exports.end(), std::back_inserter(names),
                     [&](const std::string &name) { return built.contains(name); });
        if (names.size() != built.size())
            throw std::logic_error("a family builds an export that is not on the list");
        return names;
    }

    const KernelDefinition &kernel(const std::string &name) const {
        for (const Family &family : families)
            for (const KernelDefinition &definition : family.kernels)
                if (std::find(definition.exports.begin(), definition.exports.end(), name) !=
                    definition.exports.end())
                    return definition;
        for (const Family &family : families)
            if (std::find(family.otherExports.begin(), family.otherExports.end(), name) !=
                family.otherExports.end())
                throw CommandError(name + " is written by hand and has no card\n");
        const bool isExport = std::find(exports.begin(), exports.end(), name) != exports.end();
        throw CommandError(name + (isExport ? " is not built yet; see: kernelgen exports built\n"
                                            : " is no export; see: kernelgen exports\n"));
    }

    void explain(const std::string &name) const {
        const KernelDefinition &definition = kernel(name);
        std::cout << card(definition, compile(definition, sse3), sse3);
    }

    void dump(const std::string &layer, const std::string &name) const {
        const CompiledKernel compiled = compile(kernel(name), sse3);
        if (layer == "algebra")
            std::cout << dumped(compiled.algebra);
        else if (layer == "graph")
            std::cout << dumped(compiled.graph);
        else if (layer == "schedule")
            for (const Step &step : compiled.schedule)
                std::cout << (step.kind == Step::Kind::Store ? dumped(compiled.graph.stores()[step.index])
                                                             : dumped(compiled.graph, step.index));
        else if (layer == "text")
            std::cout << sourceFile(kernel(name), sse3);
        else
            throw CommandError("no layer '" + layer + "'; there are algebra, graph, schedule and text\n");
    }

    void emit(const std::string &directory) const {
        std::filesystem::create_directories(directory);
        for (const Family &family : families)
            for (const KernelDefinition &definition : family.kernels)
                write(directory, definition.file, sourceFile(definition, sse3));
        std::string entries, versions = "{\nglobal:\n";
        for (const std::string &name : builtExports()) {
            entries += "ENTRY(" + name + ")\n";
            versions += "    " + name + ";\n";
        }
        write(directory, "entries.inc", entries);
        write(directory, "exports.map", versions + "local:\n    *;\n};\n");
    }

    // Leaves a file that would not change as it is, so that nothing is compiled again for it.
    static void write(const std::string &directory, const std::string &name, const std::string &text) {
        const std::filesystem::path path = std::filesystem::path(directory) / name;
        std::ostringstream old;
        old << std::ifstream(path).rdbuf();
        if (std::filesystem::exists(path) && old.str() == text)
            return;
        std::ofstream out(path);
        out << text;
        if (!out.flush())
            throw CommandError("cannot write " + path.string() + "\n");
    }

    const std::vector<Family> &families;
    const std::vector<std::string> &exports;
};

} // namespace

int runDriver(const std::vector<std::string> &arguments, const std::vector<Family> &families,
              const std::vector<std::string> &exports) {
    try {
        Driver(families, exports).run(arguments);
        return 0;
    } catch (const CommandError &error) {
        std::cerr << error.what();
    } catch (const std::exception &error) {
        std::cerr << "kernelgen: " << error.what() << "\n";
    }
    return 1;
}

} // namespace zrfgen::gen
