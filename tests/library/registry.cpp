#include "registry.h"

#include <dlfcn.h>
#include <stdexcept>

namespace {

void *library() {
    static void *const handle = dlopen(ZRFGEN_LIBRARY, RTLD_NOW);
    if (handle == nullptr)
        throw std::runtime_error(dlerror());
    return handle;
}

std::vector<Transform> findTransforms() {
    std::vector<Transform> found;
    for (const bool isForward : {true, false})
        for (const bool isSingle : {true, false}) {
            const std::string family = isForward ? "zrfgDFTFwd_CToC_" : "zrfgDFTInv_CToC_";
            const std::string suffix = isSingle ? "32fc" : "64fc";
            const auto anySize = reinterpret_cast<Transform::AnySizeCall>(exportAddress(family + suffix));
            for (int length = 2; length <= 64; ++length) {
                const std::string name = family + std::to_string(length) + "_" + suffix;
                if (void *address = dlsym(library(), name.c_str()))
                    found.push_back({name, reinterpret_cast<Transform::Call>(address), anySize, length,
                                     isForward, isSingle});
            }
        }
    if (found.empty())
        throw std::runtime_error("the library exports no transform");
    return found;
}

} // namespace

void *exportAddress(const std::string &name) {
    void *address = dlsym(library(), name.c_str());
    if (address == nullptr)
        throw std::runtime_error("the library does not export " + name);
    return address;
}

const std::vector<Transform> &builtTransforms() {
    static const std::vector<Transform> transforms = findTransforms();
    return transforms;
}

const Transform &oppositeOf(const Transform &transform) {
    for (const Transform &other : builtTransforms())
        if (other.length == transform.length && other.isSingle == transform.isSingle &&
            other.isForward != transform.isForward)
            return other;
    throw std::runtime_error(transform.name + " has no counterpart");
}
