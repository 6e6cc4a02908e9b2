// Errors of the complex DFTs against their defining sum in quad precision.
#pragma once

namespace zrfgen::bench {

inline constexpr int randomVectors = 400;

struct Accuracy {
    double zrfgen, fftw; // relative root-mean-square error over random vectors, forward
    double impulse;      // zrfgen's largest error over unit impulses, forward and inverse

    // Below 1, zrfgen is the more accurate.
    double ratio() const { return zrfgen / fftw; }
};

// For float and double. Throws std::runtime_error with a line for the user.
template <class Real> Accuracy measureAccuracy(int length);

} // namespace zrfgen::bench
