// How kernels reach single elements of the caller's arrays: by bytes, since an array may start at any
// address.
#pragma once

#include <zrfgen/transforms.h>

#include <cstdint>
#include <cstring>

namespace zrfgen {

template <class Element> inline Element loadElement(const unsigned char *source) {
    Element value;
    std::memcpy(&value, source, sizeof value);
    return value;
}

template <class Element> inline void storeElement(unsigned char *destination, Element value) {
    std::memcpy(destination, &value, sizeof value);
}

// Keeps a product by 2 from becoming a sum: sums have fewer places to run in.
template <class Element> inline Element unknownToCompiler(Element value) {
    asm("" : "+x"(value));
    return value;
}

} // namespace zrfgen
