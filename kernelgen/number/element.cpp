#include "number/element.h"

#include <cstdio>

namespace zrfgen::gen {

std::string bits(Element element) {
    return std::to_string(8 * bytes(element));
}

Quad rounded(Quad value, Element element) {
    return element == Element::Float32 ? static_cast<Quad>(static_cast<float>(value))
                                       : static_cast<Quad>(static_cast<double>(value));
}

std::string literal(Quad value, Element element) {
    char text[64];
    std::snprintf(text, sizeof text, element == Element::Float32 ? "%af" : "%a",
                  static_cast<double>(rounded(value, element)));
    return text;
}

} // namespace zrfgen::gen
