// A core library in the place of zrfcore.dll, of a processor that can do nothing. Its mask is asked for when
// the transforms are loaded, and it counts how often.
#include <zrfcore/zrfcore.h>

#include <malloc.h>
#include <stdlib.h>

static int queries = 0;

extern "C" {

void *ZRF_CORE_CALL zrfMalloc(int32_t size) {
    return size > 0 ? _aligned_malloc(size, 16) : nullptr;
}

void ZRF_CORE_CALL zrfFree(void *block) {
    _aligned_free(block);
}

uint64_t ZRF_CORE_CALL zrfGetEnabledCpuFeatures() {
    _putenv_s("ZRF_CORE_QUERIES", ++queries == 1 ? "one" : "more");
    return 0;
}
}
