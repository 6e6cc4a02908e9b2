#include "exports.h"

const std::vector<Export> &allExports() {
#define ADD(name, family, entry, suffix, size)                                                               \
    {#name,        family,                                                                                   \
     Entry::entry, std::string_view(#suffix).starts_with("32"),                                              \
     size,         reinterpret_cast<void (*)()>(name)},
#define ADD_LENGTH(N, family, suffix) ADD(zrfg##family##_##N##_##suffix, #family, FixedSize, suffix, N)
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(ADD_LENGTH, family, suffix)                                                          \
    ADD(zrfg##family##_##suffix, #family, AnySize, suffix, 0)
#define ADD_ORDER(order, suffix) ADD(zrfgWHT_##order##_##suffix, "WHT", WhtOrder, suffix, order)
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    ZRF_FOR_EACH_ORDER(ADD_ORDER, suffix)                                                                    \
    ADD(zrfgWHT_##suffix, "WHT", WhtAnyOrder, suffix, 0)                                                     \
    ADD(zrfgWHTGetBufferSize_##suffix, "WHT", SizeQuery, suffix, 0)
#define ZRF_DCT4_FAMILY(suffix, Element)                                                                     \
    ADD(zrfgDCT4GetSize_##suffix, "DCT4", SizeQuery, suffix, 0)                                              \
    ADD(zrfgDCT4Init_##suffix, "DCT4", Dct4, suffix, 0)                                                      \
    ADD(zrfgDCT4InitAlloc_##suffix, "DCT4", Dct4, suffix, 0)                                                 \
    ADD(zrfgDCT4_##suffix, "DCT4", Dct4, suffix, 0)                                                          \
    ADD(zrfgDCT4Free_##suffix, "DCT4", Dct4, suffix, 0)
#define ZRF_VERSION_QUERY(name) ADD(name, "version", Version, none, 0)
    static const Export table[] = {
#include <zrfgen/families.inc>
    };
#undef ADD
#undef ADD_LENGTH
#undef ADD_ORDER
    static const std::vector<Export> sorted = [] {
        std::vector<Export> list(std::begin(table), std::end(table));
        std::ranges::sort(list, {}, &Export::name);
        return list;
    }();
    return sorted;
}
