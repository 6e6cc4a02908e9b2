// The element types of arrays.
#pragma once

#include "number/quad.h"

#include <cstdint>
#include <string>

namespace zrfgen::gen {

enum class Element : std::uint8_t { Float32, Float64 };

constexpr int bytes(Element element) {
    return element == Element::Float32 ? 4 : 8;
}

// "32" or "64", as it stands in the names of types and exports.
std::string bits(Element element);

// The value rounded once to the element type.
Quad rounded(Quad value, Element element);

// The value, rounded once, as a hexadecimal literal of the element type.
std::string literal(Quad value, Element element);

} // namespace zrfgen::gen
