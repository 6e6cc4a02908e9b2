#include "sin_pi.h"

#include <cmath>
#include <numbers>

// In a file of their own, lest the compiler joins a sine and a cosine into a call of sincos, which is not in
// the standard library.
namespace zrfgen {

Float32 sinPi(Float32 x) {
    return static_cast<Float32>(sinPi(static_cast<Float64>(x)));
}

Float32 cosPi(Float32 x) {
    return static_cast<Float32>(cosPi(static_cast<Float64>(x)));
}

Float64 sinPi(Float64 x) {
    return std::sin(x * std::numbers::pi);
}

Float64 cosPi(Float64 x) {
    return std::cos(x * std::numbers::pi);
}

} // namespace zrfgen
