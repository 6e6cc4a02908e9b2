#include "exports.h"

#include <zrfgen/many.h>

namespace zrfgen::gen {

#define ZRF_COUNT_ONE(...) +1
static_assert(0 ZRF_FOR_EACH_LENGTH(ZRF_COUNT_ONE, ) == zrfLongestLength - zrfShortestLength + 1);
static_assert(0 ZRF_FOR_EACH_ORDER(ZRF_COUNT_ONE, ) == zrfHighestOrder);

// Every argument is a word there.
template <class Function> constexpr int argumentBytes = 0;
template <class Result, class... Arguments>
constexpr int argumentBytes<Result(ZRF_CALL *)(Arguments...) noexcept> = 4 * sizeof...(Arguments);

Exports exportList() {
    Exports list;
#define ADD(name) list[#name] = argumentBytes<decltype(&name)>;
#define ADD_LENGTH(N, family, suffix) ADD(zrfg##family##_##N##_##suffix)
#define ADD_ORDER(order, suffix) ADD(zrfgWHT_##order##_##suffix)
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(ADD_LENGTH, family, suffix)                                                          \
    ADD(zrfg##family##_##suffix)
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    ZRF_FOR_EACH_ORDER(ADD_ORDER, suffix)                                                                    \
    ADD(zrfgWHT_##suffix) ADD(zrfgWHTGetBufferSize_##suffix)
#define ZRF_DCT4_FAMILY(suffix, Element)                                                                     \
    ADD(zrfgDCT4GetSize_##suffix)                                                                            \
    ADD(zrfgDCT4Init_##suffix) ADD(zrfgDCT4InitAlloc_##suffix) ADD(zrfgDCT4_##suffix)                        \
        ADD(zrfgDCT4Free_##suffix)
#define ZRF_VERSION_QUERY(name) ADD(name)
#include "families.inc"
    return list;
}

Exports exportListOfMany() {
    Exports list;
#define ZRF_SIZED_FAMILY(family, suffix, Element) ADD(zrfm##family##_##suffix)
#define ZRF_WHT_FAMILY(suffix, Element) ADD(zrfmWHT_##suffix) ADD(zrfmWHTGetBufferSize_##suffix)
#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include "families.inc"
    return list;
}

} // namespace zrfgen::gen
