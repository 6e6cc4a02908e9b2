/* zrfcore: what the transforms take from their core library. A program may bring its own three functions. */
#ifndef ZRFCORE_ZRFCORE_H
#define ZRFCORE_ZRFCORE_H

#include <stdint.h>

#if defined(_MSC_VER) && defined(_M_IX86)
#define ZRF_CORE_CALL __stdcall
#elif defined(__i386__)
#define ZRF_CORE_CALL __attribute__((stdcall))
#else
#define ZRF_CORE_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Allocates size bytes, at least 16-byte aligned. Null if size is not positive or memory is exhausted. Safe
 * to call from several threads. */
void *ZRF_CORE_CALL zrfMalloc(int32_t size);

/* Releases a block of zrfMalloc; a null block is ignored. */
void ZRF_CORE_CALL zrfFree(void *block);

/* Bits of the capability mask: an instruction set that the processor has and the core library enables. */
enum {
    zrfCpuMmx = 0x01,
    zrfCpuSse = 0x02,
    zrfCpuSse2 = 0x04,
    zrfCpuSse3 = 0x08,
    zrfCpuSsse3 = 0x10,
    zrfCpuSse41 = 0x20
};

/* Returns the mask of enabled processor capabilities. */
uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures(void);

#ifdef __cplusplus
}
#endif

#endif
