// The real and Hartley transforms of any length.
#include "any_size.h"

ZRF_ANY_SIZE(zrfgDFTFwd_RToCCS, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTFwd_RToCCS, 64f, Float64)
ZRF_ANY_SIZE(zrfgDFTFwd_RToPack, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTFwd_RToPack, 64f, Float64)
ZRF_ANY_SIZE(zrfgDFTFwd_RToPerm, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTFwd_RToPerm, 64f, Float64)
ZRF_ANY_SIZE(zrfgDFTInv_CCSToR, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTInv_CCSToR, 64f, Float64)
ZRF_ANY_SIZE(zrfgDFTInv_PackToR, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTInv_PackToR, 64f, Float64)
ZRF_ANY_SIZE(zrfgDFTInv_PermToR, 32f, Float32)
ZRF_ANY_SIZE(zrfgDFTInv_PermToR, 64f, Float64)
ZRF_ANY_SIZE(zrfgHartley, 32f, Float32)
ZRF_ANY_SIZE(zrfgHartley, 64f, Float64)
