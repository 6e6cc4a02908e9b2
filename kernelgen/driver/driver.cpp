#include "driver/driver.h"

#include "driver/card.h"
#include "driver/compile.h"
#include "graph/dump.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

const char usage[] =
    "usage: kernelgen emit DIRECTORY           write the library's generated files\n"
    "       kernelgen explain EXPORT           print a kernel's card\n"
    "       kernelgen dump LAYER EXPORT        print a layer: algebra, graph, schedule or text\n"
    "       kernelgen exports                  list the exports\n";

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
            list();
        else
            throw CommandError(usage);
    }

private:
    void list() const {
        for (const std::string &name : exports)
            std::cout << name << "\n";
    }

    const KernelDefinition &kernel(const std::string &name) const {
        for (const Family &family : families)
            for (const KernelDefinition &definition : family)
                if (std::find(definition.exports.begin(), definition.exports.end(), name) !=
                    definition.exports.end())
                    return definition;
        const bool isExport = std::find(exports.begin(), exports.end(), name) != exports.end();
        throw CommandError(name + (isExport ? " is written by hand and has no card\n"
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
            for (const KernelDefinition &definition : family)
                write(directory, definition.file, sourceFile(definition, sse3));
        std::string entries, versions = "{\nglobal:\n";
        for (const std::string &name : exports) {
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
    const std::vector<std::string> &exports; // in export order
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
