// Errors of the transforms against their defining sums in quad precision.
#pragma once

namespace zrfgen::bench {

inline constexpr int randomVectors = 400;

struct Accuracy {
    double zrfgen, fftw; // relative root-mean-square error over random vectors
    double impulse;      // zrfgen's largest error over unit impulses

    // Below 1, zrfgen is the more accurate.
    double ratio() const { return zrfgen / fftw; }
};

// For float and double. They throw std::runtime_error with a line for the user.
template <class Real> Accuracy complexForwardAccuracy(int length); // impulses in the inverse too
template <class Real> Accuracy realForwardAccuracy(int length);
template <class Real> Accuracy realInverseAccuracy(int length);
template <class Real> Accuracy hartleyAccuracy(int length);

} // namespace zrfgen::bench
