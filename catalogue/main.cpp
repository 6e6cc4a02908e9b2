// The kernelgen tool: all families of the libraries, given to the driver.
#include "dct4/recipes/kernels.h"
#include "dft/recipes/complex_dft.h"
#include "driver/driver.h"
#include "exports.h"
#include "many/recipes/kernels.h"
#include "real/recipes/real_dft.h"
#include "wht/recipes/kernels.h"

int main(int argc, char **argv) {
    using namespace zrfgen::gen;
    return runDriver(
        {argv + 1, argv + argc},
        {{"zrfgen", {complexDftKernels, realDftKernels, walshHadamardKernels, dct4Kernels}, exportList()},
         {"zrfmany", {manyKernels}, exportListOfMany()}});
}
