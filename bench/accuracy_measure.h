// Errors of the transforms against their defining sums in quad precision.
#pragma once

#include "fftw.h"

#include <string>

namespace zrfgen::bench {

inline constexpr int randomVectors = 400;

struct Accuracy {
    double zrfgen, fftw; // relative root-mean-square error over random vectors
    double impulse;      // zrfgen's largest error over unit impulses

    // Below 1, zrfgen is the more accurate.
    double ratio() const { return zrfgen / fftw; }
};

// Of complex transforms, the impulses in the inverse too. Throws std::runtime_error with a line for the user.
template <class Real> Accuracy measureAccuracy(const std::string &family, int length, Planner<Real> planFftw);

} // namespace zrfgen::bench
