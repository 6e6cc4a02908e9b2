// The complex transforms of any length.
#include "any_size.h"

ZRF_ANY_SIZE(zrfgDFTFwd_CToC, 32fc, Complex32)
ZRF_ANY_SIZE(zrfgDFTFwd_CToC, 64fc, Complex64)
ZRF_ANY_SIZE(zrfgDFTInv_CToC, 32fc, Complex32)
ZRF_ANY_SIZE(zrfgDFTInv_CToC, 64fc, Complex64)
