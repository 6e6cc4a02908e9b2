// Prime lengths by Rader's convolution in real lanes, each over the length before it: settled once for the
// complex kernels, the real ones and the blocks inside longer ones.
#pragma once

#include "algebra/decomposition.h"

namespace zrfgen::gen {

Decomposition p11();
Decomposition p13();
Decomposition p17();
Decomposition p19();
Decomposition p23();
Decomposition p29();
Decomposition p31();
Decomposition p37();
Decomposition p41();
Decomposition p43();
Decomposition p47();
Decomposition p53();
Decomposition p59();
Decomposition p61();

} // namespace zrfgen::gen
