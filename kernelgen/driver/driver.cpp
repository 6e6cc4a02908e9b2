#include "driver/driver.h"

#include "driver/card.h"
#include "driver/compile.h"
#include "graph/dump.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace zrfgen::gen {

namespace {

const char usage[] =
    "usage: kernelgen [--target NAME] COMMAND\n"
    "       list DIRECTORY           write what the build has to know before it generates kernels\n"
    "       emit DIRECTORY [FILE]    write the library's generated files, or one of its kernels\n"
    "       file EXPORT              print the name of the file that a kernel is in\n"
    "       explain EXPORT           print a kernel's card\n"
    "       dump LAYER EXPORT        print a layer: algebra, graph, schedule or text\n"
    "       exports                  list the exports\n"
    "       try EXPORT RECIPE DIRECTORY\n"
    "                                print the cards of a kernel and of the same by another recipe, in the "
    "words\n"
    "                                of a card, and write both as settled.cpp and tried.cpp\n";

// What is wrong with the command line, in one line.
struct CommandError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Driver {
public:
    Driver(const Target &target, const std::vector<Family> &families, const std::vector<std::string> &exports)
        : target(target), exports(exports) {
        for (const Family &family : families)
            for (KernelDefinition &kernel : family(target))
                kernels.push_back(std::move(kernel));
    }

    void run(const std::vector<std::string> &arguments) const {
        const std::string command = arguments.empty() ? "" : arguments[0];
        if (command == "list" && arguments.size() == 2)
            writeLists(arguments[1]);
        else if (command == "emit" && arguments.size() == 2)
            emit(arguments[1]);
        else if (command == "emit" && arguments.size() == 3)
            emit(arguments[1], arguments[2]);
        else if (command == "file" && arguments.size() == 2)
            std::cout << kernel(arguments[1]).file << "\n";
        else if (command == "explain" && arguments.size() == 2)
            explain(arguments[1]);
        else if (command == "dump" && arguments.size() == 3)
            dump(arguments[1], arguments[2]);
        else if (command == "exports" && arguments.size() == 1)
            list();
        else if (command == "try" && arguments.size() == 4)
            tryRecipe(arguments[1], arguments[2], arguments[3]);
        else
            throw CommandError(usage);
    }

private:
    void list() const {
        for (const std::string &name : exports)
            std::cout << name << "\n";
    }

    const KernelDefinition &kernel(const std::string &name) const {
        for (const KernelDefinition &definition : kernels)
            if (std::ranges::find(definition.exports, name) != definition.exports.end())
                return definition;
        const bool isExport = std::ranges::find(exports, name) != exports.end();
        throw CommandError(name + (isExport ? " is written by hand and has no card\n"
                                            : " is no export; see: kernelgen exports\n"));
    }

    void explain(const std::string &name) const {
        const KernelDefinition &definition = kernel(name);
        std::cout << card(definition, compile(definition, target), target);
    }

    void dump(const std::string &layer, const std::string &name) const {
        const CompiledKernel compiled = compile(kernel(name), target);
        if (layer == "algebra")
            std::cout << dumped(compiled.algebra);
        else if (layer == "graph")
            std::cout << dumped(compiled.graph);
        else if (layer == "schedule")
            for (const Step &step : compiled.schedule)
                std::cout << (step.kind == Step::Kind::Store ? dumped(compiled.graph.stores()[step.index])
                                                             : dumped(compiled.graph, step.index));
        else if (layer == "text")
            std::cout << source(kernel(name), target);
        else
            throw CommandError("no layer '" + layer + "'; there are algebra, graph, schedule and text\n");
    }

    void tryRecipe(const std::string &name, const std::string &recipe, const std::string &directory) const {
        KernelDefinition settled = kernel(name);
        if (!settled.buildBy)
            throw CommandError(name + " has no recipe in words\n");
        KernelDefinition tried = settled;
        tried.decomposition = recipe;
        tried.build = [&] { return settled.buildBy(recipe); };
        tried.build(); // refuses a recipe before anything is printed
        std::filesystem::create_directories(directory);
        for (auto [definition, role] : {std::pair{&settled, "settled"}, {&tried, "tried"}}) {
            const auto exported = std::ranges::find(definition->exports, name) - definition->exports.begin();
            definition->text.exports = {definition->text.exports[exported]};
            definition->text.exports[0].name = role;
            const CompiledKernel compiled = compile(*definition, target);
            std::cout << role << "\n" << card(*definition, compiled, target) << "\n";
            write(directory, role + std::string(".cpp"), compiled.text);
        }
        const std::string real = "Float" + bits(settled.text.element);
        write(directory, "kernels.h",
              "#include <zrfgen/transforms.h>\n\nusing Real = " + real +
                  ";\ninline constexpr int elements = " + std::to_string(settled.elements) + ";\n");
    }

    void emit(const std::string &directory) const {
        writeLists(directory);
        std::map<std::string, std::string> files;
        const std::vector<std::string> texts = allSources();
        for (std::size_t i = 0; i < kernels.size(); ++i)
            files[kernels[i].file] += texts[i];
        for (const auto &[name, text] : files)
            write(directory, name, text);
    }

    void emit(const std::string &directory, const std::string &file) const {
        std::string text;
        for (const KernelDefinition &definition : kernels)
            if (definition.file == file)
                text += source(definition, target);
        if (text.empty())
            throw CommandError("no kernel is in a file '" + file + "'\n");
        write(directory, file, text);
    }

    // All that is no kernel, and the names of the files with kernels.
    void writeLists(const std::string &directory) const {
        std::filesystem::create_directories(directory);
        std::string entries, map, options;
        for (const std::string &name : exports) {
            entries += "ENTRY(" + name + ")\n";
            map += "    " + name + ";\n";
        }
        write(directory, "entries.inc", entries);
        write(directory, "exports.map", "{\nglobal:\n" + map + "local:\n    *;\n};\n");
        write(directory, "target.h",
              "// The target of the kernels: " + target.name + ".\n#pragma once\n\n#include \"" + target.header +
                  "\"\n\nnamespace zrfgen {\n\ninline constexpr int vectorBytes = " +
                  std::to_string(target.vectorBytes) + ";\n\n} // namespace zrfgen\n");

        std::set<std::string> sources, includes; // hand-written code includes kernels without exports
        for (const KernelDefinition &definition : kernels)
            (definition.exports.empty() ? includes : sources).insert(definition.file);
        for (const std::string &option : target.compilerOptions)
            options += " " + option;
        write(directory, "files.cmake",
              "set(targetOptions" + options + ")\nset(generatedSources" + joined(sources) +
                  ")\nset(generatedIncludes" + joined(includes) + ")\n");
    }

    static std::string joined(const std::set<std::string> &names) {
        std::string text;
        for (const std::string &name : names)
            text += "\n  " + name;
        return text;
    }

    // The text of every kernel, written by as many threads as the machine has.
    std::vector<std::string> allSources() const {
        std::vector<std::string> texts(kernels.size());
        std::atomic<std::size_t> next = 0;
        const auto work = [&] {
            for (std::size_t i = next++; i < kernels.size(); i = next++)
                texts[i] = source(kernels[i], target);
        };
        std::vector<std::future<void>> workers;
        for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
            workers.push_back(std::async(std::launch::async, work));
        for (std::future<void> &worker : workers)
            worker.get();
        return texts;
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

    const Target &target;
    const std::vector<std::string> &exports; // in export order
    std::vector<KernelDefinition> kernels;
};

} // namespace

int runDriver(std::vector<std::string> arguments, const std::vector<Family> &families,
              const std::vector<std::string> &exports) {
    try {
        const Target *target = &baseTarget();
        if (arguments.size() >= 2 && arguments[0] == "--target") {
            target = &targetNamed(arguments[1]);
            arguments.erase(arguments.begin(), arguments.begin() + 2);
        }
        Driver(*target, families, exports).run(arguments);
        return 0;
    } catch (const CommandError &error) {
        std::cerr << error.what();
    } catch (const std::exception &error) {
        std::cerr << "kernelgen: " << error.what() << "\n";
    }
    return 1;
}

} // namespace zrfgen::gen
