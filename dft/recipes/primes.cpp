#include "dft/recipes/primes.h"

namespace zrfgen::gen {

namespace {

// By the transform of length p - 1: real forward, and back through the transpose.
Decomposition H(Decomposition both) {
    return realRader(both, both);
}

} // namespace

// clang-format off
Decomposition p11() { return H(PF(5, 2)); }
Decomposition p13() { return H(PF(3, 4)); }
Decomposition p17() { return H(T(4, 4)); }
Decomposition p19() { return H(PF(2, T(3, 3))); }
Decomposition p23() { return realRader(PF(2, 11), PF(2, p11())); }
Decomposition p29() { return H(PF(4, 7)); }
Decomposition p31() { return H(PF(PF(3, 5), 2)); }
Decomposition p37() { return H(PF(4, T(3, 3))); }
Decomposition p41() { return H(PF(5, T(4, 2))); }
Decomposition p43() { return H(PF(PF(2, 7), 3)); }
Decomposition p47() { return H(PF(p23(), 2)); }
Decomposition p53() { return H(PF(p13(), 4)); }
Decomposition p59() { return H(PF(p29(), 2)); }
Decomposition p61() { return H(PF(PF(3, 4), 5)); }
// clang-format on

} // namespace zrfgen::gen
