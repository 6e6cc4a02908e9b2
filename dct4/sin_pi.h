// Sines and cosines of multiples of pi, by the C library.
#pragma once

#include <zrfgen/transforms.h>

namespace zrfgen {

Float32 sinPi(Float32 x);
Float32 cosPi(Float32 x);
Float64 sinPi(Float64 x);
Float64 cosPi(Float64 x);

} // namespace zrfgen
