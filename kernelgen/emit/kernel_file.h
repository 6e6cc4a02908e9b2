// The text around a body: a type with the scale factors and the function `transform`, and the exports that
// run it.
#pragma once

#include "graph/graph.h"

#include <string>
#include <vector>

namespace zrfgen::gen {

struct KernelFile {
    struct Export {
        std::string name;
        std::string run; // the call that checks the arguments and runs the kernel: "runRealKernel<...>"
    };

    std::string head; // the header that declares it
    std::string type; // the kernel's name
    int length;
    Element element;
    std::string arrayElement;        // the element type of the caller's arrays
    std::string factorsFrom = "";    // the type to inherit the scale factors from, if not written here
    std::string moreParameters = ""; // of the exports, behind the flag
    std::string members;             // what the head wants to know besides the factors
    std::string transformParameters; // the template parameters of `transform`
    std::vector<Export> exports;
};

std::string text(const KernelFile &file, const std::string &body);

} // namespace zrfgen::gen
