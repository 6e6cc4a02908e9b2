// The text around a body: a type with a static function, what the type has besides, and the exports that run
// it.
#pragma once

#include "number/element.h"

#include <string>
#include <vector>

namespace zrfgen::gen {

struct Parameter {
    std::string type, name; // without a name, where the text has no use for it
};

struct KernelText {
    // A function of the library over `src`, `dst` and `flag`. Returns head<type, arguments...>(src, dst,
    // flag, more...).
    struct Export {
        std::string name;
        std::string head; // the function template that checks the arguments and runs the kernel
        std::vector<std::string> arguments;
    };

    std::string header = ""; // declares the head; none if hand-written code includes the text
    std::string type;      // "Dft15Complex32"; without a header a specialisation, "BlockStages<Float32, 32>"
    std::string base = ""; // inherited from
    int factorsOf = 0;     // the length whose scale factors the type holds, if any
    Element element;       // of the factors
    std::string function;  // the static function's name
    std::vector<Parameter> templateParameters = {};
    std::vector<Parameter> parameters = {};
    bool isAlwaysInline = true;
    std::string lastStatement = "";             // behind the body
    std::string arrayElement = "";              // of the arrays that exports take
    std::vector<Parameter> moreParameters = {}; // of exports, behind the flag
    std::vector<Export> exports = {};
    std::string constants = ""; // behind the type, for other files of the library
};

// The arrays as bytes and the scale factor.
std::vector<Parameter> transformParameters(Element element);

std::string text(const KernelText &kernel, const std::string &body, bool hasTwoPaths);

} // namespace zrfgen::gen
