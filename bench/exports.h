// Finds the library's fixed-size transforms by name.
#pragma once

#include <zrfgen/transforms.h>

#include <dlfcn.h>
#include <string>
#include <type_traits>

namespace zrfgen::bench {

using Transform = Status(ZRF_CALL *)(const void *src, void *dst, std::int32_t flag);

template <class Real> constexpr const char *realSuffix = std::is_same_v<Real, float> ? "32f" : "64f";
template <class Real> constexpr const char *complexSuffix = std::is_same_v<Real, float> ? "32fc" : "64fc";

// Null if the library has no such export.
template <class Function = Transform>
Function findExport(const std::string &family, int size, const std::string &suffix) {
    const std::string name = "zrfg" + family + "_" + std::to_string(size) + "_" + suffix;
    return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name.c_str()));
}

} // namespace zrfgen::bench
