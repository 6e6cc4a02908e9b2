#include "dft/recipes/primes.h"

namespace zrfgen::gen {

// clang-format off
Decomposition p11() { return realRader(PF(5, 2)); }
Decomposition p13() { return realRader(PF(3, 4)); }
Decomposition p17() { return realRader(T(4, 4)); }
Decomposition p19() { return realRader(PF(2, T(3, 3))); }
Decomposition p23() { return realRader(PF(2, 11), PF(2, p11())); }
Decomposition p29() { return realRader(PF(4, 7)); }
Decomposition p31() { return realRader(PF(PF(3, 5), 2)); }
Decomposition p37() { return realRader(PF(4, T(3, 3))); }
Decomposition p41() { return realRader(PF(5, T(4, 2))); }
Decomposition p43() { return realRader(PF(PF(2, 7), 3)); }
Decomposition p47() { return realRader(PF(p23(), 2)); }
Decomposition p53() { return realRader(PF(p13(), 4)); }
Decomposition p59() { return realRader(PF(p29(), 2)); }
Decomposition p61() { return realRader(PF(PF(3, 4), 5)); }
// clang-format on

} // namespace zrfgen::gen
