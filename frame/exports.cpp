#include "exports.h"

#include <zrfgen/transforms.h>

#include <algorithm>

namespace zrfgen::gen {

#define ZRF_COUNT_ONE(...) +1
static_assert(0 ZRF_FOR_EACH_LENGTH(ZRF_COUNT_ONE, ) == zrfLongestLength - zrfShortestLength + 1);
static_assert(0 ZRF_FOR_EACH_ORDER(ZRF_COUNT_ONE, ) == zrfHighestOrder);

std::vector<std::string> exportNames() {
    std::vector<std::string> names;
#define ZRF_FIXED_SIZE_NAME(N, family, suffix) names.push_back("zrfg" #family "_" #N "_" #suffix);
#define ZRF_ORDER_NAME(order, suffix) names.push_back("zrfgWHT_" #order "_" #suffix);
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(ZRF_FIXED_SIZE_NAME, family, suffix)                                                 \
    names.push_back("zrfg" #family "_" #suffix);
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    ZRF_FOR_EACH_ORDER(ZRF_ORDER_NAME, suffix)                                                               \
    names.push_back("zrfgWHT_" #suffix);                                                                     \
    names.push_back("zrfgWHTGetBufferSize_" #suffix);
#define ZRF_DCT4_FAMILY(suffix, Element)                                                                     \
    for (const char *operation : {"GetSize", "Init", "InitAlloc", "", "Free"})                               \
        names.push_back(std::string("zrfgDCT4") + operation + "_" #suffix);
#define ZRF_VERSION_QUERY(name) names.push_back(#name);
#include "families.inc"
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace zrfgen::gen
