#include "library.h"

#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

struct Library {
    const char *target, *file; // in the folder of the base library
    bool runsHere;
};

std::vector<Library> libraries() {
    const bool hasAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
                           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw");
    return {{"sse3", "libzrfgen.so", true},
            {"x86-64-v3", "glibc-hwcaps/x86-64-v3/libzrfgen.so", __builtin_cpu_supports("avx2") != 0},
            {"x86-64-v4", "glibc-hwcaps/x86-64-v4/libzrfgen.so", hasAvx512}};
}

std::filesystem::path pathOf(const Library &library) {
    return std::filesystem::path(LIBRARY_FOLDER) / library.file;
}

bool isChosen(const Library &library) {
    return std::filesystem::exists(pathOf(library)) &&
           std::filesystem::equivalent(libraryFile(), pathOf(library));
}

} // namespace

Export OtherLibrary::the(const Export &entry) const {
    Export there = entry;
    there.address = reinterpret_cast<void (*)()>(dlsym(handle, std::string(entry.name).c_str()));
    return there;
}

const std::vector<OtherLibrary> &otherLibraries() {
    static const std::vector<OtherLibrary> others = [] {
        std::vector<OtherLibrary> list;
        for (const Library &library : libraries())
            if (library.runsHere && std::filesystem::exists(pathOf(library)) && !isChosen(library)) {
                list.push_back({library.target, dlopen(pathOf(library).c_str(), RTLD_NOW | RTLD_LOCAL)});
                if (list.back().handle == nullptr)
                    throw std::runtime_error(dlerror());
            }
        return list;
    }();
    return others;
}

bool isBaseLibrary() {
    return isChosen(libraries()[0]);
}

} // namespace zrfgen::bench
