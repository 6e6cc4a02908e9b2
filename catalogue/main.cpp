// The kernelgen tool: all families of the library, given to the driver.
#include "dft/recipes/complex_dft.h"
#include "driver/driver.h"
#include "exports.h"
#include "real/recipes/real_dft.h"
#include "wht/recipes/kernels.h"

int main(int argc, char **argv) {
    using namespace zrfgen::gen;
    const Family frame{.kernels = {}, .otherExports = {"zrfgenGetLibVersion"}};
    const Family dct4{.kernels = {},
                      .otherExports = {"zrfgDCT4GetSize_32f", "zrfgDCT4GetSize_64f", "zrfgDCT4Init_32f",
                                       "zrfgDCT4Init_64f", "zrfgDCT4InitAlloc_32f", "zrfgDCT4InitAlloc_64f",
                                       "zrfgDCT4Free_32f", "zrfgDCT4Free_64f"}};
    return runDriver({argv + 1, argv + argc},
                     {frame, complexDftFamily(), realDftFamily(), walshHadamardFamily(), dct4},
                     exportNames());
}
