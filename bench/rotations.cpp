#include "rotations.h"

// Compiled for several processors, of which the program takes the one that it runs on.
#define FOR_EVERY_PROCESSOR [[gnu::target_clones("default", "arch=x86-64-v3", "arch=x86-64-v4")]]

namespace zrfgen::bench {

namespace {

template <class Real> [[gnu::always_inline]] inline void
rotatedIn(const Real *__restrict x, const Real *__restrict w, Real *__restrict z, int length) {
    for (int n = 0; n < length / 2; ++n) {
        const Real re = x[2 * n], im = x[length - 1 - 2 * n], c = w[2 * n], s = w[2 * n + 1];
        z[2 * n] = re * c - im * s;
        z[2 * n + 1] = re * s + im * c;
    }
}

template <class Real> [[gnu::always_inline]] inline void
rotatedOut(const Real *__restrict z, const Real *__restrict w, Real *__restrict x, int length) {
    for (int k = 0; k < length / 2; ++k) {
        const Real re = z[2 * k], im = z[2 * k + 1], c = w[2 * k], s = w[2 * k + 1];
        x[2 * k] = re * c - im * s;
        x[length - 1 - 2 * k] = -(re * s + im * c);
    }
}

} // namespace

FOR_EVERY_PROCESSOR void rotateIn(const float *x, const float *w, float *z, int length) {
    rotatedIn(x, w, z, length);
}
FOR_EVERY_PROCESSOR void rotateIn(const double *x, const double *w, double *z, int length) {
    rotatedIn(x, w, z, length);
}
FOR_EVERY_PROCESSOR void rotateOut(const float *z, const float *w, float *x, int length) {
    rotatedOut(z, w, x, length);
}
FOR_EVERY_PROCESSOR void rotateOut(const double *z, const double *w, double *x, int length) {
    rotatedOut(z, w, x, length);
}

} // namespace zrfgen::bench
