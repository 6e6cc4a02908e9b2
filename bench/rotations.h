// The rotations around a complex DFT of half the length that make a DCT-IV of it, as users of FFT libraries
// write them.
#pragma once

namespace zrfgen::bench {

// z[n] = (x[2n] + i x[length - 1 - 2n]) w[n], for n below length / 2. Complex numbers have their parts side
// by side.
void rotateIn(const float *x, const float *w, float *z, int length);
void rotateIn(const double *x, const double *w, double *z, int length);

// x[2k] and -x[length - 1 - 2k] are the parts of z[k] w[k].
void rotateOut(const float *z, const float *w, float *x, int length);
void rotateOut(const double *z, const double *w, double *x, int length);

} // namespace zrfgen::bench
