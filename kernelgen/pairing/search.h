// The search for a choice of pairs that costs little.
#pragma once

#include "pairing/pairing.h"

namespace zrfgen::gen {

// Simulated annealing (S. Kirkpatrick, C. D. Gelatt and M. P. Vecchi, 1983), for each seed the same on every
// machine. A step pairs two operations and, as far as it pays, what these need and who needs them: so the
// columns of a stage come together at once.
void search(Pairing &pairing, int seed);

} // namespace zrfgen::gen
