#include "driver/driver.h"

#include "driver/card.h"
#include "driver/compile.h"
#include "graph/dump.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace zrfgen::gen {

namespace {

const char usage[] =
    "usage: kernelgen [--target NAME] COMMAND\n"
    "       list DIRECTORY           write what the build has to know before it generates kernels\n"
    "       emit DIRECTORY FILE      write the kernels of one file\n"
    "       file EXPORT              print the name of the file that a kernel is in\n"
    "       explain EXPORT           print a kernel's card\n"
    "       dump LAYER EXPORT        print a layer: algebra, graph, schedule or text\n"
    "       exports LIBRARY          list the exports of zrfgen or zrfmany\n"
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
    Driver(const Target &target, const std::vector<Library> &libraries)
        : target(target), libraries(libraries) {
        for (const Library &library : libraries)
            for (const Family &family : library.families)
                for (KernelDefinition &kernel : family(target))
                    kernels.push_back({&library, std::move(kernel)});
    }

    void run(const std::vector<std::string> &arguments) const {
        const std::string command = arguments.empty() ? "" : arguments[0];
        if (command == "list" && arguments.size() == 2)
            writeLists(arguments[1]);
        else if (command == "emit" && arguments.size() == 3)
            emit(arguments[1], arguments[2]);
        else if (command == "file" && arguments.size() == 2)
            std::cout << kernel(arguments[1]).file << "\n";
        else if (command == "explain" && arguments.size() == 2)
            explain(arguments[1]);
        else if (command == "dump" && arguments.size() == 3)
            dump(arguments[1], arguments[2]);
        else if (command == "exports" && arguments.size() == 2)
            list(arguments[1]);
        else if (command == "try" && arguments.size() == 4)
            tryRecipe(arguments[1], arguments[2], arguments[3]);
        else
            throw CommandError(usage);
    }

private:
    void list(const std::string &name) const {
        const auto library = std::ranges::find(libraries, name, &Library::name);
        if (library == libraries.end())
            throw CommandError("no library '" + name + "'; there are zrfgen and zrfmany\n");
        for (const auto &[exported, argumentBytes] : library->exports)
            std::cout << exported << "\n";
    }

    const KernelDefinition &kernel(const std::string &name) const {
        for (const auto &[library, definition] : kernels)
            if (std::ranges::find(definition.exports, name) != definition.exports.end())
                return definition;
        const bool isExport = std::ranges::any_of(
            libraries, [&](const Library &library) { return library.exports.contains(name); });
        throw CommandError(name + (isExport ? " is written by hand and has no card\n"
                                            : " is no export; see: kernelgen exports zrfgen\n"));
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

    void emit(const std::string &directory, const std::string &file) const {
        std::string text;
        for (const auto &[library, definition] : kernels)
            if (definition.file == file)
                text += source(definition, target);
        if (text.empty())
            throw CommandError("no kernel is in a file '" + file + "'\n");
        write(directory, file, text);
    }

    // All that is no kernel, and the names of the files with kernels.
    void writeLists(const std::string &directory) const {
        std::filesystem::create_directories(directory);
        write(directory, "target.h",
              "// The target of the kernels: " + target.name + ".\n#pragma once\n\n#include \"" +
                  target.header + "\"\n\nnamespace zrfgen {\n\ninline constexpr int vectorBytes = " +
                  std::to_string(target.vectorBytes) + ";\n\n} // namespace zrfgen\n");

        for (const Library &library : libraries)
            writeLists(directory, library);
    }

    void writeLists(const std::string &directory, const Library &library) const {
        std::string entries, map, options;
        for (const auto &[name, argumentBytes] : library.exports) {
            entries += "ENTRY(" + name + ", " + std::to_string(argumentBytes) + ")\n";
            map += "    " + name + ";\n";
        }
        write(directory, library.name + "_entries.inc", entries);
        write(directory, library.name + ".map", "{\nglobal:\n" + map + "local:\n    *;\n};\n");

        std::set<std::string> sources, includes; // hand-written code includes kernels without a name
        for (const auto &[owner, definition] : kernels)
            if (owner == &library)
                (definition.exports.empty() ? includes : sources).insert(definition.file);
        for (const std::string &option : target.compilerOptions)
            options += " " + option;
        write(directory, library.name + ".cmake",
              "set(targetOptions" + options + ")\nset(generatedSources" + joined(sources) +
                  ")\nset(generatedIncludes" + joined(includes) + ")\n");
    }

    static std::string joined(const std::set<std::string> &names) {
        std::string text;
        for (const std::string &name : names)
            text += "\n  " + name;
        return text;
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
    const std::vector<Library> &libraries;
    std::vector<std::pair<const Library *, KernelDefinition>> kernels; // each with the library that it is for
};

} // namespace

int runDriver(std::vector<std::string> arguments, const std::vector<Library> &libraries) {
    try {
        const Target *target = &baseTarget();
        if (arguments.size() >= 2 && arguments[0] == "--target") {
            target = &targetNamed(arguments[1]);
            arguments.erase(arguments.begin(), arguments.begin() + 2);
        }
        Driver(*target, libraries).run(arguments);
        return 0;
    } catch (const CommandError &error) {
        std::cerr << error.what();
    } catch (const std::exception &error) {
        std::cerr << "kernelgen: " << error.what() << "\n";
    }
    return 1;
}

} // namespace zrfgen::gen
