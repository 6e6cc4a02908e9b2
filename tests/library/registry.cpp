#include "registry.h"

#include <dlfcn.h>
#include <stdexcept>

namespace {

struct Family {
    const char *name;
    const char *opposite;
    Direction direction;
    Layout srcLayout, dstLayout;
};

constexpr Family families[] = {
    {"DFTFwd_CToC", "DFTInv_CToC", Direction::Forward, Layout::Complex, Layout::Complex},
    {"DFTInv_CToC", "DFTFwd_CToC", Direction::Inverse, Layout::Complex, Layout::Complex},
    {"DFTFwd_RToCCS", "DFTInv_CCSToR", Direction::Forward, Layout::Real, Layout::CCS},
    {"DFTFwd_RToPack", "DFTInv_PackToR", Direction::Forward, Layout::Real, Layout::Pack},
    {"DFTFwd_RToPerm", "DFTInv_PermToR", Direction::Forward, Layout::Real, Layout::Perm},
    {"DFTInv_CCSToR", "DFTFwd_RToCCS", Direction::Inverse, Layout::CCS, Layout::Real},
    {"DFTInv_PackToR", "DFTFwd_RToPack", Direction::Inverse, Layout::Pack, Layout::Real},
    {"DFTInv_PermToR", "DFTFwd_RToPerm", Direction::Inverse, Layout::Perm, Layout::Real},
    {"Hartley", "Hartley", Direction::Both, Layout::Real, Layout::Real},
};

void *library() {
    static void *const handle = dlopen(ZRFGEN_LIBRARY, RTLD_NOW);
    if (handle == nullptr)
        throw std::runtime_error(dlerror());
    return handle;
}

std::vector<Transform> findTransforms() {
    std::vector<Transform> found;
    for (const Family &family : families)
        for (const bool isSingle : {true, false}) {
            const std::string prefix = std::string("zrfg") + family.name + "_";
            const std::string suffix =
                std::string(isSingle ? "32f" : "64f") + (family.srcLayout == Layout::Complex ? "c" : "");
            for (int length = 2; length <= 64; ++length) {
                const std::string name = prefix + std::to_string(length) + "_" + suffix;
                found.push_back({family.name, name, prefix + suffix, family.direction, family.srcLayout,
                                 family.dstLayout, length, isSingle,
                                 reinterpret_cast<Transform::Call>(exportAddress(name)),
                                 reinterpret_cast<Transform::AnySizeCall>(exportAddress(prefix + suffix))});
            }
        }
    return found;
}

} // namespace

std::size_t Transform::count(Layout layout) const {
    const std::size_t n = static_cast<std::size_t>(length);
    return layout == Layout::Complex ? 2 * n : layout == Layout::CCS ? n / 2 * 2 + 2 : n;
}

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

const Transform &builtTransform(const std::string &family, int length, bool isSingle) {
    for (const Transform &transform : builtTransforms())
        if (transform.family == family && transform.length == length && transform.isSingle == isSingle)
            return transform;
    throw std::out_of_range(family + " has no such length");
}

const Transform &oppositeOf(const Transform &transform) {
    for (const Family &family : families)
        if (family.name == transform.family)
            return builtTransform(family.opposite, transform.length, transform.isSingle);
    throw std::out_of_range(transform.name + " has no counterpart");
}
