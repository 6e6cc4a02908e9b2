#include "library.h"

#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace zrfgen::bench {
namespace {

// Null if it is the one the program is linked with.
void *baseLibrary() {
    static void *const library = []() -> void * {
        if (std::filesystem::equivalent(libraryFile(), BASE_LIBRARY))
            return nullptr;
        void *const loaded = dlopen(BASE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        if (loaded == nullptr)
            throw std::runtime_error(dlerror());
        return loaded;
    }();
    return library;
}

} // namespace

bool hasBaseLibraryBeside() {
    return baseLibrary() != nullptr;
}

std::optional<Export> inBaseLibrary(const Export &entry) {
    if (!hasBaseLibraryBeside())
        return {};
    Export other = entry;
    other.address = reinterpret_cast<void (*)()>(dlsym(baseLibrary(), std::string(entry.name).c_str()));
    return other;
}

} // namespace zrfgen::bench
