/* zrfgen: small, fixed-size signal transforms for x86.
 *
 * One call, two arrays: no plan, no set-up, no state. Any function may be called from any thread as soon as
 * the library is loaded; calls share nothing but read-only constants. The DCT-IV alone, which is not bound to
 * fixed lengths, works from a plan that the caller owns.
 */
#ifndef ZRFGEN_TRANSFORMS_H
#define ZRFGEN_TRANSFORMS_H

#include <stdint.h>

/* On 32-bit x86 every function removes its own arguments from the stack; elsewhere the platform's C
 * convention holds. The stack needs no particular alignment, but on 64-bit Windows that of the platform. */
#if defined(_MSC_VER) && defined(_M_IX86)
#define ZRF_CALL __stdcall
#elif defined(__i386__)
#define ZRF_CALL __attribute__((stdcall))
#else
#define ZRF_CALL
#endif

/* No function throws. */
#if defined(__cplusplus) && (__cplusplus >= 201103L || defined(_MSC_VER))
#define ZRF_NOEXCEPT noexcept
#else
#define ZRF_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef float zrfFloat32;
typedef double zrfFloat64;

/* Complex elements are interleaved pairs, real part first: N of them are 2N consecutive real elements. */
typedef struct zrfComplex32 {
    zrfFloat32 re, im;
} zrfComplex32;

typedef struct zrfComplex64 {
    zrfFloat64 re, im;
} zrfComplex64;

/* The result of every transform: 0, or a negative value for a refusal. A refused call has written nothing. */
typedef int32_t zrfStatus;

enum {
    zrfStatusOk = 0,
    zrfStatusPlanError = -5,   /* the DCT-IV plan is none of this element type, or was overwritten */
    zrfStatusSizeError = -6,   /* length or order out of range */
    zrfStatusNullPointer = -8, /* a required pointer is null */
    zrfStatusFlagError = -16   /* the scaling flag is none of the four below */
};

/* Scaling flags: the factor that multiplies every output. They are no bit mask: just these four values are
 * accepted. 1/N and 1/sqrt(N) are the exact values rounded once to the element type.
 *
 *   flag               forward DFT   inverse DFT   Hartley, Walsh-Hadamard
 *   zrfScaleFwdByN     1/N           1             1/N
 *   zrfScaleInvByN     1             1/N           1/N
 *   zrfScaleBySqrtN    1/sqrt(N)     1/sqrt(N)     1/sqrt(N)
 *   zrfScaleNone       1             1             1
 *
 * With any flag but zrfScaleNone, used on both ways, a forward and an inverse DFT give the input back. */
enum { zrfScaleFwdByN = 1, zrfScaleInvByN = 2, zrfScaleBySqrtN = 4, zrfScaleNone = 8 };

/* The lengths of the DFTs and the Hartley transform, and the orders of the Walsh-Hadamard transform from 1
 * up. */
enum { zrfShortestLength = 2, zrfLongestLength = 64, zrfHighestOrder = 13 };

/* Its text, scanned once more: MSVC's traditional preprocessor hands __VA_ARGS__ on as one argument until
 * then. */
#define ZRF_EXPAND(text) text

/* Expands entry(N, ...) for every DFT length. */
/* clang-format off */
#define ZRF_FOR_EACH_LENGTH(entry, ...) ZRF_EXPAND(                                             \
                                                  entry( 2, __VA_ARGS__) entry( 3, __VA_ARGS__) \
    entry( 4, __VA_ARGS__) entry( 5, __VA_ARGS__) entry( 6, __VA_ARGS__) entry( 7, __VA_ARGS__) \
    entry( 8, __VA_ARGS__) entry( 9, __VA_ARGS__) entry(10, __VA_ARGS__) entry(11, __VA_ARGS__) \
    entry(12, __VA_ARGS__) entry(13, __VA_ARGS__) entry(14, __VA_ARGS__) entry(15, __VA_ARGS__) \
    entry(16, __VA_ARGS__) entry(17, __VA_ARGS__) entry(18, __VA_ARGS__) entry(19, __VA_ARGS__) \
    entry(20, __VA_ARGS__) entry(21, __VA_ARGS__) entry(22, __VA_ARGS__) entry(23, __VA_ARGS__) \
    entry(24, __VA_ARGS__) entry(25, __VA_ARGS__) entry(26, __VA_ARGS__) entry(27, __VA_ARGS__) \
    entry(28, __VA_ARGS__) entry(29, __VA_ARGS__) entry(30, __VA_ARGS__) entry(31, __VA_ARGS__) \
    entry(32, __VA_ARGS__) entry(33, __VA_ARGS__) entry(34, __VA_ARGS__) entry(35, __VA_ARGS__) \
    entry(36, __VA_ARGS__) entry(37, __VA_ARGS__) entry(38, __VA_ARGS__) entry(39, __VA_ARGS__) \
    entry(40, __VA_ARGS__) entry(41, __VA_ARGS__) entry(42, __VA_ARGS__) entry(43, __VA_ARGS__) \
    entry(44, __VA_ARGS__) entry(45, __VA_ARGS__) entry(46, __VA_ARGS__) entry(47, __VA_ARGS__) \
    entry(48, __VA_ARGS__) entry(49, __VA_ARGS__) entry(50, __VA_ARGS__) entry(51, __VA_ARGS__) \
    entry(52, __VA_ARGS__) entry(53, __VA_ARGS__) entry(54, __VA_ARGS__) entry(55, __VA_ARGS__) \
    entry(56, __VA_ARGS__) entry(57, __VA_ARGS__) entry(58, __VA_ARGS__) entry(59, __VA_ARGS__) \
    entry(60, __VA_ARGS__) entry(61, __VA_ARGS__) entry(62, __VA_ARGS__) entry(63, __VA_ARGS__) \
    entry(64, __VA_ARGS__))
/* clang-format on */

#define ZRF_FIXED_SIZE(N, family, suffix, Element)                                                           \
    zrfStatus ZRF_CALL zrfg##family##_##N##_##suffix(const Element *src, Element *dst, int32_t flag)         \
        ZRF_NOEXCEPT;

/* DFT and Hartley families: zrfg<family>_<N>_<suffix>(src, dst, flag) for N from 2 to 64, and the any-size
 * entry zrfg<family>_<suffix>(src, dst, N, flag).
 *
 * Complex DFTs:
 *
 * DFTFwd_CToC   dst[k] = s * sum over j of src[j] exp(-2 pi i j k / N), k = 0..N-1
 * DFTInv_CToC   dst[k] = s * sum over j of src[j] exp(+2 pi i j k / N), k = 0..N-1
 *     src, dst: N complex elements each in natural order, at any byte address. They may be the same array or
 *     overlap in any way. Arrays on 16-byte boundaries are fastest; the bits of the result are the same at
 *     every alignment.
 *
 * Real DFTs, from and to the half of the spectrum that is not the other half's mirror image. With X[k] = R[k]
 * + i I[k] the forward transform of N real elements (factor exp(-2 pi i j k / N), as above), the layouts hold
 *
 *   CCS    N+2 (N even) or N+1 (N odd) elements: R[k] at 2k, I[k] at 2k+1, k = 0..N/2. I[0] and, for even N,
 *          I[N/2] are zeros: always written as +0, never read
 *   Pack   N elements: R[0] at 0, R[k] at 2k-1, I[k] at 2k, and for even N R[N/2] at N-1
 *   Perm   N elements: for even N R[0] at 0, R[N/2] at 1, R[k] at 2k, I[k] at 2k+1; for odd N as Pack
 *
 * DFTFwd_RToCCS, DFTFwd_RToPack, DFTFwd_RToPerm
 *     src: N real elements; dst: s * spectrum
 * DFTInv_CCSToR, DFTInv_PackToR, DFTInv_PermToR
 *     src: the spectrum; dst: N real elements, s * (R[0] + 2 * the sum over 0 < k < N/2 of
 *     R[k] cos(2 pi j k / N) - I[k] sin(2 pi j k / N), and for even N + (-1)^j R[N/2])
 * Hartley
 *     dst[k] = s * sum over j of src[j] (cos(2 pi j k / N) + sin(2 pi j k / N)), k = 0..N-1
 *     src, dst: N real elements; the transform is its own inverse up to s
 *
 * The arrays of these may start at any byte address, and may be the same array or overlap in any way. The
 * bits of the result are the same in all cases and in all three layouts. Float32 kernels multiply by
 * constants in Float64.
 *
 * Returns, tested in this order: zrfStatusSizeError if N is not in 2..64 (any-size entries only),
 * zrfStatusNullPointer if src or dst is null, zrfStatusFlagError if flag is no scaling flag, else
 * zrfStatusOk. NaN and infinity are no failure; they spread as the arithmetic spreads them. */
#define ZRF_SIZED_FAMILY(family, suffix, Element)                                                            \
    ZRF_FOR_EACH_LENGTH(ZRF_FIXED_SIZE, family, suffix, Element)                                             \
    zrfStatus ZRF_CALL zrfg##family##_##suffix(const Element *src, Element *dst, int32_t N, int32_t flag)    \
        ZRF_NOEXCEPT;

/* Expand entry(order, ...) for the orders of the Walsh-Hadamard transform, without and with a buffer. */
#define ZRF_FOR_EACH_ORDER_WITHOUT_BUFFER(entry, ...)                                                        \
    ZRF_EXPAND(entry(1, __VA_ARGS__) entry(2, __VA_ARGS__) entry(3, __VA_ARGS__) entry(4, __VA_ARGS__)       \
                   entry(5, __VA_ARGS__) entry(6, __VA_ARGS__) entry(7, __VA_ARGS__))
#define ZRF_FOR_EACH_ORDER_WITH_BUFFER(entry, ...)                                                           \
    ZRF_EXPAND(entry(8, __VA_ARGS__) entry(9, __VA_ARGS__) entry(10, __VA_ARGS__) entry(11, __VA_ARGS__)     \
                   entry(12, __VA_ARGS__) entry(13, __VA_ARGS__))
#define ZRF_FOR_EACH_ORDER(entry, ...)                                                                       \
    ZRF_EXPAND(ZRF_FOR_EACH_ORDER_WITHOUT_BUFFER(entry, __VA_ARGS__)                                         \
                   ZRF_FOR_EACH_ORDER_WITH_BUFFER(entry, __VA_ARGS__))

#define ZRF_WHT_ORDER(order, suffix, Element)                                                                \
    zrfStatus ZRF_CALL zrfgWHT_##order##_##suffix(const Element *src, Element *dst, int32_t flag,            \
                                                  uint8_t *buffer) ZRF_NOEXCEPT;

/* Walsh-Hadamard transform of N = 2^order real elements: zrfgWHT_<order>_<suffix>(src, dst, flag, buffer) for
 * orders 1 to 13, and the any-order entry zrfgWHT_<suffix>(src, dst, order, flag, buffer).
 *
 *   dst[k] = s * sum over j of (-1)^popcount(j AND k) src[j], k = 0..N-1: natural (Hadamard) order, its own
 *   inverse up to s
 *
 * src, dst: N elements each, at any address that suits the element type; the same array or two that do not
 * overlap. Arrays on 16-byte boundaries are fastest. The sums are those of the radix-2 butterflies from the
 * lowest index bit up, each rounded to the element type, whatever the alignment.
 *
 * For odd orders 1/sqrt(N) is in Float64 the quotient of 1 by the rounded root: one unit in the last place
 * below the nearest number.
 *
 * buffer: scratch memory on a 16-byte boundary (not checked), of as many bytes as
 * zrfgWHTGetBufferSize_<suffix> says; not for two calls at a time. Null makes orders from 8 up take it from
 * zrfMalloc and give it back: slower, and a failed allocation is not caught. Orders up to 7 never look at it.
 *
 * Returns, tested in this order: zrfStatusSizeError if order is not in 1..13 (any-order entries only),
 * zrfStatusNullPointer if src or dst is null, zrfStatusFlagError if flag is no scaling flag, else
 * zrfStatusOk.
 *
 * zrfgWHTGetBufferSize_<suffix>(order, size) writes the size of the buffer in bytes, 0 up to order 7. Returns
 * zrfStatusNullPointer if size is null, else zrfStatusSizeError if order is not in 1..13. */
#define ZRF_WHT_FAMILY(suffix, Element)                                                                      \
    ZRF_FOR_EACH_ORDER(ZRF_WHT_ORDER, suffix, Element)                                                       \
    zrfStatus ZRF_CALL zrfgWHT_##suffix(const Element *src, Element *dst, int32_t order, int32_t flag,       \
                                        uint8_t *buffer) ZRF_NOEXCEPT;                                       \
    zrfStatus ZRF_CALL zrfgWHTGetBufferSize_##suffix(int32_t order, int32_t *size) ZRF_NOEXCEPT;

/* A plan of the DCT-IV: made once for a length and an element type. It lies in one block of memory, points
 * into itself, and so cannot be copied or moved. */
typedef struct zrfDct4Plan zrfDct4Plan;

/* DCT-IV: plans for
 *
 *   dst[k] = sum over j of src[j] cos(pi (2j+1) (2k+1) / (4N)), k = 0..N-1
 *
 * The lengths N are the powers of two from 2 to 2^26 (Float32) or 2^25 (Float64). 2^k + 1 is accepted as
 * well, from 33 (Float32) or 9 (Float64) up to one above the longest power of two, but a plan of such a
 * length does not compute the sum above, and leaves the last element of the destination as it was.
 *
 * zrfgDCT4GetSize_<suffix>(length, sizeOut)
 *     Stores into *sizeOut the bytes that a plan takes. The count wraps around in 32 bits: for 2^30, for
 *     Float64 also 2^29, and for one above these it comes out positive and far too small, and no plan can be
 *     made. Returns, tested in this order: zrfStatusNullPointer if sizeOut is null, zrfStatusSizeError if
 *     length is refused, else zrfStatusOk.
 * zrfgDCT4Init_<suffix>(planOut, length, memory)
 *     Lays a plan into the block at memory, of as many bytes as the size query reports, at any byte address,
 *     and stores its handle into *planOut. The block stays the caller's to release, so such a plan must not
 *     be given to zrfgDCT4Free. Returns zrfStatusNullPointer if planOut or memory is null, zrfStatusSizeError
 *     if length is refused, else zrfStatusOk.
 * zrfgDCT4InitAlloc_<suffix>(planOut, length)
 *     The same in a block from zrfMalloc. Returns zrfStatusNullPointer if planOut is null, zrfStatusSizeError
 *     if length is refused, zrfStatusNullPointer if memory is exhausted, else zrfStatusOk.
 * zrfgDCT4Free_<suffix>(plan)
 *     Releases a plan of zrfgDCT4InitAlloc of the same element type. Returns zrfStatusNullPointer if plan is
 *     null, zrfStatusPlanError if it is none of the element type, else zrfStatusOk.
 *
 * zrfgDCT4_<suffix>(source, destination, plan)
 *     Transforms N elements with a plan of the same element type, by the sum above: twice gives N/2 times the
 *     input. The arrays may be the same or two that do not overlap, at any address that suits the element
 *     type. A plan for 64 or more elements has a work table that every call writes, so no two calls may use
 *     it at a time. Returns zrfStatusNullPointer if an argument is null, zrfStatusPlanError if the plan is
 *     none of the element type, else zrfStatusOk.
 *
 * A plan is known by two words of its head, one for the element type and one for the kind. So a plan of the
 * other type is caught, and so is other memory as far as these words differ; a released plan is not.
 *
 * A refused call leaves *sizeOut, *planOut, the block and *destination as they were. */
#define ZRF_DCT4_FAMILY(suffix, Element)                                                                     \
    zrfStatus ZRF_CALL zrfgDCT4GetSize_##suffix(int32_t length, int32_t *sizeOut) ZRF_NOEXCEPT;              \
    zrfStatus ZRF_CALL zrfgDCT4Init_##suffix(zrfDct4Plan **planOut, int32_t length, void *memory)            \
        ZRF_NOEXCEPT;                                                                                        \
    zrfStatus ZRF_CALL zrfgDCT4InitAlloc_##suffix(zrfDct4Plan **planOut, int32_t length) ZRF_NOEXCEPT;       \
    zrfStatus ZRF_CALL zrfgDCT4_##suffix(const Element *source, Element *destination,                        \
                                         const zrfDct4Plan *plan) ZRF_NOEXCEPT;                              \
    zrfStatus ZRF_CALL zrfgDCT4Free_##suffix(zrfDct4Plan *plan) ZRF_NOEXCEPT;

/* Identifies the library. The record and its texts are constant and live as long as the library is loaded. */
typedef struct zrfLibraryVersion {
    int32_t majorVersion;
    int32_t minorVersion;
    int32_t patchVersion;
    int32_t revision;          /* source revision of the build */
    char targetCode[4];        /* the target's short code, filled up with zero bytes */
    const char *libraryName;   /* library name and target */
    const char *versionText;   /* "major.minor.patch (rrevision)" */
    const char *buildDateText; /* date of the build */
} zrfLibraryVersion;

/* Returns the version record: never null, the same address on every call. */
#define ZRF_VERSION_QUERY(name) const zrfLibraryVersion *ZRF_CALL name(void) ZRF_NOEXCEPT;

#include "families.inc"

/* The same types by short names. A program in which these names mean something else defines
 * ZRF_NO_SHORT_NAMES; and where Status is a macro already, as after <X11/Xlib.h>, it stays what it is. */
#ifndef ZRF_NO_SHORT_NAMES
typedef zrfFloat32 Float32;
typedef zrfFloat64 Float64;
typedef zrfComplex32 Complex32;
typedef zrfComplex64 Complex64;
typedef zrfDct4Plan Dct4Plan;
typedef zrfLibraryVersion LibraryVersion;
#ifndef Status
typedef zrfStatus Status;
#endif
#endif

#undef ZRF_FIXED_SIZE
#undef ZRF_WHT_ORDER

#ifdef __cplusplus
}
#endif

#endif
