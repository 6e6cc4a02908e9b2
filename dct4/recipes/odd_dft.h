// The transform inside both stages of a DCT-IV: a Fourier transform of real numbers at half-bin frequencies.
#pragma once

#include "algebra/linear_map.h"

namespace zrfgen::gen {

// n a power of two from 2 to 64, M = n/2. From w[0] .. w[M-1], w[-M] .. w[-1] to E[0], O[0], E[1] .. O[M-1]:
//     E[s] + i O[s] = sum over m of w[m] exp(i pi m (2s+1) / n)
LinearMap oddDft(int n);

// From P[0], Q[0], P[1] .. Q[M-1] to f[0] .. f[M-1], f[-M] .. f[-1]:
//     f[l] = real part of the sum over c of (P[c] + i Q[c]) exp(i pi (2c+1) l / n)
LinearMap oddSynthesis(int n);

} // namespace zrfgen::gen
