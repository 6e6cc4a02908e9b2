/* zrfmany: many transforms of zrfgen in one call.
 *
 * libzrfmany does what a loop over the functions of zrfgen/transforms.h does, and gives the same bits, for
 * every count, arrangement and alignment: the two can be mixed freely. It is faster since it puts a transform
 * into each lane of the vectors. Like those functions it needs no plan and keeps no state; any thread may
 * call it.
 */
#ifndef ZRFGEN_MANY_H
#define ZRFGEN_MANY_H

#include "transforms.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    zrfStatusStrideError = -9 /* a step is 0, or an element lies beyond the end of the address space */
};

/* zrfm<family>_<suffix>(src, dst, N, flag, count, srcStep, srcDistance, dstStep, dstDistance), for every
 * family zrfg<family>_<N>_<suffix> of DFTs and Hartley transforms: `count` transforms of length N.
 *
 * Element e of transform t is src[t * srcDistance + e * srcStep], and so for dst. Steps and distances count
 * the array's own elements, complex numbers where it holds such; a spectrum of real elements is as long as
 * its layout says. They may be negative: src and dst then point to element 0 of transform 0 all the same.
 * Rows of a matrix have step 1 and the length of a row as distance, its columns the other way round: these
 * two are fast, and others are brought together element by element.
 *
 * Arrays may start at any byte address. In place, the elements of a transform's source and destination may be
 * the same, or lie in the same row. Elements of different transforms may overlap in the source, but those of
 * one transform's destination lie apart from all that other transforms read or write.
 *
 * Returns, tested in this order: zrfStatusSizeError if N is not in 2..64 or count is negative; zrfStatusOk if
 * count is 0, and nothing else is looked at; zrfStatusNullPointer if src or dst is null; zrfStatusFlagError
 * if flag is no scaling flag; zrfStatusStrideError if a step is 0 or some element has no address; else
 * zrfStatusOk. A refused call has written nothing. Takes up to 16 KB of stack. */
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    zrfStatus ZRF_CALL zrfm##family##_##suffix(const Element *src, Element *dst, int32_t N, int32_t flag,    \
                                               ptrdiff_t count, ptrdiff_t srcStep, ptrdiff_t srcDistance,    \
                                               ptrdiff_t dstStep, ptrdiff_t dstDistance) ZRF_NOEXCEPT;

/* zrfmWHT_<suffix>(src, dst, order, flag, count, srcStep, srcDistance, dstStep, dstDistance, buffer): the
 * same for Walsh-Hadamard transforms of orders 1 to 13. Orders up to 6 gain by it; those above are a loop.
 *
 * buffer: scratch memory on a 16-byte boundary (not checked), of as many bytes as
 * zrfmWHTGetBufferSize_<suffix> says; not for two calls at a time. Orders up to 7 never look at it.
 *
 * Returns as above, with zrfStatusSizeError if order is not in 1..13, and zrfStatusNullPointer also if buffer
 * is null and order above 7.
 *
 * zrfmWHTGetBufferSize_<suffix>(order, size) writes the size of the buffer in bytes, 0 up to order 7. Returns
 * zrfStatusNullPointer if size is null, else zrfStatusSizeError if order is not in 1..13. */
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    zrfStatus ZRF_CALL zrfmWHT_##suffix(                                                                     \
        const Element *src, Element *dst, int32_t order, int32_t flag, ptrdiff_t count, ptrdiff_t srcStep,   \
        ptrdiff_t srcDistance, ptrdiff_t dstStep, ptrdiff_t dstDistance, uint8_t *buffer) ZRF_NOEXCEPT;      \
    zrfStatus ZRF_CALL zrfmWHTGetBufferSize_##suffix(int32_t order, int32_t *size) ZRF_NOEXCEPT;

#define ZRF_DCT4_FAMILY(suffix, Element)
#define ZRF_VERSION_QUERY(name)
#include "families.inc"

#ifdef __cplusplus
}
#endif

#endif
