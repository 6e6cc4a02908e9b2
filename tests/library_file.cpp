#include "exports.h"

#include <dlfcn.h>

std::string libraryFile() {
    Dl_info info{};
    dladdr(reinterpret_cast<const void *>(zrfgenGetLibVersion), &info);
    return info.dli_fname;
}
